#include "dims/fact_store.h"

#include "dims/names.h"
#include "dims/reading.h"
#include "text/quote.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <map>
#include <utility>

namespace tvtool::dims {

namespace {

using Known = DimsAnswer::Known;

/// The steps of a chain that are shown at its beginning, and at its end.
constexpr std::size_t mostSteps = 5;

/// The longest text of a size in a sentence, in bytes.
constexpr std::size_t longest = 60;

DimsReason sentence(std::string text) { return {{}, 0, std::move(text)}; }

DimsReason differenceReason(const exact::Number& difference) {
    return sentence(
        difference == 0
            ? "the sides are the same"
            : fmt::format("the left side is the right one {} {}", difference < 0 ? "minus" : "plus",
                          text::shortened(exact::Number(abs(difference)).str(), longest)));
}

} // namespace

std::optional<DimsObjection> FactStore::state(const Fact& fact) {
    const auto objection = [&fact](bool isRefused, DimsReason reason) {
        return DimsObjection{fact.line, {}, fact.block->name, isRefused, std::move(reason)};
    };
    if (fact.left == fact.right) {
        return fact.relation == Relation::Equal
                   ? std::nullopt
                   : std::optional(objection(false, differenceReason(0)));
    }
    if (!registerFact(fact)) {
        return objection(true, libraryReasonAgainst(fact));
    }
    if (graph_.contains(fact)) {
        return std::nullopt;
    }
    const std::optional<DimsReason> reason = findReason(fact, false);
    graph_.add(fact, reason.has_value());
    return reason ? std::optional(objection(false, *reason)) : std::nullopt;
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
    const bool isEqual = fact.relation == Relation::Equal;
    const auto answer = [&fact](Known library, Known all, DimsReason reason) {
        return DimsAnswer{fact.line, {}, library, all, std::move(reason)};
    };
    if (fact.left == fact.right) {
        const Known known = isEqual ? Known::Yes : Known::No;
        return answer(known, known, differenceReason(0));
    }
    const bool areEqual = table_.hasEqualRelation(fact.left, fact.right);
    if (isEqual ? areEqual : table_.hasGreaterThanRelation(fact.left, fact.right)) {
        const Steps steps = isEqual ? Steps::Equal : Steps::Greater;
        return answer(Known::Yes, Known::Yes,
                      chainReason(graph_.find(fact.left, fact.right, steps)));
    }
    if (table_.hasGreaterThanRelation(fact.right, fact.left) ||
        (isEqual ? table_.hasGreaterThanRelation(fact.left, fact.right) : areEqual)) {
        return answer(Known::No, Known::No, libraryReasonAgainst(fact));
    }
    for (const Known known : {Known::Yes, Known::No}) {
        if (std::optional<DimsReason> reason = findReason(fact, known == Known::Yes)) {
            return answer(Known::Nothing, known, std::move(*reason));
        }
    }
    return answer(Known::Nothing, Known::Nothing, {});
}

/// Returns a chain of facts of one kind, as the library follows them, that contradicts the fact.
DimsReason FactStore::libraryReasonAgainst(const Fact& fact) {
    std::optional<Chain> chain = graph_.find(fact.right, fact.left, Steps::Greater);
    if (!chain) {
        chain = graph_.find(fact.left, fact.right,
                            fact.relation == Relation::Equal ? Steps::Greater : Steps::Equal);
    }
    return chainReason(chain);
}

/// Returns the reason why a fact holds or, if `holds` is false, why it cannot hold. The difference
/// of the sides decides if it is a number, else a chain of facts and numbers.
std::optional<DimsReason> FactStore::findReason(const Fact& fact, bool holds) {
    const bool isEqual = fact.relation == Relation::Equal;
    if (const auto difference = differenceOf(table_, fact.left, fact.right)) {
        const bool isTrue = isEqual ? *difference == 0 : *difference > 0;
        return isTrue == holds ? std::optional(differenceReason(*difference)) : std::nullopt;
    }
    std::optional<Chain> chain;
    if (!holds) {
        chain = graph_.find(fact.right, fact.left, Steps::All, isEqual);
    } else if (isEqual) {
        chain = graph_.find(fact.left, fact.right, Steps::Equal);
    }
    // A strict chain from left to right proves that left is greater, and disproves equality.
    if (!chain && isEqual != holds) {
        chain = graph_.find(fact.left, fact.right, Steps::All, true);
    }
    return chain ? std::optional(chainReason(chain)) : std::nullopt;
}

DimsReason FactStore::chainReason(const std::optional<Chain>& chain) const {
    if (!chain) {
        return sentence("by facts that were stated before");
    }
    DimsReason reason;
    const std::size_t count = chain->size();
    reason.omitted = count > 2 * mostSteps ? count - 2 * mostSteps : 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (reason.omitted > 0 && i == mostSteps) {
            i += reason.omitted;
        }
        const Step& step = (*chain)[i];
        if (step.fact == nullptr) {
            reason.steps.push_back(
                {fmt::format("{} > {}", sizeText(step.greater), sizeText(step.lesser)), {}, ""});
        } else {
            const Fact& fact = *step.fact;
            const char* const sign = fact.relation == Relation::Equal ? "==" : ">";
            reason.steps.push_back(
                {fmt::format("{} {} {}", sizeText(fact.left), sign, sizeText(fact.right)),
                 fact.line, fact.block->name});
        }
    }
    return reason;
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
