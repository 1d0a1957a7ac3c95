// Values of parameters, by type. Whole systems are in tests/systems.
#include "findings/rules.h"
#include "support.h"
#include "systems/parameters.h"

#include <gtest/gtest.h>

#include <ostream>
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

TEST_P(ParameterValues, AreComparedWithTheTarget) {
    const Case& c = GetParam();
    ssp::Package package;
    ssp::Model& model = package.models.emplace_back();
    model.description = std::move(readText(description3(types, variables))->description);
    ssp::SystemFile& file = package.systems.emplace_back();
    file.elements.emplace_back().file = &file;
    ssp::Element& component = file.elements.emplace_back();
    component.kind = ssp::ElementKind::Component;
    component.file = &file;
    component.name = "C";
    component.model = &model;
    file.elements.front().elements.push_back(&component);
    ssp::ParameterSet& set = package.sets.emplace_back();
    set.file = &package.others.emplace_back();
    set.definitions.enumerations.push_back(
        {"Own", {{"off", 5, {}}, {"on", 3, {}}, {"idle", 1, {}}}, {}});
    ssp::Parameter& parameter = set.parameters.emplace_back();
    parameter.name = c.target;
    parameter.type.base = c.base;
    parameter.type.enumeration = c.base == BaseType::Enumeration ? "Own" : "";
    parameter.values = c.values;
    if (c.values.size() > 1) {
        parameter.dimensions = {{c.values.size(), {}, {}}};
    }
    component.bindings.push_back({"", &set, false, nullptr, {}});
    NameIndex names;
    TypeTable table;
    Connectors connectors(names, table);
    const std::vector<ParameterRow> rows = checkParameters(package, connectors, names);
    std::string codes;
    for (const findings::Finding& finding : set.file->findings.all()) {
        codes += codes.empty() ? "" : " ";
        codes += findings::ruleOf(finding.code).name;
    }
    EXPECT_EQ(codes, c.codes);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().target, std::string("C.") + c.target);
    EXPECT_EQ(rows.front().codes.size(), set.file->findings.all().size());
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

} // namespace

} // namespace tvtool::systems
