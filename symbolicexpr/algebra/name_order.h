/// \file
/// Order of names.
#pragma once

#include "table/contents.h"

#include <cassert>

namespace TV {

/// Compares names, given by their ids in a table, by the bytes of their texts.
class NameOrder {
  public:
    explicit NameOrder(const SymbolicExprTable::Contents& contents) : contents_(&contents) {}

    /// \pre Both ids are those of names.
    bool isBefore(std::uint32_t a, std::uint32_t b) const {
        return a != b && text(a).compare(text(b)) < 0;
    }

  private:
    const std::string& text(std::uint32_t name) const {
        const SymbolicExpr& expression = (*contents_)[name];
        assert(expression.op() == SymbolicNameOp);
        return static_cast<const SymbolicString&>(expression).text();
    }

    const SymbolicExprTable::Contents* contents_;
};

} // namespace TV
