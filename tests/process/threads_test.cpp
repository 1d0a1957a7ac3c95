// The first uses of the library in a process, from several threads with tables of their own. CTest
// runs each test in a process of its own; the preset tsan runs them under ThreadSanitizer.
#include "process/uses.h"

#include <gtest/gtest.h>

#include <barrier>
#include <cstddef>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

class FirstUse : public testing::TestWithParam<Use> {};

TEST_P(FirstUse, GivesEveryThreadTheSameResults) {
    std::vector<std::string> results(4);
    std::barrier start(static_cast<std::ptrdiff_t>(results.size()));
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&start, &result] {
            start.arrive_and_wait();
            std::ostringstream out;
            GetParam().run(out);
            result = out.str();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_NE("", results.front());
    for (const std::string& result : results) {
        EXPECT_EQ(results.front(), result);
    }
}

INSTANTIATE_TEST_SUITE_P(Threads, FirstUse, testing::ValuesIn(uses),
                         [](const auto& info) { return info.param.name; });

} // namespace
