#include "support/errors.h"

#include <tvtypes_res/messages.h>

namespace general = TorvaneTypes::general;

TEST(Diagnostics, ConcatenatesAndConsumes) {
    tvsvDiagnosticImpl* all = nullptr;
    for (int id : {-2, -3}) {
        auto* one = tvsvCreateDiagnosticFromMessageID(general::InvalidDataTypeId(id));
        tvsvConcatenateDiagnostics(all, one, true);
        EXPECT_EQ(nullptr, one);
    }
    ASSERT_EQ(2U, all->size());
    EXPECT_EQ("InvalidDataTypeId(-3)", messageSummary(*all, 1));

    try {
        tvsvThrowIExceptionFromDiagnostic(all, nullptr);
        FAIL();
    } catch (const fnd::except::IUserException& error) {
        EXPECT_EQ(nullptr, all);
        const tvsvDiagnosticImpl& carried = error.diagnostic();
        EXPECT_EQ(carried.text(0) + "\n" + carried.text(1), error.what());
        tvsvDiagnosticImpl* copy = tvsvCreateDiagnosticFromIException(error, true);
        EXPECT_EQ(2U, copy->size());
        tvsvDiscardDiagnostic(copy);
        EXPECT_EQ(nullptr, copy);
    }
}

// Tests of the units use a handler.
TEST(Diagnostics, WritesWarningsToStandardError) {
    auto* warning = tvsvCreateDiagnosticFromMessageID(TorvaneTypes::Unit::LossOfPrecision("in"));
    testing::internal::CaptureStderr();
    tvsvReportAsWarning(warning);
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_EQ(0U, written.find("warning: The scale factor of the unit \"in\"")) << written;
    EXPECT_EQ(nullptr, warning);
}
