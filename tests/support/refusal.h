// What a refusal says, in a form that tests can compare.
#pragma once

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <gtest/gtest.h>

#include <string>

// The message id without its space, and the arguments: "DataTypeAliasLoop(P, Q)".
inline std::string summaryOf(const tvsvDiagnosticImpl& diagnostic, std::size_t index = 0) {
    const std::string& id = diagnostic.messageId(index);
    std::string summary = id.substr(id.rfind(':') + 1) + "(";
    for (const std::string& argument : diagnostic.arguments(index)) {
        summary += (summary.back() == '(' ? "" : ", ") + argument;
    }
    return summary + ")";
}

// The refusal of an operation, or "accepted".
template <class Operation>
std::string refusalOf(const Operation& operation) {
    try {
        operation();
    } catch (const fnd::except::IException& refusal) {
        return summaryOf(refusal.diagnostic());
    }
    return "accepted";
}

#define EXPECT_REFUSED(expected, statement)                                                        \
    EXPECT_EQ(expected, refusalOf([&] { static_cast<void>(statement); }))
#define EXPECT_ACCEPTED(statement) EXPECT_REFUSED("accepted", statement)
