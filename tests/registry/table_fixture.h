// A table and shorthands to fill it.
#pragma once

#include "support/errors.h"

#include <tvtypes/datatypetable.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

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
    int structure(const char* name) {
        return table.registerStructDataType(name, clientSource, nullptr);
    }
    int alias(const char* name, int id) {
        return table.registerAliasDataType(name, clientSource, id, nullptr);
    }

    DataTypeTable table;
};

// A table in which every registration replaces the existing type, except from an unchecked source.
class ReplacingTable : public DataTypeTable {
  public:
    bool shortCircuitRegistration(DataTypeSource source) const override {
        return source == DataTypeSourceUnchecked;
    }
};

} // namespace TVTypeSys
