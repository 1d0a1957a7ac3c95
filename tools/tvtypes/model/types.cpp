#include "model/types.h"

#include "model/base_types.h"
#include "model/library_errors.h"

#include <string>

namespace tvtool::model {

namespace {

using exchange::BaseType;
using findings::Code;

std::unordered_set<std::string_view> declaredNames(const fmi::Description& description) {
    std::unordered_set<std::string_view> names;
    for (const fmi::TypeDefinition& type : description.types) {
        names.insert(type.name);
    }
    return names;
}

/// Returns the id from `registerType`, or INVALID_DATA_TYPE_ID, with a finding, if it throws.
template <class Register>
int idOrProblem(const exchange::Place& place, findings::Subject subject,
                findings::Findings& findings, Register registerType) {
    try {
        return registerType();
    } catch (const fnd::except::IException& error) {
        findings.add(Code::TypeRejected, place, subject, "{}", problemText(error));
        return INVALID_DATA_TYPE_ID;
    }
}

} // namespace

Types::Types(const fmi::Description& description, findings::Findings& findings)
    : findings_(findings), names_(table_, declaredNames(description)) {
    std::vector<int> definitionIds;
    definitionIds.reserve(description.types.size());
    for (const fmi::TypeDefinition& type : description.types) {
        definitionIds.push_back(define(type));
    }
    variableIds_.reserve(description.variables.size());
    for (const fmi::Variable& variable : description.variables) {
        variableIds_.push_back(variable.type != exchange::noIndex
                                   ? definitionIds[variable.type]
                                   : baseTypeId(variable.base, variable.place));
    }
}

int Types::define(const fmi::TypeDefinition& type) {
    const bool isEnumeration = type.base == BaseType::Enumeration;
    const int target = baseTypeId(type.base, type.place);
    if (target == INVALID_DATA_TYPE_ID) {
        return INVALID_DATA_TYPE_ID;
    }
    const std::string name = names_.freeName(type.name);
    const int id =
        idOrProblem(type.place, {findings::SubjectKind::Type, type.name}, findings_, [&] {
            return isEnumeration
                       ? registerEnumeration(table_, name)
                       : table_.registerAliasDataType(name.c_str(), modelSource, target, nullptr);
        });
    if (id != INVALID_DATA_TYPE_ID) {
        setOriginalName(id, type.name);
    }
    return id;
}

int Types::baseTypeId(BaseType base, const exchange::Place& place) {
    return isOutside(base) || base == BaseType::None
               ? INVALID_DATA_TYPE_ID
               : idOrProblem(place, {}, findings_, [&] { return model::baseTypeId(table_, base); });
}

StructDataType& Types::addStruct(std::string_view name) {
    const int id =
        table_.registerStructDataType(names_.freeName(name).c_str(), modelSource, nullptr);
    return static_cast<StructDataType&>(typeRecord(table_, id));
}

std::string Types::originalName(int id) const {
    const auto original = originalNames_.find(id);
    return original == originalNames_.end() ? "" : original->second;
}

void Types::setOriginalName(int id, std::string_view name) {
    if (name != typeRecord(table_, id).getName()) {
        originalNames_.emplace(id, name);
    }
}

} // namespace tvtool::model
