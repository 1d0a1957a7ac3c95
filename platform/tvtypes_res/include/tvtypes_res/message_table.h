/// \file
/// Table of all message ids with the types of their arguments. The classes of messages.h and the
/// check of the catalogue are generated from it; the sentences are in data/messages.json.
#pragma once

// clang-format off
/// Calls ROW(space, name, signature) for every message.
#define TVTYPES_MESSAGE_TABLE(ROW) \
    /* Definition of a data type. Text: the name of the type, then the names of other types. */ \
    ROW(general, InvalidDataType,                            void(Text)) \
    ROW(general, InvalidDataTypeId,                          void(Number)) \
    ROW(general, DataType_SameNameAsExistingType,            void(Text)) \
    ROW(general, DataTypeErrorFromBlock,                     void(Text)) \
    ROW(general, MemoryAllocErr,                             void()) \
    ROW(general, CannotModifyDataTypeSize,                   void(Text, Number)) \
    ROW(general, InvalidDataTypeSize,                        void(Text, Number)) \
    ROW(general, CannotSetGroundRepBeforeSettingSize,        void(Text)) \
    ROW(general, CannotModifyDataTypeGroundRepresentation,   void(Text)) \
    ROW(general, CannotModifyDataTypePropertiesSize,         void(Text, Number, Number)) \
    ROW(general, InvalidDataTypePropertiesSize,              void(Text, Number)) \
    ROW(general, CannotSetPropertiesBeforeSettingSize,       void(Text)) \
    ROW(general, CannotModifyDataTypeProperties,             void(Text)) \
    ROW(general, InconsistentDataTypeConvertBetweenFcn,      void(Text)) \
    ROW(general, InconsistentDataTypeGreaterThanFcn,         void(Text)) \
    ROW(general, InconsistentDataTypeGreaterEqualFcn,        void(Text)) \
    ROW(general, InconsistentDataTypeIsNegativeFcn,          void(Text)) \
    ROW(general, InconsistentDataTypeIsPositiveFcn,          void(Text)) \
    ROW(general, InConsistentTargetToHostFcn,                void()) \
    ROW(general, IllegalDataTypeToBeStorageId,               void(Text, Text)) \
    ROW(general, InconsistentDataTypeStorageId,              void(Text, Text, Text)) \
    /* Aliases. */ \
    ROW(general, UndefinedDataTypeToBeAliasedTo,             void(Text, Number)) \
    ROW(general, InconsistentDataTypeIdAliasedTo,            void(Text, Text, Text)) \
    ROW(general, CannotSetAliasForDefinedType,               void(Text)) \
    ROW(general, DataTypeAliasLoop,                          void(Text, Text)) \
    ROW(general, CannotSetDataTypeSizeOfAlias,               void(Text)) \
    ROW(general, CannotSetDataTypeConvertBetweenOfAlias,     void(Text)) \
    ROW(general, CannotSetDataTypeGreaterThanOfAlias,        void(Text)) \
    ROW(general, CannotSetDataTypeGreaterEqualOfAlias,       void(Text)) \
    ROW(general, CannotSetDataTypeIsNegativeOfAlias,         void(Text)) \
    ROW(general, CannotSetDataTypeIsPositiveOfAlias,         void(Text)) \
    ROW(general, CannotSetDataTypeStorageIdOfAlias,          void(Text)) \
    ROW(general, CannotSetDataTypeGroundOfAlias,             void(Text)) \
    ROW(general, CannotSetDataTypePropertiesOfAlias,         void(Text)) \
    ROW(general, CannotSetDataTypePropertiesSizeOfAlias,     void(Text)) \
    ROW(general, CannotSetDataTypeIsAtomicOfAlias,           void(Text)) \
    ROW(general, CannotSetDataTypeGroundHasNonZeroOfAlias,   void(Text)) \
    /* Operations on values. */ \
    ROW(general, DataTypeConvertBetweenFcnDoesNotExist,      void(Text)) \
    ROW(general, DataTypeConvertBetweenFcnUnknownError,      void(Text)) \
    ROW(general, DataTypeIsPositiveFcnDoesNotExist,          void(Text)) \
    ROW(general, DataTypeIsPositiveFcnUnknownError,          void(Text)) \
    ROW(general, DataTypeIsNegativeFcnDoesNotExist,          void(Text)) \
    ROW(general, DataTypeIsNegativeFcnUnknownError,          void(Text)) \
    ROW(general, DataTypeGreaterThanFcnDoesNotExist,         void(Text)) \
    ROW(general, DataTypeGreaterThanFcnUnknownError,         void(Text)) \
    ROW(general, DataTypeGreaterEqualFcnDoesNotExist,        void(Text)) \
    ROW(general, DataTypeGreaterEqualFcnUnknownError,        void(Text)) \
    /* Functions of the host. Text: the function's name, then the reason. */ \
    ROW(general, HostFunctionDoesNotExist,                   void(Text)) \
    ROW(general, HostFunctionFailed,                         void(Text, Text)) \
    ROW(general, HostFunctionWithoutResult,                  void(Text, Number)) \
    /* Units. Text: expressions, names and symbols; for the database its path and a variable. */ \
    ROW(Unit, ParsingError,                                  void(Text)) \
    ROW(Unit, InvalidUnitExpression,                         void(Text)) \
    ROW(Unit, UnitNotInDatabase,                             void(Text)) \
    ROW(Unit, UnitsNotSeparatedByScalingFactor,              void(Text, Text)) \
    ROW(Unit, LossOfPrecision,                               void(Text)) \
    ROW(Unit, UnitAlreadyInDatabase,                         void(Text, Text)) \
    ROW(Unit, SimilarInstanceThere,                          void(Text, Text)) \
    ROW(Unit, SymbolNotDefined,                              void()) \
    ROW(Unit, NameNotDefined,                                void()) \
    ROW(Unit, UnitDatabaseFileOpenError,                     void(Text)) \
    ROW(Unit, UnitDatabaseFileLoadMissingFieldError,         void(Text, Text)) \
    ROW(Unit, UnitDatabaseFileLoadFieldError,                void(Text, Text)) \
    /* Symbolic dimensions. Text: expressions. Number: a column from 1. */ \
    ROW(Dimensions, InvalidSymbolicDimensionExpr,            void(Text, Number)) \
    ROW(Dimensions, InvalidSymbolicDimensionSpec,            void()) \
    ROW(Dimensions, InconsistentSymbolicDimensionNotEqual,   void(Text, Text, Text)) \
    ROW(Dimensions, InconsistentSymbolicDimensionEqual,      void(Text, Text, Text)) \
    ROW(Dimensions, InconsistentSymbolicDimensionGreaterThan, void(Text, Text, Text))
// clang-format on
