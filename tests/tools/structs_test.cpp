// Struct types from structured names, and their memory layout.
#include "support.h"

#include "fmi/structured_name.h"
#include "model/model.h"
#include "model/name_tree.h"
#include "model/struct_layout.h"
#include "support/random_seed.h"

#include <fndut/alloc.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>

#include <map>
#include <random>

namespace tvtool {

namespace {

using model::StructLayout;
using testing::ElementsAre;
using testing::HasSubstr;
using TVTypeSys::DataTypeTable;

TEST(StructuredName, FollowsTheGrammar) {
    fmi::StructuredName name;
    const std::pair<const char*, std::vector<std::string>> good[] = {
        {"a", {"a"}},
        {"_a1.B[1].c[02,3]", {"_a1", "B[1]", "c[02,3]"}},
        {"der(a.b[4])", {"a", "b[4]"}},
        {"der(a,2)", {"a"}},
        {"der.x", {"der", "x"}},
        {"'a.b[1] \\' \\\\'.c", {"'a.b[1] \\' \\\\'", "c"}},
        {"'\xC3\xA4'[2147483647]", {"'\xC3\xA4'[2147483647]"}}};
    for (const auto& [text, parts] : good) {
        EXPECT_FALSE(fmi::parseName(text, name)) << text;
        std::vector<std::string> found;
        for (const fmi::NamePart& part : name.parts) {
            found.emplace_back(part.text);
        }
        EXPECT_EQ(found, parts) << text;
        EXPECT_EQ(name.isDerivative, std::string_view(text).starts_with("der("));
    }
    const std::pair<const char*, std::size_t> bad[] = {
        {"", 0},        {"1a", 0},      {"a.", 2},       {"a..b", 2},          {"a b", 1},
        {"a[", 2},      {"a[]", 2},     {"a[1", 3},      {"a[1,]", 4},         {"a[x]", 2},
        {"a[1][2]", 4}, {"a[-1]", 2},   {"a[1]b", 4},    {"a[2147483648]", 2}, {"'", 1},
        {"''", 1},      {"'a", 2},      {"'a\\", 3},     {"'a\\x'", 3},        {"der(a", 5},
        {"der()", 4},   {"der(a,)", 6}, {"der(a).b", 6}, {"der(der(a))", 7}};
    for (const auto& [text, position] : bad) {
        const auto fault = fmi::parseName(text, name);
        ASSERT_TRUE(fault) << text;
        EXPECT_EQ(fault->position, position) << text;
    }
}

std::unique_ptr<model::Model> makeModel(const std::string& variables, const char* types = "") {
    return std::make_unique<model::Model>(textSource(structuredDescription3(types, variables)),
                                          findings::Findings());
}

/// Returns the elements of all struct types, as in "T {x: double[3], y: U}".
std::vector<std::string> structTexts(const model::Model& model) {
    const DataTypeTable& table = model.types.table();
    const auto record = [&](int id) { return &model::typeRecord(table, id); };
    std::vector<std::string> all;
    for (const model::Structs::Type& type : model.structs.all()) {
        std::vector<std::string> elements;
        for (const StructElement* element :
             static_cast<const StructDataType*>(record(type.id))->getElements()) {
            const std::vector<int> sizes(element->dimensions,
                                         element->dimensions + element->numDimensions);
            elements.push_back(
                fmt::format("{}: {}{}", element->name, record(element->dataTypeId)->getName(),
                            sizes.empty() ? "" : fmt::format("[{}]", fmt::join(sizes, ","))));
        }
        all.push_back(
            fmt::format("{} {{{}}}", record(type.id)->getName(), fmt::join(elements, ", ")));
    }
    return all;
}

TEST(Structs, AreMadeFromNames) {
    struct Row {
        std::string names; ///< each a Float64, a Boolean before "!" and a String before "%"
        std::vector<std::string> structs;
        const char* remark = "";
    };
    const Row rows[] = {
        {"a b[1] b[2] der(c.d)", {}},
        {"a.x b a.y!", {"a {x: double, y: boolean}"}},
        {"c.l.x c.r.x c.l.y c.r.y", {"c_l {x: double, y: double}", "c {l: c_l, r: c_l}"}},
        {"l.x l.y! r.y! r.x", {"l {x: double, y: boolean}"}},
        {"p.l.x p.l.y! p.m q.m q.k.y! q.k.x q.l.y! q.l.x",
         {"p_l {x: double, y: boolean}", "p {l: p_l, m: double}", "q {m: double, k: p_l, l: p_l}"}},
        {"p.s.y! p.s.x p.t q.t q.s.x q.s.y!",
         {"p_s {y: boolean, x: double}", "p {s: p_s, t: double}"}},
        // The first instance in the description, not in the hierarchy.
        {"p.z q.s.x q.s.y! p.s.y! p.s.x",
         {"q_s {x: double, y: boolean}", "p {z: double, s: q_s}", "q {s: q_s}"}},
        {"c.w[2].x c.w[2].y! c.w[1].y! c.w[1].x", {"c_w {x: double, y: boolean}", "c {w: c_w[2]}"}},
        {"l.x[0] l.x[1] r.x[2] r.x[1]", {"l {x: double[2]}"}},
        {"l.x[1] l.x[3] r.x[3] r.x[1] r.x",
         {"l {x[1]: double, x[3]: double}", "r {x[3]: double, x[1]: double, x: double}"}},
        {"l.x l.y! r.x! r.y", {"l {x: double, y: boolean}", "r {x: boolean, y: double}"}},
        {"a.x[1] a.x[2] a.y[0,1] a.y[0,2] a.y[1,2] a.y[1,1]", {"a {x: double[2], y: double[2,2]}"}},
        {"a.x[1] a.x[3]", {"a {x[1]: double, x[3]: double}"}},
        {"a.x[2] a.x[3]", {"a {x[2]: double, x[3]: double}"}},
        {"a.x[1] a.x[2]!", {"a {x[1]: double, x[2]: boolean}"}},
        {"a.x a.x[1]", {"a {x: double, x[1]: double}"}},
        {"a.x[1] a.x[1,2]", {"a {x[1]: double, x[1,2]: double}"}},
        {"a.x[1] a.x[01] a.x[3]", {"a {x[1]: double, x[01]: double, x[3]: double}"}},
        {"w[1].h.v w[2].h.v", {"w_h {v: double}", "w {h: w_h}"}},
        {"c.w[1].h.v c.w[2].h.v", {"c_w_h {v: double}", "c_w {h: c_w_h}", "c {w: c_w[2]}"}},
        {"c.w[1].v c.w[2].v!",
         {"c_w_1 {v: double}", "c_w_2 {v: boolean}", "c {w[1]: c_w_1, w[2]: c_w_2}"}},
        {"a.s% b.s% b.x", {"b {x: double}"}},
        {"a.w[1].s% a.w[2].x", {"a_w_2 {x: double}", "a {w[2]: a_w_2}"}},
        {"p p.q", {"p {q: double}"}, "\"p\" is a variable on line 1 and a struct on line 1"},
        {"a.b. a.c",
         {"a {c: double}"},
         "name \"a.b.\" is not structured: character 5 should be a name"},
        {"'a.b'.x double.y", {"a_b {x: double}", "double_2 {y: double}"}}};
    for (const Row& row : rows) {
        std::string variables;
        std::istringstream names(row.names);
        int count = 0;
        for (std::string name; names >> name; ++count) {
            const char mark = name.back();
            const char* const base = mark == '!' ? "Boolean" : mark == '%' ? "String" : "Float64";
            name.resize(name.size() - (mark == '!' || mark == '%' ? 1 : 0));
            variables += fmt::format("<{} name=\"{}\" valueReference=\"{}\"/>", base, name, count);
        }
        const auto model = makeModel(variables);
        EXPECT_EQ(structTexts(*model), row.structs) << row.names;
        const auto& findings = model->findings.all();
        ASSERT_EQ(findings.size(), *row.remark == '\0' ? 0 : 1) << row.names;
        EXPECT_TRUE(findings.empty() || findings[0].sentence.starts_with(row.remark))
            << findings[0].sentence;
    }
}

TEST(Structs, HaveArrayElements) {
    const auto model = makeModel(
        "<UInt64 name=\"n\" valueReference=\"1\" causality=\"structuralParameter\" start=\"3\"/>"
        "<UInt64 name=\"k\" valueReference=\"2\" initial=\"exact\" start=\"3\"/>"
        "<Int64 name=\"a.x[1]\" valueReference=\"3\"><Dimension start=\"2\"/></Int64>"
        "<Int64 name=\"a.x[2]\" valueReference=\"4\"><Dimension start=\"2\"/></Int64>"
        "<Int8 name=\"a.y\" valueReference=\"5\"><Dimension valueReference=\"1\"/></Int8>"
        "<Int8 name=\"a.z\" valueReference=\"6\"><Dimension valueReference=\"2\"/></Int8>"
        "<Int8 name=\"a.big\" valueReference=\"7\"><Dimension start=\"4294967296\"/></Int8>"
        "<Float64 name=\"b.m\" valueReference=\"8\" declaredType=\"T\">"
        "<Dimension start=\"99999\"/><Dimension start=\"99999\"/></Float64>"
        "<Float64 name=\"c.b.m\" valueReference=\"9\" declaredType=\"T\">"
        "<Dimension start=\"99999\"/><Dimension start=\"99999\"/></Float64>"
        "<Float64 name=\"c.t\" valueReference=\"10\" declaredType=\"T\"/>",
        "<Float64Type name=\"T\"/>");
    EXPECT_THAT(structTexts(*model), ElementsAre("a {x: sfix64[2,2], y: int8[3]}", "c {t: T}"));
    ASSERT_EQ(model->findings.all().size(), 4U);
    EXPECT_THAT(model->findings.all()[2].sentence, HasSubstr("size of a dimension is not known"));
    EXPECT_THAT(model->findings.all()[1].sentence,
                HasSubstr("struct \"b\" cannot be laid out: there are more than 2147483647"));
    EXPECT_EQ(model->structs.find("c")->id, model->structs.all().back().id);
    EXPECT_EQ(model->structs.find("c.t"), nullptr);
}

TEST(Structs, CanBeDeepAndWide) {
    const std::string deep = "a" + repeatedText(".a[1]", 10000);
    std::string variables = fmt::format("<Float64 name=\"{}\" valueReference=\"0\"/>", deep);
    for (int i = 1; i < 20000; ++i) {
        variables += fmt::format("<Float64 name=\"w.u[{0}].v{0}\" valueReference=\"{0}\"/>", i);
    }
    const auto model = makeModel(variables);
    EXPECT_EQ(model->structs.all().size(), 10000 + 20000);
    EXPECT_TRUE(model->findings.all().empty());
    EXPECT_NE(model->structs.find(deep.substr(0, deep.rfind('.'))), nullptr);
}

/// Makes struct types without names.
struct StructMaker {
    struct Part {
        int type;
        std::vector<int> dimensions;
        bool isComplex = false;
    };

