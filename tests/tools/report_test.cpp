#include "support.h"

#include "findings/text.h"
#include "output/shortening.h"
#include "output/table.h"
#include "support/random_seed.h"
#include "text/glob.h"
#include "text/safe_text.h"
#include "text/utf8.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <set>
#include <sstream>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// Five characters, which take ten columns.
constexpr const char* wide = "\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4\xE6\xB0\xB4";

constexpr const char* controller =
    R"(<fmiModelDescription fmiVersion="3.0" modelName="C" instantiationToken="t"><CoSimulation modelIdentifier="C"/>
<UnitDefinitions>
<Unit name="rad/s"><BaseUnit s="-1" rad="1"/><DisplayUnit name="rpm" factor="9.54929658551372"/></Unit>
</UnitDefinitions>
<TypeDefinitions>
<Float64Type name="My.Speed" unit="rad/s" displayUnit="rpm" min="-100"/>
<EnumerationType name="Mode"><Item name="Off" value="0"/><Item name="On" value="1"/></EnumerationType>
</TypeDefinitions>
<ModelVariables>
<Float64 name="time" valueReference="0" causality="independent" variability="continuous"/>
<Float64 name="w[10]" valueReference="1" causality="input" declaredType="My.Speed" start="1.50" description="Speed
  of the shaft"/>
<Float64 name="w[2]" valueReference="2" causality="input" unit="rad/s" start="0" max="7"/>
<Enumeration name="mode" valueReference="3" causality="output" declaredType="Mode"/>
<UInt64 name="n" valueReference="4" causality="structuralParameter" variability="fixed" start="2"/>
<Float64 name="gain" valueReference="5" causality="parameter" variability="tunable" start="1 2"><Dimension valueReference="4"/><Alias name="k" description="same"/></Float64>
<Int8 name="x" valueReference="6" initial="exact" start="300"/>
</ModelVariables><ModelStructure><Output valueReference="3"/></ModelStructure>
</fmiModelDescription>
)";

TEST(Report, ListsTheInterfaceFirst) {
    const TemporaryFolder folder;
    const std::string file = folder.write("c.xml", controller);
    const Outcome outcome = run({"inspect", file});
    EXPECT_EQ(outcome.status, 1);
    std::string text = outcome.out;
    for (std::size_t i = 0; (i = text.find(file)) != std::string::npos;) {
        text.replace(i, file.size(), "c.xml");
    }
    EXPECT_EQ(
        text,
        R"(c.xml: FMI 3.0, model "C": 7 variables, 2 inputs, 1 output, 2 parameters; 1 error, no warnings, no notes

Inputs
name   type      unit         start   min  max  description
w[10]  My.Speed  rad/s (rpm)   1.50  -100    -  Speed of the shaft
w[2]   Float64   rad/s            0     -    7  -

Outputs
name  type
mode  Mode

Parameters
name  causality   type     dimensions  start
n     structural  UInt64   -               2
gain  -           Float64  n             1 2

Types
name      kind         size  storage  alias of  unit          min  variables  used by
double    built-in        8  -        -         -               -          3  time, w[2], gain
int8      built-in        1  -        -         -               -          1  x
My.Speed  alias           8  -        double    rad/s (rpm)  -100          1  w[10]
Mode      enumerated      4  int32    -         -               -          1  mode
ufix64    fixed-point     8  -        -         -               -          1  n

Units
unit   base units  display units  variables  used by
rad/s  rad/s       rpm                    2  w[10], w[2]

Enumerations
name  items
Mode  Off = 0, On = 1

Dimensions
dimensions  variables  used by
n                   1  gain

Facts
fact  stated by
n==2  n, gain

Findings
c.xml:17:1: error: start "300" is no Int8 value [value-invalid]
    Write a value of the type; FMI has a decimal point, and true and false in lower case.
)");

    const auto names = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"inspect", "--json", file});
        std::vector<std::string> all;
        const boost::json::object result = run(options).json();
        for (const auto& variable : result.at("variables").as_array()) {
            all.emplace_back(variable.at("name").as_string());
        }
        return all;
    };
    EXPECT_THAT(names({}), ElementsAre("w[10]", "w[2]", "mode", "n", "gain"));
    EXPECT_THAT(names({"--sort", "name"}), ElementsAre("gain", "mode", "n", "w[2]", "w[10]"));
    EXPECT_THAT(names({"--sort", "unit", "--filter", "w*", "--filter", "n"}),
                ElementsAre("n", "w[10]", "w[2]"));
    EXPECT_THAT(names({"--variables", "all", "--filter", "*[2x]"}), ElementsAre("x"));
    EXPECT_THAT(names({"--variables", "none"}), ElementsAre());
    EXPECT_THAT(run({"inspect", file, "--filter", "time"}).out,
                HasSubstr("1 variable that is no input, output or parameter matches; --variables"));
    EXPECT_THAT(run({"inspect", file, "--ids"}).out, HasSubstr("\nid  name      registered as"));
}

