#include "model/memory_map.h"

#include "model/path.h"
#include "text/quote.h"

#include <tvtypes/elementaccess.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace tvtool::model {

namespace {

using TVTypeSys::DataType;
using TVTypeSys::DataTypeTable;

constexpr std::size_t listedNames = 5;

bool isStruct(const DataType& type) { return type.getIsType(TVTypeSys::DataTypeQualifierStruct); }

/// Makes the rows of one struct type in one pass over the depth-first nodes. A stack holds the open
/// structs with the first node after each, so that a node takes constant time at any depth.
class Mapper {
  public:
    /// \param instance a struct of this type, whose names the rows have
    Mapper(const Model& model, int id, std::uint32_t instance)
        : structs_(model.structs),
          table_(model.types.table()),
          instance_(instance),
          nodes_(&table_, id),
          leaves_(&table_, id) {}

    std::vector<LayoutRow> rows() {
        const int count = nodes_.getNumElements();
        rows_.reserve(static_cast<std::size_t>(count));
        for (int node = 0; node < count; ++node) {
            addNode(node);
            while (!open_.empty() && open_.back().end == node + 1) {
                const int endOffset = open_.back().endOffset;
                open_.pop_back();
                endElement(endOffset);
            }
        }
        return std::move(rows_);
    }

  private:
    /// A struct or an array of structs of which more nodes follow.
    struct Open {
        RowKind kind = RowKind::Struct;
        int typeId = 0;
        int end = 0;       ///< the first node after it
        int endOffset = 0; ///< the first byte after it
        int next = 0;      ///< the index of the next element
        std::string_view name;
        std::vector<Structs::Element> elements; ///< of a struct
        std::vector<std::uint32_t> instances;   ///< of an array, in memory order
    };

    /// Returns the part of the innermost open struct or array that is next in memory.
    Structs::Element nextPart() const {
        if (open_.empty()) {
            return {{}, exchange::noIndex, instance_};
        }
        const Open& open = open_.back();
        const auto next = static_cast<std::size_t>(open.next);
        if (open.kind == RowKind::Struct) {
            return open.elements[next];
        }
        const Instance& instance = structs_.names().instances[open.instances[next]];
        return {instance.text, instance.member, open.instances[next]};
    }

    void addNode(int node) {
        const int typeId = nodes_.getDataTypeId(node);
        const DataType& type = *table_.getDataTypeAliasedThruTo(typeId);
        const int width = nodes_.getWidth(node);
        const Structs::Element part = nextPart();
        LayoutRow& row = rows_.emplace_back();
        row.kind = !isStruct(type) ? RowKind::Leaf
                   : width > 1     ? RowKind::StructArray
                                   : RowKind::Struct;
        row.depth = static_cast<int>(open_.size());
        row.offset = nodes_.getOffset(node);
        row.size = type.getSize() * (isStruct(type) ? width : nodes_.getComplexWidth(node));
        row.name = text::shortened(part.name);
        row.path = path(part.name);
        row.type = typeText(typeId, row.kind, node);
        row.dfs = node;
        if (flat_ < leaves_.getNumElements() && leaves_.getDFSIdx(flat_) == node) {
            row.flat = flat_++;
            row.raw = nodes_.getRawElementIdx(node);
        }
        const int endOffset = row.offset + row.size;
        if (row.kind == RowKind::Leaf) {
            endElement(endOffset);
            return;
        }
        const auto& record = static_cast<const StructDataType&>(type);
        const int nodes = record.getNumDFSElements();
        Open& open = open_.emplace_back();
        open.kind = row.kind;
        open.typeId = typeId;
        open.end = node + (width > 1 ? 1 + width * nodes : nodes);
        open.endOffset = endOffset;
        open.name = part.name;
        if (row.kind == RowKind::Struct) {
            open.elements = structs_.elementsOf(part.instance, record);
        } else {
            const NameTree& names = structs_.names();
            open.instances = arrayOrder(names, names.members[part.member]);
        }
    }

    std::string typeText(int typeId, RowKind kind, int node) {
        std::string text = typeRecord(table_, typeId).getName();
        const int count = nodes_.getNumDimensions(node);
        const int* const sizes = nodes_.getDimensions(node);
        // A struct that is not in an array has one dimension of 1.
        if (count > 0 && kind != RowKind::Struct) {
            text += fmt::format("[{}]", fmt::join(sizes, sizes + count, ","));
        }
        return text::shortened(text);
    }

    std::string path(std::string_view name) const {
        PathEnd end;
        bool hasRoom = end.prepend(name);
        for (std::size_t i = open_.size(); hasRoom && i > 1; --i) {
            // The names of the elements of an array contain that of the array.
            if (open_[i - 1].kind == RowKind::Struct) {
                hasRoom = end.prepend(open_[i - 1].name);
            }
        }
        return end.text();
    }

