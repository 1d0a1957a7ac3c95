/// \file
/// Units of the names in an expression.
#pragma once

#include "units/name_positions.h"
#include "units/unit_lookup.h"

#include <boost/container/small_vector.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Looks up the concrete unit of each name of an expression once, for all uses during a
/// registration.
class ResolvedNames {
  public:
    /// \param names distinct names, which must outlive this object
    ResolvedNames(const UnitDatabase& database, const std::vector<std::u16string>& names);

    /// Returns whether each name denotes a unit of the database.
    bool allFound() const;

    /// Returns the units of the name at an index.
    const UnitMatch& operator[](std::size_t index) const { return matches_[index]; }

    /// Returns the units of a text, which are looked up in the database if it is not one of the
    /// names. Fastest in the order of the names.
    UnitMatch match(std::u16string_view text);

  private:
    const UnitDatabase& database_;
    const std::vector<std::u16string>& names_;
    NamePositions positions_;
    std::size_t next_ = 0; ///< position after the last name that was found
    boost::container::small_vector<UnitMatch, 8> matches_; ///< by index of the name
};

} // namespace TVTypeSys
