#include "services/number_text.h"

#include <tv_services/number_text.h>

namespace TVTypeSys {

static_assert(longestDecimalText >= tvsvLongestNumberText);

std::string decimalText(double value) { return tvsv_dtoa(value, false); }

char* writeDecimalText(char* text, double value) { return tvsv_dtoa_into(text, value); }

} // namespace TVTypeSys
