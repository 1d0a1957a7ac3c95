// tvtypes layout: memory maps as text, as JSON and as pictures.
#include "support.h"

#include "exchange/xml.h"
#include "model/memory_map.h"
#include "support/random_seed.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <random>
#include <sstream>

namespace tvtool {

namespace {

using testing::HasSubstr;

constexpr const char* vehicle = TVTYPES_EXAMPLES "/vehicle.xml";

TEST(Layout, PrintsMemoryMap) {
    const TemporaryFolder folder;
    const std::string file = folder.write(
        "m.xml",
        structuredDescription3(
            "", "<UInt8 name=\"s.x\" valueReference=\"0\"/>"
                "<Float64 name=\"s.z[1].a\" valueReference=\"1\"/>"
                "<Int16 name=\"s.z[1].b\" valueReference=\"2\"><Dimension start=\"2\"/></Int16>"
                "<Float64 name=\"s.z[2].a\" valueReference=\"3\"/>"
                "<Int16 name=\"s.z[2].b\" valueReference=\"4\"><Dimension start=\"2\"/></Int16>"
                "<Boolean name=\"t.u\" valueReference=\"5\"/>"));
    const std::string mapOfS =
        "s: 40 bytes, 15 of padding, aligned to 8; 2 elements, 5 leaves, 7 scalars\n"
        "\n"
        "offset  size  path       type      dfs  flat  raw\n"
        "     0    40  (struct)   s           0     -    -\n"
        "     0     1  x          uint8       1     0    0\n"
        "     1     7  (padding)  -           -     -    -\n"
        "     8    32  z          s_z[2]      2     -    -\n"
        "     8    16  z[1]       s_z         3     -    -\n"
        "     8     8  z[1].a     double      4     1    1\n"
        "    16     4  z[1].b     int16[2]    5     2    2\n"
        "    20     4  (padding)  -           -     -    -\n"
        "    24    16  z[2]       s_z         6     -    -\n"
        "    24     8  z[2].a     double      7     3    4\n"
        "    32     4  z[2].b     int16[2]    8     4    5\n"
        "    36     4  (padding)  -           -     -    -\n";
    EXPECT_EQ(run({"layout", file, "s"}).out, mapOfS);
    EXPECT_TRUE(run({"layout", file}).out.starts_with(mapOfS + "\nt: 1 byte, none of padding"));
    const std::pair<const char*, const char*> rows[] = {
        {"s_z", "s.z (s_z)"}, {"s.z", "s.z (s_z)"}, {"s.z[2]", "s.z[2] (s_z)"}};
    for (const auto& [name, heading] : rows) {
        EXPECT_EQ(run({"layout", file, name}).lines().at(0),
                  std::string(heading) + ": 16 bytes, 4 of padding, aligned to 8; 2 elements, "
                                         "2 leaves, 3 scalars");
    }
}

TEST(Layout, ShowsNamesOfTheDescription) {
    const std::tuple<const char*, const char*, std::vector<std::string>> rows[] = {
        {"a.w[0].v a.w[1].v", "a", {"w", "w[0]", "w[0].v", "w[1]", "w[1].v"}},
        {"a.w[2].v a.w[1].v", "a", {"w", "w[1]", "w[1].v", "w[2]", "w[2].v"}},
        {"a.w[1].v", "a", {"w[1]", "w[1].v"}},
        {"a.w[1].v a.w[3].v", "a", {"w[1]", "w[1].v", "w[3]", "w[3].v"}},
        {"a.m[2,1].v a.m[1,1].v a.m[1,2].v a.m[2,2].v",
         "a",
         {"m", "m[1,1]", "m[1,1].v", "m[1,2]", "m[1,2].v", "m[2,1]", "m[2,1].v", "m[2,2]",
          "m[2,2].v"}},
        {"a.'b.c'.v a.x[1] a.x[2] a.y[1]", "a", {"'b.c'", "'b.c'.v", "x", "y[1]"}},
        // One type, with the names and the indices of the struct that is shown.
        {"l.w[1].p[0] l.w[1].p[1] l.w[2].p[0] l.w[2].p[1] l.z r.z r.w[1].p[1] r.w[1].p[2] "
         "r.w[0].p[1] r.w[0].p[2]",
         "r",
         {"w", "w[0]", "w[0].p", "w[1]", "w[1].p", "z"}},
        // A path precedes the name that another type has in the table.
        {"a.b.v a_b.u", "a_b", {"u"}}};
    const TemporaryFolder folder;
    for (const auto& [names, name, paths] : rows) {
        std::string variables;
        for (const std::string& variable : split(names)) {
            variables += fmt::format("<Float64 name=\"{}\" valueReference=\"1\"/>", variable);
        }
        const std::string file = folder.write("m.xml", structuredDescription3("", variables));
        // The value references are repeated, which is no finding about structs.
        const Outcome outcome = run({"layout", "--json", file, name});
        EXPECT_EQ(outcome.status, 0);
        const boost::json::object map = outcome.json();
        EXPECT_EQ(map.at("structs").at(0).at("path"), name);
        std::vector<std::string> shown;
        for (const auto& row : map.at("structs").at(0).at("rows").as_array()) {
            if (row.at("path").is_string()) {
                shown.emplace_back(row.at("path").as_string());
            }
        }
        EXPECT_EQ(shown, paths) << names;
    }
}

TEST(Layout, LeavesAndPaddingFillTheStruct) {
    const TemporaryFolder folder;
    std::mt19937 random(randomSeed(11));
    const char* const bases[] = {"Float64", "Float32", "Int8", "UInt16", "Boolean", "Int64"};
    std::string variables;
    for (int i = 0; i < 400; ++i) {
        std::string name = "m";
        for (unsigned depth = random() % 4; depth > 0; --depth) {
            name += fmt::format(".s{}[{}]", random() % 3, 1 + random() % 2);
        }
        variables += fmt::format("<{} name=\"{}.v{}\" valueReference=\"{}\"/>", bases[random() % 6],
                                 name, random() % 1000, i);
    }
    const std::string file = folder.write("m.xml", structuredDescription3("", variables));
    for (const std::string& path : {file, std::string(vehicle)}) {
        const boost::json::object maps = run({"layout", "--json", path}).json();
        for (const auto& map : maps.at("structs").as_array()) {
            std::int64_t end = 0;
            std::int64_t next[] = {0, 0};
            for (const auto& row : map.at("rows").as_array()) {
                const std::int64_t offset = row.at("offset").as_int64();
                if (row.at("kind") == "leaf" || row.at("kind") == "padding") {
                    ASSERT_EQ(offset, end);
                    end += row.at("size").as_int64();
                }
                ASSERT_TRUE(row.at("dfs").is_null() || row.at("dfs") == next[0]++);
                ASSERT_EQ(row.at("flat").is_null(), row.at("kind") != "leaf");
                ASSERT_TRUE(row.at("flat").is_null() || row.at("flat") == next[1]++);
            }
            EXPECT_EQ(end, map.at("size").as_int64());
            EXPECT_EQ(next[1], map.at("leaves").as_int64());
        }
    }
}

TEST(Layout, ReportsMissingStructs) {
    const Outcome other = run({"layout", vehicle, "wheel\x1b"});
    EXPECT_EQ(other.status, 2);
    EXPECT_THAT(other.err, HasSubstr("there is no struct \"wheel\\u001b\"; there are "
                                     "vehicle.wheel.hub, vehicle.wheel, vehicle.brake, vehicle\n"));
    const TemporaryFolder folder;
    const std::string flat =
        folder.write("m.xml", description3("", "<Float64 name=\"a.b\" valueReference=\"1\"/>"));
    const Outcome none = run({"layout", flat});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out,
              flat + ": no struct types: variableNamingConvention is not \"structured\"\n");
    EXPECT_EQ(run({"layout", flat, "a"}).status, 2);
    const std::string input = TVTYPES_TEST_INPUTS "/structured_names/modelDescription.xml";
    const Outcome findings = run({"layout", input});
    EXPECT_EQ(findings.status, 1);
    EXPECT_THAT(findings.err,
                HasSubstr(input + ":12:1: error: name \"car.wheel[1\" is not structured: "
                                  "character 12 should be a comma or a closing "
                                  "bracket [name-syntax]\n"));
    EXPECT_EQ(run({"layout", "--json", input}).json().at("findings").as_array().size(), 3);
}

/// Counts elements. Throws a files::ReadError if the text is no XML.
struct Shapes : exchange::XmlHandler {
    explicit Shapes(const std::string& text) { exchange::parseXml(textSource(text), *this); }
    void startElement(std::string_view name, const char* const*, exchange::Position) override {
        rectangles += name == "rect" ? 1 : 0;
    }
    void endElement() override {}
    int rectangles = 0;
};

TEST(LayoutPicture, IsWrittenAsAWhole) {
    const TemporaryFolder folder;
    const std::string out = folder.write("v.svg", "before");
    const Outcome outcome = run({"layout", vehicle, "--svg", out});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
    // Two for the background; one for each of 33 nodes and 11 paddings.
    EXPECT_EQ(Shapes(readFile(out)).rectangles, 2 + 33 + 11);
    EXPECT_THAT(readFile(out), HasSubstr("<title>wheel[4].hub.speed Speed, offset 112, 8 bytes"));
    EXPECT_EQ(run({"layout", vehicle, "--svg", out, "--json"}).status, 2);
    const Outcome unwritable = run({"layout", vehicle, "--svg", out + "/none.svg"});
    EXPECT_EQ(unwritable.status, 2);
    EXPECT_THAT(unwritable.err, HasSubstr("cannot be written"));

    const std::string model = folder.write("m.xml", readFile(vehicle));
    const std::string link = model + ".link";
    std::filesystem::create_hard_link(model, link);
    for (const std::string& path : {model, link}) {
        const Outcome overwriting = run({"layout", model, "--svg", path});
        EXPECT_EQ(overwriting.status, 2);
        EXPECT_THAT(overwriting.err, HasSubstr("is the input, so it is not overwritten"));
    }
    EXPECT_EQ(readFile(model), readFile(vehicle));
}

TEST(LayoutPicture, OmitsSmallDeepAndManyRows) {
    model::MemoryMaps maps;
    model::StructMap map{1, "S", "", "]]>&\"<\x1b", 800000, 8, 100000, 100000, 100000, {}};
    map.rows.push_back({model::RowKind::Struct, 0, 0, 800000, "", "", "S", 0});
    for (int i = 0; i < 100000; ++i) {
        map.rows.push_back({model::RowKind::Leaf, 1, 8 * i, 8, "'<&\xFF\xE6\xB0\xB4'", "'<&'",
                            "double", i + 1, i, i});
    }
    maps.structs.assign(20, map);
    model::StructMap deep{2, "D", "", "D", 8, 8, 1, 1, 1, {}};
    for (int i = 0; i < 100; ++i) {
        deep.rows.push_back({model::RowKind::Struct, i, 0, 8, "d", "d", "D", i});
    }
    maps.structs.front() = deep;
    std::ostringstream os;
    model::drawLayout(maps, os);
    const Shapes shapes(os.str());
    EXPECT_LT(shapes.rectangles, 100);
    EXPECT_THAT(os.str(), HasSubstr("91 of 100 nodes are too small or too deep"));
    EXPECT_THAT(os.str(), HasSubstr("100000 of 100001 nodes are too small"));
    EXPECT_THAT(os.str(), HasSubstr("more struct types have no room in this picture"));
}

} // namespace

} // namespace tvtool