TEST(Report, HasAllMembersInJson) {
    const TemporaryFolder folder;
    const std::string file = folder.write("c.xml", controller);
    const Outcome outcome = run({"inspect", "--json", file});
    boost::json::value expected = boost::json::parse(R"({
        "command": "inspect", "schemaVersion": 1, "file": "c.xml", "fmiVersion": "3.0", "modelName": "C",
        "counts": {"variables": 7, "inputs": 2, "outputs": 1, "parameters": 2},
        "outside": [],
        "units": [{"name": "rad/s", "id": 1, "expression": "rad/s", "from": "name", "baseUnits": "rad/s",
                   "displayUnits": [{"name": "rpm", "factor": 9.54929658551372, "offset": 0.0, "inverse": false}],
                   "variables": ["w[10]", "w[2]"]}],
        "dimensions": [{"id": 1, "text": "n", "variables": ["gain"]}],
        "facts": [{"id": 3, "text": "n==2", "blocks": ["n", "gain"]}],
        "findings": [{"code": "value-invalid", "severity": "error", "file": "c.xml", "line": 17, "column": 1,
                      "element": "Int8", "subject": {"kind": "variable", "name": "x"},
                      "sentence": "start \"300\" is no Int8 value",
                      "advice": "Write a value of the type; FMI has a decimal point, and true and false in lower case.",
                      "count": 1, "lastLine": 17}],
        "errors": 1, "warnings": 0, "notes": 0})");
    boost::json::object object = outcome.json();
    const boost::json::array variables = object["variables"].as_array();
    const boost::json::array types = object["types"].as_array();
    EXPECT_EQ(variables[0], boost::json::parse(R"({
        "name": "w[10]", "causality": "input", "variability": "continuous", "initial": null,
        "type": "My.Speed", "baseType": "Float64", "unit": "rad/s", "displayUnit": "rpm",
        "dimensions": null, "start": "1.50", "min": "-100", "max": null, "nominal": null,
        "description": "Speed   of the shaft", "line": 11, "aliases": []})"))
        << variables[0];
    EXPECT_EQ(variables[4].at("aliases"), boost::json::parse(R"(["k"])"));
    EXPECT_EQ(types[2], boost::json::parse(R"({
        "id": 14, "name": "My_Speed", "originalName": "My.Speed", "kind": "alias", "size": 8,
        "storage": "double", "aliasOf": "double", "elements": null, "leaves": null, "items": [],
        "unit": "rad/s", "min": "-100", "max": null, "description": null, "variables": 1,
        "usedBy": ["w[10]"]})"))
        << types[2];
    EXPECT_EQ(types[3].at("items"),
              boost::json::parse(R"([{"name": "Off", "value": 0}, {"name": "On", "value": 1}])"));
    object.erase("variables");
    object.erase("types");
    expected.at("file") = file;
    expected.at("findings").at(0).at("file") = file;
    EXPECT_EQ(boost::json::value(object), expected) << outcome.out;
}

TEST(Report, NamesTheInstancesOfStructs) {
    const TemporaryFolder folder;
    std::string variables;
    int reference = 0;
    for (const char* const path : {"car.axle[1]", "car.axle[2]", "spare"}) {
        variables +=
            fmt::format(R"(<Float64 name="{0}.w" valueReference="{1}"/>)", path, ++reference);
    }
    const Outcome outcome =
        run({"inspect", folder.write("s.xml", structuredDescription3("", variables))});
    EXPECT_THAT(outcome.out,
                HasSubstr("car_axle     8         1       1          3  car.axle, spare\n"
                          "car         16         1       2          2  car\n"));
}

