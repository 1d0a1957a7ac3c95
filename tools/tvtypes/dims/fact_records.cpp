#include "dims/fact_records.h"

#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace tvtool::dims {

bool DimsReason::isDoubtful() const { return std::ranges::any_of(steps, &DimsStep::isDoubtful); }

std::string DimsReason::text() const {
    if (!sentence.empty()) {
        return text::safeText(sentence);
    }
    std::vector<std::string> texts;
    for (const DimsStep& step : steps) {
        if (omitted > 0 && texts.size() == steps.size() / 2) {
            texts.push_back(fmt::format("... {} more ...", omitted));
        }
        const std::string block =
            step.block.empty()
                ? ""
                : fmt::format(", {}", text::safeText(text::shortened(step.block, longestText)));
        texts.push_back(fmt::format("{} (line {}{}{})", text::safeText(step.text), step.line, block,
                                    step.isDoubtful ? ", which cannot hold" : ""));
    }
    if (!conclusion.empty()) {
        texts.push_back(text::safeText(conclusion));
    }
    return fmt::format("{}", fmt::join(texts, ", "));
}

} // namespace tvtool::dims
