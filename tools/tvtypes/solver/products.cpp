// Products of unknowns: substitution, roots and bounds.
#include "solver/roots.h"
#include "solver/solver.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tvtool::solver {

namespace {

/// Beyond these products are compared as they are.
constexpr std::size_t mostTerms = 500;
constexpr std::size_t highestDegree = 16;
constexpr std::size_t mostRelatedProducts = 100;
/// A bound of a product can lead to one of a factor, and so to another of the product.
constexpr unsigned mostBoundings = 6;

/// Returns the quotient of two monomials, the second of which divides the first.
Monomial quotient(const Monomial& dividend, const Monomial& divisor) {
    Monomial result;
    std::ranges::set_difference(dividend, divisor, std::back_inserter(result));
    return result;
}

} // namespace

/// Queues the products that the row of a column may be substituted in.
void Solver::queueExpansions(Column basic) {
    const Monomial& monomial = states_[basic].monomial;
    if (monomial.size() == 1) {
        if (const auto found = productsOf_.find(monomial.front()); found != productsOf_.end()) {
            expansions_.insert(expansions_.end(), found->second.begin(), found->second.end());
        }
    } else if (products_.size() <= mostRelatedProducts) {
        expansions_.insert(expansions_.end(), products_.begin(), products_.end());
    }
}

/// Adds the equation of a product and of its factors, where these have rows. Each product
/// is expanded once: those in its expansion are free or expanded on their own.
void Solver::expand(Column product) {
    if (states_[product].boundings == 0) {
        boundProduct(product);
    }
    if (states_[product].isExpanded || states_[product].monomial.size() > highestDegree) {
        return;
    }
    Monomial rest;
    std::vector<Column> factors;
    for (const Unknown unknown : states_[product].monomial) {
        const auto column = columns_.find({unknown});
        if (column != columns_.end() && tableau_.isBasic(column->second)) {
            factors.push_back(column->second);
        } else {
            rest.push_back(unknown);
        }
    }
    if (factors.empty() && products_.size() <= mostRelatedProducts) {
        const auto divisor = std::ranges::find_if(products_, [&](Column other) {
            return other != product && tableau_.isBasic(other) &&
                   std::ranges::includes(rest, states_[other].monomial);
        });
        if (divisor != products_.end()) {
            factors.push_back(*divisor);
            rest = quotient(rest, states_[*divisor].monomial);
        }
    }
    if (factors.empty()) {
        return;
    }
    Polynomial expansion(rest);
    Reason reason = states_[factors.front()].reason;
    for (const Column factor : factors) {
        const LinearForm& row = tableau_.row(factor);
        const std::size_t terms = expansion.terms().size() * (row.terms().size() + 1);
        if (terms > mostTerms ||
            !work_.charge(10 * terms * (row.weight() + weightOf(expansion.constant())))) {
            return;
        }
        Polynomial replacement(row.constant());
        for (const LinearForm::Term& term : row.terms()) {
            replacement.add(states_[term.column].monomial, term.coefficient);
        }
        expansion = expansion * replacement;
        reason = reasons_.derived(reason, states_[factor].reason);
    }
    states_[product].isExpanded = true;
    trail_.push_back({Change::Kind::Expansion, product, std::nullopt, 0, std::nullopt});
    expansion.add(states_[product].monomial, -1);
    equations_.push_back({linear(expansion), reason});
}

/// Derives equations of lower degree from the row of a product. Returns false on a contradiction.
bool Solver::checkProduct(Column basic) {
    if (!isProduct(basic)) {
        return true;
    }
    cancelFactors(basic);
    takeRoot(basic);
    return checkRoots(basic) && checkDivisors(basic);
}

