// Each folder of tests/inputs contains a description and, in the file "expected", the result of its
// inspection. Each folder of tests/systems is a system, with the result of its check in the same
// form. Each file of tests/tools/calls contains calls of the tool, as "$ ARGUMENTS" and lines
// "< TEXT" of standard input, and their results:
//   status N    the exit status
//   out TEXT    standard output has the text
//   line TEXT   a line of standard output has these words
//   words TEXT  standard output has these words and no others
//   err TEXT    standard error has the text
//   error TEXT  status 2, no output, and short errors with the text
//   failure TEXT  status 2, and an object whose member "error" has the text
#include "support.h"
#include "support/random_seed.h"

#include <fmt/ranges.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <random>
#include <tuple>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::vector<std::string> foldersIn(const char* directory) {
    std::vector<std::string> names;
    for (const fs::directory_entry& folder : fs::directory_iterator(directory)) {
        names.push_back(folder.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

std::string inputIn(const fs::path& folder) {
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        if (file.path().filename() != "expected") {
            return file.path().string();
        }
    }
    ADD_FAILURE() << folder << " contains no input";
    return {};
}

void checkExpectations(const std::vector<std::string>& expected, const Outcome& outcome) {
    std::vector<std::string> lines = outcome.lines();
    std::ranges::transform(lines, lines.begin(), [](const std::string& line) {
        return fmt::format("{}", fmt::join(split(line), " "));
    });
    for (const std::string& line : expected) {
        const std::string directive = line.substr(0, line.find(' '));
        const std::string text = line.substr(directive.size() + 1);
        if (directive == "status") {
            EXPECT_EQ(std::to_string(outcome.status), text);
        } else if (directive == "out") {
            EXPECT_THAT(outcome.out, HasSubstr(text));
        } else if (directive == "line") {
            EXPECT_THAT(lines, testing::Contains(text));
        } else if (directive == "words") {
            EXPECT_EQ(split(outcome.out), split(text));
        } else if (directive == "err") {
            EXPECT_THAT(outcome.err, HasSubstr(text));
        } else if (directive == "error") {
            expectRejection(outcome, text);
        } else if (directive == "failure") {
            EXPECT_EQ(outcome.status, 2);
            EXPECT_THAT(boost::json::serialize(outcome.json().at("error")), HasSubstr(text));
        } else {
            ADD_FAILURE() << "unknown directive: " << line;
        }
    }
    EXPECT_FALSE(expected.empty());
}

std::vector<std::string> linesOf(const fs::path& path) {
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// Checks the invariants of all outcomes.
void checkInvariants(const Outcome& outcome, bool isJson) {
    if (outcome.status == 2) {
        if (isJson) {
            EXPECT_TRUE(outcome.json().at("error").is_object());
        } else {
            EXPECT_EQ(outcome.out, "");
        }
        EXPECT_TRUE(outcome.err.starts_with("tvtypes: ")) << outcome.err;
        EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
    } else {
        EXPECT_EQ(outcome.err, "");
        EXPECT_NE(outcome.out, "");
    }
    EXPECT_TRUE(std::ranges::none_of(outcome.out + outcome.err, [](char c) {
        return (c >= 0 && c < ' ' && c != '\n') || c == '\x7f';
    }));
}

/// Checks the text that a call prints, and that with --json its status is the same.
void checkReports(std::vector<std::string> call, const fs::path& expected) {
    const Outcome text = run(call);
    checkExpectations(linesOf(expected), text);
    checkInvariants(text, false);

    call.emplace_back("--json");
    const Outcome json = run(call);
    checkInvariants(json, true);
    EXPECT_EQ(json.status, text.status);
    EXPECT_EQ(json.err, text.err);
}

class Inputs : public testing::TestWithParam<std::string> {};

TEST_P(Inputs, MatchExpectations) {
    const fs::path folder = fs::path(TVTYPES_TEST_INPUTS) / GetParam();
    checkReports({"inspect", "--ids", "--all", inputIn(folder)}, folder / "expected");
}

INSTANTIATE_TEST_SUITE_P(Tool, Inputs, testing::ValuesIn(foldersIn(TVTYPES_TEST_INPUTS)),
                         [](const auto& info) { return info.param; });

class Systems : public testing::TestWithParam<std::string> {};

TEST_P(Systems, MatchExpectations) {
    const fs::path folder = fs::path(TVTYPES_TEST_SYSTEMS) / GetParam();
    checkReports({"check", "--all", folder.string()}, folder / "expected");
}

INSTANTIATE_TEST_SUITE_P(Tool, Systems, testing::ValuesIn(foldersIn(TVTYPES_TEST_SYSTEMS)),
                         [](const auto& info) { return info.param; });

/// Changes a text at random: a byte, a part that is left out or repeated, or the end.
std::string damaged(std::string text, std::mt19937& random) {
    const auto pick = [&](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below)(random);
    };
    const std::size_t begin = pick(text.size() - 1);
    const std::size_t count = pick(std::min<std::size_t>(80, text.size() - begin));
    switch (pick(3)) {
    case 0:
        text[begin] = static_cast<char>(pick(255));
        return text;
    case 1:
        return text.erase(begin, count);
    case 2:
        return text.insert(pick(text.size()), text.substr(begin, count));
    default:
        return text.substr(0, begin);
    }
}

TEST_P(Systems, AreReportedWithDamageInAnyFile) {
    std::mt19937 random(randomSeed(static_cast<unsigned>(std::hash<std::string>()(GetParam()))));
    const TemporaryFolder folder;
    const fs::path copy = fs::path(folder.write("system", "")).parent_path() / "copy";
    fs::copy(fs::path(TVTYPES_TEST_SYSTEMS) / GetParam(), copy, fs::copy_options::recursive);
    fs::remove(copy / "expected");
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(copy)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::ranges::sort(files);
    for (int i = 0; i < 25; ++i) {
        const fs::path& file = files[static_cast<std::size_t>(i) % files.size()];
        const std::string text = readFile(file.string());
        std::ofstream(file) << damaged(text, random);
        SCOPED_TRACE(fmt::format("{}:\n{}", file.string(), readFile(file.string())));
        const Outcome outcome = run({"check", "--all", copy.string()});
        checkInvariants(outcome, false);
        const Outcome json = run({"check", "--json", copy.string()});
        checkInvariants(json, true);
        EXPECT_EQ(json.status, outcome.status);
        std::ofstream(file) << text;
    }
}

class Calls : public testing::TestWithParam<const char*> {};

TEST_P(Calls, MatchExpectations) {
    const std::vector<std::string> lines = linesOf(fs::path(TVTYPES_TEST_CALLS) / GetParam());
    for (std::size_t i = 0; i < lines.size();) {
        ASSERT_TRUE(lines[i].starts_with("$ ")) << lines[i];
        SCOPED_TRACE(fmt::format("line {}: {}", i + 1, lines[i]));
        const std::string& call = lines[i++];
        std::string input;
        for (; i < lines.size() && lines[i].starts_with('<'); ++i) {
            input += lines[i].substr(std::min<std::size_t>(2, lines[i].size())) + '\n';
        }
        std::vector<std::string> expected;
        for (; i < lines.size() && !lines[i].starts_with('$'); ++i) {
            if (!lines[i].empty() && lines[i].front() != '#') {
                expected.push_back(lines[i]);
            }
        }
        checkExpectations(expected, run(split(call.substr(2)), input));
    }
}

INSTANTIATE_TEST_SUITE_P(Tool, Calls,
                         testing::Values("command_line", "convert", "dims", "fixpt", "unit"),
                         [](const auto& info) { return std::string(info.param); });

TEST(Examples, AreClean) {
    for (const char* const name : {"vehicle_suspension.xml", "motor_drive.xml", "thermal_plant.xml",
                                   "vehicle.xml", "vehicle/controller.xml"}) {
        const Outcome outcome = run({"inspect", std::string(TVTYPES_EXAMPLES "/") + name});
        EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
        EXPECT_THAT(outcome.out, HasSubstr("no errors, no warnings, no notes"));
    }
}

TEST(Examples, SystemHasMistakesOfAllKinds) {
    const Outcome outcome = run({"check", "--json", TVTYPES_EXAMPLES "/vehicle.ssd"});
    EXPECT_EQ(outcome.status, 1) << outcome.err;
    const boost::json::object report = outcome.json();
    std::vector<std::string> codes;
    for (const boost::json::value& finding : report.at("findings").as_array()) {
        if (finding.at("severity") != "note") {
            codes.emplace_back(finding.at("code").as_string());
        }
    }
    EXPECT_THAT(codes, testing::UnorderedElementsAre(
                           "dimension-contradiction", "unit-factor", "connector-unit",
                           "enumeration-value", "mapping-incomplete", "type-lossy",
                           "unit-suppressed", "parameter-range", "mapping-target-unmatched"));
}

TEST(Examples, SystemIsDrawn) {
    const TemporaryFolder folder;
    for (const auto& [name, beginning, part] :
         {std::tuple("a.svg", "<?xml", "id=\"connection&#45;21\""),
          std::tuple("a.dot", "digraph", "id=\"connection-21\""),
          std::tuple("a.html", "<!DOCTYPE html>", "id=\\\"connection&#45;21\\\"")}) {
        const std::string path = folder.write(name, "");
        const bool isPage = std::string_view(name) == "a.html";
        const Outcome outcome =
            run({"check", TVTYPES_EXAMPLES "/vehicle.ssd", isPage ? "--html" : "--graph", path});
        EXPECT_EQ(outcome.status, 1) << outcome.err;
        EXPECT_EQ(outcome.out.empty(), isPage);
        const std::string text = readFile(path);
        EXPECT_THAT(text, testing::StartsWith(beginning));
        EXPECT_THAT(text, HasSubstr(part));
    }
}

} // namespace

} // namespace tvtool
