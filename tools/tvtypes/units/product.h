/// \file
/// Products of units, and their expressions.
#pragma once

#include "units/name_reading.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace tvtool::units {

/// A product of names, each once, in the order of their first occurrence.
class Product {
  public:
    /// Multiplies by a power of a unit. Returns false if a power exceeds 32 bits.
    /// \pre both powers have at most 32 bits
    bool multiply(const UnitPower& name, std::int64_t power);

    /// Returns the product in the grammar of the library, with one divisor: kg*m/(s*A).
    std::string expression() const;

  private:
    std::vector<UnitPower> names_;
    std::unordered_map<std::string, std::size_t> indices_;
};

} // namespace tvtool::units
