// Conversion of raw and NumPy files.
#include "support.h"

#include "convert/npy.h"
#include "support/random_seed.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <random>
#include <sstream>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

template <class Value>
std::string bytesOf(const std::vector<Value>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(Value)};
}

/// Returns a .npy header with this text, which may be invalid.
std::string npyFileHeader(const std::string& dictionary, char major = 1) {
    const std::string size =
        bytesOf<std::size_t>({dictionary.size()}).substr(0, major == 1 ? 2 : 4);
    return std::string("\x93NUMPY") + major + '\0' + size + dictionary;
}

std::string npyFileHeader(const std::string& descr, const std::string& shape, char major = 1) {
    return npyFileHeader(
        fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': {}, }}\n", descr, shape),
        major);
}

TEST(ConvertFiles, RoundTripAcrossChunks) {
    const TemporaryFolder folder;
    const std::string wide = folder.write("wide.npy", "what was there");
    std::mt19937 random(randomSeed(1));
    for (const std::size_t count : {0U, 1U, 65535U, 65536U, 65537U, 200001U}) {
        std::vector<std::int16_t> values(count);
        for (std::int16_t& value : values) {
            value = static_cast<std::int16_t>(random());
        }
        const std::string raw = folder.write("values.raw", bytesOf(values));
        const Outcome there =
            run({"convert", "--in", raw, "--from", "int16", "--to", "double", "--out", wide});
        EXPECT_EQ(there.status, 0) << there.err;
        EXPECT_EQ(fs::file_size(wide), 128 + 8 * count);
        // The output replaces the input.
        EXPECT_EQ(run({"convert", "--in", wide, "--to", "int16", "--out", wide}).err,
                  fmt::format("double to int16: {} value{}, nothing lost\n", count,
                              count == 1 ? "" : "s"));
        EXPECT_TRUE(readFile(wide).substr(128) == bytesOf(values)) << count;
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(wide).parent_path()), {}), 2);
}

TEST(ConvertFiles, ReportsLossesInAllBlocks) {
    std::vector<double> values(140000, 7);
    for (const std::size_t index : {0U, 1023U, 1024U, 65536U, 139999U}) {
        values[index] = index % 2 == 0 ? 0.5 : 1000;
    }
    const TemporaryFolder folder;
    const std::string in = folder.write("values.raw", bytesOf(values));
    EXPECT_EQ(
        run({"convert", "--in", in, "--from", "double", "--to", "uint8", "--out", in + ".npy"}).err,
        "double to uint8: 140000 values, 5 lost something (index 0, 1023, 1024, 65536, 139999), of "
        "which 2 overflowed (index 1023, 139999); the first index is 0; greatest error 745 (index "
        "1023)\n");
}

