#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <ox/array.h>
#include <tv_services/feval.h>

#include <algorithm>

TEST(HostBridge, ClassesMapBothWays) {
    for (int id = 0; id <= 8; ++id) {
        EXPECT_EQ(id == 8 ? 3 : id + 6, utGetoxClassIdFromDTypeId(id, false));
        EXPECT_EQ(id == 8 ? 9 : id + 6, utGetoxClassIdFromDTypeId(id, true));
        EXPECT_EQ(id, utGetDTypeIdFromOxClassId(utGetoxClassIdFromDTypeId(id, false)));
    }
    EXPECT_EQ(oxInt32Class, utGetoxClassIdFromDTypeId(10, false)) << "\"integer\"";
    for (const int id : {-10, -1, 9, 11}) {
        EXPECT_EQ(oxNoClass, utGetoxClassIdFromDTypeId(id, false));
    }
    for (const int classId : {-1, 0, 2, 4, 5, 14}) {
        EXPECT_EQ(-10, utGetDTypeIdFromOxClassId(static_cast<oxClassID>(classId)));
    }
}

TEST(HostBridge, AllocatesAllParts) {
    const TVTypeSys::DataTypeTable table;
    void* memory = oxDTypeCalloc(&table, 3, 4, true);
    const auto* bytes = static_cast<const unsigned char*>(memory);
    EXPECT_EQ(12, std::count(bytes, bytes + 12, 0));
    oxFreeEx(memory);
    EXPECT_EQ(nullptr, oxDTypeCalloc(&table, 0, 4, true));
    EXPECT_EQ(nullptr, oxDTypeCalloc(&table, 3, 9, false)) << "\"fcn_call\" has no values";
    EXPECT_ERROR("MemoryAllocErr()", oxDTypeCalloc(&table, 1 << 30, 2, true));
}

TEST(HostBridge, EnumerationObjectsComeFromTheirClass) {
    tvsvRegisterHostFunction("Colour", [](int, oxArray_tag** outputs, int, oxArray_tag** inputs) {
        outputs[0] = oxGetScalar(inputs[0]) == 1.0 ? oxCreateString("Red") : nullptr;
        return static_cast<tvsvDiagnosticImpl*>(nullptr);
    });
    oxArray_tag* value = oxCreateDoubleScalar(1);
    oxArray_tag* object = nullptr;
    EXPECT_EQ(nullptr, tvGetEnumObjectFromIntValue(value, &object, "Colour"));
    EXPECT_EQ("Red", oxcore::get_string(object));
    EXPECT_NO_ERROR(TVTypeConv::tvConvertMatrixToEnumObjects(value, "Colour"));
    EXPECT_EQ("Red", oxcore::get_string(value)) << "replaced by the object";

    EXPECT_ERROR("HostFunctionWithoutResult(Colour, 1)",
                 TVTypeConv::tvConvertMatrixToEnumObjects(value, "Colour"));
    EXPECT_EQ("Red", oxcore::get_string(value)) << "unchanged";
    oxDestroyArray(value);
    oxDestroyArray(object);
    tvsvRegisterHostFunction("Colour", nullptr);
}
