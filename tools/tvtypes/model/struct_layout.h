/// \file
/// Memory layout of struct types.
#pragma once

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <stdexcept>
#include <unordered_map>

namespace tvtool::model {

/// The error of a struct type that cannot be laid out.
class LayoutError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Natural alignment: the offset of each element is the next multiple of its alignment, which is
/// its size, or for a struct the largest alignment of its elements. The size of a struct is a
/// multiple of its alignment, so arrays are contiguous. The parts of complex elements are
/// interleaved.
class StructLayout {
  public:
    explicit StructLayout(const TVTypeSys::DataTypeTable& table) : table_(table) {}

    /// Sets the offsets of the elements, and the size and counts of the type. Throws a LayoutError,
    /// and changes nothing, if there are too many bytes or elements or an element has no size.
    /// \pre The elements have their types and dimensions. Nested struct types were laid out here.
    void layOut(StructDataType& type);

    /// Returns the alignment of a type, in bytes. Throws a LayoutError for a struct type that was
    /// not laid out here.
    int alignmentOf(int id) const;

  private:
    const TVTypeSys::DataTypeTable& table_;
    std::unordered_map<int, int> alignments_; ///< of struct types, by id
};

} // namespace tvtool::model
