/// \file
/// Records of "auto", of the built-in and of the predefined types.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/data_type.h>

#include <string>

/// \addtogroup registry
/// @{

namespace TVTypeSys {

/// Record of a built-in or predefined type.
class TVTYPES_API BuiltInDataType : public DataType {
  public:
    /// Constructs a type without definition, with the qualifier DataTypeQualifierBuiltIn.
    BuiltInDataType(int id, const std::string& name, DataTypeSource source);
    ~BuiltInDataType() override;
};

/// Record of the type "auto", complete when constructed.
class TVTYPES_API AutoDataType : public BuiltInDataType {
  public:
    /// Constructs the type with the size and the functions of `double`.
    AutoDataType();
    ~AutoDataType() override;

    /// \name Ignored setters
    /// @{

    /// Do nothing.
    void setSize(int newSize) override;
    void setConvertBetweenFcn(ConvertBetweenFcn function) override;
    void setGreaterThanFcn(GreaterThanFcn function) override;
    void setGreaterEqualFcn(GreaterEqualFcn function) override;
    void setIsNegativeFcn(IsNegativeFcn function) override;
    void setIsPositiveFcn(IsPositiveFcn function) override;
    void setStorageId(int storageId) override;
    void setGround(const void* value) override;
    void setDefaultGround(bool isDefault) override;
    void setProperties(const void* value) override;
    void setPropertiesSize(int newSize) override;
    void setCGType(CG::Type* type) override;
    /// @}
};

/// \name Process-wide copies of the definitions of built-in types
/// @{

/// Filled by DataTypeTable::initializeBuiltInDataTypes: "auto" and the built-in types by id + 1,
/// and the predefined types by id - 9. All but the first keep an empty name and the id -10. For
/// reading only; the library does not read them.
extern TVTYPES_API BuiltInDataType BuiltInDataTypes[10];
extern TVTYPES_API BuiltInDataType PreDefinedDataTypes[5];
/// @}

} // namespace TVTypeSys

/// @}
