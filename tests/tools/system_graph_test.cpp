// Pictures of systems.
#include "exchange/xml.h"
#include "support.h"
#include "systemreport/graph.h"
#include "text/argument_error.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <map>

namespace tvtool::systemreport {

namespace {

using testing::Contains;
using testing::HasSubstr;

/// What a picture contains.
struct Picture : exchange::XmlHandler {
    explicit Picture(const std::string& svg) { exchange::parseXml(textSource(svg), *this); }

    void startElement(std::string_view name, const char* const* attributes,
                      exchange::Position /*position*/) override {
        ++elements[std::string(name)];
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view attribute = attributes[0];
            if (attribute == "id") {
                ++ids[attributes[1]];
            } else if (attribute == "xlink:title") {
                tips.emplace_back(attributes[1]);
            }
        }
    }
    void endElement() override {}

    std::map<std::string, int> elements;
    std::map<std::string, int> ids;
    std::vector<std::string> tips;
};

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        result += fmt::format("&#{};", static_cast<int>(c));
    }
    return result;
}

std::string component(const std::string& name, const std::string& connector) {
    return fmt::format(R"(<ssd:Component name="{}"><ssd:Connectors>
<ssd:Connector name="{}" kind="output"/><ssd:Connector name="u" kind="input"/></ssd:Connectors>
</ssd:Component>)",
                       name, connector);
}

std::string connection(const std::string& from, const std::string& connector,
                       const std::string& to) {
    return fmt::format(R"(<ssd:Connection startElement="{}" startConnector="{}" endElement="{}"
endConnector="u"/>)",
                       from, connector, to);
}

/// Checks a system of these elements and connections.
std::unique_ptr<systems::CheckedSystem> check(const std::string& elements,
                                              const std::string& connections) {
    const TemporaryFolder folder;
    return systems::checkSystem(folder.write("test.ssd", fmt::format(R"(<?xml version="1.0"?>
<ssd:SystemStructureDescription version="1.0" name="test"
xmlns:ssd="http://ssp-standard.org/SSP1/SystemStructureDescription">
<ssd:System name="root"><ssd:Elements>{}</ssd:Elements><ssd:Connections>{}</ssd:Connections>
</ssd:System></ssd:SystemStructureDescription>)",
                                                                     elements, connections)));
}

TEST(SystemGraph, DrawsEveryConnectionOnce) {
    for (const char* const folder : {"connection_units", "connection_flow", "connection_types",
                                     "structs", "parameters_bindings"}) {
        const auto system =
            systems::checkSystem(fmt::format("{}/{}", TVTYPES_TEST_SYSTEMS, folder));
        const std::string svg = svgText(*system, SvgForm::Element);
        EXPECT_TRUE(svg.starts_with("<svg"));
        EXPECT_EQ(dotText(*system), dotText(*system));
        const Picture picture(svg);
        for (std::size_t i = 0; i < system->connections.size(); ++i) {
            const systems::ConnectionRow& row = system->connections[i];
            const int expected =
                row.source.element == nullptr || row.target.element == nullptr ? 0 : 1;
            const auto id = picture.ids.find(fmt::format("connection-{}", i));
            EXPECT_EQ(id == picture.ids.end() ? 0 : id->second, expected) << folder << " " << i;
        }
        for (std::size_t i = 0; i < system->elements.size(); ++i) {
            EXPECT_THAT(picture.ids, Contains(testing::Pair(fmt::format("element-{}", i), 1)))
                << folder;
        }
    }
}

TEST(SystemGraph, LabelsConversionsAndLosses) {
    const auto units = systems::checkSystem(TVTYPES_TEST_SYSTEMS "/connection_units");
    const std::string dot = dotText(*units);
    EXPECT_THAT(dot, HasSubstr("degC to degF<br/>x 1.8 + 32>"));
    EXPECT_THAT(dot,
                HasSubstr("tooltip=\"A.m -> B.kg: unit-incompatible\", "
                          "labeltooltip=\"A.m -> B.kg: unit-incompatible\", color=\"#c62828\""));
    EXPECT_THAT(dot, HasSubstr("label=<unit-suppressed>"));
    EXPECT_THAT(dot, HasSubstr("+ 1 more"));
}

