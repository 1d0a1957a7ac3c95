// Seeds of random numbers.
#pragma once

#include <gtest/gtest.h>

// The same seed in each run, but another in each iteration of --gtest_shuffle --gtest_repeat=COUNT,
// as scripts/soak calls the tests.
inline unsigned randomSeed(unsigned seed) {
    return seed + static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed());
}
