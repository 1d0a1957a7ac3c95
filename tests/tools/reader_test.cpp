#include "support.h"

#include "files/read_error.h"
#include "model/model.h"

#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>
#include <gmock/gmock.h>

namespace tvtool {

namespace {

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
        ASSERT_EQ(read->findings.all().size(), 1U);
        EXPECT_EQ(read->findings.all()[0].line, 3U);
        EXPECT_EQ(read->findings.all()[0].column, 1U);
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
        EXPECT_EQ(actual[i].place.column, expected[i].place.column);
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
    const std::string nested = repeatedText("<a>", 90000) + repeatedText("</a>", 90000);
    const auto read =
        readText(description3("", nested + "<Int8 name=\"last\" valueReference=\"1\"/>"));
    ASSERT_EQ(read->description->variables.size(), 1U);
    EXPECT_EQ(read->description->variables[0].name, "last");
    EXPECT_EQ(read->findings.all().size(), 1U);
}

TEST(Reader, LimitsRecords) {
    struct Row {
        const char* section;
        const char* element; ///< with a number
        int count;
        const char* sentence;
    };
    const Row rows[] = {
        {"UnitDefinitions", "<Unit name='u{}'/>", 50'000, "more than 50000 units"},
        {"TypeDefinitions", "<Int8Type name='t{}'/>", 200'000, "more than 200000 types"},
        {"ModelVariables", "<Int8 name='a{0}' valueReference='{0}'/>", 500'000, "500000 variables"},
        {"ModelVariables", "<Float64 name='a{0}' valueReference='{0}' unit='{0}'/>", 50'000,
         "more than 50000 units"},
        {"ModelVariables",
         "<Int8 name='a{0}' valueReference='{0}'><Dimension start='1{0}'/></Int8>", 100'000,
         "100000 different sizes"},
        {"Annotations", "<a{}/>", 120'000, "100000 different names"}};
    for (const Row& row : rows) {
        std::string text = "<fmiModelDescription fmiVersion='3.0' modelName='M' "
                           "instantiationToken='t'><";
        text += fmt::format("{}>", row.section);
        for (int i = 0; i <= row.count; ++i) {
            text += fmt::format(fmt::runtime(row.element), i);
        }
        text += fmt::format("</{}></fmiModelDescription>", row.section);
        try {
            const model::Model model(textSource(text), {});
            ADD_FAILURE() << row.sentence;
        } catch (const files::ReadError& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr(row.sentence));
        }
    }
}

} // namespace

} // namespace tvtool
