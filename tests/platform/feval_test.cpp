#include "support/errors.h"

#include <ox/array.h>
#include <tv_services/feval.h>
#include <tvtypes_res/messages.h>

#include <new>
#include <stdexcept>

// F returns its input and a number, and then succeeds, fails or throws. If it fails, the outputs
// must be unchanged and all references released.
TEST(HostFunctions, ReturnOutputsOrDiagnostic) {
    using Ending = tvsvDiagnosticImpl*;
    oxArray_tag* input = oxCreateDoubleScalar(4);
    oxArray_tag* outputs[] = {nullptr, nullptr};
    const auto call = [&] {
        auto* diagnostic = tvsvFEVAL_NoThrow(2, outputs, 1, &input, "F", true, nullptr);
        const std::string summary = diagnostic == nullptr ? "done" : messageSummary(*diagnostic);
        tvsvDiscardDiagnostic(diagnostic);
        return summary;
    };
    const auto callEnding = [&](Ending (*end)(oxArray_tag**)) {
        tvsvRegisterHostFunction("F", [=](int, oxArray_tag** made, int, oxArray_tag** given) {
            made[0] = const_cast<oxArray_tag*>(oxShareArray(given[0]));
            made[1] = oxCreateDoubleScalar(oxGetScalar(given[0]) + 1);
            return end(made);
        });
        const std::string result = call();
        tvsvRegisterHostFunction("F", nullptr);
        return result;
    };
    const auto returnsDiagnostic = [](oxArray_tag**) -> Ending {
        return tvsvCreateDiagnosticFromMessageID(TorvaneTypes::general::InvalidDataTypeId(-2));
    };
    const auto throws = [](oxArray_tag**) -> Ending {
        tvsvDiagnosticImpl* diagnostic = tvsvCreateMemoryAllocationDiagnostic();
        tvsvThrowIExceptionFromDiagnostic(diagnostic, nullptr);
    };
    const auto leavesNull = [](oxArray_tag** made) -> Ending {
        oxDestroyArray(std::exchange(made[1], nullptr));
        return nullptr;
    };
    EXPECT_EQ("HostFunctionDoesNotExist(F)", call());
    EXPECT_EQ("InvalidDataTypeId(-2)", callEnding(returnsDiagnostic));
    EXPECT_EQ("MemoryAllocErr()", callEnding(throws));
    EXPECT_EQ("MemoryAllocErr()", callEnding([](auto) -> Ending { throw std::bad_alloc(); }));
    EXPECT_EQ("HostFunctionFailed(F, odd)",
              callEnding([](auto) -> Ending { throw std::runtime_error("odd"); }));
    EXPECT_EQ("HostFunctionFailed(F, an exception of an unknown kind)",
              callEnding([](auto) -> Ending { throw 7; }));
    EXPECT_EQ("HostFunctionWithoutResult(F, 2)", callEnding(leavesNull));
    EXPECT_TRUE(outputs[0] == nullptr && outputs[1] == nullptr);
    EXPECT_EQ(1, oxGetReferenceCount(input)) << "an output was not released";

    EXPECT_EQ("done", callEnding([](auto) -> Ending { return nullptr; }));
    EXPECT_EQ(input, outputs[0]);
    EXPECT_EQ(5.0, oxGetScalar(outputs[1]));
    for (oxArray_tag* value : {input, outputs[0], outputs[1]}) {
        oxDestroyArray(value);
    }
}
