// Parses, prints and simplifies a text as an expression, and compares the values of the expression
// and its simplified form at a point of a finite field.
#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>

#include <fnd/except.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace {

// Longest text that the parser accepts.
constexpr std::size_t maximumText = std::size_t{1} << 20;

// Most terms of a form.
constexpr std::size_t maximumTerms = 4096;

/// Values of the expressions of a table modulo a prime, with a number for each name.
class Values {
  public:
    explicit Values(const TV::SymbolicExprTable& table) : table_(&table) {}

    /// Returns no value for lists and on division by zero.
    std::optional<std::uint64_t> of(unsigned long id) {
        // Operands have lower ids than their operators.
        while (values_.size() <= id) {
            values_.push_back(compute(table_->get(values_.size())));
        }
        return values_[id];
    }

  private:
    using Value = std::optional<std::uint64_t>;
    // Products of two residues fit 64 bits.
    static constexpr std::uint64_t prime = 4294967291;

    static std::uint64_t inverse(std::uint64_t value) {
        std::uint64_t result = 1;
        for (std::uint64_t exponent = prime - 2; exponent > 0; exponent /= 2) {
            result = exponent % 2 == 1 ? result * value % prime : result;
            value = value * value % prime;
        }
        return result;
    }

    static std::uint64_t number(const std::string& text) {
        std::uint64_t value = 0;
        for (const char c : text) {
            value = c == '-' ? 0 : (value * 10 + static_cast<std::uint64_t>(c - '0')) % prime;
        }
        return text.front() == '-' ? (prime - value) % prime : value;
    }

    Value compute(const TV::SymbolicExpr& expr) const {
        if (expr.op() == TV::SymbolicNameOp) {
            return std::hash<std::string>()(static_cast<const TV::SymbolicString&>(expr).text()) %
                   prime;
        }
        if (expr.isNumValue()) {
            return number(static_cast<const TV::SymbolicIntValue&>(expr).text());
        }
        if (expr.getNumArgs() == 0) {
            return std::nullopt;
        }
        const Value first = values_[expr.getArg(0)];
        const Value last = values_[expr.getArg(expr.getNumArgs() - 1)];
        if (!first || !last) {
            return std::nullopt;
        }
        switch (expr.op()) {
        case TV::SymbolicUnaryMinusOp:
            return (prime - *first) % prime;
        case TV::SymbolicPlusOp:
            return (*first + *last) % prime;
        case TV::SymbolicMinusOp:
            return (*first + prime - *last) % prime;
        case TV::SymbolicMultiplyOp:
            return *first * *last % prime;
        case TV::SymbolicDivideOp:
            return *last == 0 ? Value() : *first * inverse(*last) % prime;
        default:
            return std::nullopt;
        }
    }

    const TV::SymbolicExprTable* table_;
    std::vector<Value> values_;
};

void require(bool holds, const char* what, const std::string& text) {
    if (!holds) {
        std::fprintf(stderr, "%s: %s\n", what, text.c_str());
        std::abort();
    }
}

void check(TV::SymbolicExprTable& table, Values& values, const std::string& text) {
    const TV::SymbolicExprParser parse(table);
    const TV::SymbolicExprPrinter print(table);
    const TV::SymbolicExprSimplify simplifier(table);
    unsigned long flag = 0;

    const std::size_t before = table.size();
    unsigned long id = 0;
    try {
        id = parse(text);
    } catch (const fnd::except::IException&) {
        require(table.size() == before, "an invalid text changed the table", text);
        return;
    }
    require(table.size() - before <= text.size(), "more expressions than characters", text);
    require(parse(print(table.get(id))) == id, "the printed text parses to another expression",
            text);

    const std::size_t parsed = table.size();
    const unsigned long simple = simplifier.simplify(id, flag);
    const std::string written = print(table.get(simple));
    // Forms of parts stay, even if the whole is left as it is since its own form is too large.
    require(table.size() - parsed <= maximumTerms * text.size(),
            "simplification added too many expressions", text);
    if (written.size() <= maximumText) {
        require(parse(written) == simple, "the simplified text parses to another expression", text);
    }
    require(simplifier.simplify(simple, flag) == simple, "simplification is not idempotent", text);
    const auto value = values.of(id);
    const auto simpleValue = values.of(simple);
    require(!value || !simpleValue || *value == *simpleValue, "simplification changed the value",
            text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // The table is shared by many texts, up to a size.
    static std::optional<TV::SymbolicExprTable> table;
    static std::optional<Values> values;
    if (!table || table->size() > 100'000) {
        table.emplace();
        values.emplace(*table);
    }
    check(*table, *values, std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
