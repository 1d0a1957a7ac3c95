/// \file
/// Two's complement arithmetic of 32-bit integers, which wraps on overflow.
#pragma once

#include <cstdint>

namespace TVTypeSys {

constexpr std::int32_t wrappingSum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

constexpr std::int32_t wrappingProduct(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) * static_cast<std::uint32_t>(b));
}

} // namespace TVTypeSys
