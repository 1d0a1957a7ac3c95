#include "support.h"

#include "model/names.h"
#include "model/types.h"

#include <tvtypes/fixedpoint.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <set>

namespace tvtool {

namespace {

using TVTypeSys::DataTypeTable;

TEST(Types, MapsBaseTypes) {
    const struct {
        const char* element;
        const char* name;
        int size;
    } rows[] = {{"Float64", "double", 8}, {"Float32", "single", 4}, {"Int8", "int8", 1},
                {"UInt8", "uint8", 1},    {"Int16", "int16", 2},    {"UInt16", "uint16", 2},
                {"Int32", "int32", 4},    {"UInt32", "uint32", 4},  {"Int64", "sfix64", 8},
                {"UInt64", "ufix64", 8},  {"Boolean", "boolean", 1}};
    for (const auto& row : rows) {
        // Plain, and through a type definition.
        const auto read = readText(
            description3(fmt::format("<{}Type name=\"T\"/>", row.element),
                         fmt::format("<{0} name=\"a\" valueReference=\"1\"/>"
                                     "<{0} name=\"b\" valueReference=\"2\" declaredType=\"T\"/>",
                                     row.element)));
        const model::Types types(*read->description, read->findings);
        const int plain = types.variableIds().at(0);
        const int declared = types.variableIds().at(1);
        const DataTypeTable& table = types.table();
        EXPECT_STREQ(model::typeRecord(table, plain).getName(), row.name);
        EXPECT_STREQ(model::typeRecord(table, declared).getName(), "T");
        EXPECT_EQ(table.getDataTypeIdAliasedTo(declared), plain);
        EXPECT_EQ(model::typeRecord(table, declared).getSize(), row.size);
        EXPECT_TRUE(table.IsDataTypeNumericOrBoolean(declared));
        EXPECT_TRUE(read->findings.all().empty());
        if (row.name[1] == 'f') { // sfix64, ufix64
            ASSERT_TRUE(table.IsFixptDTNotScaledDouble(plain));
            const auto* const properties =
                static_cast<const fxpDataTypeProp*>(table.getDataTypeProperties(nullptr, plain));
            ASSERT_TRUE(properties != nullptr && properties->validateFxpDTProp());
            EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(properties), row.name);
        }
    }
}

TEST(Names, AreDistinctAndValid) {
    DataTypeTable table;
    const std::vector<std::string> originals{
        "",      " ",      "a b",       "int8",         "fcn_call",  "single",    "flts32_En3",
        "ufix8", "ufix 8", "while",     "\xE6\xB0\xB4", "_",         "a.b",       "a_b",
        "a\nb",  "9",      "sfix8sfcn", "sfix8_OBS",    "boolean.x", "boolean_x", "pointer"};
    model::Names names(table,
                       std::unordered_set<std::string_view>(originals.begin(), originals.end()));
    std::set<std::string> made;
    for (const std::string& original : originals) {
        const std::string name = names.freeName(original);
        EXPECT_TRUE(made.insert(name).second) << original << " gives " << name;
        EXPECT_TRUE(original != "a_b" || name == original);
        int id = INVALID_DATA_TYPE_ID;
        ASSERT_NO_THROW(id = table.registerAliasDataType(
                            name.c_str(), static_cast<DataTypeSource>(2), 0, nullptr));
        EXPECT_EQ(table.getDataTypeIdAliasedTo(id), 0) << name;
        EXPECT_FALSE(DataTypeTable::isInstrinsicFixptName(name.c_str(), nullptr)) << name;
    }
}

TEST(Names, TakeLinearTimeIfAllCollide) {
    std::string definitions;
    for (int i = 0; i < 20000; ++i) {
        // Distinct ideographs, each of which becomes one underscore.
        const char text[] = {static_cast<char>(0xE4 + i / 4096),
                             static_cast<char>(0x80 + i / 64 % 64),
                             static_cast<char>(0x80 + i % 64), '\0'};
        definitions += fmt::format("<Float64Type name=\"{}\"/>", text);
    }
    const auto read = readText(description3(definitions, ""));
    const model::Types types(*read->description, read->findings);
    EXPECT_TRUE(read->findings.all().empty());
    EXPECT_NE(types.table().getDataTypeId("__20000"), INVALID_DATA_TYPE_ID);
}

} // namespace

} // namespace tvtool
