/// \file
/// Search in a growing list of names.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Finds names in a list that may grow at its end. A short list is searched linearly; for a longer
/// one an index is built, so that a search takes constant time. \pre The strings of the list keep
/// their addresses.
class NamePositions {
  public:
    explicit NamePositions(const std::vector<std::u16string>& names) : names_(names) {}

    /// Returns the position of a name among the first `count` names; `count` if it is not one of
    /// them. \pre `count` does not decrease from call to call.
    std::size_t find(std::u16string_view name, std::size_t count) {
        assert(indexed_ <= count && count <= names_.size());
        if (count <= linearSearchLimit) {
            const auto begin = names_.begin();
            const auto end = begin + static_cast<std::ptrdiff_t>(count);
            return static_cast<std::size_t>(std::find(begin, end, name) - begin);
        }
        for (; indexed_ < count; ++indexed_) {
            index_.emplace(names_[indexed_], indexed_);
        }
        const auto found = index_.find(name);
        return found == index_.end() ? count : found->second;
    }

  private:
    static constexpr std::size_t linearSearchLimit = 16;

    const std::vector<std::u16string>& names_;
    boost::unordered_flat_map<std::u16string_view, std::size_t> index_;
    std::size_t indexed_ = 0;
};

} // namespace TVTypeSys
