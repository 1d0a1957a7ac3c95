#include "dims/fact_store.h"

#include "text/quote.h"

#include <fnd/except.h>

#include <fmt/format.h>

#include <map>
#include <utility>

namespace tvtool::dims {

namespace {

using Known = DimsAnswer::Known;

/// Of a chain, each at its beginning and at its end.
constexpr std::size_t mostSteps = 5;

/// Of a size in a sentence.
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

std::optional<FactStore::Objection> FactStore::state(const Fact& fact) {
    if (fact.left == fact.right) {
        return fact.relation == Relation::Equal
                   ? std::nullopt
                   : std::optional(Objection{false, sentence("the sides are the same")});
    }
    if (!tryToState(fact)) {
        return Objection{true, libraryReasonAgainst(fact)};
    }
    if (graph_.isKnown(fact)) {
        return std::nullopt;
    }
    const std::optional<DimsReason> reason = reasonAgainst(fact);
    graph_.add(fact, reason.has_value());
    return reason ? std::optional(Objection{false, *reason}) : std::nullopt;
}

bool FactStore::tryToState(const Fact& fact) {
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

FactStore::Answer FactStore::ask(const Fact& fact) {
    const bool isEqual = fact.relation == Relation::Equal;
    const auto known = [](Known what, DimsReason reason) {
        return Answer{what, what, std::move(reason)};
    };
    if (fact.left == fact.right) {
        return known(isEqual ? Known::Yes : Known::No, sentence("the sides are the same"));
    }
    const bool areEqual = table_.hasEqualRelation(fact.left, fact.right);
    if (isEqual ? areEqual : table_.hasGreaterThanRelation(fact.left, fact.right)) {
        return known(Known::Yes, reasonOf(graph_.find(fact.left, fact.right,
                                                      isEqual ? Ways::Equal : Ways::Greater)));
    }
    if (table_.hasGreaterThanRelation(fact.right, fact.left) ||
        (isEqual ? table_.hasGreaterThanRelation(fact.left, fact.right) : areEqual)) {
        return known(Known::No, libraryReasonAgainst(fact));
    }
    if (std::optional<DimsReason> reason = reasonFor(fact)) {
        return {Known::Nothing, Known::Yes, std::move(*reason)};
    }
    if (std::optional<DimsReason> reason = reasonAgainst(fact)) {
        return {Known::Nothing, Known::No, std::move(*reason)};
    }
    return {};
}

/// By facts of one kind, as the library looks for them.
DimsReason FactStore::libraryReasonAgainst(const Fact& fact) {
    std::optional<Chain> chain = graph_.find(fact.right, fact.left, Ways::Greater);
    if (!chain) {
        chain = graph_.find(fact.left, fact.right,
                            fact.relation == Relation::Equal ? Ways::Greater : Ways::Equal);
    }
    return reasonOf(chain);
}

std::optional<DimsReason> FactStore::reasonAgainst(const Fact& fact) {
    const bool isEqual = fact.relation == Relation::Equal;
    const std::optional<exact::Number> difference = differenceOf(table_, fact.left, fact.right);
    if (difference) {
        const bool canHold = isEqual ? *difference == 0 : *difference > 0;
        return canHold ? std::nullopt : std::optional(differenceReason(*difference));
    }
    std::optional<Chain> chain = graph_.find(fact.right, fact.left, Ways::All, isEqual);
    if (!chain && isEqual) {
        chain = graph_.find(fact.left, fact.right, Ways::All, true);
    }
    return chain ? std::optional(reasonOf(chain)) : std::nullopt;
}

std::optional<DimsReason> FactStore::reasonFor(const Fact& fact) {
    const std::optional<exact::Number> difference = differenceOf(table_, fact.left, fact.right);
    if (difference) {
        const bool holds = fact.relation == Relation::Equal ? *difference == 0 : *difference > 0;
        return holds ? std::optional(differenceReason(*difference)) : std::nullopt;
    }
    const std::optional<Chain> chain = fact.relation == Relation::Equal
                                           ? graph_.find(fact.left, fact.right, Ways::Equal)
                                           : graph_.find(fact.left, fact.right, Ways::All, true);
    return chain ? std::optional(reasonOf(chain)) : std::nullopt;
}

DimsReason FactStore::reasonOf(const std::optional<Chain>& chain) const {
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
                {fmt::format("{} > {}", textOf(step.greater), textOf(step.lesser)), 0, ""});
        } else {
            const Fact& fact = *step.fact;
            reason.steps.push_back(
                {fmt::format("{} {} {}", textOf(fact.left),
                             fact.relation == Relation::Equal ? "==" : ">", textOf(fact.right)),
                 fact.line, fact.block == nullptr ? "" : fact.block->name});
        }
    }
    return reason;
}

std::string FactStore::textOf(int id) const {
    return text::shortened(table_.getDisplayString(id), longest);
}

std::vector<DimsFact> FactStore::statedBy(const std::vector<const TVBlock*>& blocks) const {
    std::map<int, std::vector<std::string>> blocksOf;
    std::vector<int> ids;
    for (const TVBlock* const block : blocks) {
        table_.getSymbolicDimsConstraints(block, ids);
        for (const int id : ids) {
            blocksOf[id].push_back(block->name.empty() ? fmt::format("line {}", block->line)
                                                       : block->name);
        }
    }
    std::vector<DimsFact> facts;
    for (auto& [id, names] : blocksOf) {
        facts.push_back({id, table_.getSymbolicDims(id).toString(), std::move(names)});
    }
    return facts;
}

} // namespace tvtool::dims
