#include "table_fixture.h"

#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>

#include <boost/make_shared.hpp>

using namespace TVTypeSys;

namespace {

using Registration = TableTest;

// Records its calls, and rejects names that begin with "bad".
class RecordingCallback : public ClientDataTypeCheckCallback {
  public:
    void checkRegisteredType(DataType* dataType, const char* blockPath) override {
        const std::string name = dataType->getName();
        calls.push_back(name + "@" + (blockPath ? blockPath : "null"));
        if (name.starts_with("bad")) {
            dataType->setSize(-7);
        }
    }
    void onResetToBuiltin() override { calls.emplace_back("reset"); }
    std::vector<std::string> calls;
};

} // namespace

TEST(DataTypeTable, InitialTypes) {
    const struct {
        const char* name;
        int size;
    } types[] = {{"auto", 8},    {"double", 8},  {"single", 4},           {"int8", 1},
                 {"uint8", 1},   {"int16", 2},   {"uint16", 2},           {"int32", 4},
                 {"uint32", 4},  {"boolean", 1}, {"fcn_call", 0},         {"integer", 4},
                 {"pointer", 8}, {"action", 8},  {"timer_uint32_pair", 8}};
    DataTypeTable table;
    std::ostringstream expected;
    expected << "DataTypeTable\nNumber of DataTypes : 15\n\n";
    for (int id = -1; id < 14; ++id) {
        const auto& [name, size] = types[id + 1];
        const bool isPredefined = id >= 9;
        const bool isNumeric = id >= 0 && !isPredefined;
        expected << "DataType : '" << name << "'\nID : " << id << "\nSize : " << size
                 << "\nStorage ID : " << id << "\nDataTypeQualifier : " << isPredefined << "\n\n";
        SCOPED_TRACE(name);
        const DataType& type = at(table, id);
        EXPECT_EQ(id, table.getDataTypeId(name));
        EXPECT_EQ(isNumeric ? -10 : id, type.getIdAliasedToForTesting());
        EXPECT_EQ(!isNumeric, type.groundHasNonZeroStoredValue());
        EXPECT_TRUE(type.getAliasedToLocked());
        EXPECT_FALSE(type.isAtomic()) << "until the client sets what the target has";
        EXPECT_EQ(id != 0 && id != 1, type.getDefaultGround());
        EXPECT_EQ(!isPredefined, table.checkForBuiltInDataType(id));
        EXPECT_EQ(isPredefined, table.isPredefinedDataType(id));
        if (isNumeric) {
            const auto* properties = static_cast<const fxpDataTypeProp*>(type.getProperties());
            EXPECT_EQ(name, fxpDataTypeToIdentifierString_NoCache(properties));
            EXPECT_EQ(size, table.getBuiltInDataTypeSize(id));
            EXPECT_EQ(id, table.getBuiltInDataType(name));
            EXPECT_STREQ(name, table.getNameOfBuiltInDataType(id));
        }
    }
    EXPECT_EQ(nullptr, table.getNameOfBuiltInDataType(-1));
    EXPECT_EQ(-10, table.getBuiltInDataType("auto"));
    for (const DataType& type : BuiltInDataTypes) {
        EXPECT_EQ(type.getSize() == 1, type.isAtomic()) << type.getName();
    }
    EXPECT_EQ(13, PreDefinedDataTypes[4].getStorageId());
    std::ostringstream os;
    os << std::hex << table;
    EXPECT_EQ(expected.str() + "\n", os.str());
    const double one = 1.0;
    EXPECT_ERROR("CannotModifyDataTypeGroundRepresentation(double)", at(table, 0).setGround(&one));
    EXPECT_NO_ERROR(at(table, 6).setGround(&one));
}

TEST_F(Registration, IsIdempotent) {
    EXPECT_EQ(14, plain("T"));
    EXPECT_EQ(14, plain("T"));
    EXPECT_EQ(14, structure("T")) << "kept as it is";
    EXPECT_EQ(0, table.registerDataType("double", DataTypeSourceUnchecked, nullptr));
    EXPECT_ERROR("DataType_SameNameAsExistingType(T)",
                 table.registerDataType("T", otherSource, nullptr));
    EXPECT_ERROR("DataType_SameNameAsExistingType(double)", structure("double"));
    for (const char* name : {"", "9", "a b", "Wheel.hub"}) {
        EXPECT_ERROR("InvalidDataType(" + std::string(name) + ")", plain(name));
    }
    EXPECT_ERROR("InvalidDataType()", plain(nullptr));
    EXPECT_EQ(16, table.getNumDataTypes());
}

