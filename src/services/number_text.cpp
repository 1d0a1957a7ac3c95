#include "services/number_text.h"

#include <tv_services/number_text.h>

namespace TVTypeSys {

std::string decimalText(double value) { return tvsv_dtoa(value, false); }

} // namespace TVTypeSys
