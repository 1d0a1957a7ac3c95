/// \file
/// The struct types that the names of a model's variables express.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "model/name_tree.h"
#include "model/shapes.h"
#include "model/struct_layout.h"
#include "model/types.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// Registers and lays out a struct type for each shape. Its name comes from the path of its first
/// instance, which is its original name: wheel_hub from wheel[1].hub. A struct that cannot be laid
/// out is a finding, and neither a type nor an element.
class Structs {
  public:
    struct Type {
        int id = 0;
        int alignment = 0;
        std::size_t variables = 0; ///< number of variables in structs of this type
        bool isOutermost = true;   ///< whether no other struct contains one
        std::uint32_t first = 0;   ///< the first struct of this type
    };

    /// An element of a struct in the description.
    struct Element {
        std::string_view name;      ///< with its indices, but an array of several without any
        std::uint32_t member = 0;   ///< in names()
        std::uint32_t instance = 0; ///< the first one of an array
    };

    /// Without structured names there are no structs.
    Structs(const fmi::Description& description, const Units& units, Types& types,
            findings::Findings& findings);

    /// Returns the types in the order of their ids: a nested type is before those that contain it.
    const std::vector<Type>& all() const { return all_; }

    /// Returns the type with an id; null if it is no struct type.
    const Type* find(int id) const;
    /// Returns the type of the struct with a path in the description; null if there is none.
    const Type* find(std::string_view name) const { return typeOf(findInstance(tree_, name)); }
    /// Returns the type of a struct in the description; null for other instances and noIndex.
    const Type* typeOf(std::uint32_t instance) const;

    /// Returns the hierarchy of names. Its instances are what the following functions refer to.
    const NameTree& names() const { return tree_; }
    /// Returns the elements of a struct in the order of its type.
    std::vector<Element> elementsOf(std::uint32_t instance, const StructDataType& type) const;
    /// Returns the path of an instance, without the indices of arrays.
    std::string path(std::uint32_t instance) const;
    /// Returns the instances of each type in all(), for path(). Of the instances in an array, which
    /// have the same path, only the first one is returned.
    std::vector<std::vector<std::uint32_t>> instances() const;

  private:
    void add(const Shape& shape, const fmi::Description& description, Types& types,
             findings::Findings& findings, StructLayout& layout);
    void setElements(StructDataType& type, const std::vector<ShapeElement>& elements);
    Type& nestedType(const ShapeElement& element) {
        return all_[typeOfShape_[static_cast<std::size_t>(element.type)]];
    }

    NameTree tree_;
    Shapes shapes_;
    std::vector<std::uint32_t> typeOfShape_; ///< in all_, or noIndex
    std::vector<Type> all_;
};

} // namespace tvtool::model
