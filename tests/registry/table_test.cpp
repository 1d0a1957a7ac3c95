#include "table_fixture.h"

#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>

#include <boost/make_shared.hpp>

#include <cstring>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <vector>

using namespace TVTypeSys;

namespace {

class Hook : public ClientDataTypeCheckCallback {
  public:
    void checkRegisteredType(DataType* dataType, const char* blockPath) override {
        seen.push_back(std::string(dataType->getName()) + "@" + (blockPath ? blockPath : "null"));
        if (std::strncmp(dataType->getName(), "bad", 3) == 0) {
            dataType->setSize(-7);
        }
        if (std::strncmp(dataType->getName(), "odd", 3) == 0) {
            throw std::runtime_error("odd");
        }
    }
    void onResetToBuiltin() override { seen.emplace_back("reset"); }
    std::vector<std::string> seen;
};

} // namespace

TEST(DataTypeTable, ComesUpWithItsTypes) {
    struct {
        const char* name;
        int size;
        const char* properties;
    } const types[] = {
        {"auto", 8, nullptr},      {"double", 8, "double"},  {"single", 4, "single"},
        {"int8", 1, "int8"},       {"uint8", 1, "uint8"},    {"int16", 2, "int16"},
        {"uint16", 2, "uint16"},   {"int32", 4, "int32"},    {"uint32", 4, "uint32"},
        {"boolean", 1, "boolean"}, {"fcn_call", 0, nullptr}, {"integer", 4, nullptr},
        {"pointer", 8, nullptr},   {"action", 8, nullptr},   {"timer_uint32_pair", 8, nullptr}};
    DataTypeTable table;
    ASSERT_EQ(15, table.getNumDataTypes());
    EXPECT_EQ(14, DAGetNumTVDataTypes());
    for (int id = -1; id < 14; ++id) {
        const auto& expected = types[id + 1];
        const DataType& type = at(table, id);
        const bool isPredefined = id >= 9;
        EXPECT_STREQ(expected.name, type.getName());
        EXPECT_EQ(id, type.getId());
        EXPECT_EQ(id, table.getDataTypeId(expected.name));
        EXPECT_EQ(expected.size, type.getSize()) << expected.name;
        EXPECT_EQ(id, type.getStorageId());
        EXPECT_EQ(id >= 0 && !isPredefined ? -10 : id, type.getIdAliasedToForTesting());
        EXPECT_EQ(isPredefined ? DataTypeQualifierPredefined : DataTypeQualifierBuiltIn,
                  type.getType());
        EXPECT_EQ(isPredefined ? DataTypeSourcePredefined : DataTypeSourceBuiltIn,
                  type.getDataTypeSource());
        EXPECT_EQ(isPredefined || id == -1, type.groundHasNonZeroStoredValue());
        EXPECT_TRUE(type.getAliasedToLocked());
        EXPECT_EQ(id != 0 && id != 1, type.getDefaultGround()) << expected.name;
        EXPECT_FALSE(type.isAtomic()) << "whatever the template says";
        EXPECT_EQ(!isPredefined, table.checkForBuiltInDataType(id));
        EXPECT_EQ(isPredefined, table.isPredefinedDataType(id));
        const auto* properties = static_cast<const fxpDataTypeProp*>(type.getProperties());
        ASSERT_EQ(expected.properties == nullptr, properties == nullptr) << expected.name;
        if (properties != nullptr) {
            EXPECT_EQ(expected.properties, fxpDataTypeToIdentifierString_NoCache(properties));
            EXPECT_EQ(static_cast<int>(sizeof *properties), type.getPropertiesSize());
            EXPECT_TRUE(properties->validateFxpDTProp());
            EXPECT_EQ(expected.size, table.getBuiltInDataTypeSize(id));
            EXPECT_EQ(id, table.getBuiltInDataType(expected.name));
            EXPECT_STREQ(expected.name, table.getNameOfBuiltInDataType(id));
        }
    }
    EXPECT_EQ(8, table.getBuiltInDataTypeSize(-1));
    EXPECT_EQ(nullptr, table.getNameOfBuiltInDataType(-1));
    EXPECT_EQ(-10, table.getBuiltInDataType("auto"));
    EXPECT_TRUE(BuiltInDataTypes[3].isAtomic() && !BuiltInDataTypes[5].isAtomic());
    EXPECT_STREQ("", BuiltInDataTypes[1].getName());

    const double one = 1.0;
    EXPECT_REFUSED("CannotModifyDataTypeGroundRepresentation(double)",
                   at(table, 0).setGround(&one));
    EXPECT_ACCEPTED(at(table, 6).setGround(&one));
}

