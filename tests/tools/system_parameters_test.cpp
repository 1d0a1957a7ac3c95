// Parameters of packages and connections of structs, in records. Whole systems are in
// tests/systems.
#include "findings/rules.h"
#include "support.h"
#include "systems/parameters.h"
#include "systems/structs.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <utility>

namespace tvtool::systems {

namespace {

using exchange::BaseType;

constexpr const char* types = R"(
  <Int8Type name="Step" min="-5" max="20"/>
  <EnumerationType name="Mode"><Item name="off" value="0"/><Item name="on" value="3"/>
  </EnumerationType>)";

constexpr const char* variables = R"(
  <Float64 name="f64" valueReference="1" causality="parameter" variability="fixed" start="0"
    min="-0.1" max="1e10"/>
  <Float32 name="f32" valueReference="2" causality="parameter" variability="fixed" start="0"/>
  <Int8 name="i8" valueReference="3" causality="parameter" variability="fixed" start="0"/>
  <Int8 name="step" valueReference="4" causality="parameter" variability="fixed" start="0"
    declaredType="Step"/>
  <UInt64 name="u64" valueReference="5" causality="parameter" variability="fixed" start="0"/>
  <Boolean name="bool" valueReference="6" causality="parameter" variability="fixed" start="0"/>
  <String name="text" valueReference="7" causality="parameter" variability="fixed">
    <Start value=""/></String>
  <Enumeration name="mode" valueReference="8" causality="parameter" variability="fixed" start="0"
    declaredType="Mode"/>
  <Float64 name="array" valueReference="9" causality="parameter" variability="fixed" start="0 0">
    <Dimension start="2"/></Float64>
  <Float64 name="local" valueReference="10" causality="local"/>
  <Float64 name="approx" valueReference="11" causality="local" initial="approx" start="0"/>
  <Float64 name="input" valueReference="12" causality="input" start="0"/>
  <Float64 name="one" valueReference="13" causality="output" variability="constant" start="1"/>
  <Float64 name="time" valueReference="14" causality="independent"/>)";

/// A parameter of a component with the variables above.
struct Case {
    const char* target;
    BaseType base;
    std::vector<std::string_view> values;
    const char* codes; ///< of all findings
};

std::ostream& operator<<(std::ostream& out, const Case& c) {
    return out << c.target << '_' << static_cast<int>(c.base) << '_' << c.values.size() << '_'
               << (c.values.empty() ? "" : c.values.front().substr(0, 20));
}

class ParameterValues : public testing::TestWithParam<Case> {};

/// A package with one file of parameter sets.
class Records {
  public:
    explicit Records(const std::string& variablesOfModel) {
        model_.description =
            std::move(readText(description3(types, variablesOfModel))->description);
        file_.elements.emplace_back().file = &file_;
    }

    ssp::Element& root() { return file_.elements.front(); }

    ssp::Element& add(ssp::Element& system, const char* name, ssp::ElementKind kind) {
        ssp::Element& element = file_.elements.emplace_back();
        element.kind = kind;
        element.file = &file_;
        element.name = name;
        element.model = kind == ssp::ElementKind::Component ? &model_ : nullptr;
        system.elements.push_back(&element);
        return element;
    }

    /// Binds a set, whose parameters are in successive lines.
    ssp::ParameterSet& bind(ssp::Element& element, const std::vector<const char*>& names,
                            const char* prefix = "") {
        ssp::ParameterSet& set = package_.sets.emplace_back();
        set.file = &sets_;
        for (const char* const name : names) {
            ssp::Parameter& parameter = set.parameters.emplace_back();
            parameter.name = name;
            parameter.type.base = BaseType::Float64;
            parameter.values = {"1"};
            parameter.place.line = ++line_;
        }
        element.bindings.push_back({prefix, &set, false, nullptr, {}});
        return set;
    }

    void map(ssp::Element& element, std::vector<ssp::MappingEntry> entries) {
        ssp::ParameterMapping& mapping = package_.mappings.emplace_back();
        mapping.file = &sets_;
        mapping.entries = std::move(entries);
        element.bindings.back().hasMapping = true;
        element.bindings.back().mapping = &mapping;
    }

