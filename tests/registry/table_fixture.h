// A table and short ways to fill it.
#pragma once

#include "support/refusal.h"

#include <tvtypes/datatypetable.h>

namespace TVTypeSys {

constexpr auto clientSource = static_cast<DataTypeSource>(2);
constexpr auto otherSource = static_cast<DataTypeSource>(3);

inline DataType& at(DataTypeTable& table, int id) {
    return *table.getDataTypeAt(static_cast<std::size_t>(id) + 1);
}

class TableTest : public testing::Test {
  protected:
    DataType& at(int id) { return TVTypeSys::at(table, id); }
    int plain(const char* name) { return table.registerDataType(name, clientSource, nullptr); }
    int alias(const char* name, int id) {
        return table.registerAliasDataType(name, clientSource, id, nullptr);
    }

    DataTypeTable table;
};

// A table that registers known names anew for all sources but 4, which is unchecked.
class ReplacingTable : public DataTypeTable {
  public:
    bool shortCircuitRegistration(DataTypeSource source) const override {
        return source == DataTypeSourceUnchecked;
    }
};

} // namespace TVTypeSys