TEST(DataTypeTable, GivesOneIdForOneName) {
    DataTypeTable table;
    EXPECT_EQ(14, table.registerDataType("T", clientSource, nullptr));
    EXPECT_EQ(14, table.registerDataType("T", clientSource, nullptr));
    EXPECT_EQ(14, table.registerDataType("T", DataTypeSourceUnchecked, nullptr));
    EXPECT_EQ(14, table.registerStructDataType("T", clientSource, nullptr)) << "as it stands";
    EXPECT_EQ(16, table.getNumDataTypes());
    EXPECT_REFUSED("DataType_SameNameAsExistingType(T)",
                   table.registerDataType("T", otherSource, nullptr));
    EXPECT_REFUSED("DataType_SameNameAsExistingType(double)",
                   table.registerStructDataType("double", clientSource, nullptr));
    EXPECT_EQ(0, table.registerDataType("double", DataTypeSourceUnchecked, nullptr));
    for (const char* text : {"", "9", "a b", "Wheel.hub"}) {
        EXPECT_REFUSED("InvalidDataType(" + std::string(text) + ")",
                       table.registerDataType(text, clientSource, nullptr));
    }
    EXPECT_REFUSED("InvalidDataType()", table.registerDataType(nullptr, clientSource, nullptr));
    EXPECT_EQ(16, table.getNumDataTypes());
}

TEST(DataTypeTable, ChecksIdsWhereItSaysSo) {
    DataTypeTable table;
    EXPECT_TRUE(table.isDataTypeIdValid(-1) && table.isDataTypeIdValid(13));
    EXPECT_FALSE(table.isDataTypeIdValid(14) || table.isDataTypeIdValid(-10) ||
                 table.isDataTypeIdValid(std::numeric_limits<int>::max()));
    EXPECT_FALSE(table.isDataTypeIdValid_NotAuto(-1));
    EXPECT_REFUSED("InvalidDataTypeId(-2)", table.checkDataTypeId(-2));
    EXPECT_REFUSED("InvalidDataTypeId(14)", table.getDataTypeProperties(nullptr, 14));
    EXPECT_ACCEPTED(table.checkDataTypeId(-1));
}

TEST(DataTypeTable, AnswersRegistrationWithADiagnostic) {
    DataTypeTable table;
    int id = -99;
    EXPECT_EQ(nullptr, DataTypeTable::RegisterDataType(&table, "m/Gain", "T", clientSource, &id));
    EXPECT_EQ(14, id);
    for (const char* path : {static_cast<const char*>(nullptr), "", "m/Gain"}) {
        const std::unique_ptr<tvsvDiagnosticImpl> refusal(
            DataTypeTable::RegisterDataType(&table, path, "T U", clientSource, &id));
        ASSERT_NE(nullptr, refusal);
        EXPECT_EQ("InvalidDataType(T U)", summaryOf(*refusal));
        const bool hasPath = path != nullptr && *path != '\0';
        ASSERT_EQ(hasPath ? 2U : 1U, refusal->size());
        if (hasPath) {
            EXPECT_EQ("DataTypeErrorFromBlock(m/Gain)", summaryOf(*refusal, 1));
        }
        EXPECT_EQ(14, id);
    }
}

TEST(DataTypeTable, AsksTheHookAndTakesBackWhatItRefuses) {
    DataTypeTable table;
    const auto hook = boost::make_shared<Hook>();
    table.setClientDataTypeCheckCallback(hook);
    table.registerDataType("good", clientSource, "m/Gain");
    table.registerDataType("good", clientSource, "m/Sum");
    EXPECT_REFUSED("InvalidDataTypeSize(bad, -7)",
                   table.registerDataType("bad", clientSource, nullptr));
    EXPECT_REFUSED("CannotSetDataTypeSizeOfAlias(badAlias)",
                   table.registerAliasDataType("badAlias", clientSource, 14, nullptr));
    EXPECT_EQ(16, table.getNumDataTypes());
    EXPECT_EQ(-10, table.getDataTypeId("bad"));
    EXPECT_THROW(table.registerDataType("odd", clientSource, nullptr), std::runtime_error);
    EXPECT_EQ(15, table.getDataTypeId("odd")) << "other exceptions pass, and the type stays";
    table.resetToBuiltin();
    EXPECT_EQ(
        (std::vector<std::string>{"good@m/Gain", "bad@null", "badAlias@null", "odd@null", "reset"}),
        hook->seen);
    table.setClientDataTypeCheckCallback(nullptr);
    EXPECT_ACCEPTED(table.registerDataType("bad", clientSource, nullptr));
}

