#include "support.h"

#include <boost/algorithm/string/replace.hpp>
#include <gmock/gmock.h>

#include <array>

namespace tvtool {

namespace {

using testing::HasSubstr;

const std::string good = description3("", "<Int8 name=\"a\" valueReference=\"1\"/>");
constexpr const char* name = "modelDescription.xml";

struct ArchiveTest : testing::Test {
    TemporaryFolder folder;

    void expectReadError(const std::string& path, std::uint64_t maxSize, const char* sentence) {
        const auto read = [&] {
            findings::Findings findings;
            const auto source = fmi::openArchive(path, findings, maxSize);
            std::array<char, 64> buffer{};
            while (source(buffer) > 0) {
            }
        };
        EXPECT_THAT(read, testing::ThrowsMessage<files::ReadError>(HasSubstr(sentence)));
    }
};

TEST_F(ArchiveTest, SelectsDescription) {
    const std::pair<ArchiveEntries, const char*> rows[] = {
        {{{"a/modelDescription.xml", "x"}, {name, good}},
         "1 variable; no errors, no warnings, no notes"},
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
    EXPECT_NO_THROW(fmi::openArchive(path, findings, 70000));
    // States 10 bytes in place of 70000.
    const std::string bytes = boost::replace_all_copy(
        readFile(path), std::string("\x70\x11\1\0", 4), std::string("\n\0\0\0", 4));
    expectReadError(folder.write("l.fmu", bytes), 100, "modelDescription.xml in the archive");
}

TEST_F(ArchiveTest, RejectsDamagedArchive) {
    const std::string path = folder.writeArchive("m.fmu", {{name, good}});
    const std::string bytes = readFile(path);
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

} // namespace

} // namespace tvtool
