#include "model/structs.h"

#include "model/library_errors.h"
#include "model/path.h"
#include "model/struct_elements.h"
#include "text/quote.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace tvtool::model {

namespace {

using exchange::noIndex;
using findings::Code;
using findings::SubjectKind;

/// A limit of memory, far above the models of today.
constexpr std::size_t mostTypes = 100'000;

/// Replaces each sequence of punctuation in a path by an underscore: wheel[1].hub gives
/// wheel_1_hub.
std::string joinWithUnderscores(std::string_view path) {
    std::string name;
    bool isGap = false;
    for (const char c : path) {
        if (c != '_' && std::ispunct(static_cast<unsigned char>(c)) != 0) {
            isGap = !name.empty();
            continue;
        }
        name += isGap ? "_" : "";
        name += c;
        isGap = false;
    }
    return name;
}

} // namespace

Structs::Structs(const fmi::Description& description, const Units& units, Types& types,
                 findings::Findings& findings) {
    if (!description.hasStructuredNames) {
        return;
    }
    tree_ = buildNameTree(description, findings);
    shapes_ = findShapes(description, tree_, types.variableIds(), units, findings);
    if (shapes_.all.size() > mostTypes) {
        findings.add(Code::StructLimit, {}, {},
                     "there are more than {} struct types, so none is laid out", mostTypes);
        shapes_.all.clear();
        std::ranges::fill(shapes_.ofInstance, noIndex);
    }
    StructLayout layout(types.table());
    for (const Shape& shape : shapes_.all) {
        add(shape, description, types, findings, layout);
    }
}

void Structs::add(const Shape& shape, const fmi::Description& description, Types& types,
                  findings::Findings& findings, StructLayout& layout) {
    typeOfShape_.push_back(noIndex);
    std::vector<ShapeElement> elements = shape.elements;
    std::erase_if(elements, [this](const ShapeElement& element) {
        return element.isStruct && typeOfShape_[static_cast<std::size_t>(element.type)] == noIndex;
    });
    if (elements.empty()) {
        return;
    }
    const std::string original = path(shape.first);
    StructDataType& type = types.addStruct(joinWithUnderscores(original));
    const auto giveUp = [&](const std::string& reason) {
        findings.add(Code::StructRejected,
                     description.variables[tree_.instances[shape.first].firstVariable].place,
                     {SubjectKind::Struct, original}, "struct {} cannot be laid out: {}",
                     text::quoted(original), reason);
        types.table().removeDataType(&type);
    };
    try {
        setElements(type, elements);
        layout.layOut(type);
    } catch (const LayoutError& error) {
        return giveUp(error.what());
    } catch (const fnd::except::IException& error) {
        return giveUp(problemText(error));
    }
    types.setOriginalName(type.getId(), original);
    for (const ShapeElement& element : elements) {
        if (element.isStruct) {
            nestedType(element).isOutermost = false;
        }
    }
    typeOfShape_.back() = static_cast<std::uint32_t>(all_.size());
    all_.push_back(
        {type.getId(), layout.alignmentOf(type.getId()), shape.variables, true, shape.first});
}

void Structs::setElements(StructDataType& type, const std::vector<ShapeElement>& elements) {
    std::vector<TypeElement> ofType;
    for (const ShapeElement& element : elements) {
        ofType.push_back({element.name, element.isStruct ? nestedType(element).id : element.type,
                          element.unit, element.dimensions});
    }
    model::setElements(type, ofType);
}

const Structs::Type* Structs::find(int id) const {
    const auto type = std::ranges::lower_bound(all_, id, {}, &Type::id);
    return type != all_.end() && type->id == id ? &*type : nullptr;
}

const Structs::Type* Structs::typeOf(std::uint32_t instance) const {
    const std::uint32_t shape = instance == noIndex ? noIndex : shapes_.ofInstance[instance];
    const std::uint32_t type = shape == noIndex ? noIndex : typeOfShape_[shape];
    return type == noIndex ? nullptr : &all_[type];
}

std::vector<Structs::Element> Structs::elementsOf(std::uint32_t instance,
                                                  const StructDataType& type) const {
    std::vector<std::pair<std::string_view, Element>> byName;
    for (std::uint32_t m = tree_.instances[instance].firstMember; m != noIndex;
         m = tree_.members[m].nextMember) {
        const Member& member = tree_.members[m];
        const bool isArray = shapes_.isArray[m];
        std::uint32_t i = member.firstInstance;
        do {
            const std::string_view text = tree_.instances[i].text;
            const bool isSingle = !isArray || member.instances == 1;
            byName.push_back({isArray ? member.name : text, {isSingle ? text : member.name, m, i}});
            i = tree_.instances[i].nextInstance;
        } while (!isArray && i != noIndex);
    }
    constexpr auto name = &std::pair<std::string_view, Element>::first;
    std::ranges::sort(byName, {}, name);
    std::vector<Element> elements;
    for (const StructElement* const element : type.getElements()) {
        elements.push_back(
            std::ranges::lower_bound(byName, std::string_view(element->name), {}, name)->second);
    }
    return elements;
}

std::vector<std::vector<std::uint32_t>> Structs::instances() const {
    std::vector<std::vector<std::uint32_t>> ofType(all_.size());
    // Whether an instance and those that contain it are the first ones of their arrays. An instance
    // is behind the one that contains it.
    std::vector<bool> isFirst(tree_.instances.size(), true);
    for (std::uint32_t i = 1; i < isFirst.size(); ++i) {
        const Member& member = tree_.members[tree_.instances[i].member];
        isFirst[i] = isFirst[member.owner] &&
                     (!shapes_.isArray[tree_.instances[i].member] || member.firstInstance == i);
        const std::uint32_t shape = shapes_.ofInstance[i];
        if (isFirst[i] && shape != noIndex && typeOfShape_[shape] != noIndex) {
            ofType[typeOfShape_[shape]].push_back(i);
        }
    }
    return ofType;
}

std::string Structs::path(std::uint32_t instance) const {
    PathEnd end;
    for (bool hasRoom = true; hasRoom && instance != 0;) {
        const Instance& step = tree_.instances[instance];
        const Member& member = tree_.members[step.member];
        hasRoom = end.prepend(shapes_.isArray[step.member] ? member.name : step.text);
        instance = member.owner;
    }
    return end.text();
}

} // namespace tvtool::model
