/// \file
/// Registration of dimensions that are written as expressions, their values and details.
#pragma once

#include "exact/number.h"
#include "text/parse_error.h"

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::dims {

struct RegisteredDims {
    int id = 0;                    ///< of the dimension as written
    int simplified = 0;            ///< id of its simplest form
    std::string obstacle;          ///< why it, or a part of it, has no simplest form; else empty
    bool isDivisionByZero = false; ///< whether this is the obstacle
};

/// Registers an expression and its simplest form in a table. Throws a text::ParseError.
RegisteredDims registerDims(const std::string& text, TVTypeSys::SymbolicDimsTable& table);

/// Returns the id of the number of elements: of a list, the product of its entries.
int sizeOf(const TVTypeSys::SymbolicDimsTable& table, int id);

/// Returns the id of a list without lists inside: [2, 3, 4] for [[2, 3], 4].
int flattened(TVTypeSys::SymbolicDimsTable& table, int id);

/// Returns the value of a simplified dimension; empty if it has names or more than 4000 digits.
std::optional<exact::Number> numberOf(const TVTypeSys::SymbolicDimsTable& table, int id);

/// Returns the first dimension minus the second; empty if that depends on names.
std::optional<exact::Number> differenceOf(const TVTypeSys::SymbolicDimsTable& table, int a, int b);

/// Texts are as given or as the library prints them; they are not safe to print.
struct DimsDetails {
    std::string text; ///< as given
    int id = 0;
    std::string simplified;
    int simplifiedId = 0;
    std::string size; ///< the product of the entries of a list; empty for a single dimension
    std::optional<int> sizeId;
    std::string obstacle;             ///< why the simplification is not complete; else empty
    std::optional<std::size_t> equal; ///< index of the first one with the same simplified form
};

/// Registers an expression and adds its details to those of the expressions before it. Throws a
/// text::ParseError.
void addDetails(const std::string& text, TVTypeSys::SymbolicDimsTable& table,
                std::vector<DimsDetails>& details);

} // namespace tvtool::dims
