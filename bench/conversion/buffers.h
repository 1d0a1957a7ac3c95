/// \file
/// The source and destination buffers of all cases, and the source data.
#pragma once

#include "conversion/cells.h"

#include <cstdlib>
#include <memory>
#include <optional>

namespace convbench {

/// Aligned to 64 bytes, written to before they are used, large enough for every case.
class Buffers {
  public:
    Buffers();

    /// Fills the source with the data of the case, unless it holds them already.
    void prepare(const Case& wanted);

    void* source() const { return source_.get(); }
    void* destination() const { return destination_.get(); }

  private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    using Memory = std::unique_ptr<void, Free>;

    struct Contents {
        int src;
        int dst;
        Data data;
        std::size_t count;
        bool imaginaryPartsAreZero;
        bool operator==(const Contents&) const = default;
    };

    static Memory allocate();

    Memory source_;
    Memory destination_;
    std::optional<Contents> contents_;
};

} // namespace convbench
