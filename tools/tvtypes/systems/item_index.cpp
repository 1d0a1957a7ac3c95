#include "systems/item_index.h"

#include <algorithm>

namespace tvtool::systems {

const ItemIndex::Maps& ItemIndex::mapsOf(const std::vector<exchange::Item>& items) {
    const auto [entry, isNew] = maps_.try_emplace(&items);
    Maps& maps = entry->second;
    if (isNew) {
        for (const exchange::Item& item : items) {
            maps.byName.try_emplace(item.name, &item);
            if (item.value) {
                maps.byValue.try_emplace(*item.value, &item);
                maps.range = maps.range ? std::pair(std::min(maps.range->first, *item.value),
                                                    std::max(maps.range->second, *item.value))
                                        : std::pair(*item.value, *item.value);
            }
        }
    }
    return maps;
}

const exchange::Item* ItemIndex::named(const std::vector<exchange::Item>& items,
                                       std::string_view name) {
    const Maps& maps = mapsOf(items);
    const auto found = maps.byName.find(name);
    return found == maps.byName.end() ? nullptr : found->second;
}

const exchange::Item* ItemIndex::withValue(const std::vector<exchange::Item>& items,
                                           std::int64_t value) {
    const Maps& maps = mapsOf(items);
    const auto found = maps.byValue.find(value);
    return found == maps.byValue.end() ? nullptr : found->second;
}

std::optional<std::pair<std::int64_t, std::int64_t>>
ItemIndex::range(const std::vector<exchange::Item>& items) {
    return mapsOf(items).range;
}

const ItemDifferences& ItemIndex::differences(const std::vector<exchange::Item>& source,
                                              const std::vector<exchange::Item>& target) {
    const auto [entry, isNew] = differences_.try_emplace({&source, &target});
    ItemDifferences& differences = entry->second;
    if (!isNew) {
        return differences;
    }
    for (const exchange::Item& item : source) {
        if (named(target, item.name) == nullptr) {
            differences.withoutName.push_back(&item);
        }
        const exchange::Item* const other = item.value ? withValue(target, *item.value) : nullptr;
        if (other == nullptr) {
            differences.withoutValue.push_back(&item);
        } else if (other->name != item.name) {
            differences.renamed.push_back(&item);
        }
    }
    return differences;
}

} // namespace tvtool::systems
