// Registers, defines and aliases a fixed-point type, and catches an error.
#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <cstddef>
#include <iostream>

int main() {
    const auto fromModel = static_cast<DataTypeSource>(2);
    TVTypeSys::DataTypeTable table;

    // The name determines a fixed-point type; the properties are the same in numbers.
    const fxpDataTypeProp angle{FXP_DT_FIXPT, 1, 16, -12, 1.0, 0.0, 0};
    const int angleId = table.registerDataType(fxpDataTypeToIdentifierString(&angle).c_str(),
                                               fromModel, "vehicle/steering");
    TVTypeSys::DataType& type = *table.getDataTypeAt(static_cast<std::size_t>(angleId) + 1);
    type.setSize(2);
    type.setPropertiesSize(sizeof angle);
    type.setProperties(&angle);

    const int aliasId =
        table.registerAliasDataType("SteeringAngle", fromModel, angleId, "vehicle/steering");
    std::cout << *table.getDataTypeAt(static_cast<std::size_t>(aliasId) + 1)
              << fxpDataTypeToConstructorString(angle, FxpDT::PreferFixdt,
                                                FxpDT::PreferFractionLength)
              << '\n';

    try {
        type.setSize(4);
    } catch (const fnd::except::IException& error) {
        std::cout << error.diagnostic().messageId(0) << ": " << error.what() << '\n';
        return 0;
    }
    return 1;
}
