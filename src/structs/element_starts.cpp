#include "structs/element_starts.h"

#include "structs/element_properties.h"

#include <algorithm>

namespace TVTypeSys {

namespace {

// Clamps starts, so that sums cannot overflow; above every index.
constexpr std::int64_t maxStart = std::int64_t{1} << 40;

// Room for the entries of most structs, so that they are allocated once.
constexpr std::size_t initialCapacity = 8;

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
    if (index < numbering_->first || index >= end()) {
        throwInvalidIndex(type, index);
    }
    // Indices are mostly read in ascending order.
    if (index >= entries_[lastFound_].end) {
        ++lastFound_;
    }
    if (index < startOf(lastFound_) || index >= entries_[lastFound_].end) {
        const auto found = std::ranges::upper_bound(entries_, index, {}, &Entry::end);
        lastFound_ = static_cast<std::size_t>(found - entries_.begin());
    }
    const ElementSpan& span = entries_[lastFound_].span;
    const auto element = static_cast<int>(lastFound_);
    const int typeId = requireElement(type, element).dataTypeId;
    const auto start = static_cast<int>(startOf(lastFound_));
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
    return startOf(static_cast<std::size_t>(element));
}

void ElementStarts::addNext(const DataTypeTable& table, const StructDataType& type) {
    const std::vector<StructElement*>& elements = type.getElements();
    if (entries_.empty()) {
        entries_.reserve(std::min(elements.size(), initialCapacity));
    }
    const ElementSpan span = numbering_->span(table, *elements[entries_.size()]);
    const std::int64_t size = span.own + span.copies * span.copySize;
    entries_.push_back({span, std::min(end() + size, maxStart)});
}

} // namespace TVTypeSys
