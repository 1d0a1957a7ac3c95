// The tool as a process: failing descriptors, signals and limits.
#include "support.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace tvtool {

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;

std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
}

/// Waits until the folder has this number of entries; false if that takes too long.
bool waitForEntries(const fs::path& folder, std::size_t count) {
    for (int attempt = 0; attempt < 3000; ++attempt) {
        if (namesIn(folder).size() == count) {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

struct ProcessTest : testing::Test {
    TemporaryFolder folder;
    const std::string out = folder.write("out", "kept");
    const fs::path path = fs::path(out).parent_path();

    /// Runs the tool in the folder by a shell, where $T is its path. `out` is all that it prints.
    Outcome shell(const std::string& script) {
        const std::string call = fmt::format("cd '{}' && T='{}' && {{ {} ; }} 2>&1", path.string(),
                                             TVTYPES_TOOL, script);
        Outcome outcome;
        std::FILE* const pipe = popen(call.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
            outcome.out.append(buffer.data(), count);
        }
        outcome.status = WEXITSTATUS(pclose(pipe));
        return outcome;
    }
};

TEST_F(ProcessTest, FailingDescriptorsAreErrors) {
    const std::pair<const char*, const char*> rows[] = {
        {"$T convert --to int8 --out out <.", "standard input cannot be read: Is a directory"},
        {"$T convert --to int8 --out out <&-", "input cannot be read: Bad file descriptor"},
        {"$T convert --to int8 --table <.", "cannot be read: Is a directory"},
        {"$T convert --in /proc/self/mem --from int8 --to int8 --out out", "Input/output error"},
        {"$T convert --in /proc/self/mem --format npy --to int8 --out out", "Input/output error"},
        {"$T dims --facts - <.", "tvtypes: -: cannot be read: Is a directory"},
        {"$T dims --facts - <&-", "tvtypes: -: cannot be read: Bad file descriptor"},
        {"$T inspect /dev/stdin <.", "is a directory"},
        {"$T inspect /proc/self/mem", "Input/output error"},
        {"$T convert --to int8 1 >&-", "the output cannot be written"},
        {"$T convert --to int8 1 >/dev/full", "the output cannot be written"},
        {"$T --help >/dev/full", "the output cannot be written"},
        {"$T convert --to int8 1 --out /dev/full", "/dev/full: cannot be written: No space left"},
        {"ulimit -f 0; $T convert --to int8 1 --out out", "out: cannot be written: File too large"},
        {"ulimit -f 0; $T layout " TVTYPES_EXAMPLES "/vehicle.xml --svg out", "File too large"}};
    for (const auto& [script, sentence] : rows) {
        const Outcome outcome = shell(script);
        EXPECT_EQ(outcome.status, 2) << script;
        EXPECT_TRUE(outcome.out.starts_with("tvtypes: ")) << script << '\n' << outcome.out;
        EXPECT_THAT(outcome.out, HasSubstr(sentence)) << script;
        EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 1) << outcome.out;
        EXPECT_EQ(readFile(out), "kept") << script;
        EXPECT_THAT(namesIn(path), ElementsAre("out")) << script;
    }
}

TEST_F(ProcessTest, WritesToOpenDescriptors) {
    EXPECT_EQ(shell("$T convert --to int8 65 --out out 2>&-; cat out").out, "A");
    EXPECT_EQ(shell("$T convert --to int8 66 --out /dev/stdout 2>/dev/null | cat").out, "B");
    EXPECT_EQ(shell("$T convert --to int8 67 --out /dev/stdout 2>/dev/null >>out; cat out").out,
              "AC");
    EXPECT_EQ(shell("$T convert --to int8 68 --out /dev/fd/3 2>/dev/null 3>>out; cat out").out,
              "ACD");
    const Outcome same =
        shell("$T convert --in out --from int8 --to int8 --out /dev/fd/3 3>>out; cat out");
    EXPECT_EQ(same.out, "tvtypes: /dev/fd/3: is the input, so it is not overwritten\nACD");
    // A header with a count that is known at the end cannot be written to a pipe.
    EXPECT_THAT(shell("mkfifo p.npy; : <p.npy & $T convert --to int8 1 --out p.npy").out,
                HasSubstr("p.npy: cannot be written: Illegal seek"));
}

/// A process of the tool that converts a pipe to the file `out`.
class Conversion {
  public:
    Conversion(const std::string& out, int ignoredSignal) {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        process_ = fork();
        if (process_ == 0) {
            for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU}) {
                std::signal(signal, signal == ignoredSignal ? SIG_IGN : SIG_DFL);
            }
            dup2(ends[0], STDIN_FILENO);
            close(ends[1]);
            close(STDERR_FILENO);
            execl(TVTYPES_TOOL, "tvtypes", "convert", "--to", "int8", "--out", out.c_str(),
                  nullptr);
            _exit(127);
        }
        close(ends[0]);
        input_ = ends[1];
    }

    void send(int signal) const { kill(process_, signal); }

    /// Ends the input and returns the status of the process.
    int wait() const {
        close(input_);
        int status = 0;
        waitpid(process_, &status, 0);
        return status;
    }

  private:
    pid_t process_ = 0;
    int input_ = 0;
};

