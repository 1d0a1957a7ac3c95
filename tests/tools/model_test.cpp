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
    struct Row {
        const char* element;
        const char* name;
        int size;
    };
    const Row rows[] = {{"Float64", "double", 8}, {"Float32", "single", 4}, {"Int8", "int8", 1},
                        {"UInt8", "uint8", 1},    {"Int16", "int16", 2},    {"UInt16", "uint16", 2},
                        {"Int32", "int32", 4},    {"UInt32", "uint32", 4},  {"Int64", "sfix64", 8},
                        {"UInt64", "ufix64", 8},  {"Boolean", "boolean", 1}};
    for (const Row& row : rows) {
        // Plain, and through a type definition.
        const auto read = readText(
            description3(fmt::format("<{}Type name=\"T\"/>", row.element),
                         fmt::format("<{0} name=\"a\" valueReference=\"1\"/>"
                                     "<{0} name=\"b\" valueReference=\"2\" declaredType=\"T\"/>",
                                     row.element)));
        const model::Types types(*read->description, read->remarks);
        const int plain = types.variableIds().at(0);
        const int declared = types.variableIds().at(1);
        const DataTypeTable& table = types.table();
        EXPECT_STREQ(model::typeRecord(table, plain).getName(), row.name);
        EXPECT_STREQ(model::typeRecord(table, declared).getName(), "T");
        EXPECT_EQ(table.getDataTypeIdAliasedTo(declared), plain);
        EXPECT_EQ(model::typeRecord(table, declared).getSize(), row.size);
        EXPECT_TRUE(table.IsDataTypeNumericOrBoolean(declared));
        EXPECT_TRUE(read->remarks.problems().empty());
    }
}

TEST(Types, MapsWideIntegersToFixedPoint) {
    const auto read = readText(description3("<Int64Type name=\"S\"/><UInt64Type name=\"U\"/>", ""));
    const model::Types types(*read->description, read->remarks);
    for (const auto& [name, signedness] : {std::pair("S", 1U), std::pair("U", 0U)}) {
        const int id = types.table().getDataTypeId(name);
        ASSERT_TRUE(types.table().IsFixptDTNotScaledDouble(id));
        const auto* const properties =
            static_cast<const fxpDataTypeProp*>(types.table().getDataTypeProperties(nullptr, id));
        ASSERT_NE(properties, nullptr);
        EXPECT_TRUE(properties->validateFxpDTProp());
        EXPECT_EQ(properties->Signedness, signedness);
        EXPECT_EQ(properties->WordLength, 64);
        // The name that the library makes from these properties.
        EXPECT_EQ(
            fxpDataTypeToIdentifierString_NoCache(properties),
            model::typeRecord(types.table(), types.table().getDataTypeIdAliasedTo(id)).getName());
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
    const model::Types types(*read->description, read->remarks);
    EXPECT_TRUE(read->remarks.problems().empty());
    EXPECT_NE(types.table().getDataTypeId("__20000"), INVALID_DATA_TYPE_ID);
}

} // namespace

} // namespace tvtool
