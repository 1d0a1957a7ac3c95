#include "registry/name_index.h"

#include <algorithm>

namespace TVTypeSys {

std::string_view NameIndex::nameOf(const DataType& record) {
    const char* name = record.getName();
    return name == nullptr ? std::string_view() : name;
}

bool NameIndex::answersOwnName(const DataType& record) {
    return record.getName() == record.name_.c_str();
}

std::optional<std::size_t> NameIndex::find(std::string_view name) const {
    std::optional<std::size_t> first;
    if (const auto found = firstPositions_.find(name); found != firstPositions_.end()) {
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
    const auto [entry, isNew] = firstPositions_.try_emplace(nameOf(record), place);
    if (!isNew) {
        hasDuplicates_ = true;
        if (place < entry->second) {
            // The key must be the name of the record that the entry stands for.
            firstPositions_.erase(entry);
            firstPositions_.emplace(nameOf(record), place);
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
    const auto entry = firstPositions_.find(name);
    if (entry == firstPositions_.end() || entry->second != place) {
        return; // an earlier record has the name
    }
    firstPositions_.erase(entry);
    if (hasDuplicates_) {
        for (std::size_t later = position + 1; later < records_.size(); ++later) {
            if (answersOwnName(*records_[later]) && nameOf(*records_[later]) == name) {
                firstPositions_.emplace(nameOf(*records_[later]),
                                        static_cast<std::uint32_t>(later));
                break;
            }
        }
    }
}

void NameIndex::rebuild() {
    firstPositions_.clear();
    asked_.clear();
    hasDuplicates_ = false;
    for (std::size_t position = 0; position < records_.size(); ++position) {
        enter(position);
    }
}

} // namespace TVTypeSys
