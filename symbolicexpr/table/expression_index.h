/// \file
/// Hash index from expressions to their ids.
#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace TV {

/// A hash table of ids with open addressing and linear probing. One probe sequence finds an id or
/// the slot for a new one. Hashes are stored, so that the table grows without reading expressions.
class ExpressionIndex {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Reserves a slot for one more id. This is the only operation that can fail.
    void reserveOne() {
        if (!hasRoom()) {
            grow();
        }
    }

    /// Returns the slot of the id that is stored with this hash and for which `isSought(id)` holds.
    /// If there is none, returns an empty slot, which holds `none`; a caller that assigns an id to
    /// it calls added(). \pre There is an empty slot: reserveOne() has been called since the last
    /// id was added.
    template <class IsSought>
    std::uint32_t& find(std::uint32_t hash, const IsSought& isSought) {
        Slot* slot = &slots_[firstSlot(hash)];
        while (slot->id != none && !(slot->hash == hash && isSought(slot->id))) {
            slot = slot == &slots_.back() ? &slots_.front() : slot + 1;
        }
        if (slot->id == none) {
            slot->hash = hash;
        }
        return slot->id;
    }
    void added() { ++count_; }

    /// Removes all ids but those below `size`, whose hashes `hashOf(id)` returns.
    template <class HashOf>
    void truncate(std::uint32_t size, const HashOf& hashOf) {
        std::fill(slots_.begin(), slots_.end(), Slot());
        for (std::uint32_t id = 0; id < size; ++id) {
            find(hashOf(id), [](std::uint32_t) { return false; }) = id;
        }
        count_ = size;
    }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t id = none;
    };

    /// At most three quarters of the slots are in use.
    bool hasRoom() const { return !slots_.empty() && (count_ + 1) * 4 <= slots_.size() * 3; }

    std::size_t firstSlot(std::uint32_t hash) const {
        return (hash * 0x9e3779b97f4a7c15ULL >> 32) & (slots_.size() - 1);
    }

    void grow() {
        std::vector<Slot> old(slots_.empty() ? 32 : slots_.size() * 2);
        old.swap(slots_);
        for (const Slot& slot : old) {
            if (slot.id != none) {
                find(slot.hash, [](std::uint32_t) { return false; }) = slot.id;
            }
        }
    }

    std::vector<Slot> slots_; ///< a power of two of them
    std::size_t count_ = 0;
};

} // namespace TV