TEST_F(Registration, ReturnsDiagnostic) {
    int id = -99;
    EXPECT_EQ(nullptr, DataTypeTable::RegisterDataType(&table, "m/Gain", "T", clientSource, &id));
    EXPECT_EQ(14, id);
    for (const char* path : {static_cast<const char*>(nullptr), "", "m/Gain"}) {
        const std::unique_ptr<tvsvDiagnosticImpl> error(
            DataTypeTable::RegisterDataType(&table, path, "T U", clientSource, &id));
        ASSERT_NE(nullptr, error);
        EXPECT_EQ("InvalidDataType(T U)", messageSummary(*error));
        ASSERT_EQ(path != nullptr && *path != '\0' ? 2U : 1U, error->size());
        EXPECT_TRUE(error->size() == 1 ||
                    messageSummary(*error, 1) == "DataTypeErrorFromBlock(m/Gain)");
        EXPECT_EQ(14, id);
    }
}

TEST_F(Registration, CallbackCanRejectTypes) {
    const auto callback = boost::make_shared<RecordingCallback>();
    table.setClientDataTypeCheckCallback(callback);
    table.registerDataType("good", clientSource, "m/Gain");
    table.registerDataType("good", clientSource, "m/Sum");
    EXPECT_ERROR("InvalidDataTypeSize(bad, -7)", plain("bad"));
    EXPECT_ERROR("CannotSetDataTypeSizeOfAlias(badAlias)", alias("badAlias", 14));
    EXPECT_EQ(16, table.getNumDataTypes());
    EXPECT_EQ(-10, table.getDataTypeId("bad"));
    table.resetToBuiltin();
    EXPECT_EQ((std::vector<std::string>{"good@m/Gain", "bad@null", "badAlias@null", "reset"}),
              callback->calls);
    table.setClientDataTypeCheckCallback(nullptr);
    EXPECT_NO_ERROR(plain("bad"));
}

TEST(DataTypeTable, ReplacementKeepsIdAndAliases) {
    ReplacingTable table;
    const int id = table.registerDataType("T", clientSource, nullptr);
    const auto alias = [&](const char* name, int target) {
        return table.registerAliasDataType(name, clientSource, target, nullptr);
    };
    const int a = alias("A", id);
    const int b = alias("B", a);
    at(table, id).setSize(4);
    table.setDataTypeStorageId(id, 6);
    const DataType* old = &at(table, id);

    EXPECT_EQ(id, table.registerDataType("T", otherSource, nullptr));
    EXPECT_NE(old, &at(table, id));
    EXPECT_EQ(-1, at(table, id).getSize());
    EXPECT_EQ(6, at(table, id).getStorageId());
    EXPECT_EQ(id, at(table, b).getIdAliasedThruTo());
    at(table, id).setSize(2);
    EXPECT_TRUE(at(table, a).getSize() == 2 && at(table, b).getSize() == 2);

    EXPECT_EQ(a, table.registerStructDataType("A", clientSource, nullptr));
    EXPECT_EQ(a, at(table, b).getIdAliasedTo());
    EXPECT_NE(nullptr, dynamic_cast<StructDataType*>(&at(table, a)));

    // A type cannot be replaced by an alias of itself.
    EXPECT_ERROR("DataTypeAliasLoop(T, T)", alias("T", id));
    EXPECT_ERROR("DataTypeAliasLoop(A, B)", alias("A", b));
    // B still forwards to T, although A is a struct now.
    EXPECT_ERROR("DataTypeAliasLoop(T, B)", alias("T", b));
    EXPECT_EQ(18, table.getNumDataTypes());
    EXPECT_EQ(id, alias("T", 0));
    EXPECT_EQ(8, at(table, id).getSize());
}

TEST_F(Registration, ResetToBuiltin) {
    at(4).setIsAtomic(true);
    at(4).setHostToTargetFcn([](ExternalSim_tag*, char*, const void*, int, int) {});
    for (int i = 0; i < 50; ++i) {
        plain(table.generateAnonymousTypeName());
    }
    EXPECT_EQ(63, table.getDataTypeId("rtt_49"));
    table.resetToBuiltin();
    EXPECT_EQ(15, table.getNumDataTypes());
    EXPECT_EQ(-10, table.getDataTypeId("rtt_49"));
    EXPECT_EQ(nullptr, at(4).getHostToTargetFcn());
    EXPECT_TRUE(at(4).isAtomic());
    EXPECT_STREQ("rtt_0", table.generateAnonymousTypeName());
    EXPECT_EQ(14, plain("rtt_49"));
}

TEST_F(Registration, CheckedIds) {
    for (const int id : {-10, -2, 14, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(table.isDataTypeIdValid(id));
        const std::string error = "InvalidDataTypeId(" + std::to_string(id) + ")";
        EXPECT_ERROR(error, table.checkDataTypeId(id));
        EXPECT_ERROR(error, table.getDataTypeProperties(nullptr, id));
    }
    EXPECT_TRUE(table.isDataTypeIdValid(-1) && !table.isDataTypeIdValid_NotAuto(-1));
}
