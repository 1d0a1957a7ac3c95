#include "model/struct_layout.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace tvtool::model {

namespace {

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

constexpr int maxInt = std::numeric_limits<int>::max();

/// Returns the number if it is an int. The factors of each product are ints, so the product does
/// not overflow.
std::int64_t checkRange(std::int64_t number, const StructElement& element, const char* unit) {
    if (number > maxInt) {
        throw LayoutError(fmt::format("there are more than {} {} at the end of element {}", maxInt,
                                      unit, text::quoted(element.name)));
    }
    return number;
}

std::int64_t width(const StructElement& element) {
    std::int64_t width = 1;
    for (int d = 0; d < element.numDimensions; ++d) {
        const int size = element.dimensions[d];
        if (size < 1) {
            throw LayoutError(
                fmt::format("element {} has a dimension of {}", text::quoted(element.name), size));
        }
        width = checkRange(width * size, element, "scalars");
    }
    return width;
}

std::int64_t roundUp(std::int64_t offset, int alignment) {
    return (offset + alignment - 1) / alignment * alignment;
}

const DataType& elementType(const DataTypeTable& table, const StructElement& element) {
    const bool isKnown = table.isDataTypeIdValid_NotAuto(element.dataTypeId);
    const DataType* const type =
        isKnown ? table.getDataTypeAliasedThruTo(element.dataTypeId) : nullptr;
    if (type == nullptr || type->getSize() < 0) {
        throw LayoutError(
            fmt::format("the type of element {} has no size", text::quoted(element.name)));
    }
    return *type;
}

} // namespace

void StructLayout::layOut(StructDataType& type) {
    std::vector<int> offsets;
    int alignment = 1;
    std::int64_t end = 0;
    std::int64_t nodes = 1;
    std::int64_t leaves = 0;
    std::int64_t scalars = 0;
    for (const StructElement* const element : type.getElements()) {
        const DataType& part = elementType(table_, *element);
        const std::int64_t copies = width(*element);
        std::int64_t parts = copies;
        if (part.getIsType(TVTypeSys::DataTypeQualifierStruct)) {
            const auto& nested = static_cast<const StructDataType&>(part);
            nodes += copies * nested.getNumDFSElements() + (copies > 1 ? 1 : 0);
            leaves += copies * nested.getNumFlatElements();
            scalars += copies * nested.getNumRawElements();
        } else {
            parts = checkRange(element->signalType == 1 ? 2 * copies : copies, *element, "scalars");
            nodes += 1;
            leaves += 1;
            scalars += parts;
        }
        const int elementAlignment = alignmentOf(part.getId());
        alignment = std::max(alignment, elementAlignment);
        const std::int64_t offset = checkRange(roundUp(end, elementAlignment), *element, "bytes");
        offsets.push_back(static_cast<int>(offset));
        end = checkRange(offset + parts * part.getSize(), *element, "bytes");
        checkRange(std::max({nodes, leaves, scalars}), *element, "scalars");
        checkRange(roundUp(end, alignment), *element, "bytes");
    }
    type.setSize(static_cast<int>(roundUp(end, alignment)));
    type.setNumDFSElements(static_cast<int>(nodes));
    type.setNumFlatElements(static_cast<int>(leaves));
    type.setNumRawElements(static_cast<int>(scalars));
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        type.getElements()[i]->setOffset(offsets[i]);
    }
    alignments_[type.getId()] = alignment;
}

int StructLayout::alignmentOf(int id) const {
    const DataType& type = *table_.getDataTypeAliasedThruTo(id);
    if (!type.getIsType(TVTypeSys::DataTypeQualifierStruct)) {
        return std::max(type.getSize(), 1);
    }
    const auto known = alignments_.find(type.getId());
    if (known == alignments_.end()) {
        throw LayoutError(
            fmt::format("struct {} has not been laid out", text::quoted(type.getName())));
    }
    return known->second;
}

} // namespace tvtool::model
