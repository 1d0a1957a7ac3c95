/// \file
/// Two numberings of what lies inside a struct at any depth, seen one level at a time: where in
/// them the elements of a struct begin.
#pragma once

#include <tvtypes/structdatatype.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace TVTypeSys {

class DataTypeTable;

/// The indices that one element takes: its own ahead, then those of its copies if it is a struct.
struct ElementSpan {
    std::int64_t own = 0;
    std::int64_t copies = 0;
    std::int64_t copySize = 0;
};

struct Numbering {
    /// The index of a struct's first element: how many the struct has itself.
    std::int64_t first;
    ElementSpan (*spanOf)(const DataTypeTable& table, const StructElement& element);
};

/// A node for each struct, array of structs, copy, and element that is no struct.
extern const Numbering depthFirstNumbering;
/// An index for each scalar.
extern const Numbering rawNumbering;

/// Where an index lies among the elements of one struct.
struct Step {
    int element = 0;
    std::optional<int> copy; ///< of a struct; none if the index is the element's own
    int typeId = 0;          ///< of the element
    int start = 0;           ///< of the copy, else of the element
    std::int64_t copySize = 0;
};

/// Where the elements of one struct lie in a numbering, filled as far as it has been asked for.
class ElementStarts {
  public:
    explicit ElementStarts(const Numbering& numbering) : numbering_(numbering) { forget(); }

    /// Refused with InvalidStructIndex if no element has the index.
    Step stepTo(const DataTypeTable& table, const StructDataType& type, int index);

    /// Where an element begins; that of the number of elements is where the last one ends. Refused
    /// with InvalidStructIndex.
    std::int64_t startOf(const DataTypeTable& table, const StructDataType& type, int element);

    void forget();

  private:
    void addNext(const DataTypeTable& table, const StructDataType& type);

    const Numbering& numbering_;
    std::vector<ElementSpan> spans_;
    std::vector<std::int64_t> starts_; ///< one more: where the next element begins
};

} // namespace TVTypeSys
