#include "support.h"

#include "tool.h"

#include <tvtypes/functions.h>

#include <gmock/gmock.h>

#include <array>
#include <sstream>

namespace tvtool {

namespace {

using testing::HasSubstr;

TEST(CommandLine, PrintsHelpAndVersion) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{}, {"--help"}, {"inspect", "--help"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.out, HasSubstr("inspect"));
        EXPECT_EQ(outcome.err, "");
    }
    EXPECT_THAT(run({"--version"}).out, HasSubstr(libtv_types_version));
}

TEST(CommandLine, RejectsInvalidCallsInOneLine) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"inspect", ""}, {"a\x1b[31m\nb"}}) {
        expectRejection(run(arguments), "");
    }
}

TEST(CommandLine, TakesArgumentsAfterDoubleDashLiterally) {
    EXPECT_THAT(run({"inspect", "--", "-x.xml"}).err, testing::HasSubstr(": -x.xml: cannot"));
    EXPECT_THAT(run({"dims", "N", "--", "-N"}).out, testing::HasSubstr("\n-N\n"));
}

TEST(CommandLine, ReportsFailedOutput) {
    const std::array<const char*, 3> argv{"tvtypes", "inspect",
                                          TVTYPES_EXAMPLES "/motor_drive.xml"};
    std::ostream nowhere(nullptr);
    std::istringstream in;
    std::ostringstream err;
    EXPECT_EQ(runTool(static_cast<int>(argv.size()), argv.data(), {in, nowhere, err}),
              ExitUnusable);
    EXPECT_THAT(err.str(), HasSubstr("cannot be written"));
}

} // namespace

} // namespace tvtool
