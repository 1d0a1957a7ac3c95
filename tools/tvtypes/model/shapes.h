/// \file
/// Which structs there are in a hierarchy of names.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "model/name_tree.h"
#include "model/units.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// An element of a struct: a variable or an array of them, or a nested struct or an array of those.
struct ShapeElement {
    std::string_view name;
    int type = 0; ///< the id in the table, or the index of the nested shape
    bool isStruct = false;
    int unit = inheritedUnit; ///< the id in the unit table
    std::vector<int> dimensions;

    bool operator==(const ShapeElement&) const = default;
};

/// What all structs with equal elements in the same order have in common.
struct Shape {
    std::vector<ShapeElement> elements;
    std::uint32_t first = 0;   ///< the first instance of this shape in the tree
    std::size_t variables = 0; ///< how many lie in instances of this shape
};

struct Shapes {
    std::vector<Shape> all;                ///< a nested shape stands ahead of what holds it
    std::vector<std::uint32_t> ofInstance; ///< fmi::noIndex for what is no struct
    std::vector<bool> isArray; ///< by member of the tree: whether it is one element, an array
};

/// What each variable is, by its index in the description.
struct VariableIds {
    const std::vector<int>& types;
    const std::vector<int>& units;
};

/// Finds the shapes of all instances but the model itself. Variables are elements if they have a
/// type in the table and a size that is known; what holds no such variable is no struct.
///
/// Instances of a member become one element, an array, if their indices fill a box and they are
/// alike; otherwise each is an element of its own, named with its indices.
Shapes findShapes(const fmi::Description& description, const NameTree& tree,
                  const VariableIds& variableIds, fmi::Remarks& remarks);

} // namespace tvtool::model
