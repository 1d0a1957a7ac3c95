#include "support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace tvtool {

namespace {

using testing::HasSubstr;

const std::string good = description3("", "<Int8 name=\"a\" valueReference=\"1\"/>");
constexpr const char* name = "modelDescription.xml";

struct ArchiveTest : testing::Test {
    TemporaryFolder folder;

    Outcome inspect(std::initializer_list<std::pair<std::string, std::string>> entries) {
        // The content makes it an archive, not the ending.
        return run({"inspect", folder.writeArchive("model.xml", entries)});
    }

    void expectReadError(const std::string& path, std::uint64_t maxSize, const char* sentence) {
        fmi::Remarks remarks;
        try {
            const auto source = fmi::openArchive(path, remarks, maxSize);
            std::array<char, 64> buffer{};
            while (source(buffer) > 0) {
            }
            ADD_FAILURE() << "read without an error";
        } catch (const files::ReadError& error) {
            EXPECT_THAT(error.what(), HasSubstr(sentence));
        }
    }
};

TEST_F(ArchiveTest, ReadsDescriptionAtRoot) {
    const Outcome outcome = inspect({{"a/modelDescription.xml", "x"}, {name, good}});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("1 variable, 1 type, no problems, no notes"));
}

TEST_F(ArchiveTest, IgnoresResourceForkWithNote) {
    const Outcome outcome = inspect({{"__MACOSX/._modelDescription.xml", "junk"}, {name, good}});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out,
                HasSubstr("archive: entry \"__MACOSX/._modelDescription.xml\" is ignored\n"));
}

TEST_F(ArchiveTest, ReadsDescriptionInOnlyFolderWithNote) {
    const Outcome outcome =
        inspect({{"__MACOSX/modelDescription.xml", "junk"}, {"model/modelDescription.xml", good}});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("read from \"model/modelDescription.xml\""));
}

TEST_F(ArchiveTest, RejectsArchiveWithoutDescription) {
    const Outcome none = inspect({{"a/b/modelDescription.xml", good}, {"model.xml", good}});
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err, HasSubstr("model.xml: is an archive without a modelDescription.xml"));

    const Outcome many =
        inspect({{"a/modelDescription.xml", good}, {"b/modelDescription.xml", good}});
    EXPECT_EQ(many.status, 2);
    EXPECT_THAT(many.err, HasSubstr("and 2 in its folders"));

    const Outcome empty = inspect({{name, ""}});
    EXPECT_EQ(empty.status, 2);
    EXPECT_THAT(empty.err, HasSubstr("it is empty"));
}

TEST_F(ArchiveTest, ReportsLineAndColumnOfError) {
    const Outcome outcome = inspect({{name, "<fmiModelDescription fmiVersion=\"3.0\">\n <a></b>"}});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("model.xml:2:7: not XML: mismatched tag"));
}

TEST_F(ArchiveTest, LimitsStatedSize) {
    const std::string path = folder.writeArchive("m.fmu", {{name, std::string(5000, ' ')}});
    expectReadError(path, 4999, "unpacks to more than");
    fmi::Remarks remarks;
    EXPECT_NO_THROW(fmi::openArchive(path, remarks, 5000));
}

/// Replaces each occurrence of a number, in four bytes, little-endian.
std::string replaceNumber(std::string bytes, std::uint32_t number, std::uint32_t replacement) {
    const auto encoded = [](std::uint32_t value) {
        std::string text;
        for (unsigned shift = 0; shift < 32; shift += 8) {
            text += static_cast<char>(value >> shift & 0xFFU);
        }
        return text;
    };
    const std::string from = encoded(number);
    for (std::size_t at = bytes.find(from); at != std::string::npos; at = bytes.find(from, at)) {
        bytes.replace(at, from.size(), encoded(replacement));
    }
    return bytes;
}

TEST_F(ArchiveTest, LimitsActualSize) {
    const std::string path = folder.writeArchive("m.fmu", {{name, std::string(70000, ' ')}});
    const std::string wrong = folder.write("l.fmu", replaceNumber(readFile(path), 70000, 10));
    expectReadError(wrong, 100, "modelDescription.xml in the archive");
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
