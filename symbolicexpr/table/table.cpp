#include <symbolicexpr/table.h>

#include "table/contents.h"
#include "table/errors.h"
#include "table/operands.h"

#include <limits>
#include <new>

namespace TV {
namespace {

/// Throws InvalidDataTypeId for the first operand of the key that a table of this size lacks.
/// \pre There is one.
[[noreturn]] void throwMissingOperand(const SymbolicExpr& key, std::size_t size) {
    unsigned long i = 0;
    while (operandId(key, i) < size) {
        ++i;
    }
    throwInvalidId(operandId(key, i));
}

} // namespace

SymbolicExprTable::SymbolicExprTable() : contents_(std::make_unique<Contents>()) {}

SymbolicExprTable::~SymbolicExprTable() = default;

SymbolicExprTable::Contents::Contents() = default;

SymbolicExprTable::Contents::~Contents() { destroyFrom(0); }

void SymbolicExprTable::Contents::destroyFrom(std::size_t size) noexcept {
    for (std::size_t id = size; id < expressions.size(); ++id) {
        // Operators, which are the majority, hold no memory of their own.
        if (expressions[id]->getNumArgs() == 0) {
            expressions[id]->~SymbolicExpr();
        }
    }
    expressions.resize(size);
}

void SymbolicExprTable::Contents::truncate(std::size_t size) noexcept {
    if (size == expressions.size()) {
        return;
    }
    destroyFrom(size);
    normalForms.reset();
    index_.truncate(static_cast<std::uint32_t>(size),
                    [this](std::uint32_t id) { return expressions[id]->hash_; });
}

std::size_t SymbolicExprTable::size() const { return contents_->expressions.size(); }

const SymbolicExpr& SymbolicExprTable::get(unsigned long id) const {
    if (id >= contents_->expressions.size()) {
        throwInvalidId(id);
    }
    return (*contents_)[id];
}

std::uint32_t SymbolicExprTable::Contents::intern(const SymbolicExpr& key) {
    index_.reserveOne();
    std::uint32_t& id = index_.find(key.hash_, [&](std::uint32_t other) {
        const SymbolicExpr& expression = *expressions[other];
        return key.op_ == expression.op_ && key.hasSamePartsAs(expression);
    });
    if (id != ExpressionIndex::none) {
        return id;
    }
    // An operand that is not in the table could later become the expression itself: a cycle.
    if (!key.hasPartsBelow(expressions.size())) {
        throwMissingOperand(key, expressions.size());
    }
    // Clients hold ids as int.
    if (expressions.size() >= std::numeric_limits<std::int32_t>::max()) {
        throw std::bad_alloc();
    }
    expressions.push_back(nullptr);
    try {
        expressions.back() = key.copyTo(memory_);
    } catch (...) {
        expressions.pop_back();
        throw;
    }
    id = static_cast<std::uint32_t>(expressions.size() - 1);
    index_.added();
    return id;
}

} // namespace TV
