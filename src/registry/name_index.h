/// \file
/// Index of the records of a table by name.
#pragma once

#include <tvtypes/registry/data_type.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Returns what a scan of the records from position 0 would: the first position of a name.
///
/// A hash table holds the records whose getName returns the name that they were constructed with.
/// Any other record may return another name at each call, so every lookup scans these records.
class NameIndex {
  public:
    using Records = std::vector<std::unique_ptr<DataType>>;

    /// Makes an empty index of `records`, which must outlive it.
    explicit NameIndex(const Records& records) : records_(records) {}

    /// Returns the first position of a name.
    std::optional<std::size_t> find(std::string_view name) const;

    /// Adds the last record. Call it when a record has been appended.
    void addLast();

    /// Remove and add the record at a position. Call `remove` before the record changes, and `add`
    /// afterwards. The positions of all other records must not change in between.
    void remove(std::size_t position);
    void add(std::size_t position);

    /// Indexes all records again. Call it when positions have changed.
    void rebuild();

  private:
    /// A name owned by a record, with its hash, so that growing the table reads no names.
    struct Key {
        const char* text;
        std::uint32_t length;
        std::uint32_t hash;

        std::string_view name() const { return {text, length}; }
        bool operator==(const Key& other) const { return name() == other.name(); }
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept { return key.hash; }
    };

    static Key makeKey(std::string_view name);
    static std::string_view recordName(const DataType& record);
    static bool returnsOwnName(const DataType& record);

    const Records& records_;
    boost::unordered_flat_map<Key, std::uint32_t, KeyHash> firstPositions_;
    // Positions of the records that every lookup scans, in ascending order.
    std::vector<std::uint32_t> scanned_;
    // Number of indexed records whose name an earlier indexed record has.
    std::size_t duplicates_ = 0;
};

} // namespace TVTypeSys
