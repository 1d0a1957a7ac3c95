// Checks that the parts of a description agree.
#include "fmi/description_checks.h"
#include "fmi/reader.h"
#include "text/quote.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <vector>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using findings::Subject;
using findings::SubjectKind;
using text::quoted;

Subject subjectOf(const Variable& variable) { return {SubjectKind::Variable, variable.name}; }

/// The line of the first occurrence of each key.
template <class Key>
class FirstLines {
  public:
    explicit FirstLines(std::size_t expected) { lines_.reserve(expected); }

    /// Adds a key. Returns the line of an equal one, or 0 if it is the first.
    std::uint64_t add(const Key& key, std::uint64_t line) {
        const auto [entry, isNew] = lines_.try_emplace(key, line);
        return isNew ? 0 : entry->second;
    }

    /// Returns the line of a key, or 0.
    std::uint64_t find(const Key& key) const {
        const auto entry = lines_.find(key);
        return entry == lines_.end() ? 0 : entry->second;
    }

  private:
    boost::unordered_flat_map<Key, std::uint64_t, std::hash<Key>> lines_;
};

/// Erases all but the first record of each name.
template <class Record>
void eraseRepeated(std::vector<Record>& records, Code code, SubjectKind kind, const char* kindText,
                   Findings& findings) {
    FirstLines<std::string_view> names(records.size());
    std::erase_if(records, [&](const Record& record) {
        const std::uint64_t line = names.add(record.name, record.place.line);
        if (line != 0) {
            findings.add(code, record.place, {kind, record.name},
                         "{} {} is defined on line {} already", kindText, quoted(record.name),
                         line);
        }
        return line != 0;
    });
}

void checkItems(const TypeDefinition& type, Findings& findings) {
    const Subject subject{SubjectKind::Type, type.name};
    FirstLines<std::string_view> names(type.items.size());
    FirstLines<std::int64_t> values(type.items.size());
    for (const exchange::Item& item : type.items) {
        if (item.name.empty()) {
            continue;
        }
        if (const std::uint64_t line = names.add(item.name, item.place.line)) {
            findings.add(Code::ItemRepeated, item.place, subject,
                         "type {} has item {} on line {} already", quoted(type.name),
                         quoted(item.name), line);
        }
        const std::uint64_t line = item.value ? values.add(*item.value, item.place.line) : 0;
        if (line != 0) {
            findings.add(Code::ItemValueRepeated, item.place, subject,
                         "item {} of type {} has value {}, as the one on line {}",
                         quoted(item.name), quoted(type.name), *item.value, line);
        }
    }
}

void checkNames(const Description& description, Findings& findings) {
    FirstLines<std::string_view> names(description.variables.size() + description.aliases.size());
    const auto check = [&](const auto& named) {
        const std::uint64_t line = names.add(named.name, named.place.line);
        if (line != 0) {
            findings.add(Code::NameRepeated, named.place, {SubjectKind::Variable, named.name},
                         "name {} is that of line {} too", quoted(named.name), line);
        }
    };
    std::ranges::for_each(description.variables, check);
    std::ranges::for_each(description.aliases, check);
    for (const TypeDefinition& type : description.types) {
        if (const std::uint64_t line = names.find(type.name)) {
            findings.add(Code::TypeNamedAsVariable, type.place, {SubjectKind::Type, type.name},
                         "type {} has the name of the variable on line {}", quoted(type.name),
                         line);
        }
    }
}

/// Variables with the same value reference are aliases in FMI 2 and invalid in FMI 3.
void checkValueReferences(const Description& description, Findings& findings) {
    FirstLines<std::uint32_t> references(description.variables.size());
    for (const Variable& variable : description.variables) {
        const std::uint64_t line =
            variable.hasValueReference
                ? references.add(variable.valueReference, variable.place.line)
                : 0;
        if (line != 0) {
            findings.add(Code::ValueReferenceRepeated, variable.place, subjectOf(variable),
                         "variable {} has valueReference {}, as the one on line {}",
                         quoted(variable.name), variable.valueReference, line);
        }
    }
}

void resolveDeclaredTypes(Description& description, Findings& findings) {
    std::unordered_map<std::string_view, std::uint32_t> indices;
    for (const TypeDefinition& type : description.types) {
        indices.emplace(type.name, static_cast<std::uint32_t>(indices.size()));
    }
    const auto baseName = [&](BaseType base) {
        return exchange::baseTypeName(base, description.majorVersion);
    };
    for (Variable& variable : description.variables) {
        const std::string_view declared = variable.declaredType.value_or("");
        const auto found = variable.declaredType ? indices.find(declared) : indices.end();
        const BaseType base =
            found == indices.end() ? BaseType::None : description.types[found->second].base;
        if (!variable.declaredType) {
            if (variable.base == BaseType::Enumeration) {
                findings.add(Code::DeclaredTypeMissing, variable.place, subjectOf(variable),
                             "enumeration variable {} has no declaredType", quoted(variable.name));
            }
        } else if (found == indices.end()) {
            findings.addWithCause(Code::DeclaredTypeUndefined, variable.place, subjectOf(variable),
                                  declared, "variable {} declares type {}, which is not defined",
                                  quoted(variable.name), quoted(declared));
        } else if (base != variable.base) {
            findings.addWithCause(Code::DeclaredTypeMismatch, variable.place, subjectOf(variable),
                                  declared, "variable {} is {} and declares type {}, which is {}",
                                  quoted(variable.name), baseName(variable.base), quoted(declared),
                                  baseName(base));
        } else {
            variable.type = found->second;
        }
    }
}

} // namespace

void checkDescription(Description& description, Findings& findings) {
    if (description.majorVersion == 1) {
        return;
    }
    eraseRepeated(description.types, Code::TypeRepeated, SubjectKind::Type, "type", findings);
    for (const TypeDefinition& type : description.types) {
        checkItems(type, findings);
    }
    checkNames(description, findings);
    if (description.majorVersion == 3) {
        checkValueReferences(description, findings);
    }
    resolveDeclaredTypes(description, findings);
    checkCausalities(description, findings);
    checkLimits(description, findings);
    checkReferences(description, findings);
    eraseRepeated(description.units, Code::UnitRepeated, SubjectKind::Unit, "unit", findings);
    for (exchange::UnitDefinition& unit : description.units) {
        eraseRepeated(unit.displayUnits, Code::DisplayUnitRepeated, SubjectKind::DisplayUnit,
                      "display unit", findings);
    }
    resolveUnits(description, findings);
}

} // namespace tvtool::fmi
