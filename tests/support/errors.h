// Thrown errors in a form that tests can compare.
#pragma once

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <gtest/gtest.h>

#include <string>

// The message id without its namespace, and the arguments: "DataTypeAliasLoop(P, Q)".
inline std::string messageSummary(const tvsvDiagnosticImpl& diagnostic, std::size_t index = 0) {
    const std::string& id = diagnostic.messageId(index);
    std::string summary = id.substr(id.rfind(':') + 1) + "(";
    for (const std::string& argument : diagnostic.arguments(index)) {
        summary += (summary.back() == '(' ? "" : ", ") + argument;
    }
    return summary + ")";
}

// The summary of the error that an operation throws, or "no error".
template <class Operation>
std::string thrownError(const Operation& operation) {
    try {
        operation();
    } catch (const fnd::except::IException& error) {
        return messageSummary(error.diagnostic());
    }
    return "no error";
}

#define EXPECT_ERROR(expected, statement)                                                          \
    EXPECT_EQ(expected, thrownError([&] { static_cast<void>(statement); }))
#define EXPECT_NO_ERROR(statement) EXPECT_ERROR("no error", statement)
