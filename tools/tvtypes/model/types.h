/// \file
/// The types of one model in a data type table.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "model/names.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::model {

/// Brings a model's types into a table of its own. A refusal of the table becomes a problem of the
/// element that asked for it, and the type is then INVALID_DATA_TYPE_ID.
class Types {
  public:
    Types(const fmi::Description& description, fmi::Remarks& remarks);

    /// The type of a variable: its declared type, else its base type. INVALID_DATA_TYPE_ID if it
    /// lies outside the table or has none.
    int idOf(const fmi::Variable& variable);

    /// A new struct type with nothing in it, its name as near to the given one as the table takes.
    StructDataType& addStruct(std::string_view name);

    /// The name that the description gives to a type, where the table has another; else empty.
    const std::string& originalNameOf(int id) const;
    /// Remembers the name that the description gives to a type, if the table has another.
    void setOriginalName(int id, std::string_view name);

    const TVTypeSys::DataTypeTable& table() const { return table_; }
    TVTypeSys::DataTypeTable& table() { return table_; }

  private:
    int define(const fmi::TypeDefinition& type);
    int registerEnumeration(const std::string& name);
    int idOfBase(fmi::BaseType base, const fmi::Place& place);
    int registerFixedPoint(fmi::BaseType base);

    fmi::Remarks& remarks_;
    TVTypeSys::DataTypeTable table_;
    Names names_;
    std::vector<int> definitionIds_;                     ///< by index of the type definition
    std::unordered_map<int, std::string> originalNames_; ///< by id
};

/// Where the type with this id stands in the table.
std::size_t positionOf(int id);

/// Whether values of a base type have no type in the table.
bool isOutside(fmi::BaseType base);

} // namespace tvtool::model