TEST(FindingLines, FoldAndSelect) {
    const TemporaryFolder folder;
    std::string variables;
    for (int i = 0; i < 60; ++i) {
        variables += fmt::format(
            "\n<Int8 name=\"v{0}\" valueReference=\"{0}\" initial=\"exact\" start=\"3{0}.5\"/>", i);
    }
    variables += "\n<Int8 name=\"odd\" valueReference=\"99\" colour=\"red\"/>";
    const std::string file = folder.write("m.xml", description3("", variables));
    const auto quiet = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"inspect", file, "--quiet"});
        return run(options);
    };
    const Outcome folded = quiet({});
    EXPECT_EQ(folded.status, 1);
    EXPECT_THAT(folded.lines(), testing::SizeIs(4)) << folded.out;
    EXPECT_TRUE(folded.out.starts_with(file + ":2:1: error: 60 values are invalid: start "
                                              "(lines 2 to 61) [value-invalid]\n    Write"))
        << folded.out;
    EXPECT_THAT(quiet({"--all"}).lines(), testing::SizeIs(63));
    // A note of what is left out is the last of 50 lines.
    findings::Findings many;
    for (std::uint32_t i = 0; i < 100; ++i) {
        many.add(static_cast<findings::Code>(i % findings::rules().size()), {"Unit", i + 1, 1},
                 {findings::SubjectKind::Unit, "u"}, "sentence {}", i);
    }
    many.sort();
    std::ostringstream lines;
    findings::TextPrinter({}, lines).print(many.all(), "f");
    const std::string printed = lines.str();
    EXPECT_THAT(std::ranges::count(printed, '\n'), testing::AnyOf(49, 50));
    EXPECT_THAT(printed, HasSubstr(" more findings; --all shows each\n"));

    const struct {
        std::vector<std::string> options;
        int status;
        std::size_t lines;
    } rows[] = {{{"--select", "attribute-*"}, 0, 2},
                {{"--select", "attribute-*", "--strict"}, 1, 2},
                {{"--ignore", "value-invalid"}, 0, 2},
                {{"--select", "v*,attribute-unexpected", "--ignore", "[!v]*"}, 1, 2},
                {{"--ignore", "*", "--strict"}, 0, 0},
                {{"--select", "nothing-*"}, 0, 0}};
    for (const auto& row : rows) {
        const Outcome outcome = quiet(row.options);
        EXPECT_EQ(outcome.status, row.status) << row.options[1];
        EXPECT_EQ(outcome.lines().size(), row.lines) << outcome.out;
    }
    expectRejection(quiet({"--select", "value-invald"}), "did you mean \"value-invalid\"?");
}

TEST(SeveralFiles, AreFoundOnceAndCounted) {
    const TemporaryFolder folder;
    const std::string root = fs::path(folder.write("b.xml", controller)).parent_path();
    fs::create_directories(root + "/d/e");
    fs::create_directory_symlink("..", root + "/d/e/loop");
    fs::create_symlink("b.xml", root + "/same.xml");
    folder.write("d/broken.XML", "<fmiModelDescription fmiVersion=\"3.0\">");
    folder.write("d/other.xml", "<catalog/>");
    folder.write("d/text.xml", "no description");
    folder.writeArchive("d/e/a.fmu", {{"modelDescription.xml", description3("", "")}});
    fs::create_symlink("nowhere", root + "/d/gone.fmu");

    const Outcome text = run({"inspect", root, root + "/b.xml"});
    EXPECT_EQ(text.status, 2);
    EXPECT_EQ(text.err, "");
    std::vector<std::string> lines = text.lines();
    for (std::string& line : lines) {
        line.erase(0, root.size() + 1);
        line.erase(std::min(line.size(), line.find(line.starts_with("b.") ? ',' : ' ')));
    }
    EXPECT_THAT(lines,
                ElementsAre("b.xml: FMI 3.0", HasSubstr("[value-invalid]"), testing::_,
                            HasSubstr("broken.XML:1:"), "d/e/a.fmu:", "d/gone.fmu:", testing::_));
    EXPECT_EQ(text.lines().back(),
              "4 files: 1 with errors, 2 unreadable; 1 error, no warnings, no notes");
    const std::vector<std::string> objects = run({"inspect", "--json", root}).lines();
    ASSERT_EQ(objects.size(), 5U);
    EXPECT_EQ(boost::json::parse(objects[0]).at("file").as_string(), root + "/b.xml");
    EXPECT_EQ(boost::json::parse(objects[3]).at("error").at("file").as_string(),
              root + "/d/gone.fmu");
    EXPECT_EQ(boost::json::parse(objects[4]).at("total"),
              boost::json::parse(R"({"files": 4, "unreadable": 2, "withErrors": 1, "errors": 1,
                                     "warnings": 0, "notes": 0})"));
}

