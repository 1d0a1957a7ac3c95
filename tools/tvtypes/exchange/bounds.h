/// \file
/// Limits of the contents of descriptions, which bound the time and the memory of reading it. They
/// are far above those of real models and systems.
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

inline constexpr Bound systemLevelBound{1'000, "levels of systems"};
inline constexpr Bound systemElementBound{200'000, "systems and components"};
inline constexpr Bound connectorBound{1'000'000, "connectors"};
inline constexpr Bound connectionBound{500'000, "connections"};
inline constexpr Bound parameterBound{500'000, "parameters"};
inline constexpr Bound mappingBound{500'000, "entries of mappings"};
/// Of all references to dictionaries in files of their own, each of which has a copy.
inline constexpr Bound dictionaryBound{1'000'000, "entries of dictionaries"};
inline constexpr Bound packageLevelBound{100, "levels of systems in files of their own"};
/// Different files that one system refers to.
inline constexpr Bound fileBound{10'000, "files"};

/// Throws files::ReadError if a count exceeds its bound.
inline void checkBound(std::size_t count, const Bound& bound) {
    if (count > bound.most) {
        throw files::ReadError(fmt::format("there are more than {} {}", bound.most, bound.things));
    }
}

} // namespace tvtool::exchange
