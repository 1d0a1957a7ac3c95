/// \file
/// The struct types that the names of a model's variables tell of.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
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

/// Makes a struct type for each shape there is and lays it out. A type is named by the place where
/// its shape occurs first, as wheel_hub by wheel[1].hub, and has that place as its original name.
/// What cannot be laid out is a problem, and no type and no element of another.
class Structs {
  public:
    struct Type {
        int id = 0;
        int alignment = 0;
        std::size_t variables = 0; ///< how many lie in structs of this type
        bool isOutermost = true;   ///< whether no other struct holds one
    };

    /// Without structured names there are none.
    Structs(const fmi::Description& description, const VariableIds& variableIds, Types& types,
            fmi::Remarks& remarks);

    /// In the order of their ids: what a struct holds stands ahead of it.
    const std::vector<Type>& all() const { return all_; }

    const Type* withId(int id) const;
    /// The type of the struct to which a name in the description leads; null if there is none.
    const Type* at(std::string_view name) const;

  private:
    void make(const Shape& shape, const fmi::Description& description, Types& types,
              fmi::Remarks& remarks, StructLayout& layout);
    void fill(StructDataType& type, const std::vector<ShapeElement>& elements);
    std::string pathOf(std::uint32_t instance) const;

    NameTree tree_;
    Shapes shapes_;
    std::vector<std::uint32_t> typeOfShape_; ///< in all_, or noIndex
    std::vector<Type> all_;
};

} // namespace tvtool::model
