// Conversion of one value at a time, written to be obviously right: a double holds every value of
// the nine built-in types.
#pragma once

#include <cstddef>
#include <vector>

namespace reference {

inline constexpr int typeCount = 9;

std::size_t sizeOf(int id);
bool isFloat(int id);

// The element at a position of a vector that may lie at any address.
double load(const std::byte* vector, std::size_t position, int id);
void store(double value, std::byte* vector, std::size_t position, int id);

struct Conversion {
    int srcId;
    int dstId;
    int overflow;
    int rounding;
};

// Every pair in every mode that makes a difference to it.
std::vector<Conversion> allConversions();

// Whether the pair loses some values at all, what becomes of a value, whether it is kept, and
// whether it, rounded, falls out of the range.
bool canLose(const Conversion& c);
double convert(double x, const Conversion& c);
bool keeps(double x, const Conversion& c);
bool overflows(double x, const Conversion& c);

// All values of the types of 8 and 16 bits. Of the others those at and around the bounds of all
// types, ties, values of every magnitude, and what is no number.
const std::vector<double>& interestingValues(int id);

} // namespace reference
