#include "registry/name_index.h"

#include <algorithm>

namespace TVTypeSys {

std::string_view NameIndex::nameOf(const DataType& record) {
    const char* name = record.getName();
    return name == nullptr ? std::string_view() : name;
}

NameIndex::Key NameIndex::keyOf(std::string_view name) {
    return {name.data(), static_cast<std::uint32_t>(name.size()),
            static_cast<std::uint32_t>(std::hash<std::string_view>()(name))};
}

bool NameIndex::answersOwnName(const DataType& record) {
    return record.getName() == record.name_.c_str();
}

std::optional<std::size_t> NameIndex::find(std::string_view name) const {
    std::optional<std::size_t> first;
    if (const auto found = firstPositions_.find(keyOf(name)); found != firstPositions_.end()) {
        first = found->second;
    }
    for (const std::uint32_t position : asked_) {
        if (first && position > *first) {
            break;
        }
        if (nameOf(*records_[position]) == name) {
            return position;
        }
    }
    return first;
}

void NameIndex::addLast() { enter(records_.size() - 1); }

void NameIndex::enter(std::size_t position) {
    const DataType& record = *records_[position];
    const auto place = static_cast<std::uint32_t>(position);
    if (!answersOwnName(record)) {
        asked_.insert(std::upper_bound(asked_.begin(), asked_.end(), place), place);
        return;
    }
    const auto [entry, isNew] = firstPositions_.try_emplace(keyOf(nameOf(record)), place);
    if (!isNew) {
        ++duplicates_;
        if (place < entry->second) {
            // The key must be the name of the record that the entry stands for.
            firstPositions_.erase(entry);
            firstPositions_.emplace(keyOf(nameOf(record)), place);
        }
    }
}

void NameIndex::leave(std::size_t position) {
    const DataType& record = *records_[position];
    const auto place = static_cast<std::uint32_t>(position);
    const auto asked = std::lower_bound(asked_.begin(), asked_.end(), place);
    if (asked != asked_.end() && *asked == place) {
        asked_.erase(asked);
        return;
    }
    const std::string_view name = record.name_.c_str();
    const auto entry = firstPositions_.find(keyOf(name));
    if (entry->second != place) {
        --duplicates_; // an earlier record has the name
        return;
    }
    firstPositions_.erase(entry);
    if (duplicates_ > 0) {
        for (std::size_t later = position + 1; later < records_.size(); ++later) {
            const bool isAsked = std::binary_search(asked_.begin(), asked_.end(), later);
            if (!isAsked && nameOf(*records_[later]) == name) {
                firstPositions_.emplace(keyOf(nameOf(*records_[later])),
                                        static_cast<std::uint32_t>(later));
                --duplicates_;
                break;
            }
        }
    }
}

void NameIndex::rebuild() {
    firstPositions_.clear();
    asked_.clear();
    duplicates_ = 0;
    for (std::size_t position = 0; position < records_.size(); ++position) {
        enter(position);
    }
}

} // namespace TVTypeSys
