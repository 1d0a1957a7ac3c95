/// \file
/// Facts stated to the library, and what is to be said about them.
#pragma once

#include "dims/fact_graph.h"
#include "dims/fact_records.h"

#include <tvtypes/symbolicdims.h>

#include <optional>
#include <string>
#include <vector>

namespace tvtool::dims {

/// States facts to a table and remembers which they are. The table must have no other facts.
///
/// The library tells sizes apart by id, computes no numbers, and does not follow greater-than
/// across equal sizes; what it accepts may contradict itself all the same. That is looked for here.
class FactStore {
  public:
    explicit FactStore(TVTypeSys::SymbolicDimsTable& table) : table_(table), graph_(table) {}

    /// What is wrong with a fact; empty if it has been stated and can hold. The sizes need not
    /// differ.
    struct Objection {
        bool isRefused = false; ///< by the library, so that it is not stated
        DimsReason reason;
    };
    std::optional<Objection> state(const Fact& fact);

    /// Whether a fact holds; its block and line are not looked at.
    struct Answer {
        DimsAnswer::Known library = DimsAnswer::Known::Nothing;
        /// What follows from all facts and from numbers; it is that of the library if it knows.
        DimsAnswer::Known all = DimsAnswer::Known::Nothing;
        DimsReason reason;
    };
    Answer ask(const Fact& fact);

    /// The facts that blocks have stated, as the library tells them.
    std::vector<DimsFact> statedBy(const std::vector<const TVBlock*>& blocks) const;

    /// Whether there were too many ways between sizes to be searched; nothing is found any more.
    bool isExhausted() const { return graph_.isExhausted(); }

  private:
    bool tryToState(const Fact& fact);
    std::optional<DimsReason> reasonAgainst(const Fact& fact);
    std::optional<DimsReason> reasonFor(const Fact& fact);
    DimsReason libraryReasonAgainst(const Fact& fact);
    DimsReason reasonOf(const std::optional<Chain>& chain) const;
    std::string textOf(int id) const;

    TVTypeSys::SymbolicDimsTable& table_;
    FactGraph graph_;
};

} // namespace tvtool::dims
