#include "output/failure.h"

#include "output/json.h"

namespace tvtool::output {

boost::json::object failureObject(const Failure& failure) {
    const auto place = [](std::uint64_t number) {
        return number == 0 ? boost::json::value(nullptr) : boost::json::value(number);
    };
    return {{"sentence", jsonValue(failure.sentence)},
            {"file", jsonValue(failure.file)},
            {"line", place(failure.line)},
            {"column", place(failure.column)},
            {"text", jsonValue(failure.text)},
            {"suggestion", jsonValue(failure.suggestion)}};
}

} // namespace tvtool::output
