/// \file
/// Index of the records of a table by name.
#pragma once

#include <tvtypes/registry/data_type.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Finds what a scan of the records from position 0 would: the first record with a name.
///
/// A hash table holds the records of the library's own classes, whose names do not change. A record
/// of a client's class may override getName and return another name at each call, so every lookup
/// scans these records.
///
/// Only addLast, and replace for a record of a client's class, can run out of memory; they then
/// throw std::bad_alloc and leave the index as it was. All other updates need no more entries than
/// the index has had before.
class NameIndex {
  public:
    using Records = std::vector<std::unique_ptr<DataType>>;

    /// Makes an empty index of `records`, which must outlive it, with room for `capacity` names.
    NameIndex(const Records& records, std::size_t capacity) : records_(records) {
        firsts_.reserve(capacity);
    }

    /// Returns the id of the first record with a name, or INVALID_DATA_TYPE_ID.
    int idOf(std::string_view name) const;

    /// Returns whether a record of a client's class is in the table.
    bool hasClientRecords() const { return !clientRecords_.empty(); }

    /// Adds the last record. Call it when a record has been appended.
    void addLast();

    /// Removes the last record. Call it before the record is removed.
    void removeLast();

    /// Returns whether `replace` accepts a record.
    bool isReplaceable(std::size_t position, const DataType& newRecord) const;

    /// Enters `newRecord` for the record at a position. Call it before the record is replaced.
    /// \pre `newRecord` is of a class of the library. So is the record at the position, with the
    /// same name, or else it is of a client's class.
    void replace(std::size_t position, const DataType& newRecord);

    /// Indexes all records again. Call it when positions have changed.
    void rebuild();

  private:
    /// A name owned by a record, with its hash, so that growing the table reads no names. The text
    /// is replaced by an equal one when another record becomes the first with the name.
    struct Key {
        mutable const char* text;
        std::uint32_t length;
        std::uint32_t hash;

        std::string_view name() const { return {text, length}; }
        bool operator==(const Key& other) const { return name() == other.name(); }
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept { return key.hash; }
    };

    /// The first record with a name. Its id is here too, so that a lookup does not read the record.
    struct First {
        std::uint32_t position;
        std::int32_t id;
    };

    static Key makeKey(std::string_view name);
    int idAmongClientRecords(std::string_view name, First first) const;
    static bool isClientRecord(const DataType& record);
    void add(std::size_t position);
    void addName(std::size_t position, const DataType& record);

    const Records& records_;
    boost::unordered_flat_map<Key, First, KeyHash> firsts_;
    // Positions of the records of clients' classes, in ascending order.
    std::vector<std::uint32_t> clientRecords_;
};

} // namespace TVTypeSys
