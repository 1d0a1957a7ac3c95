/// \file
/// What a table of expressions holds.
#pragma once

#include "table/expression_index.h"

#include <symbolicexpr/expr.h>

#include <cstdint>
#include <memory>
#include <memory_resource>
#include <vector>

namespace TV {

class NormalForms;

struct SymbolicExprTable::Contents {
    Contents();
    ~Contents();
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

    /// The id of the expression that equals the key, of which a copy is entered if there is none.
    std::uint32_t intern(const SymbolicExpr& key);

    const SymbolicExpr& operator[](unsigned long id) const { return *expressions[id]; }

    std::vector<const SymbolicExpr*> expressions;
    std::unique_ptr<NormalForms> normalForms;

  private:
    std::pmr::monotonic_buffer_resource memory_; ///< of the expressions
    ExpressionIndex index_;
};

} // namespace TV
