// Former names of the helpers of support/errors.h.
#pragma once

#include "support/errors.h"

inline std::string summaryOf(const tvsvDiagnosticImpl& diagnostic, std::size_t index = 0) {
    return messageSummary(diagnostic, index);
}

template <class Operation>
std::string refusalOf(const Operation& operation) {
    const std::string error = thrownError(operation);
    return error == "no error" ? "accepted" : error;
}

#define EXPECT_REFUSED(expected, statement)                                                        \
    EXPECT_EQ(expected, refusalOf([&] { static_cast<void>(statement); }))
#define EXPECT_ACCEPTED(statement) EXPECT_REFUSED("accepted", statement)