TEST(ConvertFiles, KeepsShapeOfNumpyFiles) {
    const TemporaryFolder folder;
    const struct {
        std::string content;
        const char* to;
        const char* header;
        std::string text;
    } rows[] = {
        {npyFileHeader("<f8", "(2, 1)") + bytesOf<double>({1.5, 300}), "int8",
         "{'descr': '|i1', 'fortran_order': False, 'shape': (2, 1), } ", "1\n127\n"},
        {npyFileHeader("{\"shape\":(3,),'fortran_order':True,'descr':'>u2'}", 2) +
             std::string("\0\1\1\0\xFF\xFF", 6),
         "int32", "{'descr': '<i4', 'fortran_order': True, 'shape': (3,), } ", "1\n256\n65535\n"},
        {npyFileHeader("<c8", "()", 3) + bytesOf<float>({0.5F, -2}), "double",
         "{'descr': '<c16', 'fortran_order': False, 'shape': (), } ", "0.5-2i\n"},
        {npyFileHeader("<i8", "(2,)") + bytesOf<std::int64_t>({-5, std::int64_t{1} << 53}),
         "double", "{'descr': '<f8', 'fortran_order': False, 'shape': (2,), } ",
         "-5\n9007199254740992\n"},
        {npyFileHeader(">u8", "(1,)") + std::string("\x80\0\0\0\0\0\x08\0", 8), "single",
         "{'descr': '<f4', 'fortran_order': False, 'shape': (1,), } ", "9.223372e+18\n"},
        {npyFileHeader("|b1", "(0, 18446744073709551615)"), "boolean",
         "{'descr': '|b1', 'fortran_order': False, 'shape': (0, 18446744073709551615), } ", ""}};
    for (const auto& row : rows) {
        // A NumPy file is recognized by its first bytes.
        const std::string in = folder.write("in.data", row.content);
        const std::string out = in + ".out.npy";
        EXPECT_EQ(run({"convert", "--in", in, "--to", row.to, "--out", out}).status, 0);
        const std::string bytes = readFile(out);
        for (const std::vector<std::string>& input : {std::vector<std::string>{}, {"--in", "-"}}) {
            std::vector<std::string> call{"convert", "--to", row.to, "--out", out};
            call.insert(call.end(), input.begin(), input.end());
            EXPECT_EQ(run(call, row.content).status, 0);
            EXPECT_EQ(readFile(out), bytes);
        }
        EXPECT_THAT(readFile(out), HasSubstr(row.header));
        EXPECT_EQ(readFile(out).find('\n') % 64, 63U);
        EXPECT_EQ(run({"convert", "--in", out, "--to", row.to}).out, row.text);
    }
}

