/// \file
/// Elements and offsets of the depth-first nodes of one struct type.
#pragma once

#include <tvtypes/structs/struct_data_type.h>

#include <boost/unordered/unordered_flat_map.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <vector>

namespace TVTypeSys {

/// Cache entries by index, in pages of consecutive indices. Entries stay where they are until the
/// type is destroyed, since clients hold pointers to them.
///
/// Entries refer to elements of nested types, which may be destroyed before this type. The cache
/// shares the ownership of those elements.
class ElementCache {
  public:
    /// Returns the cache of a type, and makes an empty one if there is none.
    static ElementCache& of(StructDataType& type) {
        return type.elementCache_ != nullptr ? *type.elementCache_ : make(type);
    }

    /// Destroys the cache and the elements of a type, once no other cache shares them.
    static void retire(std::unique_ptr<ElementCache> cache,
                       std::vector<std::unique_ptr<StructElement>> elements) noexcept;

    /// Shares the elements of the type of `owner`.
    void share(ElementCache& owner) {
        if (owner.retired_ == nullptr || lastShared_ != owner.retired_.get()) {
            addShared(owner);
        }
    }

    /// Shares all elements to which the entries of another cache may refer.
    void shareAllOf(ElementCache& other);

    /// Returns the entry of a node, and makes an empty one if there is none.
    DFSElementCache& operator[](int dfsIdx) {
        const int number = dfsIdx >> pageBits;
        if (number != lastNumber_) {
            selectPage(number);
        }
        return (*last_)[static_cast<std::size_t>(dfsIdx & (pageSize - 1))];
    }

  private:
    // Small, since most types of a deep hierarchy have few nodes of their own.
    static constexpr int pageBits = 3;
    static constexpr int pageSize = 1 << pageBits;
    using Page = std::array<DFSElementCache, pageSize>;

    /// Elements of a type that has been destroyed, and those that its cache owns. Empty until then.
    struct Retired {
        std::vector<std::unique_ptr<StructElement>> elements;
        std::unique_ptr<ElementCache> cache;
    };

    static ElementCache& make(StructDataType& type);
    void addShared(ElementCache& owner);

    void selectPage(int number);
    Page& page(int number);

    // Page of the last read: most reads are in index order.
    int lastNumber_ = std::numeric_limits<int>::min();
    Page* last_ = nullptr;
    Page first_;
    boost::unordered_flat_map<int, std::unique_ptr<Page>> others_;

    std::shared_ptr<Retired> retired_; // null until another cache shares the elements
    boost::unordered_flat_set<std::shared_ptr<Retired>> shared_;
    const Retired* lastShared_ = nullptr;
};

} // namespace TVTypeSys
