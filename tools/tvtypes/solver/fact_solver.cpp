#include "solver/fact_solver.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tvtool::solver {

namespace {

// Some seconds for all facts, a tenth of a second for a fact, and the same for its evidence.
constexpr std::uint64_t mostSteps = 25'000'000;
constexpr std::uint64_t mostStepsOfFact = 1'000'000;

/// The index of the constraint that is tested.
constexpr FactIndex tested = domainFact - 1;

Constraint positive(const Polynomial& polynomial) {
    return {polynomial, Constraint::Sign::Positive};
}

/// Returns the constraints that contradict the facts if the constraint follows from them.
std::vector<Constraint> negations(const Constraint& constraint) {
    if (constraint.sign == Constraint::Sign::Zero) {
        return {positive(constraint.polynomial), positive(-constraint.polynomial)};
    }
    return {{-constraint.polynomial, Constraint::Sign::NotNegative}};
}

} // namespace

FactSolver::FactSolver(Domain domain)
    : domain_(domain), work_(mostSteps), deletionWork_(mostSteps) {}

FactSolver::Statement FactSolver::state(const Constraint& constraint, FactIndex fact) {
    Component& component = componentOf(constraint.polynomial);
    work_.beginTask(mostStepsOfFact);
    Statement statement{component.solver->add(constraint, fact), {}};
    if (statement.outcome == Outcome::Consistent) {
        component.facts.push_back(fact);
        facts_.emplace(fact, constraint);
    } else if (statement.outcome == Outcome::Contradiction) {
        statement.evidence = smallestEvidence(component.solver->conflict(), {constraint});
        std::erase(statement.evidence.facts, fact);
    }
    return statement;
}

FactSolver::Answer FactSolver::ask(const Constraint& constraint) {
    Solver& solver = *componentOf(constraint.polynomial).solver;
    work_.beginTask(mostStepsOfFact);
    bool isUndecided = false;
    const auto refutes = [&](const Constraints& constraints) -> std::optional<Evidence> {
        std::set<FactIndex> facts;
        for (const Constraint& refuted : constraints) {
            const Outcome outcome = solver.test(refuted, tested);
            isUndecided = isUndecided || outcome == Outcome::Undecided;
            if (outcome != Outcome::Contradiction) {
                return std::nullopt;
            }
            facts.insert(solver.conflict().begin(), solver.conflict().end());
        }
        return smallestEvidence(facts, constraints);
    };
    if (const auto evidence = refutes(negations(constraint))) {
        return {Known::Yes, *evidence};
    }
    if (const auto evidence = refutes({constraint})) {
        return {Known::No, *evidence};
    }
    return {isUndecided ? Known::Undecided : Known::Nothing, {}};
}

std::optional<Number> FactSolver::value(const Polynomial& polynomial,
                                        const std::vector<FactIndex>& facts) {
    deletionWork_.beginTask(mostStepsOfFact);
    Solver solver(domain_, deletionWork_);
    for (const FactIndex fact : facts) {
        solver.add(facts_.at(fact), fact);
    }
    return solver.value(polynomial);
}

/// Returns the component of the unknowns of a polynomial; several ones are merged.
FactSolver::Component& FactSolver::componentOf(const Polynomial& polynomial) {
    std::set<Unknown> unknowns;
    for (const auto& [monomial, coefficient] : polynomial.terms()) {
        unknowns.insert(monomial.begin(), monomial.end());
    }
    std::set<std::size_t> indices;
    for (const Unknown unknown : unknowns) {
        if (const auto known = componentOf_.find(unknown); known != componentOf_.end()) {
            indices.insert(known->second);
        }
    }
    if (indices.empty()) {
        indices.insert(components_.size());
        components_.push_back(std::make_unique<Component>());
        components_.back()->solver = std::make_unique<Solver>(domain_, work_);
    }
    const auto factCount = [this](std::size_t index) { return components_[index]->facts.size(); };
    const std::size_t largest = *std::ranges::max_element(indices, {}, factCount);
    Component& component = *components_[largest];
    for (const std::size_t index : indices) {
        if (index != largest) {
            for (const Unknown unknown : components_[index]->unknowns) {
                componentOf_[unknown] = largest;
            }
            merge(component, *components_[index]);
            components_[index].reset();
        }
    }
    for (const Unknown unknown : unknowns) {
        if (componentOf_.try_emplace(unknown, largest).second) {
            component.unknowns.push_back(unknown);
        }
    }
    return component;
}

void FactSolver::merge(Component& target, Component& source) {
    for (const FactIndex fact : source.facts) {
        work_.beginTask(mostStepsOfFact);
        target.solver->add(facts_.at(fact), fact);
        target.facts.push_back(fact);
    }
    std::ranges::move(source.unknowns, std::back_inserter(target.unknowns));
}

bool FactSolver::contradicts(Domain domain, const std::vector<FactIndex>& facts,
                             const Constraint& constraint) {
    Solver solver(domain, deletionWork_);
    for (const FactIndex fact : facts) {
        if (solver.add(facts_.at(fact), fact) == Outcome::Contradiction) {
            return true;
        }
    }
    return solver.add(constraint, tested) == Outcome::Contradiction;
}

bool FactSolver::contradictAll(Domain domain, const std::vector<FactIndex>& facts,
                               const Constraints& constraints) {
    return std::ranges::all_of(constraints, [&](const Constraint& constraint) {
        return contradicts(domain, facts, constraint);
    });
}

/// Returns a part of the facts that contradicts each of the constraints, and from which no fact can
/// be left out, as far as the work for it is within its limit.
Evidence FactSolver::smallestEvidence(const std::set<FactIndex>& facts,
                                      const Constraints& refuted) {
    deletionWork_.beginTask(mostStepsOfFact);
    Evidence evidence;
    std::ranges::copy_if(facts, std::back_inserter(evidence.facts),
                         [this](FactIndex fact) { return facts_.contains(fact); });
    for (std::size_t length = std::max<std::size_t>(evidence.facts.size() / 2, 1); length > 0;
         length /= 2) {
        for (std::size_t begin = 0; begin < evidence.facts.size();) {
            std::vector<FactIndex> fewer = evidence.facts;
            const auto first = fewer.begin() + static_cast<std::ptrdiff_t>(begin);
            fewer.erase(
                first, first + static_cast<std::ptrdiff_t>(std::min(length, fewer.size() - begin)));
            if (!deletionWork_.isExhausted() && contradictAll(domain_, fewer, refuted)) {
                evidence.facts = std::move(fewer);
            } else {
                begin += length;
            }
        }
    }
    deletionWork_.beginTask(4 * mostStepsOfFact);
    evidence.domain = domain_;
    for (const Domain weaker : {Domain::NotNegative, Domain::Any}) {
        if (weaker < evidence.domain && contradictAll(weaker, evidence.facts, refuted)) {
            evidence.domain = weaker;
        }
    }
    if (deletionWork_.isExhausted()) {
        evidence.domain = Domain::Any;
    }
    return evidence;
}

} // namespace tvtool::solver
