#include "algebra/residues.h"

#include <string>
#include <vector>

namespace TV {
namespace {

/// The largest prime below 2^32, so that products fit 64 bits.
constexpr std::uint64_t prime = 4'294'967'291;

std::uint64_t power(std::uint64_t base, std::uint64_t exponent) {
    std::uint64_t result = 1;
    for (; exponent > 0; exponent /= 2) {
        result = exponent % 2 == 1 ? result * base % prime : result;
        base = base * base % prime;
    }
    return result;
}

std::uint64_t remainder(const std::string& digits) {
    std::uint64_t value = 0;
    for (const char c : digits) {
        value = c == '-' ? value : (value * 10 + static_cast<std::uint64_t>(c - '0')) % prime;
    }
    return digits.front() == '-' ? (prime - value) % prime : value;
}

/// Returns a number that looks random, from the id of a name.
std::uint64_t coordinate(std::uint32_t name) {
    std::uint64_t x = (name + std::uint64_t{1}) * 0x9e3779b97f4a7c15ULL;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9ULL;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebULL;
    return (x ^ (x >> 31)) % prime;
}

} // namespace

std::optional<std::uint64_t> Residues::valueOf(std::uint32_t root) {
    std::vector<std::uint32_t> pending{root};
    while (!pending.empty()) {
        const std::uint32_t id = pending.back();
        const SymbolicExpr& expr = contents_[id];
        const std::size_t size = pending.size();
        for (unsigned long i = 0; !values_.contains(id) && i < expr.getNumArgs(); ++i) {
            const auto operand = static_cast<std::uint32_t>(expr.getArg(i));
            if (!values_.contains(operand)) {
                pending.push_back(operand);
            }
        }
        if (pending.size() == size) {
            pending.pop_back();
            values_.try_emplace(id, compute(id, expr));
        }
    }
    return values_.at(root);
}

/// \pre The operands have been evaluated.
std::optional<std::uint64_t> Residues::compute(std::uint32_t id, const SymbolicExpr& expr) const {
    if (expr.op() == SymbolicNameOp) {
        return coordinate(id);
    }
    if (expr.op() == SymbolicNumberOp) {
        return remainder(static_cast<const SymbolicIntValue&>(expr).text());
    }
    const bool isArithmetic = expr.op() != SymbolicNDOp && expr.op() != SymbolicEqualOp &&
                              expr.op() != SymbolicGreaterThanOp;
    if (!isArithmetic) {
        return std::nullopt;
    }
    const auto left = values_.at(static_cast<std::uint32_t>(expr.getArg(0)));
    const auto right = values_.at(static_cast<std::uint32_t>(expr.getArg(expr.getNumArgs() - 1)));
    if (!left || !right) {
        return std::nullopt;
    }
    switch (expr.op()) {
    case SymbolicUnaryMinusOp:
        return (prime - *left) % prime;
    case SymbolicPlusOp:
        return (*left + *right) % prime;
    case SymbolicMinusOp:
        return (*left + prime - *right) % prime;
    case SymbolicMultiplyOp:
        return *left * *right % prime;
    default:
        return *right == 0 ? std::nullopt : std::optional(*left * power(*right, prime - 2) % prime);
    }
}

} // namespace TV
