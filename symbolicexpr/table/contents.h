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

    /// Removes all expressions from this id on, and all memoised results, which may refer to them.
    [[gnu::visibility("hidden")]] void truncate(std::size_t size) noexcept;

    /// Returns an expression. \pre The table has the id.
    const SymbolicExpr& operator[](unsigned long id) const {
        assert(id < expressions.size());
        return *expressions[id];
    }

    std::vector<const SymbolicExpr*> expressions;
    /// Created by the simplifier on first use, so that the table does not depend on the algebra.
    std::unique_ptr<Memo> normalForms;

  private:
    /// Removes all expressions from this id on from the list.
    [[gnu::visibility("hidden")]] void destroyFrom(std::size_t size) noexcept;

    std::pmr::monotonic_buffer_resource memory_; ///< holds the expressions
    ExpressionIndex index_;
};

/// Removes the expressions that an operation has added, unless it completes.
class Transaction {
  public:
    explicit Transaction(SymbolicExprTable::Contents& contents)
        : contents_(&contents), size_(contents.expressions.size()) {}
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (contents_ != nullptr) {
            contents_->truncate(size_);
        }
    }

    void commit() { contents_ = nullptr; }

  private:
    SymbolicExprTable::Contents* contents_;
    std::size_t size_;
};

} // namespace TV
