#include "registry/name_index.h"

#include <algorithm>

namespace TVTypeSys {

std::string_view NameIndex::recordName(const DataType& record) {
    const char* name = record.getName();
    return name == nullptr ? std::string_view() : name;
}

NameIndex::Key NameIndex::makeKey(std::string_view name) {
    return {name.data(), static_cast<std::uint32_t>(name.size()),
            static_cast<std::uint32_t>(std::hash<std::string_view>()(name))};
}

bool NameIndex::returnsOwnName(const DataType& record) {
    return record.getName() == record.name_.c_str();
}

std::optional<std::size_t> NameIndex::find(std::string_view name) const {
    std::optional<std::size_t> first;
    if (const auto found = firstPositions_.find(makeKey(name)); found != firstPositions_.end()) {
        first = found->second;
    }
    for (const std::uint32_t position : scanned_) {
        if (first && position > *first) {
            break;
        }
        if (recordName(*records_[position]) == name) {
            return position;
        }
    }
    return first;
}

void NameIndex::addLast() { add(records_.size() - 1); }

void NameIndex::add(std::size_t position) {
    const DataType& record = *records_[position];
    const auto place = static_cast<std::uint32_t>(position);
    if (!returnsOwnName(record)) {
        scanned_.insert(std::upper_bound(scanned_.begin(), scanned_.end(), place), place);
        return;
    }
    const auto [entry, isNew] = firstPositions_.try_emplace(makeKey(recordName(record)), place);
    if (!isNew) {
        ++duplicates_;
        if (place < entry->second) {
            // The key refers to the name of the record at the position.
            firstPositions_.erase(entry);
            firstPositions_.emplace(makeKey(recordName(record)), place);
        }
    }
}

void NameIndex::remove(std::size_t position) {
    const DataType& record = *records_[position];
    const auto place = static_cast<std::uint32_t>(position);
    const auto scanned = std::lower_bound(scanned_.begin(), scanned_.end(), place);
    if (scanned != scanned_.end() && *scanned == place) {
        scanned_.erase(scanned);
        return;
    }
    const std::string_view name = record.name_.c_str();
    const auto entry = firstPositions_.find(makeKey(name));
    if (entry->second != place) {
        --duplicates_; // an earlier record has the name
        return;
    }
    firstPositions_.erase(entry);
    if (duplicates_ > 0) {
        for (std::size_t later = position + 1; later < records_.size(); ++later) {
            const bool isScanned = std::binary_search(scanned_.begin(), scanned_.end(), later);
            if (!isScanned && recordName(*records_[later]) == name) {
                firstPositions_.emplace(makeKey(recordName(*records_[later])),
                                        static_cast<std::uint32_t>(later));
                --duplicates_;
                break;
            }
        }
    }
}

void NameIndex::rebuild() {
    firstPositions_.clear();
    scanned_.clear();
    duplicates_ = 0;
    for (std::size_t position = 0; position < records_.size(); ++position) {
        add(position);
    }
}

} // namespace TVTypeSys
