#include "support.h"

#include "findings/findings.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

namespace tvtool {

namespace {

using findings::Code;
using findings::Findings;

TEST(Rules, AreNamedOnceAndDocumented) {
    std::set<std::string> names;
    for (const findings::Rule& rule : findings::rules()) {
        EXPECT_TRUE(names.insert(rule.name).second) << rule.name;
        EXPECT_TRUE(std::regex_match(rule.name, std::regex("[a-z]+(-[a-z]+)*"))) << rule.name;
        EXPECT_TRUE(std::string_view(rule.meaning).ends_with('.')) << rule.name;
        EXPECT_TRUE(std::string_view(rule.advice).ends_with('.')) << rule.name;
        EXPECT_FALSE(std::string_view(rule.folded).ends_with('.')) << rule.name;
    }
    EXPECT_EQ(readFile(TVTYPES_DOCS "/findings.md"), findings::rulesDocument())
        << "build findings_document and write its output to docs/findings.md";
}

TEST(Findings, MergesEqualOnes) {
    Findings findings;
    findings.add(Code::NameEmpty, {"Int8", 9, 2}, {}, "name {}", 1);
    findings.add(Code::NameEmpty, {"Int8", 5, 3}, {}, "name {}", 2);
    findings.add(Code::NameEmpty, {"Int8", 12, 1}, {}, "name {}", 1);
    findings.add(Code::NameEmpty, {"Int16", 12, 9}, {}, "name {}", 1);
    findings.add(Code::ValueInvalid, {"Int8", 12, 1}, {}, "name {}", 1);
    findings.sort();
    ASSERT_EQ(findings.all().size(), 4U);
    EXPECT_EQ(findings.all()[0].line, 5U);
    EXPECT_EQ(findings.all()[1].line, 9U);
    EXPECT_EQ(findings.all()[1].column, 2U);
    EXPECT_EQ(findings.all()[1].lastLine, 12U);
    EXPECT_EQ(findings.all()[1].count, 2U);
    EXPECT_EQ(findings.count(findings::Severity::Error), 5U);
}

TEST(Findings, AreLimited) {
    Findings findings;
    constexpr std::uint32_t more = 10;
    for (std::uint32_t i = 0; i < Findings::maxDistinct + more; ++i) {
        findings.add(Code::NameEmpty, {"Int8", i, 0}, {}, "{}", i);
    }
    EXPECT_EQ(findings.all().size(), Findings::maxDistinct + 1);
    EXPECT_EQ(findings.count(findings::Severity::Error), Findings::maxDistinct + more);
}

} // namespace

} // namespace tvtool
