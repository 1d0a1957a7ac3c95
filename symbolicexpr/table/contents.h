/// \file
/// Contents of a table of expressions.
#pragma once

#include "table/expression_index.h"

#include <symbolicexpr/expr.h>

#include <cassert>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <vector>

namespace TV {

/// Owns the expressions of a table, by id, and interns new ones (hash-consing): expressions that
/// are written alike share one id.
struct SymbolicExprTable::Contents {
    /// Results that another component memoises for a table. They are destroyed with the table.
    struct Memo {
        virtual ~Memo() = default;
    };

    Contents();
    ~Contents();
    Contents(const Contents&) = delete;
    Contents& operator=(const Contents&) = delete;

    /// Returns the id of the expression that equals the key; if there is none, adds a copy of the
    /// key. Throws InvalidDataTypeId if an operand of a new expression is not in the table.
    std::uint32_t intern(const SymbolicExpr& key);

    /// Returns an expression. \pre The table has the id.
    const SymbolicExpr& operator[](unsigned long id) const {
        assert(id < expressions.size());
        return *expressions[id];
    }

    std::vector<const SymbolicExpr*> expressions;
    /// Created by the simplifier on first use, so that the table does not depend on the algebra.
    std::unique_ptr<Memo> normalForms;

  private:
    std::pmr::monotonic_buffer_resource memory_; ///< holds the expressions
    ExpressionIndex index_;
};

} // namespace TV
