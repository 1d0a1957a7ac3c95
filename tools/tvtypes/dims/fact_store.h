/// \file
/// Statement of facts and answers to questions, with their reasons.
#pragma once

#include "dims/fact_graph.h"
#include "dims/fact_records.h"

#include <tvtypes/symbolicdims.h>

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::dims {

/// Registers facts in a table, which must have no others, and finds contradictions.
///
/// The library compares sizes by id, computes no numbers, and does not combine greater-than with
/// equal sizes; so it accepts facts that contradict each other. This class finds those too.
class FactStore {
  public:
    explicit FactStore(TVTypeSys::SymbolicDimsTable& table) : table_(table), graph_(table) {}

    /// Registers a fact, whose sides may be the same. Returns the objection, without its text, if
    /// the library rejected the fact or it cannot hold.
    std::optional<DimsObjection> state(const Fact& fact);

    /// Returns whether a fact holds, without the text of the question. Its block is ignored.
    DimsAnswer ask(const Fact& fact);

    /// Returns the facts in the library that the blocks have stated.
    std::vector<DimsFact> statedBy(const std::deque<TVBlock>& blocks) const;

    /// Returns whether the searches have used up their total of steps. Nothing is found after that.
    bool isExhausted() const { return graph_.isExhausted(); }

  private:
    bool registerFact(const Fact& fact);
    std::optional<DimsReason> findReason(const Fact& fact, bool holds);
    DimsReason libraryReasonAgainst(const Fact& fact);
    DimsReason chainReason(const std::optional<Chain>& chain) const;
    std::string sizeText(int id) const;

    TVTypeSys::SymbolicDimsTable& table_;
    FactGraph graph_;
};

} // namespace tvtool::dims