    std::vector<ParameterRow> check() {
        NameIndex names;
        TypeTable table;
        Connectors connectors(names, table);
        Comparisons comparisons;
        return checkParameters(package_, connectors, names, comparisons);
    }

    /// Returns the codes of the findings in the file of the sets, sorted.
    std::string codes() const { return codesOf(sets_.findings); }
    static std::string codesOf(const findings::Findings& findings) {
        std::multiset<std::string> codes;
        for (const findings::Finding& finding : findings.all()) {
            codes.insert(findings::ruleOf(finding.code).name);
        }
        return fmt::format("{}", fmt::join(codes, " "));
    }

  private:
    ssp::Package package_;
    ssp::Model& model_ = package_.models.emplace_back();
    ssp::SystemFile& file_ = package_.systems.emplace_back();
    ssp::File& sets_ = package_.others.emplace_back();
    std::uint32_t line_ = 0;
};

TEST_P(ParameterValues, AreComparedWithTheTarget) {
    const Case& c = GetParam();
    Records records(variables);
    ssp::Element& component = records.add(records.root(), "C", ssp::ElementKind::Component);
    ssp::ParameterSet& set = records.bind(component, {c.target});
    set.definitions.enumerations.push_back(
        {"Own", {{"off", 5, {}}, {"on", 3, {}}, {"idle", 1, {}}}, {}});
    ssp::Parameter& parameter = set.parameters.front();
    parameter.type.base = c.base;
    parameter.type.enumeration = c.base == BaseType::Enumeration ? "Own" : "";
    parameter.values = c.values;
    if (c.values.size() > 1) {
        parameter.dimensions = {{c.values.size(), {}, {}}};
    }
    const std::vector<ParameterRow> rows = records.check();
    EXPECT_EQ(records.codes(), c.codes);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().target, std::string("C.") + c.target);
    EXPECT_EQ(rows.front().codes.size(), *c.codes == 0 ? 0U : 1U);
}

const std::string manyDigits(1'000'000, '7');

INSTANTIATE_TEST_SUITE_P(
    Cases, ParameterValues,
    testing::Values(
        // Decimals are compared as they are written, and rounding one is no loss.
        Case{"f64", BaseType::Float64, {"-0.1"}, ""},
        Case{"f64", BaseType::Float32, {"-0.1000000000000000001"}, "parameter-range"},
        Case{"f64", BaseType::Float64, {"1e10"}, ""},
        Case{"f64", BaseType::Float64, {"INF"}, "parameter-range"},
        Case{"f64", BaseType::Float64, {"NaN"}, ""},
        Case{"f64", BaseType::Float64, {"1,5"}, "parameter-value"},
        Case{"f64", BaseType::Boolean, {"true"}, "parameter-type"},
        Case{"f64", BaseType::String, {"1"}, "parameter-type"},
        Case{"f64", BaseType::Enumeration, {"on"}, ""}, Case{"f32", BaseType::Float64, {"0.1"}, ""},
        Case{"f32", BaseType::Float64, {"6.02214e23"}, ""},
        Case{"f32", BaseType::Int32, {"16777216"}, ""},
        Case{"f32", BaseType::Int32, {"16777217"}, "parameter-lossy"},
        Case{"f32", BaseType::Float64, {"1e39"}, "parameter-range"},
        Case{"f32", BaseType::Float64, {"1e-999999"}, ""},
        Case{"f32", BaseType::Float64, {manyDigits}, "parameter-value"},
        Case{"i8", BaseType::Float64, {"-128.0"}, ""},
        Case{"i8", BaseType::Float64, {"3.5"}, "parameter-lossy"},
        Case{"i8", BaseType::Float64, {"NaN"}, "parameter-range"},
        Case{"i8", BaseType::Float32, {"1e39"}, "parameter-value"},
        Case{"i8", BaseType::Int32, {"128"}, "parameter-range"},
        Case{"i8", BaseType::Int32, {"3000000000"}, "parameter-value"},
        Case{"step", BaseType::Int8, {"20"}, ""},
        Case{"step", BaseType::Int8, {"-6"}, "parameter-range"},
        Case{"u64", BaseType::UInt64, {"18446744073709551615"}, ""},
        Case{"u64", BaseType::Int64, {"-1"}, "parameter-range"},
        Case{"u64", BaseType::Float64, {"18446744073709551616"}, "parameter-range"},
        Case{"bool", BaseType::Boolean, {"1"}, ""},
        Case{"bool", BaseType::Int32, {"1"}, "parameter-type"},
        Case{"text", BaseType::String, {"a b"}, ""},
        Case{"text", BaseType::Binary, {"0f"}, "parameter-type"},
        Case{"mode", BaseType::Enumeration, {"on"}, ""},
        Case{"mode", BaseType::Enumeration, {"idle"}, "parameter-item"},
        Case{"mode", BaseType::Enumeration, {"auto"}, "parameter-item"},
        Case{"mode", BaseType::Int32, {"3"}, ""},
        Case{"mode", BaseType::Int32, {"1"}, "parameter-item"},
        Case{"mode", BaseType::Float64, {"0.5"}, "parameter-item"},
        Case{"array", BaseType::Float64, {"1", "2"}, ""},
        Case{"array", BaseType::Float64, {"1", "2", "3"}, "parameter-dimension"},
        Case{"array", BaseType::Float64, {"1"}, "parameter-dimension"},
        Case{"local", BaseType::Float64, {"1"}, "parameter-forbidden"},
        Case{"approx", BaseType::Float64, {"1"}, ""}, Case{"input", BaseType::Float64, {"1"}, ""},
        Case{"one", BaseType::Float64, {"1"}, "parameter-forbidden"},
        Case{"time", BaseType::Float64, {"1"}, "parameter-forbidden"}));

