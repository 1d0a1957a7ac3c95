#include "registry/name_index.h"

#include <tvtypes/registry/alias_data_type.h>
#include <tvtypes/registry/builtin_data_type.h>
#include <tvtypes/structs/struct_data_type.h>

#include <algorithm>
#include <cstring>
#include <typeinfo>

namespace TVTypeSys {

namespace {

/// Greater than every position.
constexpr std::uint32_t none = UINT32_MAX;

/// Returns the first `count` bytes of a text, at most eight, as a number.
std::uint64_t load(const char* text, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, count);
    return word;
}

/// Returns a hash of a name. Each registration computes two, so it is inline and takes eight
/// characters at a time; the last word overlaps the one before it.
std::uint32_t hashOf(std::string_view name) {
    std::uint64_t hash = name.size();
    const auto mix = [&hash](std::uint64_t word) {
        hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
        hash ^= hash >> 32;
    };
    if (name.size() < sizeof(std::uint64_t)) {
        mix(load(name.data(), name.size()));
    } else {
        const char* const last = name.data() + name.size() - sizeof(std::uint64_t);
        for (const char* next = name.data(); next < last; next += sizeof(std::uint64_t)) {
            mix(load(next, sizeof(std::uint64_t)));
        }
        mix(load(last, sizeof(std::uint64_t)));
    }
    return static_cast<std::uint32_t>(hash);
}

/// Returns whether getName returns `name`, which is terminated by zero; null counts as "".
bool hasName(const DataType& record, std::string_view name) {
    const char* current = record.getName();
    return current == nullptr ? name.empty() : std::strcmp(current, name.data()) == 0;
}

} // namespace

NameIndex::Key NameIndex::makeKey(std::string_view name) {
    return {name.data(), static_cast<std::uint32_t>(name.size()), hashOf(name)};
}

bool NameIndex::isClientRecord(const DataType& record) {
    const std::type_info& type = typeid(record);
    return type != typeid(DataType) && type != typeid(AliasDataType) &&
           type != typeid(StructDataType) && type != typeid(BuiltInDataType) &&
           type != typeid(AutoDataType);
}

int NameIndex::idOf(std::string_view name) const {
    const auto found = firsts_.find(makeKey(name));
    const First first = found != firsts_.end() ? found->second : First{none, INVALID_DATA_TYPE_ID};
    return clientRecords_.empty() ? first.id : idAmongClientRecords(name, first);
}

/// Returns the id of the first record with the name: of `first`, or of a client's class before it.
int NameIndex::idAmongClientRecords(std::string_view name, First first) const {
    for (const std::uint32_t position : clientRecords_) {
        if (position > first.position) {
            break;
        }
        if (hasName(*records_[position], name)) {
            return records_[position]->getId();
        }
    }
    return first.id;
}

void NameIndex::addLast() { add(records_.size() - 1); }

/// Adds a record whose position is above those of all client records in the index.
void NameIndex::add(std::size_t position) {
    if (isClientRecord(*records_[position])) {
        clientRecords_.push_back(static_cast<std::uint32_t>(position));
    } else {
        addName(position, *records_[position]);
    }
}

void NameIndex::addName(std::size_t position, const DataType& record) {
    const auto place = static_cast<std::uint32_t>(position);
    const char* const text = record.name_.c_str();
    const First first{place, record.getId()};
    const auto [entry, isNew] = firsts_.try_emplace(makeKey(text), first);
    if (!isNew && place < entry->second.position) {
        entry->first.text = text;
        entry->second = first;
    }
}

void NameIndex::removeLast() {
    const auto last = static_cast<std::uint32_t>(records_.size() - 1);
    if (!clientRecords_.empty() && clientRecords_.back() == last) {
        clientRecords_.pop_back();
        return;
    }
    const auto entry = firsts_.find(makeKey(records_[last]->name_.c_str()));
    if (entry->second.position == last) {
        firsts_.erase(entry);
    }
}

bool NameIndex::isReplaceable(std::size_t position, const DataType& newRecord) const {
    const DataType& record = *records_[position];
    return !isClientRecord(newRecord) &&
           (isClientRecord(record) ||
            std::strcmp(record.name_.c_str(), newRecord.name_.c_str()) == 0);
}

void NameIndex::replace(std::size_t position, const DataType& newRecord) {
    if (isClientRecord(*records_[position])) {
        addName(position, newRecord);
        clientRecords_.erase(
            std::lower_bound(clientRecords_.begin(), clientRecords_.end(), position));
        return;
    }
    const char* const text = newRecord.name_.c_str();
    const auto entry = firsts_.find(makeKey(text));
    if (entry->second.position == position) {
        entry->first.text = text;
    }
}

void NameIndex::rebuild() {
    firsts_.clear();
    clientRecords_.clear();
    for (std::size_t position = 0; position < records_.size(); ++position) {
        add(position);
    }
}

} // namespace TVTypeSys
