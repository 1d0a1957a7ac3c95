/// \file
/// Quantization of arrays to the stored integers of fixed-point types of up to 64 bits.
#pragma once

#include "convert/names.h"
#include "fixedpoint/quantization.h"

#include <tvtypes/fixedpoint.h>

#include <cstddef>

namespace tvtool::fixedpoint {

/// The longest word whose stored integers are computed in arrays.
inline constexpr int longestStoredWord = 64;

/// Returns the bytes of the smallest integer that stores a word: 1, 2, 4 or 8.
std::size_t storedSize(const fxpDataTypeProp& record);

/// Stores real-world values as integers of storedSize() bytes, of the signedness of the type. The
/// results are those of exact arithmetic: of finite values those of storedInteger(); NaN becomes 0,
/// an infinity 0 (wrap) or the bound (saturate). \pre `grid` is that of the record, whose word has
/// at most longestStoredWord bits.
void quantizeArray(const double* values, void* stored, std::size_t count,
                   const fxpDataTypeProp& record, const Grid& grid, convert::Modes modes);

/// Computes the real-world values of stored integers as the nearest doubles. Returns `count`, or
/// the index of the first integer that is not in the range of the type. \pre Those of
/// quantizeArray().
std::size_t realValues(const void* stored, double* values, std::size_t count,
                       const fxpDataTypeProp& record, const Grid& grid);

} // namespace tvtool::fixedpoint
