#include "convert/report.h"

#include "convert/values.h"
#include "findings/json.h"
#include "output/json.h"
#include "text/number.h"

#include <cmath>
#include <utility>

namespace tvtool::convert {

namespace {

namespace json = boost::json;

json::value elementValue(Element element, const std::byte* bytes) {
    std::string text;
    appendElement(text, element, bytes);
    if (element.isComplex || !std::isfinite(valueOf(element.type, bytes))) {
        return json::value(text);
    }
    // The double with the digits of a single, which has more of its own.
    const double number = text::parseNumber<double>(text).value_or(0);
    return isFloating(element.type) ? json::value(number)
                                    : json::value(static_cast<std::int64_t>(number));
}

json::object occurrencesObject(const Occurrences& occurrences) {
    return {{"count", occurrences.count}, {"first", json::value_from(occurrences.first)}};
}

} // namespace

void CollectingSink::write(const std::byte* elements, std::size_t count) {
    constexpr std::size_t most = 1000;
    if (values_ && values_->size() + count > most) {
        values_.reset();
    }
    for (std::size_t i = 0; values_ && i < count; ++i) {
        values_->push_back(elementValue(element_, elements + i * sizeOf(element_)));
    }
}

void printJson(const ConversionReport& report, std::ostream& os) {
    const Losses& losses = report.losses;
    findings::Findings found;
    if (losses.lost.count > 0) {
        found.add(findings::Code::ValuesLost, {}, {findings::SubjectKind::Value},
                  "{} of {} values are changed by the conversion", losses.lost.count,
                  losses.elements);
    }
    json::value error(nullptr);
    if (losses.greatestError) {
        error = json::object{{"value", losses.greatestError->value},
                             {"index", losses.greatestError->index}};
    }
    output::printJson("convert",
                      {{"from", report.from},
                       {"to", report.to},
                       {"rounding", report.rounding},
                       {"overflow", report.overflow},
                       {"count", losses.elements},
                       {"lost", occurrencesObject(losses.lost)},
                       {"overflowed", occurrencesObject(losses.overflowed)},
                       {"greatestError", std::move(error)},
                       {"nan", losses.nan},
                       {"infinities", losses.infinities},
                       {"values", report.values ? json::value(*report.values) : nullptr},
                       {"findings", findings::jsonArray(found.all())}},
                      os);
}

} // namespace tvtool::convert
