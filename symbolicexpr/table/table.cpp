#include <symbolicexpr/table.h>

#include "table/contents.h"
#include "algebra/normal_forms.h"
#include "table/parts.h"
#include "table/refuse.h"

#include <limits>
#include <new>

namespace TV {
namespace {

/// Of a key to a table of this size.
[[noreturn]] void refuseParts(const SymbolicExpr& key, std::size_t size) {
    unsigned long i = 0;
    while (part(key, i) < size) {
        ++i;
    }
    refuseId(part(key, i));
}

} // namespace

SymbolicExprTable::SymbolicExprTable() : contents_(std::make_unique<Contents>()) {}

SymbolicExprTable::~SymbolicExprTable() = default;

SymbolicExprTable::Contents::Contents() : normalForms(std::make_unique<NormalForms>()) {}

SymbolicExprTable::Contents::~Contents() {
    for (const SymbolicExpr* expression : expressions) {
        // Operators hold no memory of their own, and are most of all.
        if (expression->getNumArgs() == 0) {
            expression->~SymbolicExpr();
        }
    }
}

std::size_t SymbolicExprTable::size() const { return contents_->expressions.size(); }

const SymbolicExpr& SymbolicExprTable::get(unsigned long id) const {
    if (id >= contents_->expressions.size()) {
        refuseId(id);
    }
    return (*contents_)[id];
}

std::uint32_t SymbolicExprTable::Contents::intern(const SymbolicExpr& key) {
    index_.makeRoom();
    std::uint32_t& id = index_.find(key.hash_, [&](std::uint32_t other) {
        const SymbolicExpr& expression = *expressions[other];
        return key.op_ == expression.op_ && key.hasSamePartsAs(expression);
    });
    if (id != ExpressionIndex::none) {
        return id;
    }
    // A part that is not there yet could come to be the expression itself.
    if (!key.hasPartsBelow(expressions.size())) {
        refuseParts(key, expressions.size());
    }
    // Models know an id as an int.
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
