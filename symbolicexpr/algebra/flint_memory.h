/// \file
/// Memory for computations of FLINT.
///
/// FLINT and GMP end the process if an allocation fails. Their memory functions can be replaced,
/// but only for the whole process, whose host may use GMP itself, and no function may throw through
/// them. So the memory for a computation is allocated and released before it starts: if there is
/// not enough, the computation fails with nothing changed. What remains is that another thread
/// takes the memory in between.
#pragma once

#include <cstddef>
#include <new>

namespace TV {

/// Throws std::bad_alloc if that much memory, and some for temporary objects, cannot be allocated.
inline void requireMemory(std::size_t bytes) {
    constexpr std::size_t temporaries = std::size_t(1) << 14;
    // Calls of the functions: a new-expression may be optimised away.
    ::operator delete(::operator new(bytes + temporaries));
}

/// As requireMemory, for operations on integers of together so many bits.
inline void requireIntegerMemory(std::size_t bits) { requireMemory(bits / 2); }

/// As requireMemory, for a polynomial with so many terms in so many names, and temporary ones of
/// the same size.
inline void requirePolynomialMemory(std::size_t terms, std::size_t names,
                                    std::size_t coefficientBits) {
    constexpr std::size_t temporaries = 4;
    // FLINT packs at least two powers into a word.
    const std::size_t words = names / 2 + 4 + coefficientBits / 64;
    requireMemory(temporaries * terms * words * sizeof(long));
}

} // namespace TV
