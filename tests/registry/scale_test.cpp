// Operations that must not be quadratic in the number of types: milliseconds, or else minutes.
#include "table_fixture.h"

#include <string>

using namespace TVTypeSys;

namespace {

constexpr int count = 100'000;

std::string name(int i) { return "type_" + std::to_string(i); }

} // namespace

TEST(Scale, ReplacesTypesAndTurnsThemIntoAliases) {
    ReplacingTable table;
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(14 + i, table.registerDataType(name(i).c_str(), clientSource, nullptr));
        }
    }
    for (int i = 0; i < count; ++i) {
        table.setDataTypeIdAliasedTo(14 + i, i % 9);
    }
    EXPECT_EQ(4, table.getDataTypeAliasedThruTo(14 + 4)->getId());
    EXPECT_EQ(15 + count, table.getNumDataTypes());
}

TEST(Scale, LongAliasChains) {
    DataTypeTable table;
    int id = 0;
    for (int i = 0; i < count; ++i) {
        id = table.registerAliasDataType(name(i).c_str(), clientSource, id, nullptr);
    }
    EXPECT_EQ(8, table.getDataTypeAt(static_cast<std::size_t>(id + 1))->getSize());
    EXPECT_EQ(0, table.getDataTypeIdCommonAncestor(id, 0));
    EXPECT_EQ(id - 2, table.getDataTypeIdCommonAncestor(id, id - 2));
}
