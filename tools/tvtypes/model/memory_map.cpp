#include "model/memory_map.h"

#include "model/path.h"
#include "text/quote.h"

#include <tvtypes/elementaccess.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::model {

namespace {

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

constexpr std::size_t fewNames = 5;

/// Makes the rows of one struct type. The depth-first nodes say how far each struct reaches, so the
/// walk keeps those that are open, and each node costs a lookup, however deep it lies.
class Mapper {
  public:
    Mapper(const DataTypeTable& table, int id)
        : table_(table), nodes_(&table, id), leaves_(&table, id) {}

    std::vector<LayoutRow> rows() {
        const int count = nodes_.getNumElements();
        rows_.reserve(static_cast<std::size_t>(count));
        for (int node = 0; node < count; ++node) {
            add(node);
            while (!open_.empty() && open_.back().end == node + 1) {
                const Open closed = std::move(open_.back());
                open_.pop_back();
                endElement(closed.endOffset);
            }
        }
        return std::move(rows_);
    }

  private:
    /// A struct or an array of structs, of which more nodes follow.
    struct Open {
        RowKind kind = RowKind::Struct;
        int typeId = 0;
        int end = 0;       ///< the first node behind it
        int endOffset = 0; ///< the first byte behind it
        int next = 0;      ///< the element or the copy that comes next
        std::string name;
    };

    const DataType& typeOf(int id) const { return *table_.getDataTypeAliasedThruTo(id); }

    void add(int node) {
        const int typeId = nodes_.getDataTypeId(node);
        const DataType& type = typeOf(typeId);
        const bool isStruct = type.getIsType(TVTypeSys::DataTypeQualifierStruct);
        const int width = nodes_.getWidth(node);
        LayoutRow row;
        row.kind = !isStruct ? RowKind::Leaf : width > 1 ? RowKind::StructArray : RowKind::Struct;
        row.depth = static_cast<int>(open_.size());
        row.offset = nodes_.getOffset(node);
        row.dfs = node;
        row.type = typeText(typeId, node);
        row.name = nodes_.getName(node);
        if (!open_.empty() && open_.back().kind == RowKind::StructArray) {
            row.name += fmt::format("[{}]", open_.back().next);
        }
        row.size = type.getSize() * (isStruct ? width : nodes_.getComplexWidth(node));
        row.path = pathTo(row.name);
        if (flat_ < leaves_.getNumElements() && leaves_.getDFSIdx(flat_) == node) {
            row.flat = flat_++;
            row.raw = nodes_.getRawElementIdx(node);
        }
        const int endOffset = row.offset + row.size;
        if (!isStruct) {
            row.name = text::shortened(row.name);
            rows_.push_back(std::move(row));
            endElement(endOffset);
            return;
        }
        const int nodes = static_cast<const StructDataType&>(type).getNumDFSElements();
        open_.push_back({row.kind, typeId, node + (width > 1 ? 1 + width * nodes : nodes),
                         endOffset, 0, row.name});
        row.name = text::shortened(row.name);
        rows_.push_back(std::move(row));
    }

    std::string typeText(int typeId, int node) {
        std::string text = table_.getDataTypeAt(positionOf(typeId))->getName();
        const int count = nodes_.getNumDimensions(node);
        const int* const sizes = nodes_.getDimensions(node);
        // A struct that is none of an array has one dimension of 1.
        const bool isSingle = typeOf(typeId).getIsType(TVTypeSys::DataTypeQualifierStruct) &&
                              nodes_.getWidth(node) == 1;
        if (count > 0 && !isSingle) {
            text += fmt::format("[{}]", fmt::join(sizes, sizes + count, ","));
        }
        return text::shortened(text);
    }

    std::string pathTo(const std::string& name) const {
        PathEnd path;
        bool hasRoom = path.prepend(name);
        for (std::size_t i = open_.size(); hasRoom && i > 1; --i) {
            // The copies of an array have its name.
            if (open_[i - 1].kind == RowKind::Struct) {
                hasRoom = path.prepend(open_[i - 1].name);
            }
        }
        return path.text();
    }

