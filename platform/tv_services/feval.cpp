#include <tv_services/feval.h>

#include <ox/array.h>
#include <tvtypes_res/messages.h>

#include <algorithm>
#include <map>
#include <new>
#include <string_view>
#include <vector>

namespace general = TorvaneTypes::general;

namespace {

using HostFunctions = std::map<std::string, tvsvHostFunction, std::less<>>;

HostFunctions& hostFunctions() {
    // Never destroyed, so that the destructors of clients can call functions.
    static HostFunctions& functions = *new HostFunctions;
    return functions;
}

/// Outputs of a function, which are released unless they are moved to the caller.
class Outputs {
  public:
    explicit Outputs(int count) : values_(static_cast<std::size_t>(std::max(count, 0))) {}
    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;
    ~Outputs() { std::for_each(values_.begin(), values_.end(), oxDestroyArray); }

    oxArray_tag** data() { return values_.data(); }

    /// Returns the number of the first output that is null, from 1; 0 if there is none.
    int firstMissing() const {
        const auto missing = std::find(values_.begin(), values_.end(), nullptr);
        return missing == values_.end() ? 0 : static_cast<int>(missing - values_.begin()) + 1;
    }

    void moveTo(oxArray_tag** receiver) {
        std::copy(values_.begin(), values_.end(), receiver);
        values_.clear();
    }

  private:
    std::vector<oxArray_tag*> values_;
};

/// Calls the function and converts an exception to a diagnostic.
tvsvDiagnosticImpl* callGuarded(const std::string& name, const tvsvHostFunction& function,
                                int outCount, oxArray_tag** outputs, int inCount,
                                oxArray_tag** inputs) {
    try {
        return function(outCount, outputs, inCount, inputs);
    } catch (const fnd::except::IException& error) {
        return tvsvCreateDiagnosticFromIException(error, true);
    } catch (const std::bad_alloc&) {
        return tvsvCreateMemoryAllocationDiagnostic();
    } catch (const std::exception& exception) {
        return tvsvCreateDiagnosticFromMessageID(
            general::HostFunctionFailed(name, exception.what()));
    } catch (...) {
        return tvsvCreateDiagnosticFromMessageID(
            general::HostFunctionFailed(name, "an exception of an unknown kind"));
    }
}

} // namespace

void tvsvRegisterHostFunction(const std::string& name, tvsvHostFunction function) {
    if (function) {
        hostFunctions().insert_or_assign(name, std::move(function));
    } else {
        hostFunctions().erase(name);
    }
}

tvsvDiagnosticImpl* tvsvFEVAL_NoThrow(int outCount, oxArray_tag** outputs, int inCount,
                                      oxArray_tag** inputs, const char* functionName,
                                      bool /*fromModel*/,
                                      std::unique_ptr<oxArray_tag, TOxArrayDeleter>* /*extra*/) {
    const std::string name = functionName == nullptr ? "" : functionName;
    const auto found = hostFunctions().find(name);
    if (found == hostFunctions().end()) {
        return tvsvCreateDiagnosticFromMessageID(general::HostFunctionDoesNotExist(name));
    }
    // Copied, since the function may register another one under its name.
    const tvsvHostFunction function = found->second;
    Outputs results(outCount);
    if (auto* diagnostic = callGuarded(name, function, outCount, results.data(), inCount, inputs)) {
        return diagnostic;
    }
    if (const int number = results.firstMissing()) {
        return tvsvCreateDiagnosticFromMessageID(general::HostFunctionWithoutResult(name, number));
    }
    results.moveTo(outputs);
    return nullptr;
}
