/// \file
/// Lookup of struct types without calls, since views look up the types on a path at each read.
#pragma once

#include <tvtypes/registry/data_type_table.h>
#include <tvtypes/structs/struct_data_type.h>

#include <cstddef>
#include <memory>
#include <span>
#include <typeinfo>
#include <vector>

namespace TVTypeSys {

/// Finds struct types in the records of a table, and has access to the fields of a record. Valid
/// while the table has the same records.
class StructLookup {
  public:
    explicit StructLookup(const DataTypeTable& table) : records_(table.dataTypes_) {}

    /// Returns the type `id` if its record is of the class StructDataType itself and a struct, else
    /// null. That class inherits the getters that decide, so their fields are read instead. Aliases
    /// and classes of clients may override the getters, which resolveStruct calls.
    StructDataType* find(int id) const {
        const std::size_t position = static_cast<std::size_t>(id) + 1;
        if (position >= records_.size()) {
            return nullptr;
        }
        DataType& type = *records_[position];
        return type.qualifier_ == DataTypeQualifierStruct && type.id_ == id && isPlain(type)
                   ? static_cast<StructDataType*>(&type)
                   : nullptr;
    }

    /// Returns the elements of a type.
    static const std::vector<StructElement*>& elements(const StructDataType& type) {
        return isPlain(type) ? type.elements_ : type.getElements();
    }

  private:
    // By address, since operator== compares names. Where the linker kept two copies of the class's
    // type information, the getters are called.
    static bool isPlain(const DataType& type) { return &typeid(type) == &typeid(StructDataType); }

    std::span<const std::unique_ptr<DataType>> records_;
};

} // namespace TVTypeSys
