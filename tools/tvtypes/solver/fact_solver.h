/// \file
/// Facts in connected components, and the reasons for what follows from them.
#pragma once

#include "solver/solver.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <vector>

namespace tvtool::solver {

/// What a result rests on.
struct Evidence {
    std::vector<FactIndex> facts; ///< in ascending order
    /// The weakest domain in which the result follows; Any if it takes too much work to find.
    Domain domain = Domain::Any;
};

/// States facts one after the other and answers questions. Facts without common unknowns, directly
/// or by way of others, are in solvers of their own.
class FactSolver {
  public:
    using Outcome = Solver::Outcome;
    struct Statement {
        Outcome outcome = Outcome::Consistent;
        Evidence evidence; ///< of a contradiction
    };
    enum class Known { Nothing, Yes, No, Undecided };
    struct Answer {
        Known known = Known::Nothing;
        Evidence evidence;
    };

    explicit FactSolver(Domain domain);

    /// Adds a fact with an index that no other one has, unless it contradicts the facts before it,
    /// or the work for it is beyond the limit.
    Statement state(const Constraint& constraint, FactIndex fact);

    /// Returns whether a constraint, whose sign is Zero or Positive, follows from the facts.
    Answer ask(const Constraint& constraint);

    /// Returns the value of a polynomial if it follows from some facts, in the solver's domain.
    std::optional<Number> value(const Polynomial& polynomial, const std::vector<FactIndex>& facts);

  private:
    /// The facts that have unknowns in common, directly or by way of others.
    struct Component {
        std::unique_ptr<Solver> solver;
        std::vector<FactIndex> facts;
        std::vector<Unknown> unknowns;
    };
    using Constraints = std::vector<Constraint>;

    Component& componentOf(const Polynomial& polynomial);
    void merge(Component& target, Component& source);
    bool contradicts(Domain domain, const std::vector<FactIndex>& facts,
                     const Constraint& constraint);
    bool contradictAll(Domain domain, const std::vector<FactIndex>& facts,
                       const Constraints& constraints);
    Evidence smallestEvidence(const std::set<FactIndex>& facts, const Constraints& refuted);

    Domain domain_;
    Work work_;
    Work deletionWork_; ///< of finding smaller evidence
    std::unordered_map<FactIndex, Constraint> facts_;
    std::vector<std::unique_ptr<Component>> components_;
    std::unordered_map<Unknown, std::size_t> componentOf_; ///< in components_
};

} // namespace tvtool::solver
