#include "support/failing_allocations.h"
#include "table_fixture.h"

#include <functional>
#include <memory>
#include <sstream>

using namespace TVTypeSys;

namespace {

class ClientType : public DataType {
  public:
    using DataType::DataType;
};

std::string printed(const DataTypeTable& table) {
    std::ostringstream os;
    os << table;
    for (int id = 14; id < table.getNumDataTypes() - 1; ++id) {
        const DataType& type = *table.getDataTypeAt(static_cast<std::size_t>(id) + 1);
        os << table.getDataTypeId(type.getName()) << ' ' << type.getIdAliasedTo() << ' '
           << type.getIdAliasedThruTo() << ' ' << type.getAliasedToLocked() << ' '
           << type.getPropertiesSize() << ' ' << (type.getProperties() != nullptr) << '\n';
    }
    return os.str();
}

int lastId(const DataTypeTable& table) { return table.getNumDataTypes() - 2; }

// P, an alias of it, a struct, a type of a client's class, and other types.
std::unique_ptr<ReplacingTable> makeTable(int others) {
    auto table = std::make_unique<ReplacingTable>();
    table->registerDataType("P", clientSource, nullptr);
    table->registerAliasDataType("AliasOfP", clientSource, 14, nullptr);
    table->registerStructDataType("Struct", clientSource, nullptr);
    table->addDataType(new ClientType(17, "Client", clientSource));
    for (int i = 0; i < others; ++i) {
        table->registerDataType(table->generateAnonymousTypeName(), clientSource, nullptr);
    }
    at(*table, 20).setPropertiesSize(4);
    return table;
}

} // namespace

TEST(FailedAllocations, LeaveTableUnchanged) {
    const std::pair<const char*, std::function<void(DataTypeTable&)>> operations[] = {
        {"construct", [](DataTypeTable&) { DataTypeTable(); }},
        {"register",
         [](DataTypeTable& table) { table.registerDataType("New", clientSource, "m/Gain"); }},
        {"register fixed-point",
         [](DataTypeTable& table) { table.registerDataType("sfix16_En3", clientSource, nullptr); }},
        {"register struct",
         [](DataTypeTable& table) { table.registerStructDataType("New", clientSource, nullptr); }},
        {"register alias",
         [](DataTypeTable& table) {
             table.registerAliasDataType("New", clientSource, 15, nullptr);
         }},
        {"replace",
         [](DataTypeTable& table) { table.registerStructDataType("P", clientSource, nullptr); }},
        {"replace client's",
         [](DataTypeTable& table) { table.registerDataType("Client", clientSource, nullptr); }},
        {"replaceDataType",
         [](DataTypeTable& table) {
             table.replaceDataType(&at(table, 14), &at(table, lastId(table)));
         }},
        {"alias", [](DataTypeTable& table) { table.setDataTypeIdAliasedTo(14, 6); }},
        {"alias client's", [](DataTypeTable& table) { table.setDataTypeIdAliasedTo(17, 6); }},
        {"add",
         [](DataTypeTable& table) {
             auto type = std::make_unique<DataType>(lastId(table) + 1, "New", clientSource);
             table.addDataType(type.get());
             static_cast<void>(type.release());
         }},
        {"add client's",
         [](DataTypeTable& table) {
             auto type = std::make_unique<ClientType>(lastId(table) + 1, "New", clientSource);
             table.addDataType(type.get());
             static_cast<void>(type.release());
         }},
        {"remove", [](DataTypeTable& table) { table.removeDataType(&at(table, lastId(table))); }},
        {"reset", [](DataTypeTable& table) { table.resetToBuiltin(); }},
        {"setProperties", [](DataTypeTable& table) { at(table, 20).setProperties("abcd"); }},
        {"setAtomicWordLengths",
         [](DataTypeTable& table) {
             table.setAtomicWordLengths({64, 128});
         }},
    };
    // The hash table of names is full with 11 and 33 others.
    for (const int others : {10, 11, 32, 33}) {
        SCOPED_TRACE(others);
        for (const auto& [name, operation] : operations) {
            expectUnchangedOnFailedAllocation(
                name, [others] { return makeTable(others); }, operation, printed);
        }
    }
}

TEST(FailedAllocations, SizeIsStoredWithoutGround) {
    DataType type(20, "T", clientSource);
    {
        const FailingAllocations failing(0, Failures::Once);
        EXPECT_ERROR("MemoryAllocErr()", type.setSize(4));
    }
    EXPECT_EQ(4, type.getSize());
    EXPECT_ERROR("MemoryAllocErr()", type.setGround("abcd"));
    EXPECT_NO_ERROR(type.setSize(4));
    EXPECT_NO_ERROR(type.setGround("abcd"));
}
