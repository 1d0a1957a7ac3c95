/// \file
/// Positions of the elements of one struct in the depth-first and in the raw numbering.
#pragma once

#include <tvtypes/structs/struct_data_type.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace TVTypeSys {

class DataTypeTable;

/// Numbers of indices of one element: its own first, then those of its copies if it is a struct.
struct ElementSpan {
    std::int64_t own = 0;
    std::int64_t copies = 0;
    std::int64_t copySize = 0;
};

/// Rules of a numbering.
struct Numbering {
    /// Index of the first element: the number of indices of the struct itself.
    std::int64_t first;
    ElementSpan (*span)(const DataTypeTable& table, const StructElement& element);
};

/// One index for each struct, array of structs, copy, and element that is not a struct.
extern const Numbering depthFirstNumbering;
/// One index for each scalar.
extern const Numbering rawNumbering;

/// Position of an index among the elements of one struct.
struct Step {
    int element = 0;
    std::optional<int> copy;   ///< copy that contains the index; none if it is the element's own
    int typeId = 0;            ///< type of the element
    int start = 0;             ///< first index of the copy if there is one, else of the element
    std::int64_t copySize = 0; ///< indices of the copy
};

/// Prefix sums of the spans of the elements of one struct, computed up to the largest index that
/// has been read. A binary search finds the element of an index, and one division the copy.
class ElementStarts {
  public:
    explicit ElementStarts(const Numbering& numbering) : numbering_(&numbering) {}

    /// Finds the element of an index. Throws InvalidStructIndex if there is none.
    Step find(const DataTypeTable& table, const StructDataType& type, int index);

    /// Returns the first index of an element; for the number of elements, the end of the last one.
    /// Throws InvalidStructIndex.
    std::int64_t start(const DataTypeTable& table, const StructDataType& type, int element);

  private:
    struct Entry {
        ElementSpan span;
        std::int64_t end; ///< index behind the element
    };

    std::int64_t end() const { return entries_.empty() ? numbering_->first : entries_.back().end; }
    std::int64_t startOf(std::size_t entry) const {
        return entry == 0 ? numbering_->first : entries_[entry - 1].end;
    }
    void addNext(const DataTypeTable& table, const StructDataType& type);

    const Numbering* numbering_;
    std::vector<Entry> entries_;
    // Entry of the last index that was found: the next one is mostly in it or behind it.
    std::size_t lastFound_ = 0;
};

} // namespace TVTypeSys
