#include "support.h"

#include "fmi/values.h"

#include <gtest/gtest.h>

namespace tvtool {

namespace {

using fmi::BaseType;

TEST(Values, AreCheckedByBaseType) {
    struct Row {
        BaseType base;
        const char* word;
        bool isValue;
    };
    const Row rows[] = {
        {BaseType::Float64, "1", true},         {BaseType::Float64, "-1.5e-3", true},
        {BaseType::Float64, "INF", true},       {BaseType::Float64, "+1", true},
        {BaseType::Float64, "1e999", true},     {BaseType::Float64, "1e", false},
        {BaseType::Float64, "0x1p3", false},    {BaseType::Float64, "+-1", false},
        {BaseType::Float64, "1.0f", false},     {BaseType::Float32, "NaN", true},
        {BaseType::Int8, "-128", true},         {BaseType::Int8, "-129", false},
        {BaseType::UInt8, "255", true},         {BaseType::UInt8, "256", false},
        {BaseType::UInt8, "-0", false},         {BaseType::Int16, "32768", false},
        {BaseType::UInt16, "65535", true},      {BaseType::Int32, "2147483648", false},
        {BaseType::UInt32, "4294967295", true}, {BaseType::Int64, "-9223372036854775808", true},
        {BaseType::UInt64, "-1", false},        {BaseType::UInt64, "18446744073709551616", false},
        {BaseType::Boolean, "1", true},         {BaseType::Boolean, "TRUE", false},
        {BaseType::Enumeration, "3", true},     {BaseType::Enumeration, "low", false},
        {BaseType::String, "anything", true}};
    for (const Row& row : rows) {
        EXPECT_EQ(fmi::isValue(row.word, row.base), row.isValue) << row.word;
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
    std::string crlf = plain;
    for (std::size_t at = crlf.find('\n'); at != std::string::npos; at = crlf.find('\n', at + 2)) {
        crlf.replace(at, 1, "\r\n");
    }
    const std::string texts[] = {plain,
                                 "\xEF\xBB\xBF" + plain,
                                 crlf,
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
    constexpr std::size_t depth = 100000;
    std::string nested;
    for (std::size_t i = 0; i < depth; ++i) {
        nested += "<a>";
    }
    for (std::size_t i = 0; i < depth; ++i) {
        nested += "</a>";
    }
    const auto read =
        readText(description3("", nested + "<Int8 name=\"last\" valueReference=\"1\"/>"));
    ASSERT_EQ(read->description->variables.size(), 1U);
    EXPECT_EQ(read->description->variables[0].name, "last");
    EXPECT_EQ(read->remarks.notes().size(), 1U);
}

} // namespace

} // namespace tvtool
