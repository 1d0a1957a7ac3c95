#include "support.h"

#include <tvtypes/functions.h>

#include <gmock/gmock.h>

namespace tvtool {

namespace {

using testing::HasSubstr;

TEST(CommandLine, PrintsHelpAndVersion) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--help"},
                                                      {"help"},
                                                      {"inspect", "--help"},
                                                      {"help", "inspect"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.out, HasSubstr("inspect"));
        EXPECT_EQ(outcome.err, "");
    }
    const std::string version = run({"--version"}).out;
    EXPECT_THAT(version, HasSubstr(libtv_types_version));
    EXPECT_THAT(version, HasSubstr(getInstructionSetName()));
    // The heading is a line, too.
    EXPECT_THAT(version,
                HasSubstr(std::to_string(run({"unit", "--list"}).lines().size() - 1) + " units"));
    EXPECT_EQ(run({"-V"}).out, version);
    const Outcome empty = run({});
    EXPECT_EQ(empty.status, 2);
    EXPECT_EQ(empty.out, "");
    EXPECT_EQ(empty.err, run({"--help"}).out);
}

TEST(CommandLine, RejectsEmptyAndUnprintableArguments) {
    expectRejection(run({"inspect", ""}), "");
    expectRejection(run({"a\x1b[31m\nb"}), "");
}

TEST(CommandLine, TakesArgumentsAfterDoubleDashLiterally) {
    EXPECT_THAT(run({"inspect", "--", "-x.xml"}).err, HasSubstr(": -x.xml: cannot"));
    EXPECT_THAT(run({"dims", "N", "--", "-N"}).out, HasSubstr("\n-N\n"));
}

} // namespace

} // namespace tvtool
