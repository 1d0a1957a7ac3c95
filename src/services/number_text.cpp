#include "services/number_text.h"

#include "floating_point_environment.h"

#include <tv_services/number_text.h>

namespace TVTypeSys {

std::string evaluableText(double value) {
    const DefaultEnvironment environment;
    return tvsv_dtoa_fitools(value);
}

std::string decimalText(double value) {
    const DefaultEnvironment environment;
    return tvsv_dtoa(value, false);
}

} // namespace TVTypeSys
