// The types of a small model: registered, defined, aliased, and one of them refused.
#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <cstddef>
#include <iostream>

int main() {
    const auto fromModel = static_cast<DataTypeSource>(2);
    TVTypeSys::DataTypeTable table;

    // A fixed-point type is known by its name; the record says the same in numbers.
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
    } catch (const fnd::except::IException& refusal) {
        std::cout << refusal.diagnostic().messageId(0) << ": " << refusal.what() << '\n';
        return 0;
    }
    return 1;
}
