#include "support.h"

#include "model/inspection.h"
#include "text/safe_text.h"

#include <gmock/gmock.h>

#include <sstream>

namespace tvtool {

namespace {

using testing::HasSubstr;
using testing::Not;

// Five characters, which take ten columns.
constexpr const char* wide = "\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4";

model::Inspection sampleInspection() {
    model::Inspection inspection;
    inspection.file = "m.xml";
    inspection.fmiVersion = "3.0";
    inspection.modelName = "M";
    inspection.variables = 12;
    inspection.types = {
        {0, "double", "built-in", 8, "double", "", 7, ""},
        {14, "a_long_name", "alias", 8, "double", wide, 4, "\xE6\xB0\xB4.\xC3\xA4"},
        {1500, "E", "enumerated", 4, "int32", "", 1, "x\x1b[31m\xC2\x9B\xF3\xA0\x80\x81"},
        {1501, "S", "struct", 24, "", "", 3, "", 2, 5}};
    inspection.outside = {{"String", 2, 1}};
    inspection.units = {{"N.m", 3, "N*m", "reading", "", {"a", "b", "c", "d"}},
                        {"\xC2\xB5", std::nullopt, "", "", "0.5 * m", {}}};
    inspection.dimensions = {{5, "[n,2]", {"a", "b"}}};
    inspection.facts = {{7, "2*n==6", {"a"}}};
    using findings::Code;
    inspection.findings.add(Code::UnitUnknown, {"Int8", 9, 2}, {}, "third");
    inspection.findings.add(Code::NameEmpty, {"Float64", 7, 3}, {}, "first");
    inspection.findings.add(Code::ArchiveEntry, {"archive"}, {}, "second");
    inspection.findings.add(Code::UnitUnknown, {"Int8", 11}, {}, "third");
    inspection.findings.sort();
    return inspection;
}

std::string printedText(const model::Inspection& inspection, bool colour) {
    std::ostringstream stream;
    model::printText(inspection, colour, stream);
    return stream.str();
}

TEST(TextReport, AlignsColumns) {
    EXPECT_EQ(
        printedText(sampleInspection(), false),
        "m.xml: FMI 3.0, model \"M\": 12 variables, 4 types; 1 error, no warnings, 3 notes\n"
        "\n"
        "  id  name         kind        size  storage  alias of    variables  elements  leaves"
        "  original name\n"
        "   0  double       built-in       8  double   -                   7         -       -"
        "  -\n"
        "  14  a_long_name  alias          8  double   " +
            std::string(wide) +
            "          4         -       -"
            "  \xE6\xB0\xB4.\xC3\xA4\n"
            "1500  E            enumerated     4  int32    -                   1         -       -"
            "  x\\u001b[31m\\u009b\\udb40\\udc01\n"
            "1501  S            struct        24  -        -                   3         2       5"
            "  -\n"
            "\n"
            "Outside the table: String 2 variables and 1 type\n"
            "\n"
            "id  unit  expression  from     base units  variables  which\n"
            " 3  N.m   N*m         reading  -                   4  a, b, c, ...\n"
            " -  \xC2\xB5     -           -        0.5 * m             0  -\n"
            "\n"
            "id  dimensions  variables  which\n"
            " 5  [n,2]               2  a, b\n"
            "\n"
            "id  fact    stated by\n"
            " 7  2*n==6  a\n"
            "\n"
            "Findings\n"
            "m.xml:7:3: error: first [name-empty]\n"
            "m.xml: note: second [archive-entry]\n"
            "m.xml:9:2: note: third (2 times) [unit-unknown]\n");
    EXPECT_THAT(printedText(sampleInspection(), true), HasSubstr("\x1b["));
}

TEST(JsonReport, HasAllMembers) {
    std::ostringstream stream;
    model::printJson(sampleInspection(), stream);
    const boost::json::value expected = boost::json::parse(R"({
        "file": "m.xml", "fmiVersion": "3.0", "modelName": "M", "variables": 12,
        "types": [
            {"id": 0, "name": "double", "kind": "built-in", "size": 8, "storage": "double",
             "aliasOf": null, "variables": 7, "originalName": null, "elements": null,
             "leaves": null},
            {"id": 14, "name": "a_long_name", "kind": "alias", "size": 8, "storage": "double",
             "aliasOf": "\u6c34\u6c34\u6c34\u6c34\u6c34", "variables": 4, "originalName": "\u6c34.\u00e4",
             "elements": null, "leaves": null},
            {"id": 1500, "name": "E", "kind": "enumerated", "size": 4, "storage": "int32",
             "aliasOf": null, "variables": 1, "originalName": "x\u001b[31m\u009b\udb40\udc01", "elements": null,
             "leaves": null},
            {"id": 1501, "name": "S", "kind": "struct", "size": 24, "storage": null,
             "aliasOf": null, "variables": 3, "originalName": null, "elements": 2, "leaves": 5}],
        "outside": [{"baseType": "String", "variables": 2, "types": 1}],
        "units": [
            {"name": "N.m", "id": 3, "expression": "N*m", "from": "reading", "baseUnits": null,
             "variables": ["a", "b", "c", "d"]},
            {"name": "\u00b5", "id": null, "expression": null, "from": null,
             "baseUnits": "0.5 * m", "variables": []}],
        "dimensions": [{"id": 5, "text": "[n,2]", "variables": ["a", "b"]}],
        "facts": [{"id": 7, "text": "2*n==6", "blocks": ["a"]}],
        "findings": [{"code": "name-empty", "severity": "error", "element": "Float64", "line": 7,
                      "sentence": "first", "count": 1},
                     {"code": "archive-entry", "severity": "note", "element": "archive",
                      "line": null, "sentence": "second", "count": 1},
                     {"code": "unit-unknown", "severity": "note", "element": "Int8", "line": 9,
                      "sentence": "third", "count": 2}]})");
    EXPECT_EQ(boost::json::parse(stream.str()), expected) << stream.str();
    EXPECT_THAT(stream.str(), Not(HasSubstr("\xC2\x9B")));
}

TEST(SafeText, EscapesControlCharacters) {
    const std::pair<std::string, std::string> rows[] = {
        {"plain", "plain"},
        {"\xC3\xA4 \xE6\xB0\xB4 \xF0\x9F\x98\x80", "\xC3\xA4 \xE6\xB0\xB4 \xF0\x9F\x98\x80"},
        {std::string("\0\t\n\r\x1b\x7f", 6), "\\u0000\\u0009\\u000a\\u000d\\u001b\\u007f"},
        {"\xC2\x9B", "\\u009b"},                       // begins a control sequence
        {"\xE2\x80\xAE", "\\u202e"},                   // changes the direction of text
        {"\xF3\xA0\x80\x81", "\\udb40\\udc01"},        // invisible, beyond 16 bits
        {"a\xFFz\xC3", "a\xEF\xBF\xBDz\xEF\xBF\xBD"}}; // no UTF-8
    for (const auto& [text, safe] : rows) {
        EXPECT_EQ(text::safeText(text), safe);
    }
}

} // namespace

} // namespace tvtool
