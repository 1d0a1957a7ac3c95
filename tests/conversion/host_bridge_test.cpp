#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <ox/array.h>
#include <tv_services/feval.h>

#include <cstring>

TEST(HostBridge, ClassesMapBothWays) {
    for (int id = -10; id <= 11; ++id) {
        const bool isNumber = id >= 0 && id < 8;
        const int expected = isNumber ? id + 6 : id == 8 ? 3 : id == 10 ? oxInt32Class : oxNoClass;
        EXPECT_EQ(expected, utGetoxClassIdFromDTypeId(id, false)) << id;
        EXPECT_EQ(id == 8 ? 9 : expected, utGetoxClassIdFromDTypeId(id, true)) << id;
    }
    for (int classId = -1; classId < 15; ++classId) {
        EXPECT_EQ(classId == 3                  ? 8
                  : classId > 5 && classId < 14 ? classId - 6
                                                : -10,
                  utGetDTypeIdFromOxClassId(static_cast<oxClassID>(classId)));
    }
}

TEST(HostBridge, AllocatesAllParts) {
    const TVTypeSys::DataTypeTable table;
    void* memory = oxDTypeCalloc(&table, 3, 4, true);
    EXPECT_EQ(0, std::memcmp(memory, "\0\0\0\0\0\0\0\0\0\0\0", 12));
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