TEST(Shortening, KeepsDifferentTextsDifferent) {
    std::mt19937 random(randomSeed(7));
    const auto choose = [&random](auto... choices) {
        const std::string all[] = {choices...};
        return all[random() % sizeof...(choices)];
    };
    for (const std::size_t width : {5U, 9U, 16U, 24U}) {
        std::vector<std::string> texts{"abcd", "a...d", "", wide};
        for (int i = 0; i < 2000; ++i) {
            std::string text = choose("plant.", "plant.body.", "wide\xE6\xB0\xB4.");
            for (auto part = random() % 5; part > 0; --part) {
                text +=
                    choose("wheel[", "hub\xC3\xA4[", "x[") + std::to_string(random() % 30) + "].";
            }
            texts.push_back(text + choose("temperature", "temperatur", "speed.of.the.rotor"));
        }
        const output::Shortening shortening(
            texts.size(), [&](std::size_t i, std::string& text) { text += texts[i]; }, width);
        std::set<std::string> shortened;
        for (const std::string& text : texts) {
            const std::string result = shortening(text);
            EXPECT_LE(text::displayWidth(result), width) << result;
            EXPECT_TRUE(text::displayWidth(text) > width || result == text) << text;
            EXPECT_EQ(text::safeText(result), result) << text;
            shortened.insert(result);
        }
        const std::set<std::string> distinct(texts.begin(), texts.end());
        EXPECT_EQ(shortened.size(), distinct.size()) << width;
    }
}

TEST(Terminal, FitsTablesAndWrapsTexts) {
    for (const char* const name :
         {"vehicle_suspension.xml", "motor_drive.xml", "thermal_plant.xml", "vehicle.xml"}) {
        for (const std::size_t width : {80U, 100U}) {
            const std::string file = std::string(TVTYPES_EXAMPLES "/") + name;
            for (const std::string& line :
                 run({"inspect", file, "--variables", "all", "--ids"}, "", width).lines()) {
                EXPECT_LE(text::displayWidth(line), width) << line;
            }
        }
    }
    EXPECT_EQ(output::wrapped("    one two threefour five", 2, 9),
              "    one\n  two\n  threefo\n  ur five");
    EXPECT_EQ(output::wrapped("one two", 2, output::unlimitedWidth), "one two");

    output::Table table;
    table.addColumn("name", output::Align::Left);
    table.addColumn("number", output::Align::Right);
    table.addRow({std::string(200, 'a') + "1", "123456789"});
    table.addRow({wide, ""});
    std::ostringstream os;
    output::setLineWidth(os, 30);
    table.print(os, {});
    EXPECT_EQ(os.str(), "name                    number\n"
                        "aaaaaaaa...aaaaaaa1  123456789\n" +
                            std::string(wide) + "                   -\n");
}

TEST(Glob, MatchesAsShellsDo) {
    const struct {
        const char* pattern;
        const char* text;
        bool matches;
    } rows[] = {{"*", "", true},          {"a*b*c", "aXbYbZc", true}, {"a*b", "abc", false},
                {"?", "\xC3\xA4", true},  {"?", "", false},           {"[a-c]x", "bx", true},
                {"[!a-c]x", "bx", false}, {"[]x]", "]", true},        {"[ab", "[ab", true},
                {"a\\*", "a*", true},     {"a\\*", "ab", false},      {"*[0-9]", "v12", true}};
    for (const auto& row : rows) {
        EXPECT_EQ(text::matchesGlob(row.text, row.pattern), row.matches) << row.pattern;
    }
    EXPECT_TRUE(text::matchesGlob("w[1].x", "w[1].*", false));
    // A matcher that tries each star again takes longer than the universe exists.
    EXPECT_FALSE(text::matchesGlob(std::string(5000, 'a'), repeatedText("a*", 100) + "b"));
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
