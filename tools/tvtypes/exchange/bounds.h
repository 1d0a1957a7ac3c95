/// \file
/// Limits of the contents of a description, which bound the time and the memory of reading it. They
/// are far above the descriptions of real models.
#pragma once

#include "files/read_error.h"

#include <fmt/format.h>

#include <cstddef>

namespace tvtool::exchange {

struct Bound {
    std::size_t most;
    const char* things;
};

inline constexpr Bound elementBound{5'000'000, "elements"};
inline constexpr Bound attributeBound{10'000'000, "attributes"};
/// The parser keeps each name of an element or attribute.
inline constexpr Bound nameBound{100'000, "different names of elements and attributes"};
inline constexpr Bound lineBound{20'000'000, "lines"};
inline constexpr Bound levelBound{100'000, "levels of elements"};
/// The parser recurses for entities that contain others, and searches declarations of attributes
/// one by one.
inline constexpr Bound declarationBound{1'000, "declared entities and attributes"};

inline constexpr Bound variableBound{500'000, "variables"};
inline constexpr Bound aliasBound{500'000, "aliases"};
inline constexpr Bound dimensionBound{1'000'000, "dimensions"};
inline constexpr Bound sizeBound{100'000, "different sizes of dimensions"};
inline constexpr Bound referenceBound{2'000'000, "references between variables"};
inline constexpr Bound typeBound{200'000, "types"};
inline constexpr Bound itemBound{1'000'000, "items of enumerations"};
inline constexpr Bound unitBound{50'000, "units"};
inline constexpr Bound displayUnitBound{50'000, "display units"};

/// Throws files::ReadError if a count exceeds its bound.
inline void checkBound(std::size_t count, const Bound& bound) {
    if (count > bound.most) {
        throw files::ReadError(fmt::format("there are more than {} {}", bound.most, bound.things));
    }
}

} // namespace tvtool::exchange
