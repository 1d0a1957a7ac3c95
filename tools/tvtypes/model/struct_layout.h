/// \file
/// Where the elements of a struct type lie.
#pragma once

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <stdexcept>
#include <unordered_map>

namespace tvtool::model {

/// A struct type cannot be laid out.
class LayoutError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Natural alignment: every element lies at the next multiple of its alignment, which for a struct
/// is the largest of its elements and for any other type its size. The size of a struct is a
/// multiple of its alignment, so arrays are contiguous. The parts of complex elements interleave.
class StructLayout {
  public:
    explicit StructLayout(const TVTypeSys::DataTypeTable& table) : table_(table) {}

    /// Sets the offsets of the elements, and size and counts of the type. The elements have their
    /// types and dimensions; struct types among those have been laid out here. What is refused,
    /// with a LayoutError or by the library, is as it was.
    void layOut(StructDataType& type);

    /// The alignment of a type; of a struct type that has been laid out here.
    int alignmentOf(int id) const;

  private:
    const TVTypeSys::DataTypeTable& table_;
    std::unordered_map<int, int> alignments_; ///< of struct types, by id
};

} // namespace tvtool::model