/// Adds the equation of a row without a factor that all its terms have and that is not 0.
void Solver::cancelFactors(Column basic) {
    const LinearForm& row = tableau_.row(basic);
    if (row.constant() != 0 || row.isConstant() || !work_.charge(row.terms().size())) {
        return;
    }
    Monomial common = states_[basic].monomial;
    for (const LinearForm::Term& term : row.terms()) {
        Monomial rest;
        std::ranges::set_intersection(common, states_[term.column].monomial,
                                      std::back_inserter(rest));
        common = std::move(rest);
    }
    for (const Unknown unknown : common) {
        const auto factor = columns_.find({unknown});
        const Range bounds = factor == columns_.end() ? Range() : range(factor->second);
        const bool isPositive =
            bounds.lower &&
            (bounds.lower->value > 0 || (bounds.lower->value == 0 && bounds.lower->isStrict));
        if (!isPositive) {
            continue;
        }
        Polynomial quotients(quotient(states_[basic].monomial, {unknown}));
        for (const LinearForm::Term& term : row.terms()) {
            quotients.add(quotient(states_[term.column].monomial, {unknown}), -term.coefficient);
        }
        equations_.push_back(
            {linear(quotients), reasons_.derived(states_[basic].reason, bounds.lower->reason)});
        return;
    }
}

/// Adds x == c*y for x*x == c*c*y*y, if both are not negative.
void Solver::takeRoot(Column basic) {
    const Monomial& square = states_[basic].monomial;
    const LinearForm& row = tableau_.row(basic);
    if (domain_ == Domain::Any || square.size() != 2 || square[0] != square[1] ||
        row.terms().size() != 1 || row.constant() != 0) {
        return;
    }
    const Monomial& other = states_[row.terms().front().column].monomial;
    const Number factor = row.terms().front().coefficient;
    if (other.size() != 2 || other[0] != other[1] || factor < 0 || square[0] >= firstAuxiliary ||
        other[0] >= firstAuxiliary) {
        return;
    }
    const Number root(sqrt(numerator(factor)), sqrt(denominator(factor)));
    if (root * root == factor) {
        Polynomial difference(Monomial{square[0]});
        difference.add(Monomial{other[0]}, -root);
        equations_.push_back(
            {linear(difference), reasons_.derived(states_[basic].reason, domainReason_)});
    }
}

/// Finds the factors of a product of two unknowns, if its value leaves one choice. Returns false if
/// it leaves none.
bool Solver::checkDivisors(Column basic) {
    constexpr unsigned largest = 1'000'000;
    const Monomial monomial = states_[basic].monomial;
    const LinearForm& row = tableau_.row(basic);
    if (domain_ != Domain::Whole || monomial.size() != 2 || monomial[0] == monomial[1] ||
        monomial[1] >= firstAuxiliary || !row.isConstant() || row.constant() < 1 ||
        row.constant() > largest || !work_.charge(2000)) {
        return true;
    }
    const auto value = static_cast<unsigned>(numerator(row.constant()));
    const Reason reason = states_[basic].reason;
    const Column first = columnOf({monomial[0]});
    const Column second = columnOf({monomial[1]});
    if (tableau_.isBasic(first) || tableau_.isBasic(second)) {
        return true;
    }
    std::vector<Reason> reasons{reason, domainReason_};
    const auto contains = [&](const Range& bounds, unsigned number) {
        return (!bounds.lower || bounds.lower->value <= number) &&
               (!bounds.upper || bounds.upper->value >= number);
    };
    const Range firstRange = range(first);
    const Range secondRange = range(second);
    for (const Range& bounds : {firstRange, secondRange}) {
        for (const auto& bound : {bounds.lower, bounds.upper}) {
            if (bound) {
                reasons.push_back(bound->reason);
            }
        }
    }
    std::vector<unsigned> choices;
    const auto consider = [&](unsigned number) {
        if (contains(firstRange, number) && contains(secondRange, value / number)) {
            choices.push_back(number);
        }
    };
    for (unsigned divisor = 1; divisor * divisor <= value; ++divisor) {
        if (value % divisor == 0) {
            consider(divisor);
            if (divisor * divisor != value) {
                consider(value / divisor);
            }
        }
    }
    if (choices.empty()) {
        return fail(reasons_.derived(reasons));
    }
    if (choices.size() == 1) {
        equations_.push_back(
            {LinearForm({{first, 1}}, -Number(choices.front())), reasons_.derived(reasons)});
    }
    return true;
}

