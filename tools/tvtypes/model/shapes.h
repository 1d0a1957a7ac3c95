/// \file
/// The distinct structs in a hierarchy of names.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "model/name_tree.h"
#include "model/units.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// An element of a struct: a variable or a nested struct, or an array of them.
struct ShapeElement {
    std::string_view name;
    int type = 0; ///< the id in the table, or the index of the nested shape
    bool isStruct = false;
    int unit = inheritedUnit; ///< the id in the unit table
    std::vector<int> dimensions;

    bool operator==(const ShapeElement&) const = default;
};

/// All structs with equal elements in any order. The elements have the order of the first one.
struct Shape {
    std::vector<ShapeElement> elements;
    std::uint32_t first = 0;   ///< the first instance of this shape in the description
    std::size_t variables = 0; ///< number of variables in instances of this shape
};

struct Shapes {
    std::vector<Shape> all;                ///< a nested shape is before those that contain it
    std::vector<std::uint32_t> ofInstance; ///< exchange::noIndex for an instance that is no struct
    std::vector<bool> isArray; ///< by member of the tree: whether its instances are one element
};

/// Finds the shapes of all instances except the model itself. `types` are the type ids of the
/// variables. Elements are the variables with a type in the table and a known size. An instance
/// without an element is no struct.
///
/// The instances of a member become one element, an array, if they differ in nothing but their
/// indices and these fill the array; otherwise each is an element, named with its indices.
Shapes findShapes(const fmi::Description& description, const NameTree& tree,
                  const std::vector<int>& types, const Units& units, findings::Findings& findings);

} // namespace tvtool::model