/// System B with component C, and component B.C next to it.
struct Nested : Records {
    Nested()
        : Records(R"(
  <Float64 name="d" valueReference="1" causality="parameter" variability="fixed" start="0">
    <Alias name="other"/></Float64>
  <Float64 name="x.y" valueReference="2" causality="parameter" variability="fixed" start="0"/>)") {
        b.connectors.push_back({"C.d", ssp::Kind::Parameter, {}, {}, {}});
        unknown.model = nullptr;
        unknown.connectors.push_back({"u", ssp::Kind::Input, {}, {}, {}});
    }

    ssp::Element& b = add(root(), "B", ssp::ElementKind::System);
    ssp::Element& c = add(b, "C", ssp::ElementKind::Component);
    ssp::Element& dotted = add(root(), "B.C", ssp::ElementKind::Component);
    ssp::Element& unknown = add(root(), "U", ssp::ElementKind::Component);
};

std::string targets(const std::vector<ParameterRow>& rows) {
    std::vector<std::string> texts;
    for (const ParameterRow& row : rows) {
        texts.push_back(row.overriddenBy ? fmt::format("{}<{}", row.target, *row.overriddenBy)
                                         : row.target);
    }
    return fmt::format("{}", fmt::join(texts, " "));
}

TEST(ParameterNames, MatchesAllElementsWithDots) {
    Nested system;
    system.bind(system.root(), {"B.C.d", "C.d", "U.u", "U.any", "B.C.x.y", "B.x", "B.C"});
    // The connector C.d of B, and d of both components.
    std::vector<ParameterRow> rows = system.check();
    std::ranges::sort(rows, {}, &ParameterRow::target);
    EXPECT_EQ(targets(rows), "B.C.d B.C.d B.C.d B.C.x.y B.C.x.y U.any U.u");
    EXPECT_EQ(system.codes(), "parameter-unmatched parameter-unmatched parameter-unmatched");
}

TEST(ParameterNames, PrecedesWithThePrefix) {
    Nested system;
    system.bind(system.root(), {"d", "e"}, "B.C.");
    system.bind(system.c, {"p", "q"});
    EXPECT_EQ(system.check().size(), 3U);
    // "e" alone, and the second set as a whole.
    EXPECT_EQ(system.codes(), "parameter-unmatched parameter-unmatched");
}

