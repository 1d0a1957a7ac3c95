#include "support.h"

#include "fmi/reader.h"
#include "tool.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <zip.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include <unistd.h>

namespace tvtool {

namespace fs = std::filesystem;

std::vector<std::string> Outcome::lines() const {
    std::vector<std::string> all;
    std::istringstream stream(out);
    for (std::string line; std::getline(stream, line);) {
        all.push_back(line);
    }
    return all;
}

Outcome run(std::vector<std::string> arguments, const std::string& input, std::size_t width) {
    std::vector<const char*> argv{"tvtypes"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int status =
        runTool(static_cast<int>(argv.size()), argv.data(), {in, out, err, false, false, width});
    return {status, out.str(), err.str()};
}

std::vector<std::string> split(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

std::string repeatedText(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

void expectRejection(const Outcome& outcome, const std::string& part) {
    EXPECT_EQ(outcome.status, 2) << outcome.err;
    EXPECT_EQ(outcome.out, "") << outcome.err;
    EXPECT_THAT(outcome.err, testing::HasSubstr(part));
    EXPECT_THAT(outcome.err, testing::MatchesRegex("(tvtypes: [^\n\x1b]+\n(  [^\n\x1b]+\n)*)+"));
    EXPECT_LT(outcome.err.size(), 1000U);
}

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "tvtypes_test_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder");
    }
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::write(const std::string& name, std::string_view content) const {
    const fs::path path = path_ / name;
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

std::string TemporaryFolder::writeArchive(const std::string& name,
                                          const ArchiveEntries& entries) const {
    const std::string path = (path_ / name).string();
    int code = 0;
    zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code);
    EXPECT_NE(archive, nullptr);
    for (const auto& [entry, content] : entries) {
        zip_source_t* const source = zip_source_buffer(archive, content.data(), content.size(), 0);
        EXPECT_GE(zip_file_add(archive, entry.c_str(), source, ZIP_FL_ENC_UTF_8), 0);
    }
    // Reads the contents, which live until the end of the call.
    EXPECT_EQ(zip_close(archive), 0);
    return path;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

exchange::Source textSource(std::string text, std::size_t step) {
    return [text = std::move(text), step,
            position = std::size_t{0}](std::span<char> buffer) mutable {
        const std::size_t count = text.copy(buffer.data(), std::min(step, buffer.size()), position);
        position += count;
        return count;
    };
}

std::string description3(const std::string& types, const std::string& variables) {
    return fmt::format("<fmiModelDescription fmiVersion=\"3.0\" modelName=\"M\" "
                       "instantiationToken=\"t\"><ModelExchange modelIdentifier=\"M\"/>"
                       "<TypeDefinitions>{}</TypeDefinitions>"
                       "<ModelVariables>{}</ModelVariables><ModelStructure/></fmiModelDescription>",
                       types, variables);
}

std::string structuredDescription3(const std::string& types, const std::string& variables) {
    std::string text = description3(types, variables);
    return text.insert(text.find('>'), " variableNamingConvention=\"structured\"");
}

std::unique_ptr<ReadDescription> readText(const std::string& text, std::size_t step) {
    auto read = std::make_unique<ReadDescription>();
    read->description = fmi::readDescription(textSource(text, step), read->findings);
    fmi::checkDescription(*read->description, read->findings);
    return read;
}

} // namespace tvtool