/// Finds the value of an unknown whose powers alone are in a row. Returns false if it has none.
bool Solver::checkRoots(Column basic) {
    const Monomial& power = states_[basic].monomial;
    if (power.size() < 2 || power.front() != power.back()) {
        return true;
    }
    const LinearForm& row = tableau_.row(basic);
    std::vector<Number> numbers(power.size() + 1);
    numbers.front() = row.constant();
    numbers.back() = -1;
    Integer multiple = denominator(row.constant());
    for (const LinearForm::Term& term : row.terms()) {
        const Monomial& monomial = states_[term.column].monomial;
        if (monomial.front() != power.front() || monomial.back() != power.front() ||
            monomial.size() >= power.size()) {
            return true;
        }
        numbers[monomial.size()] = term.coefficient;
        multiple = lcm(multiple, denominator(term.coefficient));
    }
    std::vector<Integer> coefficients;
    for (const Number& number : numbers) {
        coefficients.push_back(numerator(Number(number * multiple)));
    }
    std::optional<Roots> roots = realRoots(coefficients);
    if (!roots || !work_.charge(1000)) {
        return true;
    }
    const bool areSigned = domain_ == Domain::Any || power.front() >= firstAuxiliary;
    if (domain_ != Domain::Whole &&
        (roots->hasPositiveIrrational || (areSigned && roots->hasNegativeIrrational))) {
        return true;
    }
    std::vector<Number>& values = roots->fractions;
    Reason reason = states_[basic].reason;
    if (domain_ != Domain::Any) {
        reason = reasons_.derived(reason, domainReason_);
        std::erase_if(values, [&](const Number& value) {
            return (!areSigned && value < 0) ||
                   (domain_ == Domain::Whole && denominator(value) != 1);
        });
    }
    const Column unknown = columnOf({power.front()});
    if (values.size() > 1) {
        const Range bounds = range(unknown);
        if (bounds.lower) {
            reason = reasons_.derived(reason, bounds.lower->reason);
            std::erase_if(values, [&](const Number& v) { return v < bounds.lower->value; });
        }
        if (bounds.upper) {
            reason = reasons_.derived(reason, bounds.upper->reason);
            std::erase_if(values, [&](const Number& v) { return v > bounds.upper->value; });
        }
    }
    if (values.empty()) {
        return fail(reason);
    }
    if (values.size() == 1 && !tableau_.isBasic(unknown)) {
        equations_.push_back({LinearForm({{unknown, 1}}, -values.front()), reason});
    }
    return true;
}

/// Bounds a product by the ranges of its factors: x*y >= 3*y if x >= 3.
void Solver::boundProduct(Column product) {
    if (domain_ == Domain::Any || products_.size() > mostRelatedProducts ||
        states_[product].boundings == mostBoundings || !work_.charge(100)) {
        return;
    }
    ++states_[product].boundings;
    trail_.push_back({Change::Kind::Bounding, product, std::nullopt, 0, std::nullopt});
    const Monomial monomial = states_[product].monomial;
    for (std::size_t i = 0; i < monomial.size(); ++i) {
        const auto factor = columns_.find({monomial[i]});
        if ((i > 0 && monomial[i] == monomial[i - 1]) || factor == columns_.end() ||
            monomial[i] >= firstAuxiliary || tableau_.isBasic(factor->second)) {
            continue;
        }
        const Range bounds = range(factor->second);
        const Monomial rest = quotient(monomial, {monomial[i]});
        if (!std::ranges::all_of(rest, [](Unknown unknown) { return unknown < firstAuxiliary; })) {
            continue;
        }
        const auto add = [&](const Bound& bound, bool isLower) {
            Polynomial difference(monomial);
            difference.add(rest, -bound.value);
            addInequality(linear(isLower ? difference : -difference), false,
                          reasons_.derived(bound.reason, domainReason_));
        };
        if (bounds.lower && bounds.lower->value > 0) {
            add(*bounds.lower, true);
        }
        if (bounds.upper) {
            add(*bounds.upper, false);
        }
    }
}

} // namespace tvtool::solver
