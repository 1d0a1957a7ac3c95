#include "findings/text.h"

#include "findings/folding.h"
#include "output/shortening.h"
#include "output/table.h"
#include "output/terminal.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/color.h>
#include <fmt/format.h>

#include <string>

namespace tvtool::findings {

namespace {

constexpr std::size_t indent = 4;
/// The columns that the causes of a folded line take, and the most of them.
constexpr std::size_t causesWidth = 60;
constexpr std::size_t mostCauses = 12;

fmt::terminal_color colourOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return fmt::terminal_color::red;
    case Severity::Warning:
        return fmt::terminal_color::yellow;
    default:
        return fmt::terminal_color::cyan;
    }
}

std::string placeText(std::string_view file, std::uint64_t line, std::uint64_t column) {
    return text::safeText(file) + (line == 0     ? ""
                                   : column == 0 ? fmt::format(":{}", line)
                                                 : fmt::format(":{}:{}", line, column));
}

/// Prints "PLACE: error: SENTENCE".
void printLine(const std::string& place, Severity severity, std::string_view sentence, bool colour,
               std::ostream& os) {
    const std::string_view name = severityName(severity);
    std::string line = output::wrapped(fmt::format("{}: {}: {}", place, name, sentence), indent,
                                       output::lineWidth(os));
    // Coloured after it was wrapped, since the codes for colours take no columns.
    const std::size_t begin = place.size() + 2;
    if (colour && line.compare(std::min(begin, line.size()), name.size(), name) == 0) {
        line.replace(begin, name.size(),
                     fmt::format(output::bold(true, colourOf(severity)), "{}", name));
    }
    os << line << '\n';
}

std::string foldedSentence(const std::vector<Finding>& findings, const Fold& fold,
                           const Rule& rule) {
    const std::string causes = output::nameList(
        fold.causes.size(),
        [&](std::size_t i, std::string& name) {
            name += text::safeText(causeOf(findings[fold.causes[i]]));
        },
        causesWidth, mostCauses);
    std::string lines;
    if (fold.firstLine != 0) {
        lines = fold.firstLine == fold.lastLine
                    ? fmt::format(" (line {})", fold.firstLine)
                    : fmt::format(" (lines {} to {})", fold.firstLine, fold.lastLine);
    }
    return fmt::format("{} {}{}{}{} [{}]", fold.elements, rule.folded, causes.empty() ? "" : ": ",
                       causes, lines, rule.name);
}

std::string sentenceOf(const Finding& finding, const Rule& rule) {
    return fmt::format("{}{} [{}]", text::safeText(finding.sentence),
                       finding.count == 1 ? "" : fmt::format(" ({} times)", finding.count),
                       rule.name);
}

} // namespace

void TextPrinter::print(const std::vector<Finding>& findings, std::string_view file) {
    const std::vector<Fold> folds = fold(findings, !style_.all);
    std::size_t lines = 0;
    for (std::size_t i = 0; i < folds.size(); ++i) {
        const Finding& first = findings[folds[i].first];
        const Rule& rule = ruleOf(first.code);
        const auto code = static_cast<std::size_t>(rule.code);
        const std::size_t needed = hasAdvice_[code] ? 1 : 2;
        // The last line has the number of those that are left out.
        const std::size_t room = i + 1 == folds.size() ? mostLines : mostLines - 1;
        if (!style_.all && lines + needed > room) {
            std::size_t others = 0;
            for (; i < folds.size(); ++i) {
                others += folds[i].elements;
            }
            os_ << fmt::format("{} more {}; --all shows each\n", others,
                               others == 1 ? "finding" : "findings");
            return;
        }
        printLine(placeText(file, first.line, first.column), rule.severity,
                  folds[i].findings > 1 ? foldedSentence(findings, folds[i], rule)
                                        : sentenceOf(first, rule),
                  style_.colour, os_);
        if (!hasAdvice_[code]) {
            output::printWrapped(std::string(indent, ' ') + rule.advice, indent, os_);
            hasAdvice_[code] = true;
        }
        lines += needed;
    }
}

void printError(std::string_view file, std::uint64_t line, std::uint64_t column,
                std::string_view sentence, bool colour, std::ostream& os) {
    printLine(placeText(file, line, column), Severity::Error, text::safeText(sentence), colour, os);
}

std::string countsText(std::size_t errors, std::size_t warnings, std::size_t notes) {
    return fmt::format("{}, {}, {}", text::counted(errors, "error", "errors"),
                       text::counted(warnings, "warning", "warnings"),
                       text::counted(notes, "note", "notes"));
}

} // namespace tvtool::findings
