#include "systems/struct_types.h"

#include "fmi/structured_name.h"
#include "model/base_types.h"
#include "model/library_errors.h"
#include "model/struct_elements.h"

#include <fmt/format.h>

#include <algorithm>
#include <climits>
#include <iterator>

namespace tvtool::systems {

namespace {

/// The most parts of a name, so that the paths of its structs take linear time.
constexpr std::size_t mostParts = 32;

constexpr auto systemSource = static_cast<DataTypeSource>(2);

} // namespace

StructName structName(std::string_view connector) {
    fmi::StructuredName name;
    if (connector.find('.') == std::string_view::npos || fmi::parseName(connector, name) ||
        name.isDerivative || name.parts.size() < 2 || name.parts.size() > mostParts) {
        return {{}, connector};
    }
    const std::string_view element = name.parts.back().text;
    return {connector.substr(0, connector.size() - element.size() - 1), element};
}

const ConnectorStruct* StructTypes::find(const ssp::Element& owner, ssp::Kind kind,
                                         std::string_view path) {
    const Owner key{&owner, kind};
    const auto [entry, isNew] = structs_.try_emplace(key);
    if (isNew) {
        collect(key, entry->second);
    }
    const auto found = entry->second.find(path);
    return found == entry->second.end() ? nullptr : &found->second;
}

void StructTypes::collect(const Owner& owner, ByPath& structs) {
    std::unordered_map<std::string_view, std::vector<Member>> members;
    for (const ssp::Connector& connector : owner.first->connectors) {
        const StructName name = structName(connector.name);
        if (name.path.empty() || connector.kind != owner.second) {
            continue;
        }
        structs[name.path].connectors.push_back(&connector);
        members[name.path].push_back(memberOf(*owner.first, connector));
        // The structs around it.
        for (StructName outer = structName(name.path); !outer.path.empty();
             outer = structName(outer.path)) {
            members.try_emplace(outer.path);
        }
    }
    std::vector<std::string_view> paths;
    for (const auto& entry : members) {
        paths.push_back(entry.first);
    }
    // A struct before those around it.
    std::ranges::sort(paths, std::ranges::greater(),
                      [](std::string_view path) { return std::pair(path.size(), path); });
    for (const std::string_view path : paths) {
        const std::size_t shape = shapeOf(members[path]);
        structs[path].shape = shape;
        const StructName outer = structName(path);
        if (!outer.path.empty()) {
            members[outer.path].push_back(
                {outer.element, fmt::format("struct {}", shape), typeIds_[shape], {}});
        }
    }
}

StructTypes::Member StructTypes::memberOf(const ssp::Element& owner,
                                          const ssp::Connector& connector) {
    const End& end = connectors_.resolve(owner, connector.name);
    Member member{
        structName(connector.name).element,
        fmt::format("{} {} {}", static_cast<int>(end.base), end.typeId, end.dimensionText),
        end.typeId,
        {}};
    for (const ssp::Dimension& dimension : end.dimensions) {
        if (!dimension.size || *dimension.size > INT_MAX) {
            member.type = INVALID_DATA_TYPE_ID; // no size in the table
            return member;
        }
        member.sizes.push_back(static_cast<int>(*dimension.size));
    }
    return member;
}

std::size_t StructTypes::shapeOf(std::vector<Member> members) {
    std::ranges::sort(members, {}, &Member::name);
    std::string key;
    for (const Member& member : members) {
        // The lengths keep different names apart.
        key += fmt::format("{} {} {};", member.name.size(), member.name, member.key);
    }
    const auto [entry, isNew] = shapes_.try_emplace(std::move(key), typeIds_.size());
    if (isNew) {
        typeIds_.push_back(registerType(members));
    }
    return entry->second;
}

/// Returns INVALID_DATA_TYPE_ID if the table has no types for the members.
int StructTypes::registerType(const std::vector<Member>& members) {
    std::vector<model::TypeElement> elements;
    for (const Member& member : members) {
        if (member.type != INVALID_DATA_TYPE_ID) {
            elements.push_back({member.name, member.type, model::inheritedUnit, member.sizes});
        }
    }
    if (elements.empty()) {
        return INVALID_DATA_TYPE_ID;
    }
    TVTypeSys::DataTypeTable& table = types_.table();
    const std::string name = fmt::format("struct{}", typeIds_.size() + 1);
    const int id = table.registerStructDataType(name.c_str(), systemSource, nullptr);
    auto& type = static_cast<StructDataType&>(model::typeRecord(table, id));
    try {
        model::setElements(type, elements);
    } catch (const fnd::except::IException& error) {
        model::problemText(error); // throws if memory is exhausted
        table.removeDataType(&type);
        return INVALID_DATA_TYPE_ID;
    }
    return id;
}

} // namespace tvtool::systems
