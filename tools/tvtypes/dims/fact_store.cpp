#include "dims/fact_store.h"

#include "dims/names.h"
#include "dims/reading.h"
#include "text/quote.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

namespace tvtool::dims {

namespace {

using Known = DimsAnswer::Known;
using solver::Domain;
using solver::Evidence;
using solver::FactSolver;

/// The steps of a reason that are shown at its beginning, and at its end.
constexpr std::size_t mostSteps = 5;

/// The longest text of a size in a sentence, in bytes.
constexpr std::size_t longest = 60;

std::string numberText(const exact::Number& number) {
    return text::shortened(number.str(), longest);
}

std::string differenceText(const exact::Number& difference) {
    return difference == 0
               ? "the sides are the same"
               : fmt::format("the left side is the right one {} {}",
                             difference < 0 ? "minus" : "plus", numberText(abs(difference)));
}

DimsReason sentence(std::string text) {
    DimsReason reason;
    reason.sentence = std::move(text);
    return reason;
}

/// Leaves out steps in the middle of a long reason.
void shorten(DimsReason& reason) {
    const std::size_t count = reason.steps.size();
    if (count > 2 * mostSteps) {
        reason.omitted = count - 2 * mostSteps;
        const auto first = reason.steps.begin() + mostSteps;
        reason.steps.erase(first, first + static_cast<std::ptrdiff_t>(reason.omitted));
    }
}

const char* domainText(Domain domain) {
    return domain == Domain::Whole         ? "sizes are whole numbers"
           : domain == Domain::NotNegative ? "sizes are not negative"
                                           : "";
}

} // namespace

FactStore::FactStore(TVTypeSys::SymbolicDimsTable& table, Sizes sizes)
    : table_(table), sizes_(sizes), forms_(table) {
    if (sizes == Sizes::Any) {
        levels_.emplace_back(Domain::Any);
    } else {
        levels_.emplace_back(Domain::NotNegative);
        levels_.emplace_back(Domain::Whole);
    }
}

std::optional<DimsObjection> FactStore::state(const Fact& fact) {
    const auto objection = [&fact](bool isRefused, DimsReason reason) {
        return DimsObjection{.line = fact.line,
                             .text = {},
                             .block = fact.block->name,
                             .isRefused = isRefused,
                             .isDoubtful = false,
                             .reason = std::move(reason)};
    };
    if (fact.left == fact.right) {
        return fact.relation == Relation::Equal
                   ? std::nullopt
                   : std::optional(objection(false, sentence(differenceText(0))));
    }
    std::optional<DimsObjection> result;
    const bool isRefused = !registerFact(fact);
    if (isRefused) {
        result = objection(true, libraryReason(fact, false));
    }
    const auto index = static_cast<solver::FactIndex>(facts_.size());
    Fact& kept = facts_.emplace_back(fact);
    const solver::Constraint constraint = forms_.constraint(fact, sizes_ == Sizes::Any);
    bool isUndecided = false;
    for (FactSolver& level : levels_) {
        const FactSolver::Statement statement = level.state(constraint, index);
        isUndecided = isUndecided || statement.outcome == FactSolver::Outcome::Undecided;
        if (statement.outcome == FactSolver::Outcome::Contradiction) {
            kept.isDoubtful = true;
            if (!result || result->reason.isDoubtful()) {
                result =
                    objection(isRefused, evidenceReason(fact, level, statement.evidence, false));
            }
            break;
        }
    }
    if (isUndecided && !kept.isDoubtful) {
        undecidedLines_.push_back(fact.line);
    }
    if (!isRefused) {
        graph_.add(kept);
    }
    if (result && !kept.isDoubtful) {
        result->isDoubtful = result->reason.isDoubtful();
    }
    return result;
}

bool FactStore::registerFact(const Fact& fact) {
    try {
        if (fact.relation == Relation::Equal) {
            table_.addEqualRelation(fact.left, fact.right, fact.block);
        } else {
            table_.addGreaterThanRelation(fact.left, fact.right, fact.block);
        }
        return true;
    } catch (const fnd::except::IException&) {
        return false;
    }
}

DimsAnswer FactStore::ask(const Fact& fact) {
    DimsAnswer answer;
    answer.line = fact.line;
    if (fact.left == fact.right) {
        answer.library = answer.all = fact.relation == Relation::Equal ? Known::Yes : Known::No;
        answer.reason = sentence(differenceText(0));
        return answer;
    }
    answer.library = libraryAnswer(fact);
    if (answer.library != Known::Nothing) {
        DimsReason reason = libraryReason(fact, answer.library == Known::Yes);
        if (!reason.isDoubtful()) {
            answer.all = answer.library;
            answer.reason = std::move(reason);
            return answer;
        }
        answer.doubt = std::move(reason);
    }
    const solver::Constraint constraint = forms_.constraint(fact, sizes_ == Sizes::Any);
    bool isUndecided = false;
    for (FactSolver& level : levels_) {
        const FactSolver::Answer found = level.ask(constraint);
        isUndecided = found.known == FactSolver::Known::Undecided;
        if (found.known == FactSolver::Known::Yes || found.known == FactSolver::Known::No) {
            const bool holds = found.known == FactSolver::Known::Yes;
            answer.all = holds ? Known::Yes : Known::No;
            answer.reason = evidenceReason(fact, level, found.evidence, holds);
            break;
        }
    }
    if (isUndecided) {
        undecidedLines_.push_back(fact.line);
    }
    return answer;
}

DimsAnswer::Known FactStore::libraryAnswer(const Fact& fact) const {
    const bool areEqual = table_.hasEqualRelation(fact.left, fact.right);
    const bool isGreater = table_.hasGreaterThanRelation(fact.left, fact.right);
    const bool isLess = table_.hasGreaterThanRelation(fact.right, fact.left);
    const bool isEqual = fact.relation == Relation::Equal;
    return (isEqual ? areEqual : isGreater)             ? Known::Yes
           : isLess || (isEqual ? isGreater : areEqual) ? Known::No
                                                        : Known::Nothing;
}

/// Returns the facts of one kind by which the library accepts or, unless the fact holds, rejects
/// it.
DimsReason FactStore::libraryReason(const Fact& fact, bool holds) {
    if (holds) {
        return chainReason(graph_.find(fact.left, fact.right, fact.relation));
    }
    std::optional<Chain> chain = graph_.find(fact.right, fact.left, Relation::Greater);
    if (!chain) {
        chain = graph_.find(fact.left, fact.right,
                            fact.relation == Relation::Equal ? Relation::Greater : Relation::Equal);
    }
    return chainReason(chain);
}

DimsReason FactStore::chainReason(const std::optional<Chain>& chain) const {
    if (!chain) {
        return sentence("by facts that were stated before");
    }
    DimsReason reason;
    for (const Fact* fact : *chain) {
        reason.steps.push_back(step(*fact));
    }
    shorten(reason);
    return reason;
}

/// Returns the reason why a fact follows from others or, unless it holds, contradicts them.
DimsReason FactStore::evidenceReason(const Fact& fact, FactSolver& level, const Evidence& evidence,
                                     bool holds) {
    DimsReason reason;
    for (const solver::FactIndex index : evidence.facts) {
        reason.steps.push_back(step(facts_[index]));
    }
    shorten(reason);
    const std::string domain = domainText(evidence.domain);
    if (evidence.facts.empty()) {
        const auto difference = differenceOf(table_, fact.left, fact.right);
        reason.sentence = !domain.empty() ? domain
                          : difference    ? differenceText(*difference)
                                          : "by arithmetic";
        return reason;
    }
    if (!holds) {
        reason.conclusion = conclusion(fact, level, evidence);
    }
    if (!domain.empty()) {
        reason.conclusion += fmt::format("{}as {}", reason.conclusion.empty() ? "" : ", ", domain);
    }
    return reason;
}

/// Returns the value that the facts give to a side or to the difference of the sides, if they do.
std::string FactStore::conclusion(const Fact& fact, FactSolver& level, const Evidence& evidence) {
    const auto valueOf = [&](int id) -> std::optional<exact::Number> {
        const Quotient& quotient = forms_.quotient(id);
        const auto numerator = level.value(quotient.numerator, evidence.facts);
        const auto denominator = level.value(quotient.denominator, evidence.facts);
        return numerator && denominator && *denominator != 0
                   ? std::optional<exact::Number>(*numerator / *denominator)
                   : std::nullopt;
    };
    for (const int side : {fact.left, fact.right}) {
        if (numberOf(table_, side)) {
            continue;
        }
        if (evidence.facts.size() == 1 && isValueOf(side, facts_[evidence.facts.front()])) {
            return "";
        }
        if (const auto value = valueOf(side)) {
            return fmt::format("so {} is {}", sizeText(side), numberText(*value));
        }
    }
    solver::Polynomial difference = forms_.quotient(fact.left).numerator;
    difference.add(forms_.quotient(fact.right).numerator, -1);
    const bool isComparable = forms_.quotient(fact.left).denominator.isConstant() &&
                              forms_.quotient(fact.right).denominator.isConstant();
    const auto value = isComparable ? level.value(difference, evidence.facts) : std::nullopt;
    if (!value) {
        return "";
    }
    const std::string right = sizeText(fact.right);
    const bool isName = right.find_first_of("+-*/[") == std::string::npos;
    return *value == 0 ? fmt::format("so {} is {}", sizeText(fact.left), right)
           : isName    ? fmt::format("so {} is {} {} {}", sizeText(fact.left), right,
                                  *value < 0 ? "-" : "+", numberText(abs(*value)))
                       : fmt::format("so {}", differenceText(*value));
}

/// Returns whether a fact states the value of a size, so that no other text needs to.
bool FactStore::isValueOf(int size, const Fact& fact) const {
    return fact.relation == Relation::Equal &&
           ((fact.left == size && numberOf(table_, fact.right)) ||
            (fact.right == size && numberOf(table_, fact.left)));
}

DimsStep FactStore::step(const Fact& fact) const {
    const char* const sign = fact.relation == Relation::Equal ? "==" : ">";
    return {fmt::format("{} {} {}", sizeText(fact.left), sign, sizeText(fact.right)), fact.line,
            fact.block->name, fact.isDoubtful};
}

std::string FactStore::sizeText(int id) const {
    return text::shortened(decodeNames(table_.getDisplayString(id)), longest);
}

std::vector<DimsFact> FactStore::statedBy(const std::deque<TVBlock>& blocks) const {
    std::map<int, std::vector<std::string>> blocksById;
    std::vector<int> ids;
    for (const TVBlock& block : blocks) {
        table_.getSymbolicDimsConstraints(&block, ids);
        for (const int id : ids) {
            blocksById[id].push_back(block.name.empty() ? fmt::format("line {}", block.line)
                                                        : block.name);
        }
    }
    std::vector<DimsFact> facts;
    facts.reserve(blocksById.size());
    for (auto& [id, names] : blocksById) {
        facts.push_back({id, decodeNames(table_.getSymbolicDims(id).toString()), std::move(names)});
    }
    return facts;
}

} // namespace tvtool::dims
