/// \file
/// Lookup of struct types without calls, since views look up the types on a path at each read.
#pragma once

#include <tvtypes/registry/data_type_table.h>
#include <tvtypes/structs/struct_data_type.h>

#include <cstddef>
#include <typeinfo>

namespace TVTypeSys {

/// Has access to the records of a table and to the fields of a record.
class StructLookup {
  public:
    /// Returns the type `id` if its record is of the class StructDataType itself and a struct, else
    /// null. That class inherits the getters that decide, so their fields are read instead. Aliases
    /// and classes of clients may override the getters, which resolveStruct calls.
    static StructDataType* plain(const DataTypeTable& table, int id) {
        const std::size_t position = static_cast<std::size_t>(id) + 1;
        if (id < 0 || position >= table.dataTypes_.size()) {
            return nullptr;
        }
        DataType& type = *table.dataTypes_[position];
        // By address, since operator== compares names. Where the linker kept two copies of the
        // class's type information, null is returned, and the getters are called.
        const bool isPlain = type.qualifier_ == DataTypeQualifierStruct && type.id_ == id &&
                             &typeid(type) == &typeid(StructDataType);
        return isPlain ? static_cast<StructDataType*>(&type) : nullptr;
    }
};

} // namespace TVTypeSys
