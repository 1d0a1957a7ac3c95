/// \file
/// Resolution of an index to the innermost struct around it, by the positions that a view keeps.
#pragma once

#include "structs/element_starts.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace TVTypeSys {

/// Root of a walk: a struct type, and the id (of the type or an alias) that the view has for it.
struct Root {
    StructDataType& type;
    int typeId;
};

/// Returns the struct type of a view as a root. Throws InvalidDataTypeId if it is not a struct.
Root findRoot(const DataTypeTable& table, int typeId);

/// One of the two kinds of offsets, and the fields that hold it.
struct OffsetKind {
    int StructElement::*ofElement; ///< from the start of the struct that has the element
    int DFSElementCache::*ofNode;  ///< from the start of the struct that caches the node
    std::size_t index;             ///< in Level::deepOffsets
    bool differsByCopy;            ///< whether each copy in an array of structs has its own
};

extern const OffsetKind byteOffset;
extern const OffsetKind varDimsOffset;

/// Returns the offset of copy `copy` of a type from the first copy.
int copyOffset(const DataTypeTable& table, const OffsetKind& kind, int typeId, int copy);

/// Struct on the path from the root to an index. Indices are those of the root.
struct Level {
    StructDataType* type = nullptr;
    std::uint64_t version = 0; ///< of `type`
    int typeId = 0;            ///< id that the element around it has for the type
    int element = -1;          ///< index of that element; -1 for the root
    int copy = 0;              ///< index in an array of structs, else 0
    int start = 0;             ///< first index
    std::int64_t end = 0;      ///< index behind the last one
    /// Offsets from the start of level `ElementWalk::maxShallow - 1`; 0 up to there.
    int deepOffsets[2] = {0, 0};
};

/// Position of an index: an element of the innermost struct around it, or that struct itself.
struct Place {
    StructDataType* type = nullptr; ///< innermost struct
    int element = -1;               ///< element of `type`; -1 for the struct itself
    int typeId = 0;                 ///< type of the element, or of the struct itself
    int start = 0;                  ///< first index of the element in the root
};

/// Walks over one numbering of a struct. It keeps where the elements of each struct type start, and
/// the path to the last index: memory is proportional to the elements and to the depth, and reading
/// indices in ascending or descending order takes one step for each nested struct.
class ElementWalk {
  public:
    /// Number of levels whose offsets each read takes from the elements; those of deeper levels are
    /// kept with the path, since reading all nodes would take quadratic time otherwise.
    static constexpr std::size_t maxShallow = 16;

    explicit ElementWalk(const Numbering& numbering) : numbering_(numbering) {}

    /// Returns a number that changes with the elements and counts of a type, and that no two types
    /// have in common.
    static std::uint64_t version(const StructDataType& type) { return type.layoutVersion_; }

    /// Finds the place of an index. Throws InvalidStructIndex, also for an index below 0.
    Place find(const DataTypeTable& table, const Root& root, int index);

    /// Returns the path to the last index that was found: the root first, the innermost struct
    /// last.
    const std::vector<Level>& path() const { return path_; }

    /// Returns the offset of a level of the path from the start of the level above it.
    /// \pre `level` is above 0.
    int offsetInParent(const DataTypeTable& table, const OffsetKind& kind, std::size_t level) const;

    /// Returns the offset of the innermost struct of the path from the start of the root.
    int pathOffset(const DataTypeTable& table, const OffsetKind& kind) const;

    /// Returns where the elements of a type start. Valid until the next call of a function of this
    /// object.
    ElementStarts& starts(const StructDataType& type);

  private:
    bool isPathCurrent(const DataTypeTable& table) const;
    void enter(const DataTypeTable& table, const Step& step);

    struct TypeStarts {
        std::uint64_t version;
        ElementStarts starts;
    };

    const Numbering& numbering_;
    boost::unordered_flat_map<const StructDataType*, TypeStarts> starts_;
    std::vector<Level> path_;
};

/// Positions that a view keeps between calls.
struct ViewPositions {
    explicit ViewPositions(const StructDataType& root)
        : type(&root), version(ElementWalk::version(root)) {}

    /// Returns the positions in `kept`, made anew if the root has got other elements or counts.
    static ViewPositions& get(std::shared_ptr<ViewPositions>& kept, const Root& root) {
        if (kept == nullptr || kept->type != &root.type ||
            kept->version != ElementWalk::version(root.type)) {
            kept = std::make_shared<ViewPositions>(root.type);
        }
        return *kept;
    }

    const StructDataType* type;
    std::uint64_t version;
    ElementWalk depthFirst{depthFirstNumbering};
    ElementWalk raw{rawNumbering};

    /// Number of scalars before the depth-first node of the last call that counted them.
    struct {
        int node = 0;
        unsigned scalars = 0;
    } counted;
    std::optional<unsigned> scalarsOfInstance; ///< number of scalars of the whole struct
};

} // namespace TVTypeSys
