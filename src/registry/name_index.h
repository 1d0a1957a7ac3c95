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
    struct Hash {
        using is_avalanching = void;
        std::size_t operator()(std::string_view name) const noexcept {
            return std::hash<std::string_view>()(name);
        }
    };

    static std::string_view nameOf(const DataType& record);
    static bool answersOwnName(const DataType& record);

    const Records& records_;
    // The keys are the names inside the records.
    boost::unordered_flat_map<std::string_view, std::uint32_t, Hash> firstPositions_;
    // Positions of the records that are asked each time, in ascending order.
    std::vector<std::uint32_t> asked_;
    // Whether some indexed name stands at more than one position.
    bool hasDuplicates_ = false;
};

} // namespace TVTypeSys
