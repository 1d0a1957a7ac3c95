// Registers a struct type with a layout made by hand, and prints its depth-first nodes.
#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

const auto fromModel = static_cast<DataTypeSource>(2);

StructDataType& addStruct(TVTypeSys::DataTypeTable& table, const char* name, int elements) {
    const int id = table.registerStructDataType(name, fromModel, nullptr);
    auto& type = dynamic_cast<StructDataType&>(*table.getDataTypeAliasedThruTo(id));
    type.setNumElements(elements);
    return type;
}

void setElement(StructElement& element, const char* name, int typeId, int offset) {
    element.setName(name);
    element.setDataTypeId(typeId);
    element.setOffset(offset);
}

void setCounts(StructDataType& type, int depthFirst, int flat, int raw) {
    type.setNumDFSElements(depthFirst);
    type.setNumFlatElements(flat);
    type.setNumRawElements(raw);
}

} // namespace

int main() {
    TVTypeSys::DataTypeTable table;
    const int doubleId = table.getDataTypeId("double");

    StructDataType& wheel = addStruct(table, "Wheel", 2);
    setElement(*wheel.getElements()[0], "speed", doubleId, 0);
    setElement(*wheel.getElements()[1], "torque", doubleId, 8);
    wheel.setSize(16);
    setCounts(wheel, 3, 2, 2);

    StructDataType& axle = addStruct(table, "Axle", 2);
    setElement(*axle.getElements()[0], "load", doubleId, 0);
    StructElement& wheels = *axle.getElements()[1];
    setElement(wheels, "wheel", wheel.getId(), 8);
    wheels.setNumDimensions(1);
    wheels.setDimensions(static_cast<int*>(utCalloc(1, sizeof(int))));
    *wheels.dimensions = 2;
    axle.setSize(40);
    setCounts(axle, 1 + 1 + (1 + 2 * 3), 1 + 2 * 2, 1 + 2 * 2);

    TVTypeSys::DFSElementAccess nodes(&table, axle.getId());
    for (int i = 1; i < nodes.getNumElements(); ++i) {
        std::vector<std::pair<std::string, int>> path;
        nodes.getFullPath(i, false, path);
        std::cout << i << " at byte " << nodes.getOffset(i) << ": axle";
        for (const auto& [name, index] : path) {
            std::cout << '.' << name << (index < 0 ? "" : '[' + std::to_string(index) + ']');
        }
        std::cout << '\n';
    }
}
