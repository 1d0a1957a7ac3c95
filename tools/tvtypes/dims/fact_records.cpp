#include "dims/fact_records.h"

#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvtool::dims {

namespace {

std::string stepText(const DimsStep& step) {
    std::string text = text::safeText(step.text);
    if (step.line != 0) {
        text += fmt::format(" (line {}{}{})", step.line, step.block.empty() ? "" : ", ",
                            text::safeText(text::shortened(step.block, longestText)));
    }
    return text;
}

} // namespace

const char* answerName(DimsAnswer::Known known) {
    switch (known) {
    case DimsAnswer::Known::Yes:
        return "yes";
    case DimsAnswer::Known::No:
        return "no";
    case DimsAnswer::Known::Nothing:
        break;
    }
    return "not known";
}

std::string DimsReason::text() const {
    if (!sentence.empty()) {
        return text::safeText(sentence);
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (omitted > 0 && i == steps.size() / 2) {
            texts.push_back(fmt::format("... {} more ...", omitted));
        }
        texts.push_back(stepText(steps[i]));
    }
    return fmt::format("{}", fmt::join(texts, ", "));
}

} // namespace tvtool::dims