    /// Goes on in the struct that is open, behind an element that ends at this byte.
    void endElement(int endOffset) {
        if (open_.empty()) {
            return;
        }
        const int element = open_.back().next++;
        if (open_.back().kind == RowKind::StructArray) {
            return;
        }
        const int padding = paddingsOf(open_.back().typeId)[static_cast<std::size_t>(element)];
        if (padding > 0) {
            LayoutRow row;
            row.kind = RowKind::Padding;
            row.depth = static_cast<int>(open_.size());
            row.offset = endOffset;
            row.size = padding;
            rows_.push_back(std::move(row));
        }
    }

    const std::vector<int>& paddingsOf(int typeId) {
        const auto [entry, isNew] = paddings_.try_emplace(typeId);
        if (isNew) {
            TVTypeSys::ImmediateElementAccess elements(&table_, typeId);
            for (int i = 0; i < elements.getNumElements(); ++i) {
                entry->second.push_back(elements.getPadding(i));
            }
        }
        return entry->second;
    }

    const DataTypeTable& table_;
    TVTypeSys::DFSElementAccess nodes_;
    TVTypeSys::FlatElementAccess leaves_;
    std::unordered_map<int, std::vector<int>> paddings_; ///< by element, by struct type
    std::vector<Open> open_;
    int flat_ = 0;
    std::vector<LayoutRow> rows_;
};

StructMap mapOf(const Model& model, const Structs::Type& type) {
    const DataTypeTable& table = model.types.table();
    StructMap map;
    map.id = type.id;
    map.name = table.getDataTypeAt(positionOf(type.id))->getName();
    map.originalName = model.types.originalNameOf(type.id);
    map.size = table.getDataTypeAt(positionOf(type.id))->getSize();
    map.alignment = type.alignment;
    map.elements = TVTypeSys::ImmediateElementAccess(&table, type.id).getNumElements();
    map.leaves = TVTypeSys::FlatElementAccess(&table, type.id).getNumElements();
    map.scalars = TVTypeSys::RawElementAccess(&table, type.id).getNumElements();
    map.rows = Mapper(table, type.id).rows();
    return map;
}

std::string unknown(const Model& model, const std::string& name) {
    const std::vector<Structs::Type>& all = model.structs.all();
    if (all.empty()) {
        return fmt::format("there is no struct type {}, nor any other", text::quoted(name));
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < std::min(fewNames, all.size()); ++i) {
        names.emplace_back(model.types.table().getDataTypeAt(positionOf(all[i].id))->getName());
    }
    const std::size_t more = all.size() - names.size();
    return fmt::format("there is no struct type {}; there {} {}{}", text::quoted(name),
                       all.size() == 1 ? "is" : "are", fmt::join(names, ", "),
                       more == 0 ? "" : fmt::format(" and {} more", more));
}

} // namespace

const char* kindName(RowKind kind) {
    switch (kind) {
    case RowKind::Struct:
        return "struct";
    case RowKind::StructArray:
        return "structArray";
    case RowKind::Leaf:
        return "leaf";
    case RowKind::Padding:
        return "padding";
    }
    return "";
}

std::string StructMap::summary() const {
    const auto count = [](int number, const char* one, const char* many) {
        return text::counted(static_cast<std::size_t>(number), one, many);
    };
    long long padding = 0;
    for (const LayoutRow& row : rows) {
        padding += row.kind == RowKind::Padding ? row.size : 0;
    }
    return fmt::format("{}, {} of padding, aligned to {}; {}, {}, {}", count(size, "byte", "bytes"),
                       padding == 0 ? "none" : std::to_string(padding), alignment,
                       count(elements, "element", "elements"), count(leaves, "leaf", "leaves"),
                       count(scalars, "scalar", "scalars"));
}

MemoryMaps mapStructs(const Model& model, const std::string& name) {
    MemoryMaps maps;
    maps.hasStructuredNames = model.description->hasStructuredNames;
    maps.problems = model.remarks.problems().size();
    if (!name.empty()) {
        const Structs::Type* type =
            model.structs.withId(model.types.table().getDataTypeId(name.c_str()));
        type = type == nullptr ? model.structs.at(name) : type;
        if (type == nullptr) {
            throw UnknownStruct(unknown(model, name));
        }
        maps.structs.push_back(mapOf(model, *type));
        return maps;
    }
    for (const Structs::Type& type : model.structs.all()) {
        if (type.isOutermost) {
            maps.structs.push_back(mapOf(model, type));
        }
    }
    return maps;
}

} // namespace tvtool::model
