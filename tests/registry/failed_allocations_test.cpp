#include "support/failing_allocations.h"
#include "table_fixture.h"

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

template <class Type>
void add(DataTypeTable& table) {
    auto type = std::make_unique<Type>(lastId(table) + 1, "New", clientSource);
    table.addDataType(type.get());
    static_cast<void>(type.release());
}

} // namespace

TEST(FailedAllocations, LeaveTableUnchanged) {
    constexpr auto client = clientSource;
    const std::pair<const char*, std::function<void(DataTypeTable&)>> operations[] = {
        {"construct", [](auto&) { DataTypeTable(); }},
        {"register", [](auto& t) { t.registerDataType("New", client, "m/Gain"); }},
        {"register fixed-point", [](auto& t) { t.registerDataType("sfix16_E3", client, nullptr); }},
        {"register struct", [](auto& t) { t.registerStructDataType("New", client, nullptr); }},
        {"register alias", [](auto& t) { t.registerAliasDataType("New", client, 15, nullptr); }},
        {"replace", [](auto& t) { t.registerStructDataType("P", client, nullptr); }},
        {"replace client's", [](auto& t) { t.registerDataType("Client", client, nullptr); }},
        {"replaceDataType", [](auto& t) { t.replaceDataType(&at(t, 14), &at(t, lastId(t))); }},
        {"alias", [](auto& t) { t.setDataTypeIdAliasedTo(14, 6); }},
        {"alias client's", [](auto& t) { t.setDataTypeIdAliasedTo(17, 6); }},
        {"add", add<DataType>},
        {"add client's", add<ClientType>},
        {"remove", [](auto& t) { t.removeDataType(&at(t, lastId(t))); }},
        {"reset", [](auto& t) { t.resetToBuiltin(); }},
        {"setProperties", [](auto& t) { at(t, 20).setProperties("abcd"); }},
        {"setAtomicWordLengths",
         [](auto& t) {
             t.setAtomicWordLengths({{64, 128}});
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
