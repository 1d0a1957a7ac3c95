// Lookups by name against a linear scan of the records.
#include "support/random_seed.h"
#include "table_fixture.h"

#include <random>

using namespace TVTypeSys;

namespace {

int scan(DataTypeTable& table, const std::string& name) {
    for (int i = -1; i + 1 < table.getNumDataTypes(); ++i) {
        const char* const found = at(table, i).getName();
        if ((found == nullptr ? "" : found) == name) {
            return at(table, i).getId();
        }
    }
    return INVALID_DATA_TYPE_ID;
}

// A record that overrides getName, with a name that may change; "hidden" is the one it is
// constructed with, from the same buffer.
class Renamed : public DataType {
  public:
    Renamed(int id, std::string shown)
        : DataType(id, "hidden", clientSource), shown_(std::move(shown)) {}
    const char* getName() const override {
        return shown_.empty() ? nullptr : shown_ == "hidden" ? DataType::getName() : shown_.c_str();
    }
    void rename(std::string shown) { shown_ = std::move(shown); }

  private:
    std::string shown_;
};

// Whether another type is an alias of this one.
bool isAliased(DataTypeTable& table, int id) {
    bool found = false;
    for (int other = -1; other + 1 < table.getNumDataTypes(); ++other) {
        const DataType& type = at(table, other);
        found |= other != id && (type.getIdAliasedTo() == id || type.getIdAliasedThruTo() == id);
    }
    return found;
}

} // namespace

TEST(NameLookup, MatchesLinearScan) {
    std::mt19937 random(randomSeed(3));
    const auto pick = [&random](int count) {
        return std::uniform_int_distribution<int>(0, count - 1)(random);
    };
    const std::string names[] = {"A", "B", "C", "D", "E", "F", "", "double", "hidden"};
    for (int script = 0; script < 300; ++script) {
        ReplacingTable table;
        // Until a record is removed from the middle: ids and positions differ behind it.
        bool isNumbered = true;
        for (int step = 0; step < 40 && isNumbered; ++step) {
            const std::string& name = names[pick(std::size(names))];
            const char* text = name.c_str();
            const int last = table.getNumDataTypes() - 2;
            // The built-in types are not replaced.
            const bool replaces = name != "double" && pick(3) == 0;
            const auto source = replaces ? clientSource : DataTypeSourceUnchecked;
            try {
                switch (pick(8)) {
                case 0:
                    table.registerDataType(text, source, nullptr);
                    break;
                case 1:
                    table.registerAliasDataType(text, source, pick(last + 2) - 1, nullptr);
                    break;
                case 2:
                    table.addDataType(new DataType(last + 1, name, clientSource));
                    break;
                case 3:
                    table.addDataType(new Renamed(last + 1, name));
                    break;
                case 4:
                    for (int id = 14; id <= last; ++id) {
                        auto* type = dynamic_cast<Renamed*>(&at(table, id));
                        if (type != nullptr && pick(3) == 0) {
                            type->rename(name);
                        }
                    }
                    break;
                case 5:
                    if (const int id = last - pick(2); id > 13 && !isAliased(table, id)) {
                        table.removeDataType(&at(table, id));
                        isNumbered = id == last;
                    }
                    break;
                case 6:
                    if (last > 13) {
                        table.setDataTypeIdAliasedTo(14 + pick(last - 13), pick(last + 2) - 1);
                    }
                    break;
                default:
                    if (pick(10) == 0) {
                        table.resetToBuiltin();
                    }
                }
            } catch (const std::exception&) {
                // An error must leave the table unchanged.
            }
            for (const std::string& wanted : names) {
                ASSERT_EQ(scan(table, wanted), table.getDataTypeId(wanted.c_str()))
                    << "script " << script << ", step " << step << ", name '" << wanted << "'";
            }
        }
    }
}

TEST(NameLookup, NullIsEmptyName) {
    DataTypeTable table;
    EXPECT_EQ(-10, table.getDataTypeId(nullptr));
    table.addDataType(new Renamed(14, ""));
    EXPECT_EQ(14, table.getDataTypeId(nullptr));
}
