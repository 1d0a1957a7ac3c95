/// \file
/// Lookup of struct types without calls, since views look up the types on a path at each read.
#pragma once

#include <tvtypes/registry/data_type_table.h>
#include <tvtypes/structs/struct_data_type.h>

#include <cstddef>
#include <typeinfo>

namespace TVTypeSys {

class StructLookup {
  public:
    /// Returns the type `id` if its record is of the class StructDataType itself and a struct, else
    /// null. That class inherits the getters that decide, so their fields are read instead. An
    /// alias, and a record of a client's class, must be asked through the virtual getters.
    static StructDataType* plain(const DataTypeTable& table, int id) {
        const std::size_t position = static_cast<std::size_t>(id) + 1;
        if (id < 0 || position >= table.dataTypes_.size()) {
            return nullptr;
        }
        DataType& type = *table.dataTypes_[position];
        // By address: comparing two classes otherwise compares their names. A class with a second
        // address would be asked through the getters.
        const bool isPlain = type.qualifier_ == DataTypeQualifierStruct && type.id_ == id &&
                             &typeid(type) == &typeid(StructDataType);
        return isPlain ? static_cast<StructDataType*>(&type) : nullptr;
    }
};

} // namespace TVTypeSys
