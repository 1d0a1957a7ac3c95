/// \file
/// Texts of integers.
#pragma once

#include <boost/lexical_cast.hpp>

#include <cstdint>
#include <string>

namespace TVTypeSys {

/// Returns the decimal digits, grouped as in the global locale.
inline std::string integerText(std::int64_t value) {
    return boost::lexical_cast<std::string>(value);
}

} // namespace TVTypeSys
