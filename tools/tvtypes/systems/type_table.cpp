#include "systems/type_table.h"

#include "model/base_types.h"

#include <algorithm>

namespace tvtool::systems {

int TypeTable::id(exchange::BaseType base, const std::vector<exchange::Item>* items) {
    if (base == exchange::BaseType::None || model::isOutside(base)) {
        return INVALID_DATA_TYPE_ID;
    }
    if (base != exchange::BaseType::Enumeration || items == nullptr) {
        return model::baseTypeId(table_, base);
    }
    const auto [known, isNew] = known_.try_emplace(items, INVALID_DATA_TYPE_ID);
    if (isNew) {
        known->second = enumerationId(*items);
    }
    return known->second;
}

int TypeTable::enumerationId(const std::vector<exchange::Item>& items) {
    Key key;
    for (const exchange::Item& item : items) {
        key.emplace_back(item.name, item.value.value_or(0));
    }
    std::ranges::sort(key);
    const auto [entry, isNew] = enumerations_.try_emplace(std::move(key), INVALID_DATA_TYPE_ID);
    if (isNew) {
        // The name is not that of the file, which need not be unique or valid in the table.
        const std::string unique = "enumeration" + std::to_string(enumerations_.size());
        entry->second = model::registerEnumeration(table_, unique);
    }
    return entry->second;
}

} // namespace tvtool::systems
