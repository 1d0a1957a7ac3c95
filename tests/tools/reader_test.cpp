#include "support.h"

#include "fmi/values.h"

#include <boost/algorithm/string/replace.hpp>
#include <gtest/gtest.h>

namespace tvtool {

namespace {

using fmi::BaseType;

TEST(Values, AreCheckedByBaseType) {
    const struct {
        BaseType base;
        const char* valid;
        const char* invalid;
    } rows[] = {{BaseType::Float64, "1 -1.5e-3 INF +1 1e999", "1e 0x1p3 +-1 1.0f"},
                {BaseType::Float32, "NaN", ""},
                {BaseType::Int8, "-128", "-129"},
                {BaseType::UInt8, "255", "256 -0"},
                {BaseType::Int16, "-32768", "32768"},
                {BaseType::UInt16, "65535", "65536"},
                {BaseType::Int32, "2147483647", "2147483648"},
                {BaseType::UInt32, "4294967295", "4294967296"},
                {BaseType::Int64, "-9223372036854775808", "9223372036854775808"},
                {BaseType::UInt64, "18446744073709551615", "-1 18446744073709551616"},
                {BaseType::Boolean, "1", "TRUE"},
                {BaseType::Enumeration, "3", "low"},
                {BaseType::String, "anything", ""}};
    for (const auto& row : rows) {
        for (const std::string& word : split(row.valid)) {
            EXPECT_TRUE(fmi::isValue(word, row.base)) << word;
        }
        for (const std::string& word : split(row.invalid)) {
            EXPECT_FALSE(fmi::isValue(word, row.base)) << word;
        }
    }
}

std::string utf16(const std::string& ascii, bool isLittle) {
    std::string text = isLittle ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : ascii) {
        text += isLittle ? std::string{c, '\0'} : std::string{'\0', c};
    }
    return text;
}

TEST(Reader, AcceptsEncodingsAndLineEndings) {
    const std::string plain =
        description3("<Float64Type name=\"T\"/>\n", "\n<Int8 name=\"a\" valueReference=\"x\"/>\n");
    const std::string texts[] = {plain,
                                 "\xEF\xBB\xBF" + plain,
                                 boost::replace_all_copy(plain, "\n", "\r\n"),
                                 utf16(plain, true),
                                 utf16(plain, false),
                                 "<?xml version='1.0' encoding='ISO-8859-1'?>" + plain};
    for (const std::string& text : texts) {
        const auto read = readText(text);
        EXPECT_EQ(read->remarks.notes().size(), 0U);
        ASSERT_EQ(read->remarks.problems().size(), 1U);
        EXPECT_EQ(read->remarks.problems()[0].line, 3U);
        EXPECT_EQ(read->description->types.at(0).name, "T");
    }
}

TEST(Reader, IsIndependentOfChunks) {
    const std::string text = readFile(TVTYPES_EXAMPLES "/vehicle_suspension.xml");
    const auto whole = readText(text, text.size());
    const auto bytewise = readText(text, 1);
    const auto& expected = whole->description->variables;
    const auto& actual = bytewise->description->variables;
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(actual[i].name, expected[i].name);
        EXPECT_EQ(actual[i].declaredType, expected[i].declaredType);
        EXPECT_EQ(actual[i].valueReference, expected[i].valueReference);
        EXPECT_EQ(actual[i].place.line, expected[i].place.line);
    }
}

TEST(Reader, RejectsEveryTruncation) {
    const std::string text = readFile(TVTYPES_EXAMPLES "/motor_drive.xml");
    const std::size_t end = text.find_last_of('>');
    for (std::size_t length = 0; length < end; length += 13) {
        EXPECT_THROW(readText(text.substr(0, length)), files::ReadError) << length;
    }
}

TEST(Reader, SkipsDeepNesting) {
    const std::string nested = repeatedText("<a>", 100000) + repeatedText("</a>", 100000);
    const auto read =
        readText(description3("", nested + "<Int8 name=\"last\" valueReference=\"1\"/>"));
    ASSERT_EQ(read->description->variables.size(), 1U);
    EXPECT_EQ(read->description->variables[0].name, "last");
    EXPECT_EQ(read->remarks.notes().size(), 1U);
}

} // namespace

} // namespace tvtool
