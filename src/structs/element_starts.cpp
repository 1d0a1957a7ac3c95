#include "structs/element_starts.h"

#include "structs/element_properties.h"

#include <algorithm>

namespace TVTypeSys {

namespace {

// Clamps starts, so that sums cannot overflow; above every index.
constexpr std::int64_t maxStart = std::int64_t{1} << 40;

ElementSpan depthFirstSpan(const DataTypeTable& table, const StructElement& element) {
    const StructDataType* const type = findStruct(table, element.dataTypeId);
    if (type == nullptr) {
        return {1, 0, 0};
    }
    const int copies = width(element);
    return {copies == 1 ? 0 : 1, std::max(copies, 0), std::max(type->getNumDFSElements(), 0)};
}

ElementSpan rawSpan(const DataTypeTable& table, const StructElement& element) {
    const StructDataType* const type = findStruct(table, element.dataTypeId);
    if (type == nullptr) {
        return {std::max(complexWidth(element), 0), 0, 0};
    }
    return {0, std::max(width(element), 0), std::max(type->getNumRawElements(), 0)};
}

} // namespace

constinit const Numbering depthFirstNumbering{1, depthFirstSpan};
constinit const Numbering rawNumbering{0, rawSpan};

Step ElementStarts::find(const DataTypeTable& table, const StructDataType& type, int index) {
    while (end() <= index && entries_.size() < type.getElements().size()) {
        addNext(table, type);
    }
    const auto found = std::ranges::upper_bound(entries_, index, {}, &Entry::end);
    if (index < numbering_->first || found == entries_.end()) {
        throwInvalidIndex(type, index);
    }
    const ElementSpan& span = found->span;
    const auto element = static_cast<int>(found - entries_.begin());
    const int typeId = requireElement(type, element).dataTypeId;
    const auto start = static_cast<int>(this->start(table, type, element));
    const std::int64_t inCopies = index - start - span.own;
    if (inCopies < 0) {
        return {element, std::nullopt, typeId, start, 0};
    }
    const std::int64_t copy = inCopies / span.copySize;
    return {element, static_cast<int>(copy), typeId,
            static_cast<int>(start + span.own + copy * span.copySize), span.copySize};
}

std::int64_t ElementStarts::start(const DataTypeTable& table, const StructDataType& type,
                                  int element) {
    if (element < 0 || static_cast<std::size_t>(element) > type.getElements().size()) {
        throwInvalidIndex(type, element);
    }
    while (entries_.size() < static_cast<std::size_t>(element)) {
        addNext(table, type);
    }
    return element == 0 ? numbering_->first : entries_[static_cast<std::size_t>(element) - 1].end;
}

void ElementStarts::addNext(const DataTypeTable& table, const StructDataType& type) {
    const ElementSpan span = numbering_->span(table, *type.getElements()[entries_.size()]);
    const std::int64_t size = span.own + span.copies * span.copySize;
    entries_.push_back({span, std::min(end() + size, maxStart)});
}

} // namespace TVTypeSys
