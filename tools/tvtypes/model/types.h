/// \file
/// The types of one model in a data type table.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "model/base_types.h"
#include "model/names.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::model {

/// Registers a model's types in a table. An error of the table becomes a problem of the element
/// with the type, whose id is then INVALID_DATA_TYPE_ID.
class Types {
  public:
    Types(const fmi::Description& description, findings::Findings& findings);

    /// Returns the type id of each variable: of its declared type, else of its base type.
    /// INVALID_DATA_TYPE_ID if the table cannot represent it or the variable has none.
    const std::vector<int>& variableIds() const { return variableIds_; }

    /// Registers an empty struct type with this name, or a similar one that the table takes.
    StructDataType& addStruct(std::string_view name);

    /// Returns the name of a type in the description if it differs from that in the table, else
    /// empty.
    std::string originalName(int id) const;
    void setOriginalName(int id, std::string_view name);

    const TVTypeSys::DataTypeTable& table() const { return table_; }
    TVTypeSys::DataTypeTable& table() { return table_; }

  private:
    int define(const fmi::TypeDefinition& type);
    int baseTypeId(exchange::BaseType base, const exchange::Place& place);

    findings::Findings& findings_;
    TVTypeSys::DataTypeTable table_;
    Names names_;
    std::vector<int> variableIds_;
    std::unordered_map<int, std::string> originalNames_; ///< by id
};

} // namespace tvtool::model
