// Reference model of the conversions, simple and slow: one value at a time, as a double, which
// represents every value of the nine built-in types.
#pragma once

#include <cstddef>
#include <vector>

namespace reference {

inline constexpr int typeCount = 9;

std::size_t sizeOf(int id);
bool isFloat(int id);

// Access to an element of an unaligned vector.
double load(const std::byte* vector, std::size_t position, int id);
void store(double value, std::byte* vector, std::size_t position, int id);

struct Conversion {
    int srcId;
    int dstId;
    int overflow;
    int rounding;
};

// All pairs, in all modes that have an effect on them.
std::vector<Conversion> allConversions();

// Whether a pair can lose a value, the result for a value, whether the value is kept, and whether
// it overflows.
bool canLose(const Conversion& c);
double convert(double x, const Conversion& c);
bool keeps(double x, const Conversion& c);
bool overflows(double x, const Conversion& c);

// All values of types of 8 and 16 bits. For the others: values at and next to the bounds of all
// types, ties, values of every magnitude, random ones, infinities and NaN.
const std::vector<double>& interestingValues(int id);

} // namespace reference
