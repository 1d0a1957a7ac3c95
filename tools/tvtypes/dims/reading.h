/// \file
/// A text as a dimension of the library.
#pragma once

#include "text/parse_error.h"

#include <tvtypes/symbolicdims.h>

#include <string>

namespace tvtool::dims {

struct Reading {
    int id = 0;           ///< of the dimension as it is written
    int simplified = 0;   ///< of its simplest form
    std::string obstacle; ///< what keeps it, or a part of it, as it is written; else empty
};

/// Enters an expression and its simplest form into a table. Throws a text::ParseError.
Reading readDims(const std::string& text, TVTypeSys::SymbolicDimsTable& table);

/// The one size that a dimension is: of a list, the product of its entries.
int sizeOf(const TVTypeSys::SymbolicDimsTable& table, int id);

} // namespace tvtool::dims
