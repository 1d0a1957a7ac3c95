/// \file
/// Checked access to struct types and elements, and values computed from one element.
#pragma once

#include "structs/struct_lookup.h"

#include <tvtypes/structs/struct_data_type.h>

namespace TVTypeSys {

/// Returns the struct type at the end of the alias chain of `id`, or null if that is another type.
/// Throws InvalidDataTypeId.
StructDataType* resolveStruct(const DataTypeTable& table, int id);

/// Same, but returns null for -1 and -2, which are no structs in the numberings.
inline StructDataType* findStruct(const DataTypeTable& table, int id) {
    // Id of a type that is not determined yet. Unlike "auto" it has no record.
    constexpr int undeterminedTypeId = -2;
    if (StructDataType* const plain = StructLookup(table).find(id)) {
        return plain;
    }
    return id == AUTO_DATA_TYPE_ID || id == undeterminedTypeId ? nullptr : resolveStruct(table, id);
}

/// Same as findStruct, but throws InvalidDataTypeId where findStruct returns null.
StructDataType& requireStruct(const DataTypeTable& table, int id);

/// Throws InvalidStructIndex.
[[noreturn]] void throwInvalidIndex(const StructDataType& type, int index);

/// Returns an element of a struct. Throws InvalidStructIndex.
inline StructElement& requireElement(const StructDataType& type, int index) {
    const std::vector<StructElement*>& elements = StructLookup::elements(type);
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) {
        throwInvalidIndex(type, index);
    }
    return *elements[static_cast<std::size_t>(index)];
}

/// Returns the size of one value of a type in bytes. Throws InvalidDataTypeId.
int typeSize(const DataTypeTable& table, int id);

/// Returns whether every dimension is 1.
bool isScalar(const StructElement& element);

/// Returns the product of the dimensions; complexWidth doubles it for a complex element.
int width(const StructElement& element);
int complexWidth(const StructElement& element);

/// Truncates to int, in two's complement: sums and products of values that clients set may
/// overflow.
inline int truncateToInt(long long value) { return static_cast<int>(static_cast<unsigned>(value)); }

} // namespace TVTypeSys
