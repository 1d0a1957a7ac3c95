#include "systems/parameter_sets.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using findings::Code;
using findings::SubjectKind;
using text::quoted;

/// Returns the number of elements of an array, saturated; empty if a size is missing.
std::optional<std::uint64_t> elementCount(const std::vector<ssp::Dimension>& dimensions) {
    std::uint64_t count = 1;
    for (const ssp::Dimension& dimension : dimensions) {
        if (!dimension.size) {
            return std::nullopt;
        }
        if (__builtin_mul_overflow(count, *dimension.size, &count)) {
            return UINT64_MAX;
        }
    }
    return count;
}

class SetCheck {
  public:
    SetCheck(const ssp::ParameterSet& set, ParameterTables& tables) : set_(set), tables_(tables) {
        content_.codes.resize(set.parameters.size());
    }

    ParameterSetContent check() {
        for (std::size_t i = 0; i < set_.parameters.size(); ++i) {
            const ssp::Parameter& parameter = set_.parameters[i];
            if (parameter.name.empty()) {
                continue; // a finding of the reader
            }
            const auto [entry, isNew] = content_.byName.try_emplace(parameter.name, i);
            if (!isNew) {
                add(i, Code::ParameterRepeated, "parameter {} is that of line {} again",
                    quoted(parameter.name), set_.parameters[entry->second].place.line);
            }
            if (parameter.type.base != BaseType::None) {
                checkCount(i);
                checkValues(i);
            }
        }
        return std::move(content_);
    }

  private:
    template <class... Arguments>
    void add(std::size_t index, Code code, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) {
        const ssp::Parameter& parameter = set_.parameters[index];
        content_.codes[index].push_back(code);
        set_.file->findings.add(code, parameter.place, {SubjectKind::Parameter, parameter.name},
                                sentence, std::forward<Arguments>(arguments)...);
    }

    void checkCount(std::size_t index) {
        const ssp::Parameter& parameter = set_.parameters[index];
        const std::optional<std::uint64_t> count = elementCount(parameter.dimensions);
        if (count && *count != parameter.values.size()) {
            add(index, Code::ParameterDimension, "parameter {} has {}, and its dimensions have {}",
                quoted(parameter.name), text::counted(parameter.values.size(), "value", "values"),
                text::counted(*count, "element", "elements"));
        }
    }

    /// Reports the first value that is none of the parameter's type.
    void checkValues(std::size_t index) {
        const ssp::Parameter& parameter = set_.parameters[index];
        const ssp::Enumeration* const own =
            tables_.names.enumeration(set_.definitions, parameter.type.enumeration);
        for (const std::string_view value : parameter.values) {
            if (!isParameterValue(value, parameter.type.base)) {
                return add(index, Code::ParameterValue, "parameter {} is {} and has the value {}",
                           quoted(parameter.name), parameter.type.element, quoted(value));
            }
            if (parameter.type.base == BaseType::Enumeration && own != nullptr &&
                tables_.items.named(own->items, value) == nullptr) {
                return add(index, Code::ParameterItem,
                           "parameter {} has the value {}, which is no item of {}",
                           quoted(parameter.name), quoted(value), quoted(own->name));
            }
        }
    }

    const ssp::ParameterSet& set_;
    ParameterTables& tables_;
    ParameterSetContent content_;
};

} // namespace

ParameterSetContent checkSet(const ssp::ParameterSet& set, ParameterTables& tables) {
    return SetCheck(set, tables).check();
}

void checkMapping(const ssp::ParameterMapping& mapping) {
    std::unordered_map<std::string_view, const ssp::MappingEntry*> targets;
    for (const ssp::MappingEntry& entry : mapping.entries) {
        if (entry.target.empty()) {
            continue; // a finding of the reader
        }
        const auto [first, isNew] = targets.try_emplace(entry.target, &entry);
        if (!isNew) {
            mapping.file->findings.add(
                Code::MappingNameRepeated, entry.place, {SubjectKind::Parameter, entry.target},
                "parameter {} is mapped to {}, as is {} on line {}", quoted(entry.source),
                quoted(entry.target), quoted(first->second->source), first->second->place.line);
        }
    }
}

} // namespace tvtool::systems
