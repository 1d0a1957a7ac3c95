/// \file
/// Finds the records of a table by name.
#pragma once

#include <tvtypes/datatype.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Answers what a scan of the records from position 0 would: the first position of a name.
///
/// A record that answers getName with its own name is indexed. One that answers with a text from
/// elsewhere may answer with another text tomorrow, so such records are asked at every lookup.
class NameIndex {
  public:
    using Records = std::vector<std::unique_ptr<DataType>>;

    /// The index of these records, which must outlive it or be taken out of it in time.
    explicit NameIndex(const Records& records) : records_(records) {}

    std::optional<std::size_t> find(std::string_view name) const;

    /// To be called when a record has been appended.
    void addLast();

    /// To be called before the record at a position leaves it, and when the position holds its
    /// next record. The positions of all others must stay.
    void leave(std::size_t position);
    void enter(std::size_t position);

    /// To be called when positions have changed.
    void rebuild();

  private:
    /// A name inside a record, with its hash: growing the index must not read every name again.
    struct Key {
        const char* text;
        std::uint32_t length;
        std::uint32_t hash;

        std::string_view name() const { return {text, length}; }
        bool operator==(const Key& other) const { return name() == other.name(); }
    };
    struct HashOfKey {
        std::size_t operator()(const Key& key) const noexcept { return key.hash; }
    };

    static Key keyOf(std::string_view name);
    static std::string_view nameOf(const DataType& record);
    static bool answersOwnName(const DataType& record);

    const Records& records_;
    boost::unordered_flat_map<Key, std::uint32_t, HashOfKey> firstPositions_;
    // Positions of the records that are asked each time, in ascending order.
    std::vector<std::uint32_t> asked_;
    // How many indexed records have a name that an earlier one has.
    std::size_t duplicates_ = 0;
};

} // namespace TVTypeSys
