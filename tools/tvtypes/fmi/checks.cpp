#include "fmi/checks.h"

#include "fmi/unit_checks.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace tvtool::fmi {

namespace {

/// Where a thing was met first, by the thing.
template <class Key>
class FirstLines {
  public:
    explicit FirstLines(std::size_t expected) { lines_.reserve(expected); }

    /// The line on which an equal one stood before, or 0.
    std::uint64_t enter(const Key& key, std::uint64_t line) {
        const auto [entry, isNew] = lines_.try_emplace(key, line);
        return isNew ? 0 : entry->second;
    }

  private:
    std::unordered_map<Key, std::uint64_t> lines_;
};

void checkItems(const TypeDefinition& type, Remarks& remarks) {
    FirstLines<std::string_view> names(type.items.size());
    FirstLines<std::int32_t> values(type.items.size());
    for (const Item& item : type.items) {
        if (item.name.empty()) {
            continue;
        }
        if (const std::uint64_t line = names.enter(item.name, item.place.line)) {
            remarks.problem(item.place,
                            fmt::format("type {} has item {} on line {} already",
                                        text::quoted(type.name), text::quoted(item.name), line));
        }
        if (!item.value) {
            continue;
        }
        if (const std::uint64_t line = values.enter(*item.value, item.place.line)) {
            remarks.problem(item.place,
                            fmt::format("item {} of type {} has value {}, as the one on line {}",
                                        text::quoted(item.name), text::quoted(type.name),
                                        *item.value, line));
        }
    }
}

void checkTypes(Description& description, Remarks& remarks) {
    FirstLines<std::string_view> names(description.types.size());
    std::erase_if(description.types, [&](const TypeDefinition& type) {
        const std::uint64_t line = names.enter(type.name, type.place.line);
        if (line != 0) {
            remarks.problem(type.place, fmt::format("type {} is defined on line {} already",
                                                    text::quoted(type.name), line));
        }
        return line != 0;
    });
    for (const TypeDefinition& type : description.types) {
        checkItems(type, remarks);
    }
}

void checkNames(const Description& description, Remarks& remarks) {
    FirstLines<std::string_view> names(description.variables.size() + description.aliases.size());
    const auto check = [&](std::string_view name, const Place& place) {
        if (name.empty()) {
            return;
        }
        if (const std::uint64_t line = names.enter(name, place.line)) {
            remarks.problem(
                place, fmt::format("name {} is that of line {} too", text::quoted(name), line));
        }
    };
    for (const Variable& variable : description.variables) {
        check(variable.name, variable.place);
    }
    for (const Alias& alias : description.aliases) {
        check(alias.name, alias.place);
    }
}

/// In FMI 2 variables with the same value reference are aliases; in FMI 3 there are none.
void checkValueReferences(const Description& description, Remarks& remarks) {
    FirstLines<std::uint32_t> references(description.variables.size());
    for (const Variable& variable : description.variables) {
        if (!variable.hasValueReference) {
            continue;
        }
        if (const std::uint64_t line =
                references.enter(variable.valueReference, variable.place.line)) {
            remarks.problem(variable.place,
                            fmt::format("variable {} has valueReference {}, as the one on line {}",
                                        text::quoted(variable.name), variable.valueReference,
                                        line));
        }
    }
}

void resolveDeclaredTypes(Description& description, Remarks& remarks) {
    std::unordered_map<std::string_view, std::uint32_t> indexOfName;
    for (std::size_t i = 0; i < description.types.size(); ++i) {
        indexOfName.emplace(description.types[i].name, static_cast<std::uint32_t>(i));
    }
    const auto baseName = [&](BaseType base) { return nameOf(base, description.majorVersion); };
    for (Variable& variable : description.variables) {
        if (!variable.declaredType) {
            if (variable.base == BaseType::Enumeration) {
                remarks.problem(variable.place, fmt::format("enumeration variable {} has no "
                                                            "declaredType",
                                                            text::quoted(variable.name)));
            }
            continue;
        }
        const auto found = indexOfName.find(*variable.declaredType);
        if (found == indexOfName.end()) {
            remarks.problem(variable.place,
                            fmt::format("variable {} declares type {}, which is not defined",
                                        text::quoted(variable.name),
                                        text::quoted(*variable.declaredType)));
            continue;
        }
        const BaseType base = description.types[found->second].base;
        if (base != variable.base) {
            remarks.problem(variable.place,
                            fmt::format("variable {} is {} and declares type {}, which is {}",
                                        text::quoted(variable.name), baseName(variable.base),
                                        text::quoted(*variable.declaredType), baseName(base)));
            continue;
        }
        variable.type = found->second;
    }
}

} // namespace

void checkDescription(Description& description, Remarks& remarks) {
    checkTypes(description, remarks);
    checkNames(description, remarks);
    if (description.majorVersion == 3) {
        checkValueReferences(description, remarks);
    }
    resolveDeclaredTypes(description, remarks);
    checkUnits(description, remarks);
}

} // namespace tvtool::fmi
