// Message classes with the arguments of their sentences.
#pragma once

#include <tvtypes_res/base_msg_id.h>

#include <cstdint>
#include <string>

#define MESSAGE(space, name, ...)                                                                  \
    namespace TorvaneTypes::space {                                                                \
    class name : public msgcore::BaseMsgID {                                                       \
      public:                                                                                      \
        explicit name(__VA_ARGS__);                                                                \
    };                                                                                             \
    }

using Text = const std::string&;
using Number = std::int64_t;

// clang-format off
MESSAGE(general, InvalidDataType, Text)
MESSAGE(general, InvalidDataTypeId, Number)
MESSAGE(general, DataType_SameNameAsExistingType, Text)
MESSAGE(general, DataTypeErrorFromBlock, Text)
MESSAGE(general, MemoryAllocErr)
MESSAGE(general, CannotModifyDataTypeSize, Text, Number)
MESSAGE(general, InvalidDataTypeSize, Text, Number)
MESSAGE(general, CannotSetGroundRepBeforeSettingSize, Text)
MESSAGE(general, CannotModifyDataTypeGroundRepresentation, Text)
MESSAGE(general, CannotModifyDataTypePropertiesSize, Text, Number, Number)
MESSAGE(general, InvalidDataTypePropertiesSize, Text, Number)
MESSAGE(general, CannotSetPropertiesBeforeSettingSize, Text)
MESSAGE(general, CannotModifyDataTypeProperties, Text)
MESSAGE(general, InconsistentDataTypeConvertBetweenFcn, Text)
MESSAGE(general, InconsistentDataTypeGreaterThanFcn, Text)
MESSAGE(general, InconsistentDataTypeGreaterEqualFcn, Text)
MESSAGE(general, InconsistentDataTypeIsNegativeFcn, Text)
MESSAGE(general, InconsistentDataTypeIsPositiveFcn, Text)
MESSAGE(general, InConsistentTargetToHostFcn)
MESSAGE(general, IllegalDataTypeToBeStorageId, Text, Text)
MESSAGE(general, InconsistentDataTypeStorageId, Text, Text, Text)
MESSAGE(general, UndefinedDataTypeToBeAliasedTo, Text, Number)
MESSAGE(general, InconsistentDataTypeIdAliasedTo, Text, Text, Text)
MESSAGE(general, CannotSetAliasForDefinedType, Text)
MESSAGE(general, DataTypeAliasLoop, Text, Text)
MESSAGE(general, CannotSetDataTypeSizeOfAlias, Text)
MESSAGE(general, CannotSetDataTypeConvertBetweenOfAlias, Text)
MESSAGE(general, CannotSetDataTypeGreaterThanOfAlias, Text)
MESSAGE(general, CannotSetDataTypeGreaterEqualOfAlias, Text)
MESSAGE(general, CannotSetDataTypeIsNegativeOfAlias, Text)
MESSAGE(general, CannotSetDataTypeIsPositiveOfAlias, Text)
MESSAGE(general, CannotSetDataTypeStorageIdOfAlias, Text)
MESSAGE(general, CannotSetDataTypeGroundOfAlias, Text)
MESSAGE(general, CannotSetDataTypePropertiesOfAlias, Text)
MESSAGE(general, CannotSetDataTypePropertiesSizeOfAlias, Text)
MESSAGE(general, CannotSetDataTypeIsAtomicOfAlias, Text)
MESSAGE(general, CannotSetDataTypeGroundHasNonZeroOfAlias, Text)
MESSAGE(general, DataTypeConvertBetweenFcnDoesNotExist, Text)
MESSAGE(general, DataTypeConvertBetweenFcnUnknownError, Text)
MESSAGE(general, DataTypeIsPositiveFcnDoesNotExist, Text)
MESSAGE(general, DataTypeIsPositiveFcnUnknownError, Text)
MESSAGE(general, DataTypeIsNegativeFcnDoesNotExist, Text)
MESSAGE(general, DataTypeIsNegativeFcnUnknownError, Text)
MESSAGE(general, DataTypeGreaterThanFcnDoesNotExist, Text)
MESSAGE(general, DataTypeGreaterThanFcnUnknownError, Text)
MESSAGE(general, DataTypeGreaterEqualFcnDoesNotExist, Text)
MESSAGE(general, DataTypeGreaterEqualFcnUnknownError, Text)
MESSAGE(Unit, ParsingError, Text)
MESSAGE(Unit, InvalidUnitExpression, Text)
MESSAGE(Unit, UnitNotInDatabase, Text)
MESSAGE(Unit, UnitsNotSeparatedByScalingFactor, Text, Text)
MESSAGE(Unit, LossOfPrecision, Text)
MESSAGE(Unit, UnitAlreadyInDatabase, Text, Text)
MESSAGE(Unit, SimilarInstanceThere, Text, Text)
MESSAGE(Unit, SymbolNotDefined)
MESSAGE(Unit, NameNotDefined)
MESSAGE(Unit, UnitDatabaseFileOpenError, Text)
MESSAGE(Unit, UnitDatabaseFileLoadMissingFieldError, Text, Text)
MESSAGE(Unit, UnitDatabaseFileLoadFieldError, Text, Text)
MESSAGE(Dimensions, InvalidSymbolicDimensionSpec)
MESSAGE(Dimensions, InconsistentSymbolicDimensionNotEqual, Text, Text, Text)
MESSAGE(Dimensions, InconsistentSymbolicDimensionEqual, Text, Text, Text)
MESSAGE(Dimensions, InconsistentSymbolicDimensionGreaterThan, Text, Text, Text)
// clang-format on

#undef MESSAGE
