// Sources of descriptions: archives, and the limits of texts.
#include "support.h"

#include "exchange/xml.h"
#include "exchange/zip_input.h"
#include "ssp/package.h"

#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <array>
#include <fstream>
#include <functional>
#include <iterator>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string good = description3("", "<Int8 name=\"a\" valueReference=\"1\"/>");
constexpr const char* name = "modelDescription.xml";

std::shared_ptr<std::FILE> openFile(const std::string& path) {
    return {std::fopen(path.c_str(), "rb"), [](std::FILE* file) { std::fclose(file); }};
}

struct ArchiveTest : testing::Test {
    TemporaryFolder folder;

    void expectReadError(const std::string& path, std::uint64_t maxSize, const char* sentence) {
        const auto read = [&] {
            findings::Findings findings;
            const auto source = fmi::openArchive(openFile(path), findings, maxSize);
            std::array<char, 64> buffer{};
            while (source(buffer) > 0) {
            }
        };
        EXPECT_THAT(read, testing::ThrowsMessage<files::ReadError>(HasSubstr(sentence)));
    }
};

TEST_F(ArchiveTest, SelectsDescription) {
    const std::pair<ArchiveEntries, const char*> rows[] = {
        {{{"resources/modelDescription.xml", "x"}, {name, good}},
         "1 variable; no errors, no warnings, no notes"},
        {{{"a/modelDescription.xml", "x"}, {name, good}}, "[archive-descriptions]"},
        {{{"__MACOSX/._modelDescription.xml", "junk"}, {name, good}},
         "model.xml: note: entry \"__MACOSX/._modelDescription.xml\" is ignored [archive-entry]\n"},
        {{{"__MACOSX/modelDescription.xml", "junk"}, {"model/modelDescription.xml", good}},
         "read from \"model/modelDescription.xml\""},
        {{{"a/b/modelDescription.xml", good}, {"model.xml", good}},
         "model.xml: is an archive without a modelDescription.xml"},
        {{{"a/modelDescription.xml", good}, {"b/modelDescription.xml", good}},
         "and 2 in its folders"},
        {{{name, ""}}, "it is empty"},
        {{{name, "<fmiModelDescription fmiVersion=\"3.0\">\n <a></b>"}},
         "model.xml:2:7: not XML: mismatched tag"}};
    for (const auto& [entries, part] : rows) {
        // The content makes it an archive, not the ending.
        const Outcome outcome = run({"inspect", folder.writeArchive("model.xml", entries)});
        EXPECT_EQ(outcome.status == 2, !outcome.err.empty());
        EXPECT_THAT(outcome.out + outcome.err, HasSubstr(part));
    }
}

TEST_F(ArchiveTest, LimitsStatedAndActualSize) {
    const std::string path = folder.writeArchive("m.fmu", {{name, std::string(70000, ' ')}});
    expectReadError(path, 69999, "unpacks to more than");
    findings::Findings findings;
    EXPECT_NO_THROW(fmi::openArchive(openFile(path), findings, 70000));
    // States 10 bytes in place of 70000.
    const std::string bytes = boost::replace_all_copy(
        readFile(path), std::string("\x70\x11\1\0", 4), std::string("\n\0\0\0", 4));
    expectReadError(folder.write("l.fmu", bytes), 100, "modelDescription.xml in the archive");
}

TEST_F(ArchiveTest, RejectsDamagedArchive) {
    const std::string path = folder.writeArchive("m.fmu", {{name, good}});
    const std::string bytes = readFile(path);
    EXPECT_THAT([&] { exchange::openZip(openFile(path), 60); },
                testing::ThrowsMessage<files::ReadError>(HasSubstr("its directory is longer")));
    std::string damaged = bytes;
    damaged[70] = static_cast<char>(damaged[70] ^ 0x55);
    EXPECT_EQ(run({"inspect", folder.write("d.fmu", damaged)}).status, 2);
    for (std::size_t length = 1; length < bytes.size(); length += 7) {
        const std::string cut = folder.write("c.fmu", std::string_view(bytes).substr(0, length));
        const Outcome outcome = run({"inspect", cut});
        EXPECT_EQ(outcome.status, 2) << length;
        EXPECT_EQ(outcome.out, "") << length;
    }
}

