#include "report/variables.h"

#include "text/glob.h"

#include <algorithm>
#include <cctype>
#include <tuple>

namespace tvtool::report {

namespace {

using exchange::noIndex;

Section sectionOf(const fmi::Variable& variable) {
    switch (causalityOf(variable)) {
    case fmi::Causality::Input:
        return Section::Inputs;
    case fmi::Causality::Output:
        return Section::Outputs;
    case fmi::Causality::Parameter:
    case fmi::Causality::StructuralParameter:
        return Section::Parameters;
    default:
        return Section::Others;
    }
}

/// Brackets of a pattern are a list of characters, or those of the indices of names.
bool matchesAny(std::string_view name, const std::vector<std::string>& patterns) {
    return patterns.empty() || std::ranges::any_of(patterns, [name](const std::string& pattern) {
               return text::matchesGlob(name, pattern) || text::matchesGlob(name, pattern, false);
           });
}

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

/// Returns the end of the digits at a position, and skips zeros before them.
std::size_t endOfNumber(std::string_view text, std::size_t& begin) {
    while (begin + 1 < text.size() && text[begin] == '0' && isDigit(text[begin + 1])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < text.size() && isDigit(text[end])) {
        ++end;
    }
    return end;
}

/// Returns whether a name is before another, with numbers in the order of their values: x[2] is
/// before x[10].
bool isNaturallyLess(std::string_view a, std::string_view b) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (isDigit(a[i]) && isDigit(b[j])) {
            const std::size_t endA = endOfNumber(a, i);
            const std::size_t endB = endOfNumber(b, j);
            const auto keyA = std::tuple(endA - i, a.substr(i, endA - i));
            const auto keyB = std::tuple(endB - j, b.substr(j, endB - j));
            if (keyA != keyB) {
                return keyA < keyB;
            }
            i = endA;
            j = endB;
        } else if (a[i] != b[j]) {
            return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
        } else {
            ++i;
            ++j;
        }
    }
    return a.size() - i < b.size() - j;
}

} // namespace

const fmi::Variable& VariableRow::record() const {
    return all->model().description->variables[index];
}

std::string_view VariableRow::causality() const { return causalityName(causalityOf(record())); }

std::string_view VariableRow::variability() const {
    return variabilityName(variabilityOf(record()));
}

std::string_view VariableRow::initial() const { return initialName(record().initial); }

std::string_view VariableRow::type() const {
    const auto& declared = record().declaredType;
    return declared && !declared->empty() ? *declared : baseType();
}

std::string_view VariableRow::baseType() const {
    return baseTypeName(record().base, all->model().description->majorVersion);
}

std::string_view VariableRow::unit() const {
    const std::uint32_t unit = record().unit;
    return unit == noIndex ? "" : all->model().description->units[unit].name;
}

std::string_view VariableRow::displayUnit() const {
    const fmi::Description& description = *all->model().description;
    const fmi::Variable& variable = record();
    const auto used = [&description](std::uint32_t use) {
        return use == noIndex ? fmi::UnitUse{} : description.unitUses[use];
    };
    const fmi::UnitUse own = used(variable.unitUse);
    if (!own.displayUnit.empty() || !own.unit.empty() || variable.type == noIndex) {
        return own.displayUnit;
    }
    return used(description.types[variable.type].unitUse).displayUnit;
}

std::string_view VariableRow::dimensions() const { return all->dimensions(index); }

std::string_view VariableRow::min() const {
    return rangeOf(record(), *all->model().description).min;
}

std::string_view VariableRow::max() const {
    return rangeOf(record(), *all->model().description).max;
}

std::string_view VariableRow::nominal() const {
    return rangeOf(record(), *all->model().description).nominal;
}

std::span<const fmi::Alias> VariableRow::aliases() const {
    const std::vector<fmi::Alias>& aliases = all->model().description->aliases;
    // They are in the order of their variables.
    // Not equal_range(), whose subrange clang 14 cannot compile.
    const auto begin = std::ranges::lower_bound(aliases, index, {}, &fmi::Alias::variable);
    const auto end = std::ranges::upper_bound(aliases, index, {}, &fmi::Alias::variable);
    return {begin, end};
}

Variables::Variables(const model::Model& model, const Options& options)
    : model_(model), order_(options.order) {
    const std::vector<fmi::Variable>& variables = model.description->variables;
    for (std::uint32_t i = 0; i < variables.size(); ++i) {
        const Section section = sectionOf(variables[i]);
        ++counts_[position(section)];
        const bool isChosen =
            options.variables == VariableChoice::All ||
            (options.variables == VariableChoice::Interface && section != Section::Others);
        if ((isChosen || !options.filters.empty()) &&
            matchesAny(variables[i].name, options.filters)) {
            if (isChosen) {
                listed_[position(section)].push_back(i);
            } else {
                ++unlistedMatches_;
            }
        }
    }
    for (const auto& [id, ofArrays] : model.dimensions.all()) {
        dimensionOf_.resize(variables.size(), noIndex);
        for (const std::uint32_t variable : ofArrays) {
            dimensionOf_[variable] = static_cast<std::uint32_t>(dimensionTexts_.size());
        }
        dimensionTexts_.push_back(model.dimensions.text(id));
    }
    for (std::vector<std::uint32_t>& indices : listed_) {
        sort(indices);
    }
}

std::string_view Variables::dimensions(std::uint32_t variable) const {
    if (dimensionOf_.empty() || dimensionOf_[variable] == noIndex) {
        return {};
    }
    return dimensionTexts_[dimensionOf_[variable]];
}

std::vector<std::uint32_t> Variables::listed() const {
    std::vector<std::uint32_t> all;
    for (const std::vector<std::uint32_t>& indices : listed_) {
        all.insert(all.end(), indices.begin(), indices.end());
    }
    std::ranges::sort(all);
    sort(all);
    return all;
}

/// \pre `indices` are in the order of the description.
void Variables::sort(std::vector<std::uint32_t>& indices) const {
    if (order_ == VariableOrder::Line) {
        return;
    }
    std::ranges::stable_sort(indices, isNaturallyLess, [this](std::uint32_t index) {
        const VariableRow row{this, index};
        return order_ == VariableOrder::Name   ? row.name()
               : order_ == VariableOrder::Type ? row.type()
                                               : row.unit();
    });
}

} // namespace tvtool::report
