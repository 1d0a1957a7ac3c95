/// \file
/// Ids by hash.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TV {

/// A hash table of ids that finds an id and the place for a new one in one look. Hashes are kept,
/// so that it grows without a look at what has them.
class ExpressionIndex {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Makes room for one more id, which is all that can fail.
    void makeRoom() {
        if (slots_.empty() || (count_ + 1) * 4 > slots_.size() * 3) {
            grow();
        }
    }

    /// The id that is kept with this hash and for which `isSought(id)` holds. If there is none,
    /// `none`, at the place for it: who assigns an id calls added(). There has to be room.
    template <class IsSought>
    std::uint32_t& find(std::uint32_t hash, const IsSought& isSought) {
        Slot* slot = &slots_[placeOf(hash)];
        while (slot->id != none && !(slot->hash == hash && isSought(slot->id))) {
            slot = slot == &slots_.back() ? &slots_.front() : slot + 1;
        }
        if (slot->id == none) {
            slot->hash = hash;
        }
        return slot->id;
    }
    void added() { ++count_; }

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t id = none;
    };

    std::size_t placeOf(std::uint32_t hash) const {
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

    std::vector<Slot> slots_;
    std::size_t count_ = 0;
};

} // namespace TV
