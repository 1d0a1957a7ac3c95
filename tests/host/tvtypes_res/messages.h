// Message classes with the arguments of their sentences.
#pragma once

#include <tvtypes_res/base_msg_id.h>

#include <cstdint>
#include <string>

// Messages with the same arguments share a class: the library only constructs them.
template <class... Arguments>
class Message : public msgcore::BaseMsgID {
  public:
    explicit Message(Arguments... arguments);
};

using Text = const std::string&;
using Number = std::int64_t;

namespace TorvaneTypes::general {

typedef Message<Text> InvalidDataType, DataType_SameNameAsExistingType, DataTypeErrorFromBlock,
    CannotSetGroundRepBeforeSettingSize, CannotModifyDataTypeGroundRepresentation,
    CannotSetPropertiesBeforeSettingSize, CannotModifyDataTypeProperties,
    InconsistentDataTypeConvertBetweenFcn, InconsistentDataTypeGreaterThanFcn,
    InconsistentDataTypeGreaterEqualFcn, InconsistentDataTypeIsNegativeFcn,
    InconsistentDataTypeIsPositiveFcn, CannotSetAliasForDefinedType, CannotSetDataTypeSizeOfAlias,
    CannotSetDataTypeConvertBetweenOfAlias, CannotSetDataTypeGreaterThanOfAlias,
    CannotSetDataTypeGreaterEqualOfAlias, CannotSetDataTypeIsNegativeOfAlias,
    CannotSetDataTypeIsPositiveOfAlias, CannotSetDataTypeStorageIdOfAlias,
    CannotSetDataTypeGroundOfAlias, CannotSetDataTypePropertiesOfAlias,
    CannotSetDataTypePropertiesSizeOfAlias, CannotSetDataTypeIsAtomicOfAlias,
    CannotSetDataTypeGroundHasNonZeroOfAlias, DataTypeConvertBetweenFcnDoesNotExist,
    DataTypeConvertBetweenFcnUnknownError, DataTypeIsPositiveFcnDoesNotExist,
    DataTypeIsPositiveFcnUnknownError, DataTypeIsNegativeFcnDoesNotExist,
    DataTypeIsNegativeFcnUnknownError, DataTypeGreaterThanFcnDoesNotExist,
    DataTypeGreaterThanFcnUnknownError, DataTypeGreaterEqualFcnDoesNotExist,
    DataTypeGreaterEqualFcnUnknownError;
typedef Message<Number> InvalidDataTypeId;
typedef Message<> MemoryAllocErr, InConsistentTargetToHostFcn;
typedef Message<Text, Number> CannotModifyDataTypeSize, InvalidDataTypeSize,
    InvalidDataTypePropertiesSize, UndefinedDataTypeToBeAliasedTo;
typedef Message<Text, Number, Number> CannotModifyDataTypePropertiesSize;
typedef Message<Text, Text> IllegalDataTypeToBeStorageId, DataTypeAliasLoop;
typedef Message<Text, Text, Text> InconsistentDataTypeStorageId, InconsistentDataTypeIdAliasedTo;

} // namespace TorvaneTypes::general

namespace TorvaneTypes::Unit {

typedef Message<Text> ParsingError, InvalidUnitExpression, UnitNotInDatabase, LossOfPrecision,
    UnitDatabaseFileOpenError;
typedef Message<Text, Text> UnitsNotSeparatedByScalingFactor, UnitAlreadyInDatabase,
    SimilarInstanceThere, UnitDatabaseFileLoadMissingFieldError, UnitDatabaseFileLoadFieldError;
typedef Message<> SymbolNotDefined, NameNotDefined;

} // namespace TorvaneTypes::Unit

namespace TorvaneTypes::Dimensions {

typedef Message<> InvalidSymbolicDimensionSpec;
typedef Message<Text, Text, Text> InconsistentSymbolicDimensionNotEqual,
    InconsistentSymbolicDimensionEqual, InconsistentSymbolicDimensionGreaterThan;

} // namespace TorvaneTypes::Dimensions
