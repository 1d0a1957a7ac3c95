/// \file
/// Index of cache entries that threads read without a lock.
#pragma once

#include <tvtypes/fixedpoint/cache.h>

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace TVTypeSys {

/// Insert-only hash table with open addressing and linear probing. Lookups take no lock and may run
/// during an insertion; insertions take turns. It refers to entries that are never moved or
/// removed.
class EntryIndex {
  public:
    constexpr EntryIndex() = default;
    EntryIndex(const EntryIndex&) = delete;
    EntryIndex& operator=(const EntryIndex&) = delete;
    ~EntryIndex() { delete slots_.load(); }

    /// Returns the entry whose record equals `record` in all fields; null if there is none.
    fxpDataTypeCachedStrings* find(const fxpDataTypeProp& record) const {
        const Slots* const slots = slots_.load(std::memory_order_acquire);
        if (slots == nullptr) {
            return nullptr;
        }
        for (std::size_t i = hash(record) >> slots->shift;; i = (i + 1) & slots->mask) {
            auto* const entry = slots->entries[i].load(std::memory_order_acquire);
            if (entry == nullptr || areEqual(entry->record(), record)) {
                return entry;
            }
        }
    }

    /// Makes room for one more entry. A larger table replaces the present one, which readers may
    /// still use and which is therefore kept: together they take at most twice its memory.
    void reserveOne() {
        Slots* const slots = slots_.load(std::memory_order_relaxed);
        if (slots != nullptr && 2 * (size_ + 1) <= slots->mask + 1) {
            return;
        }
        auto larger = std::make_unique<Slots>(slots == nullptr ? 6 : slots->bits() + 1);
        for (std::size_t i = 0; slots != nullptr && i <= slots->mask; ++i) {
            if (auto* const entry = slots->entries[i].load(std::memory_order_relaxed)) {
                larger->insert(*entry);
            }
        }
        larger->previous.reset(slots);
        slots_.store(larger.release(), std::memory_order_release);
    }

    /// Inserts an entry. \pre reserveOne() was called, and the index has no entry of this record.
    void insert(fxpDataTypeCachedStrings& entry) noexcept {
        slots_.load(std::memory_order_relaxed)->insert(entry);
        ++size_;
    }

  private:
    struct Slots {
        explicit Slots(int bits)
            : mask((std::size_t{1} << bits) - 1),
              shift(64 - bits),
              entries(new std::atomic<fxpDataTypeCachedStrings*>[mask + 1]()) {}

        int bits() const { return 64 - shift; }

        void insert(fxpDataTypeCachedStrings& entry) noexcept {
            std::size_t i = hash(entry.record()) >> shift;
            while (entries[i].load(std::memory_order_relaxed) != nullptr) {
                i = (i + 1) & mask;
            }
            entries[i].store(&entry, std::memory_order_release);
        }

        std::size_t mask;
        int shift;
        std::unique_ptr<std::atomic<fxpDataTypeCachedStrings*>[]> entries;
        std::unique_ptr<Slots> previous;
    };

    static std::uint64_t hash(const fxpDataTypeProp& record) {
        constexpr std::uint64_t golden = 0x9e3779b97f4a7c15; // Fibonacci hashing, for the high bits
        return (fxdt_ihash()(record) ^ bits(record.SlopeAdjustmentFactor) ^
                std::rotl(bits(record.Bias), 32)) *
               golden;
    }

    static bool areEqual(const fxpDataTypeProp& a, const fxpDataTypeProp& b) {
        return a.DataTypeMode == b.DataTypeMode && a.Signedness == b.Signedness &&
               a.WordLength == b.WordLength && a.FixedExponent == b.FixedExponent &&
               bits(a.SlopeAdjustmentFactor) == bits(b.SlopeAdjustmentFactor) &&
               bits(a.Bias) == bits(b.Bias) && a.DataTypeOverrideState == b.DataTypeOverrideState;
    }

    static std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

    std::atomic<Slots*> slots_{nullptr};
    std::size_t size_ = 0;
};

} // namespace TVTypeSys
