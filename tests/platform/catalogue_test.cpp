#include <tvtypes_res/catalogue.h>
#include <tvtypes_res/messages.h>

#include <gtest/gtest.h>

#include <set>

using tvtypes_res::allMessages;
using tvtypes_res::Catalogue;

TEST(Catalogue, HasOneValidEntryPerMessage) {
    std::set<std::string> known;
    for (const auto& message : allMessages()) {
        EXPECT_EQ(std::nullopt, Catalogue::builtIn().faultOf(message)) << message.id;
        known.emplace(message.id);
    }
    for (const std::string& id : Catalogue::builtIn().ids()) {
        EXPECT_EQ(1U, known.count(id)) << id << " has a sentence but no message";
    }
}

TEST(Catalogue, InsertsArgumentsVerbatim) {
    const TorvaneTypes::general::DataTypeAliasLoop message("{0} it's", "caf\xc3\xa9");
    EXPECT_EQ("TorvaneTypes::general::DataTypeAliasLoop", message.id());
    EXPECT_NE(std::string::npos,
              message.text().find("\"{0} it's\" cannot be made an alias of \"caf\xc3\xa9\""));
    EXPECT_NE(std::string::npos,
              TorvaneTypes::general::InvalidDataTypeId(-1234567).text().find("id -1234567."));
}

// An invalid entry is reported by faultOf and formatted as the id and the arguments.
TEST(Catalogue, FallsBackToIdAndArguments) {
    const std::string id = "TorvaneTypes::general::InvalidDataTypeSize";
    for (const char* json : {
             R"(not json)",
             R"([1, 2])",
             R"({"general": 7})",
             R"({"general": {"SomethingElse": "{0} {1}"}})",
             R"({"general": {"InvalidDataTypeSize": 7}})",
             R"({"general": {"InvalidDataTypeSize": "{0"}})",
             R"({"general": {"InvalidDataTypeSize": "{0} {1} {2}"}})",
             R"({"general": {"InvalidDataTypeSize": "{name} {1}"}})",
         }) {
        const Catalogue catalogue{std::string_view(json)};
        EXPECT_EQ(id + ": T, -3", catalogue.text(id, {"T", "-3"})) << json;
        EXPECT_NE(std::nullopt, catalogue.faultOf({id, 2})) << json;
    }
    const Catalogue quoted(R"({"general": {"InvalidDataTypeSize": "'{0}' {1}"}})");
    EXPECT_NE(std::nullopt, quoted.faultOf({id, 2})) << "an argument hidden by a quote";
}