/// Collects the first attribute of each element.
struct FirstAttributes : exchange::XmlHandler {
    void startElement(std::string_view, const char* const* attributes,
                      exchange::Position) override {
        values.emplace_back(*attributes == nullptr ? "" : attributes[1]);
    }
    void endElement() override {}
    std::vector<std::string> values;
};

struct NoHandler : exchange::XmlHandler {
    void startElement(std::string_view, const char* const*, exchange::Position) override {}
    void endElement() override {}
};

TEST(Xml, TokensOfAnyLengthCrossPieces) {
    std::string text = "<a>";
    std::vector<std::string> values{""};
    for (std::size_t length = 1; length < 2000000; length += length / 2 + 1) {
        values.push_back(std::string(length, 'x') + std::to_string(length));
        text += "<!--" + values.back() + "-->\n<b c=\"" + values.back() + "\"/>";
    }
    FirstAttributes read;
    exchange::parseXml(textSource(text + "</a>", 1000), read);
    EXPECT_EQ(read.values, values);
}

TEST(Xml, LimitsTimeAndMemory) {
    std::string entities = "<!ENTITY e0 ''>";
    for (int i = 1; i <= 1000; ++i) {
        entities += fmt::format("<!ENTITY e{} '&e{};'>", i, i - 1);
    }
    const std::string before = "<!DOCTYPE a [\n";
    struct Row {
        std::string begin;
        std::string repeated;
        std::size_t count; ///< times 1024
        const char* sentence;
        std::uint64_t line;
        std::uint64_t column;
    };
    const Row rows[] = {
        {"<a>\n  <b c='", "x\ny", 6000, "a tag or comment is longer than 16 MiB", 2, 3},
        {"<a>\n<!--", "x", 17000, "a tag or comment is longer than 16 MiB", 2, 1},
        {"<a", " ", 17000, "a tag or comment is longer than 16 MiB", 1, 1},
        {"<a>", "<b>", 100, "more than 100000 levels of elements", 1, 300001},
        {"<a>", "<b/>", 5000, "more than 5000000 elements", 1, 20000000},
        {"<a>", "\n", 20000, "more than 20000000 lines", 20054014, 1},
        {before, "<!ELEMENT a ANY>", 70, "type declaration is longer than 1 MiB", 2, 1114097},
        {before + entities, "", 0, "more than 1000 declared entities", 2, 22790},
        {before + "<!ATTLIST a", " b CDATA ''", 1, "entities and attributes", 2, 11021},
        {before + "<!ENTITY e 'xxxxxxxxx'>]><a>", "&e;", 2000, "expand to far", 2, 2097170},
        {before + "<!ENTITY e ''>]><a>", "&e;", 6000, "with declared entities is", 2, 16842737}};
    for (const Row& row : rows) {
        const std::string text =
            row.begin + repeatedText(repeatedText(row.repeated, 1024), row.count);
        try {
            NoHandler handler;
            exchange::parseXml(textSource(text, text.size()), handler);
            ADD_FAILURE() << row.sentence;
        } catch (const files::ReadError& error) {
            EXPECT_THAT(error.what(), HasSubstr(row.sentence));
            EXPECT_EQ(error.line, row.line) << row.sentence;
            EXPECT_EQ(error.column, row.column) << row.sentence;
        }
    }
}

/// Returns the bytes of a file.
std::string bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string systemWith(const std::string& components) {
    return "<ssd:SystemStructureDescription version=\"2.0\" name=\"s\" "
           "xmlns:ssd=\"http://ssp-standard.org/SSP1/SystemStructureDescription\"><ssd:System "
           "name=\"r\"><ssd:Elements>" +
           components + "</ssd:Elements></ssd:System></ssd:SystemStructureDescription>";
}

std::string componentOf(const std::string& source) {
    return "<ssd:Component name=\"" + std::to_string(std::hash<std::string>()(source)) +
           "\" source=\"" + source + "\"/>";
}

