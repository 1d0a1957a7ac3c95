#include "dims/report.h"

#include "dims/fact_columns.h"
#include "findings/json.h"
#include "text/utf8.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>

namespace tvtool::dims {

namespace {

using findings::Code;
using findings::Findings;
using findings::SubjectKind;
using output::none;

std::string shown(const std::string& text) {
    return text::safeText(text::shortened(text, longestText));
}

const char* answerName(DimsAnswer::Known known) {
    return known == DimsAnswer::Known::Yes  ? "yes"
           : known == DimsAnswer::Known::No ? "no"
                                            : "not known";
}

std::string blocksText(const DimsFact& fact) {
    constexpr std::size_t most = 5;
    constexpr std::size_t longest = 40;
    std::vector<std::string> blocks;
    for (std::size_t i = 0; i < std::min(fact.blocks.size(), most); ++i) {
        blocks.push_back(text::safeText(text::shortened(fact.blocks[i], longest)));
    }
    const std::string text = fmt::format("{}", fmt::join(blocks, ", "));
    return fact.blocks.size() > most
               ? fmt::format("{} and {} more", text, fact.blocks.size() - most)
               : text;
}

std::string simplifiedText(const DimsDetails& dims) {
    return fmt::format("{} (id {})", shown(dims.simplified), dims.simplifiedId);
}

std::string obstacleText(const DimsDetails& dims) {
    const char* const extent = dims.id == dims.simplifiedId ? "" : " in part";
    return dims.obstacle.empty()
               ? ""
               : fmt::format("stays as it is{}: {}", extent, shown(dims.obstacle));
}

std::string sizeText(const DimsDetails& dims) {
    return dims.size.empty() ? "" : fmt::format("{} (id {})", shown(dims.size), *dims.sizeId);
}

using Detail = output::Column<DimsDetails>;

const output::Columns<DimsDetails> detailColumns{
    {none, "text", &DimsDetails::text},
    {"id", "id", &DimsDetails::id},
    Detail("simplified", "simplified", &DimsDetails::simplified).shownAs(simplifiedText),
    {none, "simplifiedId", &DimsDetails::simplifiedId},
    Detail("note", none, &DimsDetails::obstacle).shownAs(obstacleText),
    Detail("size", "size", &DimsDetails::size).shownAs(sizeText),
    {none, "sizeId", &DimsDetails::sizeId},
    {none, "obstacle", &DimsDetails::obstacle},
    {none, "equals", &DimsDetails::equal},
};

const output::Columns<DimsStep> stepColumns{
    {none, "text", &DimsStep::text},
    {none, "line", &DimsStep::line},
    {none, "block", &DimsStep::block},
    {none, "doubtful", &DimsStep::isDoubtful},
};

const output::Columns<DimsReason> reasonColumns{
    {none, "steps", output::rowsOf(&DimsReason::steps, stepColumns)},
    {none, "omitted", &DimsReason::omitted},
    {none, "conclusion", &DimsReason::conclusion},
    {none, "sentence", &DimsReason::sentence},
};

template <class Record>
boost::json::value reasonObject(const Record& record) {
    return output::jsonObject(record.reason, reasonColumns);
}

const output::Columns<DimsAnswer> answerColumns{
    {none, "line", &DimsAnswer::line},
    {none, "text", &DimsAnswer::text},
    {none, "answer", [](const DimsAnswer& answer) { return answerName(answer.library); }},
    {none, "follows", [](const DimsAnswer& answer) { return answerName(answer.all); }},
    {none, "because", reasonObject<DimsAnswer>},
    {none, "doubt",
     [](const DimsAnswer& answer) {
         return answer.doubt ? boost::json::value(output::jsonObject(*answer.doubt, reasonColumns))
                             : boost::json::value();
     }},
};

const output::Columns<DimsObjection> objectionColumns{
    {none, "line", &DimsObjection::line},           {none, "text", &DimsObjection::text},
    {none, "block", &DimsObjection::block},         {none, "refused", &DimsObjection::isRefused},
    {none, "because", reasonObject<DimsObjection>},
};

const output::Columns<DimsNote> noteColumns{
    {none, "line", &DimsNote::line},
    {none, "sentence", &DimsNote::sentence},
};

const output::Columns<DimsFault> faultColumns{
    {none, "line", &DimsFault::line},
    {none, "column", &DimsFault::column},
    {none, "sentence", &DimsFault::sentence},
};

const output::Columns<FactReport> reportColumns{
    {none, "file", [](const FactReport& report) { return boost::json::value(report.file); }},
    {none, "integer", &FactReport::areWhole},
    {none, "stated", &FactReport::stated},
    {none, "answers", output::rowsOf(&FactReport::answers, answerColumns)},
    {none, "contradictions", output::rowsOf(&FactReport::objections, objectionColumns)},
    {none, "notes", output::rowsOf(&FactReport::notes, noteColumns)},
    {none, "facts", output::rowsOf(&FactReport::facts, factColumns)},
    {none, "faults", output::rowsOf(&FactReport::faults, faultColumns)},
    {none, "undecided",
     [](const FactReport& report) { return boost::json::value_from(report.undecided); }},
    {none, "lastLine", &FactReport::lastLine},
};

std::string answerText(const DimsAnswer& answer) {
    const std::string library = answer.doubt
                                    ? fmt::format("{} in the library, by {}; ",
                                                  answerName(answer.library), answer.doubt->text())
                                : answer.library == answer.all ? ""
                                                               : "not known to the library; ";
    return answer.all == DimsAnswer::Known::Nothing
               ? library + answerName(answer.all)
               : fmt::format("{}{}: {}", library, answerName(answer.all), answer.reason.text());
}

std::string objectionText(const DimsObjection& objection) {
    const std::string block =
        objection.block.empty() ? "" : fmt::format(" ({})", shown(objection.block));
    return fmt::format("{}{} {}: {}", shown(objection.text), block,
                       objection.isRefused ? "is refused"
                                           : "cannot hold, though the library accepts it",
                       objection.reason.text());
}

Findings findingsOf(const FactReport& report) {
    Findings found;
    const auto place = [](std::uint64_t line, std::size_t column = 0) {
        return findings::Place{
            {}, static_cast<std::uint32_t>(line), static_cast<std::uint32_t>(column)};
    };
    for (const DimsObjection& objection : report.objections) {
        found.add(Code::FactContradiction, place(objection.line),
                  {SubjectKind::Fact, objection.text}, "{}", objectionText(objection));
    }
    for (const DimsFault& fault : report.faults) {
        found.add(Code::FactInvalid, place(fault.line, fault.column), {SubjectKind::Fact}, "{}",
                  fault.sentence);
    }
    for (const DimsNote& note : report.notes) {
        found.add(Code::FactRemark, place(note.line), {SubjectKind::Fact}, "{}", note.sentence);
    }
    found.sort();
    return found;
}

/// Prints a heading and a line for each record, with the file and the line of the record.
template <class Record, class Text>
void printRecords(const char* heading, fmt::text_style style, const std::string& file,
                  const std::vector<Record>& records, const Text& text, std::ostream& os) {
    if (records.empty()) {
        return;
    }
    os << '\n' << fmt::format(style, "{}", heading) << '\n';
    for (const Record& record : records) {
        os << fmt::format("{}:{}: {}\n", text::safeText(file), record.line, text(record));
    }
}

} // namespace

const output::Columns<DimsFact> factColumns{
    {"id", "id", &DimsFact::id},
    output::Column<DimsFact>("fact", "text", &DimsFact::text).shortenedTo(longestText),
    output::Column<DimsFact>("stated by", "blocks", &DimsFact::blocks).shownAs(blocksText),
};

void printText(const std::vector<DimsDetails>& dimensions, bool colour, std::ostream& os) {
    const char* separator = "";
    for (const DimsDetails& dims : dimensions) {
        os << separator << fmt::format(output::bold(colour), "{}", shown(dims.text)) << '\n';
        output::printFields(dims, detailColumns, os);
        if (dims.equal) {
            output::printField("equals", shown(dimensions[*dims.equal].text), os);
        }
        separator = "\n";
    }
}

void printJson(const std::vector<DimsDetails>& dimensions, std::ostream& os) {
    Findings found;
    for (const DimsDetails& dims : dimensions) {
        if (!dims.obstacle.empty()) {
            found.add(Code::DimensionForm, {}, {SubjectKind::Dimension, dims.text}, "{}",
                      dims.obstacle);
        }
    }
    output::printJson("dims",
                      {{"dimensions", output::jsonArray(dimensions, detailColumns)},
                       {"findings", findings::jsonArray(found.all())}},
                      os);
}

namespace {

void printSummary(const FactReport& report, bool colour, std::ostream& os) {
    os << fmt::format("{}: {}, {}", text::safeText(report.file),
                      text::counted(report.stated, "fact", "facts"),
                      text::counted(report.answers.size(), "question", "questions"));
    // What is not decided can be a contradiction.
    if (report.undecided.empty() || !report.objections.empty()) {
        os << ", " << text::counted(report.objections.size(), "contradiction", "contradictions");
    }
    if (!report.undecided.empty()) {
        os << fmt::format(", {} not decided",
                          text::counted(report.undecided.size(), "line", "lines"));
    }
    os << '\n';
    printRecords(
        "Answers", output::bold(colour), report.file, report.answers,
        [](const DimsAnswer& answer) {
            return fmt::format("{} ? {}", shown(answer.text), answerText(answer));
        },
        os);
    printRecords("Contradictions", output::bold(colour, fmt::terminal_color::red), report.file,
                 report.objections, objectionText, os);
    printRecords(
        "Notes", output::bold(colour, fmt::terminal_color::yellow), report.file, report.notes,
        [](const DimsNote& note) { return shown(note.sentence); }, os);
}

/// Prints a line for each block that has stated a fact.
void printFacts(const std::vector<DimsFact>& facts, std::ostream& os) {
    std::size_t width = 0;
    for (const DimsFact& fact : facts) {
        width = std::max(width, text::displayWidth(text::safeText(fact.text)));
    }
    constexpr std::size_t widest = 60;
    for (const DimsFact& fact : facts) {
        const std::string text = text::safeText(fact.text);
        const std::size_t shown = text::displayWidth(text);
        for (const std::string& block : fact.blocks) {
            os << fmt::format(
                "{}{}  # {}\n", text,
                std::string(shown < std::min(width, widest) ? std::min(width, widest) - shown : 0,
                            ' '),
                text::safeText(block));
        }
    }
}

} // namespace

void printText(const FactReport& report, bool isListed, bool colour, std::ostream& os) {
    if (!isListed) {
        printSummary(report, colour, os);
        return;
    }
    std::stringstream summary;
    printSummary(report, colour, summary);
    for (std::string line; std::getline(summary, line);) {
        os << (line.empty() ? "" : "# ") << line << '\n';
    }
    os << (report.areWhole ? "\n" : "\ninteger off\n");
    printFacts(report.facts, os);
}

void printJson(const FactReport& report, std::ostream& os) {
    boost::json::object object = output::jsonObject(report, reportColumns);
    object.emplace("findings", findings::jsonArray(findingsOf(report).all(), report.file));
    output::printJson("dims", std::move(object), os);
}

} // namespace tvtool::dims
