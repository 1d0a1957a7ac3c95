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
    const std::size_t count = type.getElements().size();
    while (starts_.back() <= index && spans_.size() < count) {
        addNext(table, type);
    }
    const auto end = std::ranges::upper_bound(starts_, index);
    if (end == starts_.begin() || end == starts_.end()) {
        throwInvalidIndex(type, index);
    }
    const auto element = static_cast<int>(end - starts_.begin()) - 1;
    const int typeId = requireElement(type, element).dataTypeId;
    const ElementSpan& span = spans_[static_cast<std::size_t>(element)];
    const auto start = static_cast<int>(*(end - 1));
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
    while (spans_.size() < static_cast<std::size_t>(element)) {
        addNext(table, type);
    }
    return starts_[static_cast<std::size_t>(element)];
}

void ElementStarts::clear() {
    spans_.clear();
    starts_.assign(1, numbering_.first);
}

void ElementStarts::addNext(const DataTypeTable& table, const StructDataType& type) {
    const ElementSpan span = numbering_.span(table, *type.getElements()[spans_.size()]);
    const std::int64_t size = span.own + span.copies * span.copySize;
    spans_.push_back(span);
    starts_.push_back(std::min(starts_.back() + size, maxStart));
}

} // namespace TVTypeSys
