// Each folder of tests/inputs contains a description and the expected result of its inspection:
//   status N   the exit status
//   out TEXT   standard output has the text
//   line TEXT  a line of standard output has these words
//   err TEXT   standard error has the text
#include "support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

std::vector<std::string> defects() {
    std::vector<std::string> names;
    for (const fs::directory_entry& folder : fs::directory_iterator(TVTYPES_TEST_INPUTS)) {
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

std::string collapseBlanks(const std::string& line) {
    std::istringstream stream(line);
    std::string joined;
    for (std::string word; stream >> word;) {
        joined += (joined.empty() ? "" : " ") + word;
    }
    return joined;
}

void checkExpectations(const fs::path& expected, const Outcome& outcome) {
    std::ifstream file(expected);
    ASSERT_TRUE(file) << expected;
    std::vector<std::string> lines = outcome.lines();
    std::ranges::transform(lines, lines.begin(), collapseBlanks);
    int count = 0;
    for (std::string line; std::getline(file, line); ++count) {
        const std::string directive = line.substr(0, line.find(' '));
        const std::string text = line.substr(directive.size() + 1);
        if (directive == "status") {
            EXPECT_EQ(std::to_string(outcome.status), text);
        } else if (directive == "out") {
            EXPECT_THAT(outcome.out, HasSubstr(text));
        } else if (directive == "line") {
            EXPECT_THAT(lines, testing::Contains(text));
        } else if (directive == "err") {
            EXPECT_THAT(outcome.err, HasSubstr(text));
        } else {
            ADD_FAILURE() << expected << ": " << line;
        }
    }
    EXPECT_GE(count, 2) << expected << " has too few lines";
}

/// Checks the invariants of all outcomes.
void checkInvariants(const Outcome& outcome) {
    if (outcome.status == 2) {
        EXPECT_EQ(outcome.out, "");
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

class Inputs : public testing::TestWithParam<std::string> {};

TEST_P(Inputs, MatchExpectations) {
    const fs::path folder = fs::path(TVTYPES_TEST_INPUTS) / GetParam();
    const std::string input = inputIn(folder);
    const Outcome text = run({"inspect", input});
    checkExpectations(folder / "expected", text);
    checkInvariants(text);

    const Outcome json = run({"inspect", "--json", input});
    checkInvariants(json);
    EXPECT_EQ(json.status, text.status);
    EXPECT_EQ(json.err, text.err);
    if (json.status != 2) {
        EXPECT_EQ(json.json().at("problems").as_array().empty(), json.status == 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Tool, Inputs, testing::ValuesIn(defects()),
                         [](const auto& info) { return info.param; });

class Examples : public testing::TestWithParam<const char*> {};

TEST_P(Examples, AreClean) {
    const Outcome outcome = run({"inspect", std::string(TVTYPES_EXAMPLES "/") + GetParam()});
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("no problems, no notes"));
}

INSTANTIATE_TEST_SUITE_P(Tool, Examples,
                         testing::Values("vehicle_suspension.xml", "motor_drive.xml",
                                         "thermal_plant.xml", "vehicle.xml"));

} // namespace

} // namespace tvtool