TEST_F(ProcessTest, SignalsLeaveNoPartialFile) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGXCPU}) {
        const Conversion conversion(out, 0);
        ASSERT_TRUE(waitForEntries(path, 2));
        conversion.send(signal);
        // The input is still open, so only the signal can end the process.
        EXPECT_TRUE(waitForEntries(path, 1)) << signal;
        const int status = conversion.wait();
        EXPECT_TRUE(WIFSIGNALED(status)) << signal;
        EXPECT_EQ(WTERMSIG(status), signal);
        EXPECT_EQ(readFile(out), "kept");
    }
    const Conversion ignoring(out, SIGHUP);
    ASSERT_TRUE(waitForEntries(path, 2));
    ignoring.send(SIGHUP);
    EXPECT_EQ(ignoring.wait(), 0);
    EXPECT_EQ(readFile(out), "");
}

// The sanitizer needs more address space than any limit leaves.
#ifndef TVTYPES_SANITIZED
TEST_F(ProcessTest, ReportsLackOfMemory) {
    std::string variables;
    for (int i = 0; i < 20000; ++i) {
        variables += fmt::format("<Float64 name=\"a{}\" valueReference=\"{}\"/>", i, i);
    }
    folder.write("m.xml", description3("", variables));
    int reports = 0;
    for (int megabytes = 48; megabytes <= 256; megabytes += 8) {
        const Outcome outcome =
            shell(fmt::format("ulimit -v {}; $T inspect m.xml", megabytes * 1024));
        // 127: the memory is not enough for the shared libraries.
        if (outcome.status != 127 && outcome.status != 0) {
            EXPECT_EQ(outcome.status, 2) << megabytes;
            EXPECT_EQ(outcome.out, "tvtypes: there is not enough memory\n") << megabytes;
            ++reports;
        }
    }
    EXPECT_GT(reports, 0);
}
#endif

TEST_F(ProcessTest, DescriptionsComeFromPipes) {
    const std::string xml = readFile(TVTYPES_EXAMPLES "/vehicle.xml");
    folder.write("v.xml", xml);
    folder.writeArchive("v.fmu", {{"modelDescription.xml", xml}});
    const std::string expected = shell("$T layout v.xml").out;
    EXPECT_THAT(expected, HasSubstr("vehicle_wheel"));
    for (const char* const script :
         {"cat v.xml | $T layout -", "cat v.fmu | $T layout -", "$T layout - <v.fmu",
          "cat v.fmu | $T layout /dev/stdin", "$T layout /dev/stdin <v.fmu", "$T layout v.fmu"}) {
        EXPECT_EQ(shell(script).out, expected) << script;
    }
    EXPECT_THAT(shell("head -c 500 v.fmu | $T layout -").out, HasSubstr("tvtypes: -: begins like"));
    EXPECT_THAT(shell("$T layout - </dev/null").out, HasSubstr("tvtypes: -: is empty"));
}

} // namespace

} // namespace tvtool
