/// \file
/// Exact definitions and common units, which the unit database file has besides what the library
/// loads.
#pragma once

#include "exact/number.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::units {

/// The factor of a unit to its expression, where the numbers of the library do not hold it.
struct Definition {
    exact::Number factor;     ///< with exact::pi() for pi
    std::int64_t piPower = 0; ///< the power of pi in the factor
    double uncertainty = 0;   ///< relative standard uncertainty; 0 if the factor is exact
};

/// Parses a factor: [ "pi" [ "^" integer ] "*" ] number [ "/" number ]. Throws a
/// std::invalid_argument for any other text.
Definition parseDefinition(std::string_view text);

class Definitions {
  public:
    /// Reads the file. Throws a std::runtime_error if it cannot be read.
    explicit Definitions(const std::u16string& path);

    /// Returns the number of units of the database.
    std::size_t unitCount() const { return unitCount_; }

    /// Returns the definition of a database unit; empty if its scaling is exact. Throws a
    /// std::runtime_error for a malformed one.
    std::optional<Definition> find(const std::u16string& unitName) const;

    /// Returns the symbols of the common units of a quantity: the coherent SI unit, if it is
    /// common, and the others by how common they are.
    const std::vector<std::u16string>& commonUnits(const std::u16string& quantity) const;

  private:
    struct Texts {
        std::string factor;
        std::string uncertainty; ///< empty for an exact factor
    };

    std::size_t unitCount_ = 0;
    std::unordered_map<std::u16string, Texts> texts_; ///< by name of the unit
    std::map<std::u16string, std::vector<std::u16string>> common_;
};

/// Returns the definitions of the installation from which the library loads the units of the
/// process. The file is read at the first call for an installation. Threads may call it at the same
/// time.
const Definitions& definitions();

} // namespace tvtool::units
