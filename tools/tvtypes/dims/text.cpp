#include "dims/text.h"

#include "model/inspection_text.h"
#include "output/table.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string_view>

namespace tvtool::dims {

namespace {

/// A dimension may be written in any length.
std::string shown(const std::string& text) {
    constexpr std::size_t longest = 200;
    return text::safeText(text::shortened(text, longest));
}

fmt::text_style bold(bool colour) {
    return colour ? fmt::text_style(fmt::emphasis::bold) : fmt::text_style();
}

void printLine(const char* label, const std::string& text, std::ostream& os) {
    os << fmt::format("  {:<12}  {}\n", label, text);
}

std::string stepText(const DimsStep& step) {
    std::string text = text::safeText(step.text);
    if (step.line != 0) {
        text += fmt::format(" (line {}{}{})", step.line, step.block.empty() ? "" : ", ",
                            shown(step.block));
    }
    return text;
}

std::string blocksOf(const DimsFact& fact) {
    constexpr std::size_t most = 5;
    std::string blocks;
    for (std::size_t i = 0; i < fact.blocks.size() && i < most; ++i) {
        constexpr std::size_t longest = 40;
        blocks += (i == 0 ? "" : ", ") + text::safeText(text::shortened(fact.blocks[i], longest));
    }
    return fact.blocks.size() > most
               ? fmt::format("{} and {} more", blocks, fact.blocks.size() - most)
               : blocks;
}

std::string answerText(const DimsAnswer& answer) {
    const std::string reason = reasonText(answer.reason);
    if (answer.library != DimsAnswer::Known::Nothing) {
        return fmt::format("{}: {}", nameOf(answer.library), reason);
    }
    return answer.all == DimsAnswer::Known::Nothing
               ? "not known"
               : fmt::format("not known to the library; {}: {}", nameOf(answer.all), reason);
}

/// Remarks of a file, one a line, under a heading.
class Section {
  public:
    Section(const char* heading, fmt::text_style style, const std::string& file, std::ostream& os)
        : heading_(fmt::format(style, "{}", heading)), file_(text::safeText(file)), os_(os) {}

    void print(std::uint64_t line, const std::string& text) {
        if (isEmpty_) {
            os_ << '\n' << heading_ << '\n';
            isEmpty_ = false;
        }
        os_ << fmt::format("{}{}: {}\n", file_, line == 0 ? "" : fmt::format(":{}", line), text);
    }

  private:
    std::string heading_;
    std::string file_;
    std::ostream& os_;
    bool isEmpty_ = true;
};

} // namespace

std::string reasonText(const DimsReason& reason) {
    if (!reason.sentence.empty()) {
        return text::safeText(reason.sentence);
    }
    std::vector<std::string> steps;
    for (std::size_t i = 0; i < reason.steps.size(); ++i) {
        if (reason.omitted > 0 && i == reason.steps.size() / 2) {
            steps.push_back(fmt::format("... {} more ...", reason.omitted));
        }
        steps.push_back(stepText(reason.steps[i]));
    }
    return fmt::format("{}", fmt::join(steps, ", "));
}

void printText(const std::vector<DimsSheet>& sheets, bool colour, std::ostream& os) {
    bool isFirst = true;
    for (const DimsSheet& sheet : sheets) {
        os << (isFirst ? "" : "\n") << fmt::format(bold(colour), "{}", shown(sheet.text)) << '\n';
        isFirst = false;
        printLine("id", std::to_string(sheet.id), os);
        printLine("simplified",
                  fmt::format("{} (id {})", shown(sheet.simplified), sheet.simplifiedId), os);
        if (!sheet.obstacle.empty()) {
            const char* const extent = sheet.id == sheet.simplifiedId ? "" : " in part";
            printLine("note", fmt::format("stays as it is{}: {}", extent, shown(sheet.obstacle)),
                      os);
        }
        if (!sheet.size.empty()) {
            printLine("size", fmt::format("{} (id {})", shown(sheet.size), sheet.sizeId), os);
        }
        if (sheet.equal) {
            printLine("equals", shown(sheets[*sheet.equal].text), os);
        }
    }
}

void printFacts(const std::vector<DimsFact>& facts, fmt::text_style headingStyle,
                std::ostream& os) {
    if (facts.empty()) {
        return;
    }
    output::Table table;
    table.addColumn("id", output::Align::Right);
    table.addColumn("fact", output::Align::Left);
    table.addColumn("stated by", output::Align::Left);
    for (const DimsFact& fact : facts) {
        table.addRow({std::to_string(fact.id), shown(fact.text), blocksOf(fact)});
    }
    os << '\n';
    table.print(os, headingStyle);
}

void printText(const FactReport& report, bool isListed, bool colour, std::ostream& os) {
    const fmt::text_style style = bold(colour);
    os << fmt::format("{}: {}, {}, {}\n", text::safeText(report.file),
                      text::counted(report.stated, "fact", "facts"),
                      text::counted(report.answers.size(), "question", "questions"),
                      text::counted(report.objections.size(), "contradiction", "contradictions"));
    Section answers("Answers", style, report.file, os);
    for (const DimsAnswer& answer : report.answers) {
        answers.print(answer.line, fmt::format("{} ? {}", shown(answer.text), answerText(answer)));
    }
    Section contradictions("Contradictions",
                           colour ? style | fmt::fg(fmt::terminal_color::red) : style, report.file,
                           os);
    for (const DimsObjection& objection : report.objections) {
        const std::string block =
            objection.block.empty() ? "" : fmt::format(" ({})", shown(objection.block));
        contradictions.print(objection.line,
                             fmt::format("{}{} {}: {}", shown(objection.text), block,
                                         objection.isRefused
                                             ? "is refused"
                                             : "cannot hold, though the library accepts it",
                                         reasonText(objection.reason)));
    }
    Section notes("Notes", colour ? style | fmt::fg(fmt::terminal_color::yellow) : style,
                  report.file, os);
    for (const DimsNote& note : report.notes) {
        notes.print(note.line, shown(note.sentence));
    }
    if (isListed) {
        printFacts(report.facts, style, os);
    }
}

} // namespace tvtool::dims