    StructDataType& make(const std::vector<Part>& parts) {
        const int id =
            table.registerStructDataType(fmt::format("S{}", table.getNumDataTypes()).c_str(),
                                         static_cast<DataTypeSource>(2), nullptr);
        auto& type = static_cast<StructDataType&>(model::typeRecord(table, id));
        type.setNumElements(static_cast<int>(parts.size()));
        for (std::size_t i = 0; i < parts.size(); ++i) {
            StructElement& element = *type.getElements()[i];
            element.setDataTypeId(parts[i].type);
            element.setNumDimensions(static_cast<int>(parts[i].dimensions.size()));
            element.setDimensions(
                static_cast<int*>(utCalloc(parts[i].dimensions.size() + 1, sizeof(int))));
            std::ranges::copy(parts[i].dimensions, element.dimensions);
            element.setSignalType(parts[i].isComplex ? 1 : 0);
        }
        return type;
    }

    static std::vector<int> layoutNumbers(const StructDataType& type) {
        std::vector<int> numbers{type.getSize(), type.getNumDFSElements(),
                                 type.getNumFlatElements(), type.getNumRawElements()};
        for (const StructElement* element : type.getElements()) {
            numbers.push_back(element->offset);
        }
        return numbers;
    }

    DataTypeTable table;
    StructLayout layout{table};
};

TEST(StructLayout, MatchesKnownLayouts) {
    StructMaker maker;
    StructDataType& t = maker.make({{0, {}}, {4, {2}, true}});
    maker.layout.layOut(t);
    EXPECT_THAT(StructMaker::layoutNumbers(t), ElementsAre(16, 3, 2, 5, 0, 8));
    StructDataType& s = maker.make({{3, {}}, {t.getId(), {}}, {t.getId(), {2}}, {1, {}}});
    maker.layout.layOut(s);
    EXPECT_THAT(StructMaker::layoutNumbers(s), ElementsAre(64, 13, 8, 17, 0, 8, 24, 56));
    EXPECT_EQ(maker.layout.alignmentOf(s.getId()), 8);

    StructDataType& empty = maker.make({});
    maker.layout.layOut(empty);
    EXPECT_THAT(StructMaker::layoutNumbers(empty), ElementsAre(0, 1, 0, 0));
}

TEST(StructLayout, RejectsInvalidElements) {
    StructMaker maker;
    const int half = 1 << 30;
    StructDataType& unlaid = maker.make({{0, {}}});
    StructDataType& chars = maker.make({{2, {half}}});
    maker.layout.layOut(chars);
    for (const std::vector<StructMaker::Part>& parts : {std::vector<StructMaker::Part>{{0, {half}}},
                                                        {{2, {half, half, half}}},
                                                        {{2, {half}, true}},
                                                        {{0, {0}}},
                                                        {{0, {-1}}},
                                                        {{-1, {}}},
                                                        {{INVALID_DATA_TYPE_ID, {}}},
                                                        {{9999, {}}},
                                                        {{unlaid.getId(), {}}},
                                                        {{chars.getId(), {2}}},
                                                        {{2, {half}}, {2, {half}}},
                                                        {{2, {2 * (half - 1) + 1}}, {0, {}}},
                                                        {{0, {}}, {2, {2 * (half - 5)}}}}) {
        StructDataType& type = maker.make(parts);
        EXPECT_THROW(maker.layout.layOut(type), model::LayoutError);
        EXPECT_EQ(type.getSize(), -1);
        EXPECT_EQ(type.getElements()[0]->offset, -1);
    }
}

TEST(StructLayout, MatchesReferenceModel) {
    // For each byte of a type the size of the scalar that begins there, else 0.
    struct Image {
        std::vector<std::size_t> bytes;
        std::size_t alignment = 1;
        void pad(std::size_t unit) { bytes.resize((bytes.size() + unit - 1) / unit * unit); }
    };
    std::mt19937 random(randomSeed(7));
    const auto pick = [&](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    StructMaker maker;
    std::map<int, Image> images;
    std::vector<int> ids;
    for (int id = 0; id < 9; ++id) {
        const auto size = static_cast<std::size_t>(DataTypeTable::getBuiltInDataTypeSize(id));
        images[id] = {std::vector<std::size_t>(size, 0), size};
        images[id].bytes[0] = size;
        ids.push_back(id);
    }
    for (int round = 0; round < 300; ++round) {
        std::vector<StructMaker::Part> parts;
        Image image;
        std::vector<int> offsets;
        for (int i = pick(6); i >= 0; --i) {
            const int id = ids[static_cast<std::size_t>(pick(static_cast<int>(ids.size())))];
            const bool isComplex = id < 9 && pick(3) == 0;
            const std::vector<int> dimensions(static_cast<std::size_t>(pick(3)), 1 + pick(2));
            const Image& part = images[id];
            image.pad(part.alignment);
            offsets.push_back(static_cast<int>(image.bytes.size()));
            int copies = isComplex ? 2 : 1;
            for (const int size : dimensions) {
                copies *= size;
            }
            for (; copies > 0; --copies) {
                image.bytes.insert(image.bytes.end(), part.bytes.begin(), part.bytes.end());
            }
            image.alignment = std::max(image.alignment, part.alignment);
            parts.push_back({id, dimensions, isComplex});
        }
        image.pad(image.alignment);
        for (std::size_t i = 0; i < image.bytes.size(); ++i) {
            ASSERT_TRUE(image.bytes[i] == 0 || i % image.bytes[i] == 0);
        }
        StructDataType& type = maker.make(parts);
        maker.layout.layOut(type);
        const std::vector<int> numbers = StructMaker::layoutNumbers(type);
        EXPECT_EQ(std::vector(numbers.begin() + 4, numbers.end()), offsets);
        EXPECT_EQ(numbers[0], image.bytes.size());
        EXPECT_EQ(maker.layout.alignmentOf(type.getId()), image.alignment);
        if (image.bytes.size() < 100000) {
            images[type.getId()] = std::move(image);
            ids.push_back(type.getId());
        }
    }
}

TEST(Structs, AreLeftOutIfThereAreTooMany) {
    std::string variables;
    for (int i = 0; i <= 100'000; ++i) {
        variables += fmt::format("<Int8 name='a{0}.b{0}' valueReference='{0}'/>", i);
    }
    const model::Model model(textSource(structuredDescription3("", variables)), {});
    ASSERT_EQ(model.findings.all().size(), 1U);
    EXPECT_EQ(model.findings.all()[0].code, findings::Code::StructLimit);
    EXPECT_THAT(model.structs.instances(), testing::IsEmpty());
    EXPECT_EQ(model.structs.find("a7"), nullptr);
    EXPECT_EQ(model.structs.path(2), "a0.b0");
}

} // namespace

} // namespace tvtool