TEST(SystemGraph, ShowsAnyName) {
    const std::string names[] = {R"(<script>alert(1)</script>)",
                                 R"(\N\G\E\T\H\L\n\l\\)",
                                 R"("]; x -> y [label="\")",
                                 "&lt;&amp;&#65;&",
                                 "]]> --> <!-- ' ''",
                                 "</td></table>",
                                 "a\nb\tc\x7f",
                                 "e0:p0:w",
                                 "\\",
                                 std::string(100'000, '"')};
    std::string elements;
    std::string connections;
    for (const std::string& name : names) {
        elements += component(escaped(name), escaped(name));
        connections += connection(escaped(name), escaped(name), escaped(names[0]));
    }
    const auto system = check(elements, connections);
    const std::string svg = svgText(*system);
    const Picture picture(svg);
    EXPECT_EQ(picture.elements.count("script"), 0U);
    EXPECT_LT(svg.size(), 100'000U);
    EXPECT_EQ(picture.ids.count("connection-9"), 1U);
    for (const char* const tip :
         {R"(<script>alert(1)</script>)", R"(\N\G\E\T\H\L\n\l\\)", R"("]; x -> y [label="\")",
          "&lt;&amp;&#65;&", "]]> --> <!-- ' ''", R"(a\u000ab\u0009c\u007f)", "\\"}) {
        EXPECT_THAT(picture.tips, Contains(tip));
    }
    // The label, as it is.
    EXPECT_THAT(svg, HasSubstr(R"(>\N\G\E\T\H\L\n\l\\</text>)"));
    EXPECT_THAT(svg, HasSubstr(">&amp;lt;&amp;amp;&amp;#65;&amp;</text>"));
}

TEST(SystemGraph, SimplifiesAndRefusesLargeSystems) {
    const auto ring = [](std::size_t components, std::size_t connections) {
        std::string elements;
        std::string lines;
        for (std::size_t i = 0; i < components; ++i) {
            elements += component(fmt::format("c{}", i), "y");
        }
        for (std::size_t i = 0; i < connections; ++i) {
            lines += connection(fmt::format("c{}", i % components), "y",
                                fmt::format("c{}", (i + 1) % components));
        }
        return check(elements, lines);
    };
    const Picture simplified(svgText(*ring(100, 301)));
    EXPECT_EQ(simplified.ids.count("connections-0"), 1U);
    EXPECT_EQ(simplified.ids.count("connections-100"), 0U);
    EXPECT_THAT(simplified.tips, Contains("4 connections: inflow-repeated"));
    const auto large = ring(1000, 3000);
    EXPECT_THROW(svgText(*large), text::ArgumentError);
    EXPECT_THAT(dotText(*large), HasSubstr("\"connection-2999\""));
}

/// Cycles within and across nested systems.
TEST(SystemGraph, DrawsCyclesOfNestedSystems) {
    std::string elements;
    std::string connections;
    for (int i = 0; i < 6; ++i) {
        elements += fmt::format(
            R"(<ssd:System name="s{}"><ssd:Connectors><ssd:Connector name="y" kind="output"/>
<ssd:Connector name="u" kind="input"/></ssd:Connectors><ssd:Elements>{}{}</ssd:Elements>
<ssd:Connections><ssd:Connection startConnector="u" endElement="a" endConnector="u"/>{}{}
<ssd:Connection startElement="b" startConnector="y" endConnector="y"/></ssd:Connections>
</ssd:System>)",
            i, component("a", "y"), component("b", "y"), connection("a", "y", "b"),
            connection("b", "y", "a"));
        for (int j = 0; j < 6; ++j) {
            connections += connection(fmt::format("s{}", i), "y", fmt::format("s{}", j));
        }
    }
    const auto system = check(elements, connections);
    EXPECT_EQ(Picture(svgText(*system)).ids.count("connection-35"), 1U);
}

} // namespace

} // namespace tvtool::systemreport
