/// \file
/// What every walk over a struct asks of its elements.
#pragma once

#include <tvtypes/structdatatype.h>

namespace TVTypeSys {

class DataTypeTable;

/// The struct type that an id or an alias stands for; null if it stands for another type or is one
/// of the two ids below 0 that stand for no type of their own. Refused with InvalidDataTypeId.
StructDataType* structAt(const DataTypeTable& table, int id);

/// The same where nothing but a struct will do: refused with InvalidDataTypeId.
StructDataType& structOf(const DataTypeTable& table, int id);

/// Refused with InvalidStructIndex.
StructElement& elementAt(const StructDataType& type, int index);

/// The bytes of a value of the type. Refused with InvalidDataTypeId.
int sizeOfType(const DataTypeTable& table, int id);

/// Whether every dimension is 1.
bool isScalar(const StructElement& element);

/// The product of the dimensions, and twice that of a complex element.
int widthOf(const StructElement& element);
int complexWidthOf(const StructElement& element);

[[noreturn]] void refuseIndex(const StructDataType& type, int index);

/// Sums and products of what clients set: they wrap.
inline int wrapped(long long value) { return static_cast<int>(static_cast<unsigned>(value)); }

} // namespace TVTypeSys
