#include <fndi18n/ustring.h>
#include <ox/array.h>
#include <oxd/file.h>
#include <tv_services/number_text.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace {

using namespace std::string_literals;
using File = std::unique_ptr<oxdFile_tag, TOxdFileDeleter>;
using Value = std::unique_ptr<oxArray_tag, TOxArrayDeleter>;

/// Short notation of a value: `[(x=1 y=-)(x='t' y=2)]` are two records, the first with an empty y.
std::string show(const oxArray_tag* value) {
    if (value == nullptr) {
        return "-";
    }
    if (oxIsDouble(value)) {
        return tvsv_dtoa(oxGetScalar(value), false);
    }
    if (oxIsString(value)) {
        return "'" + oxcore::get_string(value) + "'";
    }
    std::string text;
    for (std::size_t i = 0; i < oxGetNumberOfElements(value); ++i) {
        text += '(';
        for (const std::string& name : oxGetFieldNames(value)) {
            text += (text.back() == '(' ? "" : " ") + name + "=" +
                    show(oxGetField(value, i, name.c_str()));
        }
        text += ')';
    }
    return "[" + text + "]";
}

class VariableFile : public testing::Test {
  protected:
    ~VariableFile() override { std::filesystem::remove(path_); }

    File open(const std::string& content) const {
        std::ofstream(path_, std::ios::binary) << content;
        return File(oxdOpen(path_.u16string(), "r"));
    }

    std::filesystem::path path_ = std::filesystem::path(testing::TempDir()) /
                                  (std::string("variables \xc3\xa9 ") +
                                   testing::UnitTest::GetInstance()->current_test_info()->name());
};

std::string nested(int levels) {
    std::string text = "{\"v\":";
    std::string ends = "1";
    for (int i = 0; i < levels; ++i) {
        text += "[{\"x\":";
        ends += "}]";
    }
    return text + ends + "}";
}

/// Records with one field each, all different, so that the array has count * count fields.
std::string sparse(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += (i == 0 ? "{\"f" : ",{\"f") + std::to_string(i) + "\":1}";
    }
    return "{\"v\":[" + text + "]}";
}

} // namespace

TEST_F(VariableFile, ReadsValues) {
    const std::pair<const char*, const char*> cases[] = {
        {R"( {} )", "-"},
        {R"({"": 1, "v": 0.3048})", "0.3048"},
        {R"({"v": 7.2057594037927933e16})", "7.205759403792794e+16"},
        {R"({"v": 18446744073709551616})", "1.8446744073709552e+19"},
        {R"({"v": -1e-400})", "0"},
        {R"({"v": 2.4703282292062328e-324})", "5e-324"},
        {R"({"v": "\u00b5\ud83d\ude00 \"m"})", "'\xc2\xb5\xf0\x9f\x98\x80 \"m'"},
        {R"({"v": []})", "[]"},
        {R"({"v": [{}, {}]})", "[()()]"},
        {R"({"v": [{"x": 1, "y": "t"}, {"z": null, "y": 2}, {"y": 4, "x": 3}]})",
         "[(x=1 y='t' z=-)(x=- y=2 z=-)(x=3 y=4 z=-)]"},
        {R"({"v": [{"x": [{"x": 1}, {"y": 2}], "y": 3}]})", "[(x=[(x=1 y=-)(x=- y=2)] y=3)]"},
    };
    for (const auto& [content, shown] : cases) {
        File file = open(content);
        ASSERT_NE(nullptr, file) << content << ": " << oxdLastError();
        EXPECT_EQ("", oxdLastError());
        const Value value(oxdGetVariable(file.get(), "v"));
        file.reset();
        EXPECT_EQ(shown, show(value.get())) << content;
    }
    EXPECT_NE(nullptr, open(nested(15)));
    EXPECT_EQ(nullptr, oxdGetVariable(open("{}").get(), nullptr));
}

TEST_F(VariableFile, ReportsErrorPosition) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "line 1, column 1: incomplete JSON"},
        {"{\n \"v\":\n  \"\xc3\xa9\", x}", "line 3, column 8: syntax error"},
        {R"({"v": [{"x": 1},)", "line 1, column 17: incomplete JSON"},
        {R"({"v": 1} {})", "line 1, column 10: extra data"},
        {"{\"v\": 1}\n\0"s, "line 2, column 1: extra data"},
        {R"({"v": 1, "v": 2})", R"(column 12: the name "v" is duplicated)"},
        {R"({"v": [{"a": 1, "b": 2}, {"b": 1, "a": 2, "\u0062": 3}]})", R"(the name "b")"},
        {"{\"v\": \"\xc0\xaf\"}", "line 1, column 8: the text is not UTF-8"},
        {"{\"v\": \"\xed\xa0\x80\"}", "not UTF-8"},
        {R"({"v": "\ud83d"})", "syntax error"},
        {R"({"v": -1e400})", "too large for a double"},
        {R"({"v": true})", "column 7: true and false"},
        {R"({"v": null})", "null is not allowed as the value"},
        {R"({"v": {"x": 1}})", "column 7: an object is not allowed"},
        {R"({"v": [{"x": {"y": 1}}]})", "column 14: an object is not allowed"},
        {R"({"v": [{}, 1]})", "an array has an element that is not"},
        {R"([{"v": 1}])", "column 1: the file does not begin with an object"},
        {nested(16), "too deep"},
        {nested(100000), "too deep"},
        {sparse(4097), "more than 2^24 fields"},
    };
    for (const auto& [content, reason] : cases) {
        EXPECT_EQ(nullptr, open(content)) << content.substr(0, 80);
        EXPECT_NE(std::string::npos, oxdLastError().find(reason))
            << content.substr(0, 80) << ": " << oxdLastError();
    }
}

TEST_F(VariableFile, ReportsUnreadableFiles) {
    ASSERT_NE(nullptr, open("{}"));
    const fnd::ustring path = path_.u16string();
    const auto reason = [](const fnd::ustring& where, const char* mode) {
        EXPECT_EQ(nullptr, File(oxdOpen(where, mode)));
        return oxdLastError();
    };
    for (const char* const mode : {"w", static_cast<const char*>(nullptr)}) {
        EXPECT_EQ("a file is opened with the mode \"r\" alone", reason(path, mode));
    }
    EXPECT_EQ("No such file or directory", reason(path + u".missing", "r"));
    EXPECT_EQ("it is a directory", reason(path_.parent_path().u16string(), "r"));
    EXPECT_EQ("it is not a regular file", reason(u"/dev/zero", "r"));
    EXPECT_EQ("its path holds a null character", reason(path + u'\0', "r"));
    std::filesystem::resize_file(path_, (16U << 20) + 1);
    EXPECT_EQ("it is larger than 16 MiB", reason(path, "r"));
    // At most 1,024 bytes, and no part of a character.
    const std::string name = ConvertUStringToStdString(fnd::ustring(1000, u'\u20ac'), true);
    EXPECT_EQ(nullptr, open("{\"" + name + "\": 1, \"" + name + "\": 2}"));
    const std::string prefix = "line 1, column 2010: the name \"";
    EXPECT_EQ(prefix + name.substr(0, (1024 - prefix.size()) / 3 * 3), oxdLastError());
    EXPECT_EQ(nullptr, oxdGetVariable(nullptr, "v"));
    oxdClose(nullptr);
}
