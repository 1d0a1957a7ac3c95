#include "structs/walk.h"

#include "structs/element_properties.h"

#include <tvtypes/datatypetable.h>

#include <algorithm>
#include <limits>

namespace TVTypeSys {

Root findRoot(const DataTypeTable& table, int typeId) {
    return {requireStruct(table, typeId), typeId};
}

constinit const OffsetKind byteOffset{&StructElement::offset, &DFSElementCache::offset, 0, true};
constinit const OffsetKind varDimsOffset{&StructElement::varDimsOffset,
                                         &DFSElementCache::varDimsOffset, 1, false};

int copyOffset(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy) {
    return kind.differsByCopy && copy > 0
               ? truncateToInt(static_cast<long long>(copy) * typeSize(table, typeId))
               : 0;
}

Place ElementWalk::find(const DataTypeTable& table, const Root& root, int index) {
    if (index < 0) {
        throwInvalidIndex(root.type, index);
    }
    while (!path_.empty() && (index < path_.back().start || index >= path_.back().end)) {
        path_.pop_back();
    }
    if (path_.empty() || path_.front().typeId != root.typeId || !isPathCurrent(table)) {
        path_.clear();
        Level level;
        level.type = &root.type;
        level.version = version(root.type);
        level.typeId = root.typeId;
        level.end = std::numeric_limits<std::int64_t>::max();
        path_.push_back(level);
    }
    while (true) {
        const Level& level = path_.back();
        const int inLevel = index - level.start;
        if (inLevel < numbering_.first) {
            return {level.type, -1, level.typeId, level.start};
        }
        const Step step = starts(*level.type).find(table, *level.type, inLevel);
        if (!step.copy) {
            return {level.type, step.element, step.typeId, level.start + step.start};
        }
        // Detects a cycle: more levels than types means that a struct contains itself.
        if (path_.size() > static_cast<std::size_t>(table.getNumDataTypes())) {
            throwInvalidIndex(root.type, index);
        }
        enter(table, step);
    }
}

/// Returns whether the types that are read by the path (the shallow ones, the innermost one and the
/// one around it) are still those with their ids, with the same elements. A nested type may have
/// been replaced in the table since the last call.
bool ElementWalk::isPathCurrent(const DataTypeTable& table) const {
    const auto shallow = static_cast<std::ptrdiff_t>(std::min(path_.size(), maxShallow));
    const auto lastTwo = static_cast<std::ptrdiff_t>(path_.size()) - 2;
    const auto areCurrent = [&](const auto& find) {
        const auto isCurrent = [&find](const Level& level) {
            const StructDataType* const type = find(level.typeId);
            return type == level.type && version(*type) == level.version;
        };
        return std::all_of(path_.begin(), path_.begin() + shallow, isCurrent) &&
               std::all_of(path_.begin() + std::max(shallow, lastTwo), path_.end(), isCurrent);
    };
    // First without calls, which is enough for most paths.
    return areCurrent([lookup = StructLookup(table)](int id) { return lookup.find(id); }) ||
           areCurrent([&table](int id) {
               return table.isDataTypeIdValid(id) ? findStruct(table, id) : nullptr;
           });
}

/// Adds the level of a copy to the path.
void ElementWalk::enter(const DataTypeTable& table, const Step& step) {
    const Level& parent = path_.back();
    Level level;
    level.type = &requireStruct(table, step.typeId);
    level.version = version(*level.type);
    level.typeId = step.typeId;
    level.element = step.element;
    level.copy = *step.copy;
    level.start = parent.start + step.start;
    // Clients may set inconsistent counts: the range must stay within the parent.
    level.end = std::min(level.start + step.copySize, parent.end);
    if (path_.size() >= maxShallow) {
        for (const OffsetKind* kind : {&byteOffset, &varDimsOffset}) {
            const long long inParent =
                requireElement(*parent.type, step.element).*(kind->ofElement);
            level.deepOffsets[kind->index] =
                truncateToInt(parent.deepOffsets[kind->index] + inParent +
                              copyOffset(table, *kind, step.typeId, level.copy));
        }
    }
    path_.push_back(level);
}

int ElementWalk::offsetInParent(const DataTypeTable& table, const OffsetKind& kind,
                                std::size_t level) const {
    const Level& inner = path_[level];
    const long long inParent =
        requireElement(*path_[level - 1].type, inner.element).*kind.ofElement;
    return truncateToInt(inParent + copyOffset(table, kind, inner.typeId, inner.copy));
}

int ElementWalk::pathOffset(const DataTypeTable& table, const OffsetKind& kind) const {
    long long offset = path_.back().deepOffsets[kind.index];
    const std::size_t shallow = std::min(path_.size(), maxShallow);
    for (std::size_t level = 1; level < shallow; ++level) {
        offset += offsetInParent(table, kind, level);
    }
    return truncateToInt(offset);
}

ElementStarts& ElementWalk::starts(const StructDataType& type) {
    const auto found = starts_.find(&type);
    if (found != starts_.end() && found->second.version == version(type)) {
        return found->second.starts;
    }
    const TypeStarts none{version(type), ElementStarts(numbering_)};
    return starts_.insert_or_assign(&type, none).first->second.starts;
}

} // namespace TVTypeSys
