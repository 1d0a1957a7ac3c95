#include "model/structs.h"

#include "model/path.h"
#include "text/quote.h"

#include <fnd/except.h>
#include <fndut/alloc.h>

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <new>
#include <string>

namespace tvtool::model {

namespace {

using fmi::noIndex;

bool isSign(char c) { return c != '_' && std::ispunct(static_cast<unsigned char>(c)) != 0; }

/// A path with its signs made underscores, several in a row one: wheel[1].hub gives wheel_1_hub.
std::string joined(std::string_view path) {
    std::string name;
    bool isGap = false;
    for (const char c : path) {
        if (isSign(c)) {
            isGap = !name.empty();
            continue;
        }
        name += isGap ? "_" : "";
        name += c;
        isGap = false;
    }
    return name;
}

int* keptDimensions(const std::vector<int>& sizes) {
    if (sizes.empty()) {
        return nullptr;
    }
    auto* const kept = static_cast<int*>(utMalloc(sizes.size() * sizeof(int)));
    if (kept == nullptr) {
        throw std::bad_alloc();
    }
    std::ranges::copy(sizes, kept);
    return kept;
}

} // namespace

Structs::Structs(const fmi::Description& description, const VariableIds& variableIds, Types& types,
                 fmi::Remarks& remarks) {
    if (!description.hasStructuredNames) {
        return;
    }
    tree_ = growNameTree(description, remarks);
    shapes_ = findShapes(description, tree_, variableIds, remarks);
    StructLayout layout(types.table());
    for (const Shape& shape : shapes_.all) {
        make(shape, description, types, remarks, layout);
    }
}

void Structs::make(const Shape& shape, const fmi::Description& description, Types& types,
                   fmi::Remarks& remarks, StructLayout& layout) {
    typeOfShape_.push_back(noIndex);
    std::vector<ShapeElement> elements = shape.elements;
    std::erase_if(elements, [this](const ShapeElement& element) {
        return element.isStruct && typeOfShape_[static_cast<std::size_t>(element.type)] == noIndex;
    });
    if (elements.empty()) {
        return;
    }
    const std::string path = pathOf(shape.first);
    StructDataType& type = types.addStruct(joined(path));
    const auto giveUp = [&](const char* reason) {
        remarks.problem(
            description.variables[tree_.instances[shape.first].bringer].place,
            fmt::format("struct {} cannot be laid out: {}", text::quoted(path), reason));
        types.table().removeDataType(&type);
    };
    try {
        fill(type, elements);
        layout.layOut(type);
    } catch (const LayoutError& error) {
        return giveUp(error.what());
    } catch (const fnd::except::IException& refusal) {
        return giveUp(refusal.what());
    }
    types.setOriginalName(type.getId(), path);
    for (const ShapeElement& element : elements) {
        if (element.isStruct) {
            all_[typeOfShape_[static_cast<std::size_t>(element.type)]].isOutermost = false;
        }
    }
    typeOfShape_.back() = static_cast<std::uint32_t>(all_.size());
    all_.push_back({type.getId(), layout.alignmentOf(type.getId()), shape.variables});
}

void Structs::fill(StructDataType& type, const std::vector<ShapeElement>& elements) {
    type.setNumElements(static_cast<int>(elements.size()));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const ShapeElement& from = elements[i];
        StructElement& element = *type.getElements()[i];
        element.setName(std::string(from.name).c_str());
        element.setDataTypeId(
            from.isStruct ? all_[typeOfShape_[static_cast<std::size_t>(from.type)]].id : from.type);
        element.setUnitId(from.unit);
        element.setNumDimensions(static_cast<int>(from.dimensions.size()));
        element.setDimensions(keptDimensions(from.dimensions));
        element.setSignalType(0);
        element.setSamplingMode(0);
        element.setDimensionsMode(0);
    }
}

const Structs::Type* Structs::withId(int id) const {
    const auto type = std::ranges::lower_bound(all_, id, {}, &Type::id);
    return type != all_.end() && type->id == id ? &*type : nullptr;
}

const Structs::Type* Structs::at(std::string_view name) const {
    const std::uint32_t instance = findInstance(tree_, name);
    const std::uint32_t shape = instance == noIndex ? noIndex : shapes_.ofInstance[instance];
    const std::uint32_t type = shape == noIndex ? noIndex : typeOfShape_[shape];
    return type == noIndex ? nullptr : &all_[type];
}

std::string Structs::pathOf(std::uint32_t instance) const {
    PathEnd path;
    for (bool hasRoom = true; hasRoom && instance != 0;) {
        const Instance& at = tree_.instances[instance];
        const Member& member = tree_.members[at.member];
        hasRoom = path.prepend(shapes_.isArray[at.member] ? member.name : at.text);
        instance = member.owner;
    }
    return path.text();
}

} // namespace tvtool::model
