/// \file
/// Statement of facts and answers to questions, with their reasons.
#pragma once

#include "dims/fact_forms.h"
#include "dims/fact_graph.h"
#include "dims/fact_records.h"
#include "solver/fact_solver.h"

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::dims {

/// What sizes can be.
enum class Sizes {
    Whole, ///< whole numbers that are not negative
    Any    ///< all fractions
};

/// Registers facts in a table, which must have no others, and finds contradictions.
///
/// The library compares sizes by id, computes no numbers, and does not combine greater-than with
/// equal sizes; so it accepts facts that contradict each other. This class solves the facts.
///
/// Sizes that are whole numbers are solved twice. A fact that fractions satisfy and whole numbers
/// do not is a contradiction, and still counts for fractions: what follows from it by arithmetic
/// alone, as the value of another size, is reported too.
class FactStore {
  public:
    explicit FactStore(TVTypeSys::SymbolicDimsTable& table, Sizes sizes = Sizes::Whole);

    /// Registers a fact, whose sides may be the same. Returns the objection, without its text, if
    /// the library rejected the fact or it cannot hold.
    std::optional<DimsObjection> state(const Fact& fact);

    /// Returns whether a fact holds, without the text of the question. Its block is ignored.
    DimsAnswer ask(const Fact& fact);

    /// Returns the facts in the library that the blocks have stated.
    std::vector<DimsFact> statedBy(const std::deque<TVBlock>& blocks) const;

    /// Returns the id of the divisor with names of a size; empty if it has none.
    std::optional<int> namedDivisor(int id) { return forms_.namedDivisor(id); }

    /// Returns the lines of the facts and questions that took too much work to be decided.
    const std::vector<std::uint64_t>& undecidedLines() const { return undecidedLines_; }

  private:
    bool registerFact(const Fact& fact);
    DimsAnswer::Known libraryAnswer(const Fact& fact) const;
    DimsReason libraryReason(const Fact& fact, bool holds);
    DimsReason chainReason(const std::optional<Chain>& chain) const;
    DimsReason evidenceReason(const Fact& fact, solver::FactSolver& level,
                              const solver::Evidence& evidence, bool holds);
    std::string conclusion(const Fact& fact, solver::FactSolver& level,
                           const solver::Evidence& evidence);
    bool isValueOf(int size, const Fact& fact) const;
    DimsStep step(const Fact& fact) const;
    std::string sizeText(int id) const;

    TVTypeSys::SymbolicDimsTable& table_;
    Sizes sizes_;
    FactForms forms_;
    FactGraph graph_;
    std::deque<Fact> facts_; ///< with stable addresses; by their index in the solvers
    std::vector<solver::FactSolver> levels_; ///< from the weaker domain to the stronger
    std::vector<std::uint64_t> undecidedLines_;
};

} // namespace tvtool::dims