    /// Advances the open struct past an element that ends at this byte, and adds its padding.
    void endElement(int endOffset) {
        if (open_.empty()) {
            return;
        }
        const auto element = static_cast<std::size_t>(open_.back().next++);
        if (open_.back().kind == RowKind::StructArray) {
            return;
        }
        if (const int padding = paddings(open_.back().typeId)[element]; padding > 0) {
            LayoutRow& row = rows_.emplace_back();
            row.kind = RowKind::Padding;
            row.depth = static_cast<int>(open_.size());
            row.offset = endOffset;
            row.size = padding;
        }
    }

    const std::vector<int>& paddings(int typeId) {
        const auto [entry, isNew] = paddings_.try_emplace(typeId);
        if (isNew) {
            TVTypeSys::ImmediateElementAccess elements(&table_, typeId);
            for (int i = 0; i < elements.getNumElements(); ++i) {
                entry->second.push_back(elements.getPadding(i));
            }
        }
        return entry->second;
    }

    const Structs& structs_;
    const DataTypeTable& table_;
    const std::uint32_t instance_;
    TVTypeSys::DFSElementAccess nodes_;
    TVTypeSys::FlatElementAccess leaves_;
    std::unordered_map<int, std::vector<int>> paddings_; ///< by struct type and element
    std::vector<Open> open_;
    int flat_ = 0;
    std::vector<LayoutRow> rows_;
};

/// \param path of a struct of the type; empty for the first one
StructMap makeMap(const Model& model, const Structs::Type& type, std::uint32_t instance,
                  std::string path) {
    const auto& record =
        static_cast<const StructDataType&>(typeRecord(model.types.table(), type.id));
    return {type.id,
            record.getName(),
            model.types.originalName(type.id),
            std::move(path),
            record.getSize(),
            type.alignment,
            record.getNumElements(),
            record.getNumFlatElements(),
            record.getNumRawElements(),
            Mapper(model, type.id, instance).rows()};
}

StructMap makeMap(const Model& model, const Structs::Type& type) {
    return makeMap(model, type, type.first, model.structs.path(type.first));
}

std::string unknownStructText(const Model& model, const std::string& name) {
    const std::vector<Structs::Type>& all = model.structs.all();
    if (all.empty()) {
        return fmt::format("there is no struct {}, nor any other", text::quoted(name));
    }
    std::vector<std::string> names;
    for (std::size_t i = 0; i < std::min(listedNames, all.size()); ++i) {
        names.push_back(model.structs.path(all[i].first));
    }
    const std::size_t more = all.size() - names.size();
    return fmt::format("there is no struct {}; there {} {}{}", text::quoted(name),
                       all.size() == 1 ? "is" : "are", fmt::join(names, ", "),
                       more == 0 ? "" : fmt::format(" and {} more", more));
}

} // namespace

const char* kindName(RowKind kind) {
    constexpr const char* names[] = {"struct", "structArray", "leaf", "padding"};
    return names[static_cast<std::size_t>(kind)];
}

std::string StructMap::heading() const {
    return path == name ? name : fmt::format("{} ({})", path, name);
}

std::size_t MemoryMaps::problems() const {
    return static_cast<std::size_t>(std::ranges::count_if(findings, [](const auto& finding) {
        return ruleOf(finding.code).severity != findings::Severity::Note;
    }));
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

MemoryMaps mapStructs(const Model& model, std::string file, const std::string& name) {
    MemoryMaps maps{std::move(file), model.description->hasStructuredNames, {}, {}};
    std::ranges::copy_if(model.findings.all(), std::back_inserter(maps.findings),
                         [](const findings::Finding& finding) {
                             return ruleOf(finding.code).area == findings::Area::Struct;
                         });
    const Structs& structs = model.structs;
    if (name.empty()) {
        for (const Structs::Type& type : structs.all()) {
            if (type.isOutermost) {
                maps.structs.push_back(makeMap(model, type));
            }
        }
        return maps;
    }
    const std::uint32_t instance = findInstance(structs.names(), name);
    if (const Structs::Type* const type = structs.typeOf(instance)) {
        maps.structs.push_back(makeMap(model, *type, instance, text::shortened(name)));
    } else if (const Structs::Type* const named =
                   structs.find(model.types.table().getDataTypeId(name.c_str()))) {
        maps.structs.push_back(makeMap(model, *named));
    } else {
        throw UnknownStruct(unknownStructText(model, name));
    }
    return maps;
}

} // namespace tvtool::model