TEST(ConvertFiles, InvalidInputLeavesOutputUnchanged) {
    const TemporaryFolder folder;
    const std::string out = folder.write("out.raw", "kept");
    const std::string four = "0123";
    const std::pair<std::string, const char*> rows[] = {
        {"", "ends within the header"},
        {"\x93NUMPX\1" + std::string(4, '\0'), "does not begin like one"},
        {npyFileHeader("<f4", "(1,)", 4) + four, "version 4.0"},
        {npyFileHeader("<f4", "(1,)").substr(0, 40), "ends within the header"},
        {std::string("\x93NUMPY\2\0\xFF\xFF\xFF\xFF", 12), "has a header of 4294967295 bytes"},
        {npyFileHeader("<f4", "(1,)"), "needs 4 bytes of elements, there are 0"},
        {npyFileHeader("<f4", "(1,)") + four + "4", "needs 4 bytes of elements, there are 5"},
        {npyFileHeader("<f4", "(-1,)") + four, "a negative size"},
        {npyFileHeader("<f4", "(99999999999999999999,)"), "a size that is too large"},
        {npyFileHeader("<f4", "(4294967296, 4294967296)"), "more elements than any file"},
        {npyFileHeader("<f4", "(1)") + four, "no \",\""},
        {npyFileHeader("<f4", "((1,),)") + four, "no number"},
        {npyFileHeader("<f4", "(" + std::string(65000, '(')), "no number"},
        {npyFileHeader("<f4", "(1.5,)") + four, "no \",\""},
        {npyFileHeader("<f4", std::string("(") + std::string(130, '1') + ")"), "too large"},
        {npyFileHeader("<f4", "(1, 1, 1,") + four, "malformed"},
        {npyFileHeader("<i8", "(2,)") + bytesOf<std::int64_t>({1, (std::int64_t{1} << 53) + 1}),
         "holds int64, but --from is single"},
        {npyFileHeader("<f2", "(1,)") + four, "elements of type \"<f2\""},
        {npyFileHeader("|O", "(1,)") + four, "Python objects"},
        {"PK\3\4" + four, "is a .npz archive of several arrays"},
        {npyFileHeader("|f4", "(1,)") + four, "elements of type \"|f4\""},
        {npyFileHeader("", "(1,)") + four, "elements of type \"\""},
        {npyFileHeader("{'descr': [('a', '<f4')], 'shape': (1,)}") + four, "holds records"},
        {npyFileHeader("{'descr': '<f4', 'shape': (1,)}") + four, "missing"},
        {npyFileHeader("{'shape': (1,), 'shape': (1,)}") + four, "for the second time"},
        {npyFileHeader("{'descr': '<f4', 'fortran_order': 0}") + four, "neither True nor False"},
        {npyFileHeader("{'size': 1}") + four, "has no meaning"},
        {npyFileHeader("{'descr': '<f4") + four, "no text in quotes"},
        {npyFileHeader("<f4", "(1,), } x {'") + four, "behind the end"},
        {npyFileHeader("") + four, "no \"{\""},
        {npyFileHeader("<c8", "(1,)") + four + four, "become double or single"},
        {npyFileHeader("<f8", "(1,)") + four + four, "holds double, but --from is single"}};
    for (const auto& [content, sentence] : rows) {
        const std::string in = folder.write("in.npy", content);
        const Outcome outcome =
            run({"convert", "--in", in, "--from", "single", "--to", "int8", "--out", out});
        EXPECT_EQ(outcome.status, 2) << sentence;
        EXPECT_THAT(outcome.err, HasSubstr(sentence));
        EXPECT_EQ(readFile(out), "kept");
    }
    const std::pair<std::string, const char*> wide[] = {
        {"int64", "index 2, 9007199254740993, is no integer that a double has exactly"},
        {"uint64", "index 0, 18446744073709551615, is no integer"}};
    for (const auto& [type, sentence] : wide) {
        const std::string raw =
            folder.write("in.raw", bytesOf<std::int64_t>({-1, 2, (std::int64_t{1} << 53) + 1}));
        expectRejection(run({"convert", "--in", raw, "--from", type, "--to", "int8"}), sentence);
    }
    const std::string raw = folder.write("in.raw", "01234");
    EXPECT_THAT(run({"convert", "--in", raw, "--from", "single", "--to", "int8"}).err,
                HasSubstr("5 bytes, is no multiple of the 4"));
    EXPECT_THAT(run({"convert", "--in", raw, "--to", "int8"}).err,
                HasSubstr("a raw file needs --from"));
    expectRejection(run({"convert", "--to", "int8"}, std::string(1 << 20, '1')), "is too long");
    // An invalid value after others have been written.
    const std::string values = repeatedText("1 ", 70000) + "x";
    EXPECT_EQ(run({"convert", "--to", "int8", "--out", out}, values).status, 2);
    EXPECT_EQ(readFile(out), "kept");
    EXPECT_EQ(std::distance(fs::directory_iterator(fs::path(out).parent_path()), {}), 3);
}

TEST(ConvertFiles, ReplacesOnlyRegularFiles) {
    const TemporaryFolder folder;
    const auto write = [](const std::string& path) {
        return run({"convert", "--to", "uint8", "--out", path, "65"}).status;
    };
    const std::string target = folder.write("target", "old");
    const std::string link = target + ".link";
    const std::string dangling = target + ".dangling";
    fs::create_symlink("target", link);
    fs::create_symlink("target.link.new", dangling);
    const std::string loop = fs::path(target).replace_filename("loop");
    fs::create_symlink("loop", loop);
    fs::permissions(target, fs::perms(0640));
    for (const std::string& path : {link, dangling}) {
        EXPECT_EQ(write(path), 0) << path;
        EXPECT_TRUE(fs::is_symlink(path));
        EXPECT_EQ(readFile(path), "A");
    }
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    const std::string longest = fs::path(target).replace_filename(std::string(255, 'n'));
    EXPECT_EQ(write(longest), 0);
    EXPECT_EQ(readFile(longest), "A");
    EXPECT_EQ(write("/dev/null"), 0);
    for (const std::string& path : {std::string("/"), std::string("/no/such/file"), std::string(),
                                    longest + "n", target + "/", target + ".new/", loop}) {
        EXPECT_EQ(write(path), 2) << path;
    }
}

} // namespace

} // namespace tvtool
