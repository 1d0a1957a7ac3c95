/// \file
/// Elements and offsets of the depth-first nodes of one struct type.
#pragma once

#include <tvtypes/structs/struct_element.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <array>
#include <cstddef>
#include <limits>
#include <memory>

namespace TVTypeSys {

/// Cache entries by index, in pages of consecutive indices. Entries stay where they are until the
/// type is destroyed, since clients hold pointers to them.
class ElementCache {
  public:
    /// Returns the entry of a node, and makes an empty one if there is none.
    DFSElementCache& operator[](int dfsIdx) {
        const int number = dfsIdx >> pageBits;
        if (number != lastNumber_) {
            Page& page = this->page(number);
            if (number == lastNumber_ + 1) {
                prefetchElements(page);
            }
            last_ = &page;
            lastNumber_ = number;
        }
        return (*last_)[static_cast<std::size_t>(dfsIdx & (pageSize - 1))];
    }

  private:
    // Small, since most types of a deep hierarchy have few nodes of their own.
    static constexpr int pageBits = 3;
    static constexpr int pageSize = 1 << pageBits;
    using Page = std::array<DFSElementCache, pageSize>;

    /// The elements of a deep hierarchy are far apart: reading them in order waits for each.
    static void prefetchElements(const Page& page) {
        for (const DFSElementCache& node : page) {
            if (node.element != nullptr) {
                __builtin_prefetch(&node.element->dataTypeId);
            }
        }
    }

    Page& page(int number) {
        if (number == 0) {
            return first_;
        }
        std::unique_ptr<Page>& page = others_[number];
        if (page == nullptr) {
            page = std::make_unique<Page>();
        }
        return *page;
    }

    // Page of the last read: most reads are in index order.
    int lastNumber_ = std::numeric_limits<int>::min();
    Page* last_ = nullptr;
    Page first_;
    boost::unordered_flat_map<int, std::unique_ptr<Page>> others_;
};

} // namespace TVTypeSys
