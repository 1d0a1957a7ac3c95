/// \file
/// Lookup and comparison of the items of enumerations.
#pragma once

#include "exchange/records.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::systems {

/// The items of a source that a target lacks, in the order of the source.
struct ItemDifferences {
    std::vector<const exchange::Item*> withoutValue; ///< whose value no item of the target has
    std::vector<const exchange::Item*> withoutName;  ///< whose name no item of the target has
    std::vector<const exchange::Item*> renamed;      ///< whose value has another name in the target
};

/// Finds items of enumerations; of several the first one. Each function returns null if there is
/// none. The items do not change while this object is used.
class ItemIndex {
  public:
    const exchange::Item* named(const std::vector<exchange::Item>& items, std::string_view name);
    const exchange::Item* withValue(const std::vector<exchange::Item>& items, std::int64_t value);

    /// Returns the least and the greatest value; empty without values.
    std::optional<std::pair<std::int64_t, std::int64_t>>
    range(const std::vector<exchange::Item>& items);

    /// Compares the items of a source with those of a target.
    const ItemDifferences& differences(const std::vector<exchange::Item>& source,
                                       const std::vector<exchange::Item>& target);

  private:
    struct Maps {
        boost::unordered_flat_map<std::string_view, const exchange::Item*> byName;
        boost::unordered_flat_map<std::int64_t, const exchange::Item*> byValue;
        std::optional<std::pair<std::int64_t, std::int64_t>> range;
    };

    const Maps& mapsOf(const std::vector<exchange::Item>& items);

    using Items = const std::vector<exchange::Item>*;

    std::unordered_map<Items, Maps> maps_;
    std::map<std::pair<Items, Items>, ItemDifferences> differences_;
};

} // namespace tvtool::systems