TEST_F(ArchiveTest, ReadsPackagesOfSystems) {
    constexpr const char* systemName = "SystemStructure.ssd";
    const std::string fmu = bytesOf(folder.writeArchive("a.fmu", {{name, good}}));
    const std::string variant = systemWith(componentOf("in/a.fmu"));
    const std::string inner = bytesOf(folder.writeArchive(
        "inner.ssp", {{systemName, variant}, {"B.ssd", variant}, {"in/a.fmu", fmu}}));
    const std::string onlyVariant = bytesOf(
        folder.writeArchive("b.ssp", {{"B.ssd", systemWith("<ssd:Component name=\"c\"/>")}}));
    const std::string large(1 << 20, ' ');
    const std::pair<ArchiveEntries, const char*> rows[] = {
        {{{systemName, systemWith(componentOf("a.fmu") + componentOf("inner.ssp") +
                                  componentOf("inner.ssp#B.ssd"))},
          {"a.fmu", fmu},
          {"inner.ssp", inner}},
         "3 systems, 5 components; no errors, no warnings, no notes"},
        {{{systemName, systemWith(componentOf("inner.ssp#C.ssd"))}, {"inner.ssp", inner}},
         "has no system description C.ssd [component-unreadable]"},
        {{{systemName, systemWith("<ssd:Component name=\"c\"><ssd:ParameterBindings>"
                                  "<ssd:ParameterBinding source=\"p.ssv\"/>"
                                  "</ssd:ParameterBindings></ssd:Component>")},
          {"p.ssv", "<x:ParameterSet xmlns:x=\"urn:x\" version=\"1.0\" name=\"p\"/>"}},
         "\"x:ParameterSet\" is of another namespace [component-unreadable]"},
        {{{systemName, systemWith(componentOf("b.ssp#B.ssd"))}, {"b.ssp", onlyVariant}},
         "2 systems, 2 components; no errors, no warnings, no notes"},
        {{{systemName, systemWith(componentOf("../a.fmu") + componentOf("x/..%2f../a.fmu"))},
          {"../a.fmu", fmu}},
         "2 errors, no warnings"},
        {{{systemName, systemWith(componentOf("a.fmu"))}, {"a.fmu", fmu.substr(0, fmu.size() / 2)}},
         "cannot be opened as one"},
        {{{systemName, systemWith(componentOf("a.fmu"))}, {"a.fmu", large}},
         "a.fmu:1: the XML text ends too early [component-unreadable]"}};
    for (const auto& [entries, part] : rows) {
        const Outcome outcome = run({"check", folder.writeArchive("s.ssp", entries)});
        EXPECT_THAT(outcome.out, HasSubstr(part));
    }
    for (const ArchiveEntries& entries :
         {ArchiveEntries{{"Other.ssd", variant}}, ArchiveEntries{{systemName, "<a>"}}}) {
        EXPECT_EQ(run({"check", folder.writeArchive("s.ssp", entries)}).status, 2);
    }
}

TEST_F(ArchiveTest, UnpacksFilesOfSystemsOnceAndUpToALimit) {
    const std::string fmu = bytesOf(folder.writeArchive("a.fmu", {{name, good}}));
    const std::string system =
        systemWith(componentOf("a.fmu") + componentOf("./a.fmu") + componentOf("x/../a.fmu"));
    const std::string path =
        folder.writeArchive("s.ssp", {{"SystemStructure.ssd", system}, {"a.fmu", fmu}});
    const std::size_t total = system.size() + fmu.size() + good.size();
    for (const std::size_t limit : {total, total - 1, total - good.size() - 1}) {
        const auto package = ssp::readPackage(path, limit);
        EXPECT_EQ(package->models.size(), limit == total ? 1 : 0);
        for (const ssp::Element* const component : package->systems.front().root().elements) {
            EXPECT_EQ(component->model != nullptr, limit == total);
        }
    }
    EXPECT_THROW(ssp::readPackage(path, system.size() - 1), files::ReadError);
}

TEST_F(ArchiveTest, ReadsRegularFilesOfSystemsOnly) {
    const fs::path system = folder.write("s.ssd", systemWith(componentOf("pipe")));
    ASSERT_EQ(mkfifo((system.parent_path() / "pipe").c_str(), 0600), 0);
    EXPECT_THAT(run({"check", system.string()}).out, HasSubstr("[source-missing]"));
}

} // namespace

} // namespace tvtool