TEST(DataTypeTable, ReplacesATypeUnderItsId) {
    ReplacingTable table;
    const int id = table.registerDataType("T", clientSource, nullptr);
    const int alias = table.registerAliasDataType("A", clientSource, id, nullptr);
    const int aliasOfAlias = table.registerAliasDataType("B", clientSource, alias, nullptr);
    at(table, id).setSize(4);
    table.setDataTypeStorageId(id, 6);
    const DataType* old = &at(table, id);

    EXPECT_EQ(id, table.registerDataType("T", otherSource, nullptr));
    EXPECT_EQ(18, table.getNumDataTypes());
    EXPECT_NE(old, &at(table, id));
    EXPECT_EQ(-1, at(table, id).getSize());
    EXPECT_EQ(6, at(table, id).getStorageId());
    EXPECT_EQ(id, at(table, aliasOfAlias).getIdAliasedThruTo());
    at(table, id).setSize(2);
    EXPECT_EQ(2, at(table, alias).getSize());
    EXPECT_EQ(2, at(table, aliasOfAlias).getSize());

    EXPECT_EQ(alias, table.registerStructDataType("A", clientSource, nullptr));
    EXPECT_EQ(alias, at(table, aliasOfAlias).getIdAliasedTo());
    EXPECT_NE(nullptr, dynamic_cast<StructDataType*>(&at(table, alias)));

    // A type cannot be replaced by an alias of itself.
    EXPECT_REFUSED("DataTypeAliasLoop(T, T)",
                   table.registerAliasDataType("T", clientSource, id, nullptr));
    EXPECT_REFUSED("DataTypeAliasLoop(A, B)",
                   table.registerAliasDataType("A", clientSource, aliasOfAlias, nullptr));
    EXPECT_EQ(18, table.getNumDataTypes());
    EXPECT_EQ(id, table.registerAliasDataType("T", clientSource, 0, nullptr));
    EXPECT_EQ(8, at(table, id).getSize());
}

TEST(DataTypeTable, GoesBackToItsBuiltInTypes) {
    DataTypeTable table;
    auto* cgType = reinterpret_cast<CG::Type*>(&table);
    at(table, 4).setIsAtomic(true);
    at(table, 4).setCGType(cgType);
    at(table, 4).setHostToTargetFcn([](ExternalSim_tag*, char*, const void*, int, int) {});
    for (int i = 0; i < 50; ++i) {
        table.registerDataType(table.generateAnonymousTypeName(), clientSource, nullptr);
    }
    EXPECT_EQ(63, table.getDataTypeId("rtt_49"));
    table.resetToBuiltin();
    EXPECT_EQ(15, table.getNumDataTypes());
    EXPECT_EQ(-10, table.getDataTypeId("rtt_49"));
    EXPECT_EQ(nullptr, at(table, 4).getCGType());
    EXPECT_EQ(nullptr, at(table, 4).getHostToTargetFcn());
    EXPECT_TRUE(at(table, 4).isAtomic());
    EXPECT_STREQ("rtt_0", table.generateAnonymousTypeName());
    EXPECT_EQ(14, table.registerDataType("rtt_49", clientSource, nullptr));
}

TEST(DataTypeTable, IsPrinted) {
    DataTypeTable table;
    table.registerDataType("sfix16_En3", clientSource, nullptr);
    std::ostringstream os;
    os << std::hex << table;
    const std::string text = os.str();
    EXPECT_EQ(0U, text.find("DataTypeTable\nNumber of DataTypes : 16\n\nDataType : 'auto'\n"
                            "ID : -1\nSize : 8\nStorage ID : -1\nDataTypeQualifier : 0\n\n"
                            "DataType : 'double'\nID : 0\n"));
    const std::string end = "DataType : 'sfix16_En3'\nID : 14\nSize : -1\nStorage ID : 14\n"
                            "DataTypeQualifier : 2\n\n\n";
    EXPECT_EQ(text.size() - end.size(), text.rfind(end));
}