TEST(ParameterMapping, AppliesOnlyWhatIsMapped) {
    Nested system;
    system.bind(system.c, {"a", "b", "d"}, "p.");
    system.map(system.c, {{"p.a", "d", false, {}, {}},
                          {"p.a", "x.y", false, {}, {}},
                          {"b", "x.y", false, {}, {}},
                          {"p.b", "none", false, {}, {}}});
    EXPECT_EQ(targets(system.check()), "B.C.d B.C.x.y");
    EXPECT_EQ(system.codes(),
              "mapping-name-repeated mapping-source-unmatched mapping-target-unmatched");
}

TEST(ParameterMapping, TransformsValues) {
    Nested system;
    ssp::ParameterSet& set = system.bind(system.c, {"a"});
    set.parameters.front().values = {"0.1"};
    ssp::MappingEntry entry{"a", "d", false, {}, {}};
    entry.transformation = {ssp::TransformationKind::Linear, 3, 0.2, {}, {}};
    ssp::MappingEntry invalid{"a", "x.y", false, {}, {}};
    invalid.transformation = {ssp::TransformationKind::Integer, 1, 0, {{"1", "2", {}}}, {}};
    system.map(system.c, {entry, invalid});
    EXPECT_EQ(system.check().front().applied, "0.5");
    EXPECT_EQ(system.codes(), "transformation-type");
}

TEST(ParameterPrecedence, UsesTheHighestLevelAndThenTheLastBinding) {
    Nested system;
    system.bind(system.c, {"d"});
    system.bind(system.c, {"other"}); // an alias
    system.bind(system.c, {"x.y"});
    system.bind(system.c, {"x.y"});
    system.bind(system.root(), {"d"}, "B.C.");
    EXPECT_EQ(targets(system.check()), "B.C.d B.C.d B.C.d B.C.d<2 B.C.d<2 B.C.x.y<6 B.C.x.y");
    EXPECT_EQ(system.codes(), "parameter-overridden parameter-overridden parameter-overridden");
}

TEST(ConnectedStructs, ReportsExchangedAndMissingElements) {
    Records system(variables);
    ssp::Element& a = system.add(system.root(), "A", ssp::ElementKind::Component);
    ssp::Element& b = system.add(system.root(), "B", ssp::ElementKind::Component);
    for (ssp::Element* const element : {&a, &b}) {
        element->model = nullptr;
        for (const char* const name : {"bus.x", "bus.y", "bus.z", "bus.axle.left"}) {
            ssp::Type type;
            type.base = BaseType::Float64;
            element->connectors.push_back(
                {name, element == &a ? ssp::Kind::Output : ssp::Kind::Input, type, {}, {}});
        }
    }
    NameIndex names;
    TypeTable table;
    Connectors connectors(names, table);
    ssp::Connection record;
    std::vector<ConnectionRow> rows;
    const auto connect = [&](const char* from, const char* to) {
        ConnectionRow& row = rows.emplace_back();
        row.system = &system.root();
        row.record = &record;
        row.source = connectors.end(system.root(), {"A", from, {}});
        row.target = connectors.end(system.root(), {"B", to, {}});
    };
    connect("bus.x", "bus.y");
    connect("bus.y", "bus.x");
    StructTypes types(connectors, table);
    const std::vector<StructRow> structs = checkStructs(rows, types);
    ASSERT_EQ(structs.size(), 1U);
    EXPECT_EQ(structs.front().source, "A.bus");
    EXPECT_EQ(structs.front().connected, 2U);
    EXPECT_EQ(structs.front().elements, 3U);
    EXPECT_TRUE(structs.front().isSameType);
    EXPECT_EQ(Records::codesOf(system.root().file->file.findings),
              "struct-crossed struct-crossed struct-partial");
    // An output of another type is another struct.
    a.connectors.back().type.base = BaseType::Int8;
    Connectors others(names, table);
    StructTypes otherTypes(others, table);
    EXPECT_FALSE(checkStructs(rows, otherTypes).front().isSameType);
}

} // namespace

} // namespace tvtool::systems
