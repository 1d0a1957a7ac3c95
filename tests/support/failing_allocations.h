// Allocations that fail on request, for tests of what an operation leaves behind when memory runs
// out. A program that includes this also compiles failing_allocations.cpp, which replaces the
// allocation functions of all libraries in the process.
#pragma once

#include "support/errors.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

enum class Failures {
    Once,      // one allocation fails
    FromThere, // it and all later ones fail
};

// While this exists, the allocation of this thread with index `first`, from 0, fails: operator new
// throws std::bad_alloc; utMalloc and utCalloc return null.
class FailingAllocations {
  public:
    FailingAllocations(int first, Failures failures);
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations();

    // Whether an allocation has failed.
    bool triggered() const;
};

// Runs `operation` on a state from `make`, once for each of its allocations, which then fails.
// Expects std::bad_alloc or the host's memory error with an unchanged `snapshot`, and that the
// operation, called again, has the effect that it has when nothing fails. `make` returns a smart
// pointer, `snapshot` a comparable value with everything that clients see of the state.
template <class Make, class Operation, class Snapshot>
void expectUnchangedOnFailedAllocation(const std::string& name, const Make& make,
                                       const Operation& operation, const Snapshot& snapshot) {
    SCOPED_TRACE(name);
    const auto intact = make();
    const auto before = snapshot(*intact);
    operation(*intact);
    const auto after = snapshot(*intact);
    for (const Failures failures : {Failures::Once, Failures::FromThere}) {
        bool triggered = true;
        for (int index = 0; triggered; ++index) {
            SCOPED_TRACE("allocation " + std::to_string(index));
            const auto state = make();
            bool failed = false;
            {
                const FailingAllocations failing(index, failures);
                try {
                    operation(*state);
                } catch (const std::bad_alloc&) {
                    failed = true;
                } catch (const fnd::except::IException& error) {
                    failed =
                        error.diagnostic().messageId(0) == "TorvaneTypes::general::MemoryAllocErr";
                }
                triggered = failing.triggered();
            }
            ASSERT_TRUE(failed || !triggered || snapshot(*state) == after)
                << "wrong error or result";
            if (failed) {
                ASSERT_EQ(before, snapshot(*state));
                operation(*state);
            }
            ASSERT_EQ(after, snapshot(*state));
        }
    }
}
