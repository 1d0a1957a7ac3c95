/// \file
/// Helpers of the tests of the tool.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "fmi/source.h"
#include "output/terminal.h"

#include <boost/json.hpp>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool {

struct Outcome {
    int status = 0;
    std::string out;
    std::string err;

    std::vector<std::string> lines() const;
    boost::json::object json() const { return boost::json::parse(out).as_object(); }
};

/// Runs the tool with these arguments and this standard input. Its output is a terminal of `width`
/// columns if that is given.
Outcome run(std::vector<std::string> arguments, const std::string& input = {},
            std::size_t width = output::unlimitedWidth);

/// Returns the words of a text.
std::vector<std::string> split(const std::string& text);

using ArchiveEntries = std::vector<std::pair<std::string, std::string>>;

std::string repeatedText(const std::string& text, std::size_t count);

/// Expects status 2, no output and short errors with `part`, in lines with no control characters.
void expectRejection(const Outcome& outcome, const std::string& part);

/// A folder that is removed at the end of the test.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    /// Writes a file and returns its path.
    std::string write(const std::string& name, std::string_view content) const;
    /// Same for an archive with these entries: name and content.
    std::string writeArchive(const std::string& name, const ArchiveEntries& entries) const;

  private:
    std::filesystem::path path_;
};

std::string readFile(const std::string& path);

/// Returns a source of the text that reads `step` bytes at a time.
exchange::Source textSource(std::string text, std::size_t step = 4096);

/// Returns a description in FMI 3 with these type definitions and variables.
std::string description3(const std::string& types, const std::string& variables);
/// Same with structured names.
std::string structuredDescription3(const std::string& types, const std::string& variables);

/// A description that was read and checked, with its findings.
struct ReadDescription {
    findings::Findings findings;
    std::unique_ptr<fmi::Description> description;
};
std::unique_ptr<ReadDescription> readText(const std::string& text, std::size_t step = 4096);

} // namespace tvtool
