/// \file
/// A text as a dimension of the library.
#pragma once

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace tvtool::dims {

/// A text is no dimension. What it says is a sentence to show as it stands.
class DimsError : public std::runtime_error {
  public:
    DimsError(const std::string& sentence, std::string dims, std::size_t at)
        : std::runtime_error(sentence), text(std::move(dims)), position(at) {}

    std::string text;
    std::size_t position; ///< of the byte at which it goes wrong
};

struct Reading {
    int id = 0;           ///< of the dimension as it is written
    int simplified = 0;   ///< of its simplest form
    std::string obstacle; ///< what keeps it, or a part of it, as it is written; else empty
};

/// Enters an expression and its simplest form into a table. Throws a DimsError.
Reading readDims(const std::string& text, TVTypeSys::SymbolicDimsTable& table);

/// The one size that a dimension is: of a list, the product of its entries.
int sizeOf(const TVTypeSys::SymbolicDimsTable& table, int id);

} // namespace tvtool::dims
