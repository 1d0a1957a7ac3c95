/// \file
/// The cases that are timed: pairs of types, modes, shapes and kinds of data.
#pragma once

#include <tvtypes/functions.h>

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace convbench {

/// A built-in type. It represents all integers from `lowest` to `greatest`.
struct Type {
    const char* name;
    std::size_t size; ///< bytes
    bool isFloat;
    double lowest;
    double greatest;
};

inline constexpr int booleanId = 8;
extern const std::array<Type, 9> types;

/// A pair of types in modes that select a function. The name of a mode without effect on the pair
/// is "any".
struct Cell {
    int src;
    int dst;
    fxpModeOverflow_tag overflow;
    fxpModeRounding_tag rounding;
    bool overflowMatters;
    bool roundingMatters;

    const Type& from() const { return types[static_cast<std::size_t>(src)]; }
    const Type& to() const { return types[static_cast<std::size_t>(dst)]; }
    bool fromFloatToInteger() const { return from().isFloat && !to().isFloat && dst != booleanId; }
    std::string name() const;
    tvBuiltinDtypeConvFcn function() const;
    tvBuiltinDtypeConvFcn function(fxpModeRounding_tag other) const;
};

/// Every conversion function once.
std::vector<Cell> allCells();

enum class Shape { Real, Complex, RealToComplex, ComplexToReal, Scalar };

enum class Data {
    Kept,  ///< integers that both types represent
    Lossy, ///< within about 1.5 times the destination's range, with fractions
    Far    ///< values that the faster loops cannot convert: far out of range, or of more digits
};

struct Case {
    Cell cell;
    Shape shape;
    bool checked;
    Data data;
    std::size_t count;

    std::string name() const;
    bool srcIsComplex() const { return shape == Shape::Complex || shape == Shape::ComplexToReal; }
    bool dstIsComplex() const { return shape == Shape::Complex || shape == Shape::RealToComplex; }
    std::size_t srcBytes() const;
    std::size_t dstBytes() const;
};

inline constexpr std::array<std::size_t, 2> counts = {4'096, 4'194'304};

/// All cases; those with the same data are adjacent.
std::vector<Case> allCases();

} // namespace convbench
