#include "systems/parameters.h"

#include "exchange/values.h"
#include "systems/parameter_names.h"
#include "systems/parameter_sets.h"
#include "text/quote.h"

#include <boost/container_hash/hash.hpp>

#include <fmt/format.h>

#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tvtool::systems {

namespace {

using findings::Code;
using findings::SubjectKind;
using text::quoted;

/// A connector or variable at one place: its instance and its name there.
using TargetKey = std::pair<std::uint32_t, std::string_view>;

std::string_view fileName(const ssp::File& file) {
    const std::string_view path = file.path;
    return path.substr(path.rfind('/') + 1);
}

/// Returns "a.ssv:4", or with the whole path if the other file has the same name.
std::string placeText(const Assignment& assignment, const Assignment& other) {
    const ssp::File& file = *assignment.set->file;
    const bool isSame = &file != other.set->file && fileName(file) == fileName(*other.set->file);
    return fmt::format("{}:{}",
                       text::shortened(isSame ? std::string_view(file.path) : fileName(file)),
                       assignment.parameter->place.line);
}

/// Returns `system "A"`, `component "A.B"` or "the system".
std::string elementText(const ssp::Element& element, const std::string& path) {
    return path.empty() ? "the system"
                        : fmt::format("{} {}",
                                      element.kind == ssp::ElementKind::System      ? "system"
                                      : element.kind == ssp::ElementKind::Component ? "component"
                                                                                    : "element",
                                      text::quoted(path));
}

class ParameterChecks {
  public:
    ParameterChecks(const ssp::Package& package, Connectors& connectors, NameIndex& names,
                    Comparisons& comparisons)
        : package_(package),
          connectors_(connectors),
          tables_{names, comparisons.conversions, comparisons.items},
          paths_(package.systems.front().root(), names) {}

    std::vector<ParameterRow> check() {
        for (const ssp::ParameterSet& set : package_.sets) {
            contents_.emplace(&set, checkSet(set, tables_));
        }
        for (const ssp::ParameterMapping& mapping : package_.mappings) {
            checkMapping(mapping);
        }
        applyAll();
        reportUnmatched();
        reportOverridden();
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            checkRow(i);
        }
        return std::move(rows_);
    }

  private:
    /// The bindings of a set without a mapping: where its names were looked up.
    struct SetUse {
        std::vector<bool> isMatched; ///< by parameter, in any of the bindings
        std::size_t matches = 0;     ///< number of bindings with a match
        /// The bindings without any, and the instances that have them.
        std::vector<std::pair<const ssp::ParameterBinding*, std::uint32_t>> idle;
        std::string where; ///< the element of the first binding
    };

    /// Visits the elements from the root, so that the bindings of a system come before those of its
    /// elements. Those of a component that is a system come after those of that system's root.
    void applyAll() {
        std::unordered_set<const ssp::Element*> shared;
        std::vector<std::uint32_t> open{0};
        while (!open.empty()) {
            const std::uint32_t instance = open.back();
            open.pop_back();
            const ssp::Element& element = paths_.element(instance);
            const ssp::Element& system = innerSystem(element);
            const bool isNew = &system == &element || shared.insert(&system).second;
            if (&system != &element && isNew) {
                applyBindings(system, instance);
            }
            applyBindings(element, instance);
            if (!isNew) {
                continue;
            }
            for (auto child = system.elements.rbegin(); child != system.elements.rend(); ++child) {
                open.push_back(paths_.child(instance, **child));
            }
        }
    }

    void applyBindings(const ssp::Element& element, std::uint32_t instance) {
        for (const ssp::ParameterBinding& binding : element.bindings) {
            if (binding.set == nullptr || (binding.hasMapping && binding.mapping == nullptr)) {
                continue; // a finding of the reader
            }
            if (binding.hasMapping) {
                applyMapped(binding, instance);
            } else {
                applyNamed(binding, instance);
            }
        }
    }

    void applyNamed(const ssp::ParameterBinding& binding, std::uint32_t instance) {
        const ssp::ParameterSet& set = *binding.set;
        const auto [entry, isNew] = uses_.try_emplace(&set);
        SetUse& use = entry->second;
        if (isNew) {
            usedSets_.push_back(&set);
            use.isMatched.resize(set.parameters.size());
            use.where = elementText(paths_.element(instance), paths_.path(instance));
        }
        bool isAnyMatched = false;
        std::string name(binding.prefix);
        for (std::size_t i = 0; i < set.parameters.size(); ++i) {
            const ssp::Parameter& parameter = set.parameters[i];
            if (!isFirst(set, i)) {
                continue;
            }
            name.resize(binding.prefix.size());
            name += parameter.name;
            const bool isMatched =
                assign({&set, &parameter, nullptr, nullptr, &binding, 0, {}}, instance, name);
            use.isMatched[i] = use.isMatched[i] || isMatched;
            isAnyMatched = isAnyMatched || isMatched;
        }
        if (isAnyMatched) {
            ++use.matches;
        } else {
            use.idle.emplace_back(&binding, instance);
        }
    }

    void applyMapped(const ssp::ParameterBinding& binding, std::uint32_t instance) {
        const ssp::ParameterSet& set = *binding.set;
        const ParameterSetContent& content = contents_.at(&set);
        for (const ssp::MappingEntry& entry : binding.mapping->entries) {
            if (entry.source.empty() || entry.target.empty()) {
                continue; // a finding of the reader
            }
            std::string_view source = entry.source;
            const bool hasPrefix = source.starts_with(binding.prefix);
            source.remove_prefix(hasPrefix ? binding.prefix.size() : 0);
            const auto found = content.byName.find(source);
            EntryUse& use = entryUse(*binding.mapping, entry);
            if (!hasPrefix || found == content.byName.end()) {
                use.set = &set;
                use.lacksPrefix = found != content.byName.end();
                use.prefix = binding.prefix;
                continue;
            }
            use.hasSource = true;
            const bool isMatched = assign(
                {&set, &set.parameters[found->second], binding.mapping, &entry, &binding, 0, {}},
                instance, entry.target);
            use.hasTarget = use.hasTarget || isMatched;
            if (!isMatched && use.where.empty()) {
                use.where = elementText(paths_.element(instance), paths_.path(instance));
            }
        }
    }

    /// Returns whether a parameter is the first one with its name, which is not empty.
    bool isFirst(const ssp::ParameterSet& set, std::size_t index) const {
        const ParameterSetContent& content = contents_.at(&set);
        const auto found = content.byName.find(set.parameters[index].name);
        return found != content.byName.end() && found->second == index;
    }

    /// Adds a row for each target. Returns whether there is one.
    bool assign(Assignment assignment, std::uint32_t instance, std::string_view name) {
        const std::vector<ParameterTarget> targets = paths_.resolve(instance, name);
        assignment.level = paths_.level(instance);
        for (const ParameterTarget& target : targets) {
            assignment.target = target;
            if (target.isUnknown()) {
                assignment.target.name = texts_.intern(target.name);
            }
            ParameterRow& row = rows_.emplace_back();
            row.target = paths_.path(target.instance, assignment.target.name);
            row.parameter = assignment.parameter;
            row.set = assignment.set;
            row.value = joinedValues(assignment.parameter->values);
            row.unit = assignment.parameter->type.unit;
            use(assignment, rows_.size() - 1);
            assignments_.push_back(assignment);
        }
        return !targets.empty();
    }

    /// Decides whether a row is used instead of those before it with the same target. Rows of
    /// higher levels come first.
    void use(const Assignment& assignment, std::size_t row) {
        const TargetKey key{assignment.target.instance, assignment.target.name};
        const auto [entry, isNew] = used_.try_emplace(key, row);
        if (!isNew && assignments_[entry->second].level == assignment.level) {
            entry->second = row;
        }
    }

    std::size_t usedRow(const ParameterTarget& target) const {
        const auto found = used_.find({target.instance, target.name});
        return found == used_.end() ? rows_.size() : found->second;
    }

    void reportUnmatched() {
        for (const ssp::ParameterSet* const set : usedSets_) {
            reportUnmatched(*set, uses_.at(set));
        }
        for (const auto& [mapping, entry] : usedEntries_) {
            reportUnmatched(*mapping, *entry, entryUses_.at(entry));
        }
    }

    /// A parameter that has a target in one of the bindings of its set is not unmatched.
    void reportUnmatched(const ssp::ParameterSet& set, const SetUse& use) {
        findings::Findings& findings = set.file->findings;
        if (use.matches == 0 && set.parameters.size() > 1) {
            const ssp::Parameter& first = set.parameters.front();
            findings.addWithCause(
                Code::ParameterUnmatched, first.place, {SubjectKind::Parameter, first.name},
                use.where, "none of the {} parameters of set {} is the name of anything in {}",
                set.parameters.size(), quoted(set.name), use.where);
            return;
        }
        for (std::size_t i = 0; i < set.parameters.size(); ++i) {
            const ssp::Parameter& parameter = set.parameters[i];
            if (!use.isMatched[i] && isFirst(set, i)) {
                findings.addWithCause(Code::ParameterUnmatched, parameter.place,
                                      {SubjectKind::Parameter, parameter.name}, use.where,
                                      "parameter {} is the name of nothing in {}",
                                      quoted(parameter.name), use.where);
            }
        }
        if (use.matches == 0 || set.parameters.empty()) {
            return;
        }
        for (const auto& [binding, instance] : use.idle) {
            const ssp::Element& element = paths_.element(instance);
            element.file->file.findings.addWithCause(
                Code::ParameterUnmatched, binding->place, {SubjectKind::Element, element.name},
                set.name, "no parameter of set {} is the name of anything in {}", quoted(set.name),
                elementText(element, paths_.path(instance)));
        }
    }

    struct EntryUse {
        bool hasSource = false; ///< in any of the bindings
        bool hasTarget = false;
        std::string where;                      ///< the element of the first binding without target
        const ssp::ParameterSet* set = nullptr; ///< of the last binding without the source
        bool lacksPrefix = false;               ///< whether the source is a name without the prefix
        std::string_view prefix;
    };

    EntryUse& entryUse(const ssp::ParameterMapping& mapping, const ssp::MappingEntry& entry) {
        const auto [use, isNew] = entryUses_.try_emplace(&entry);
        if (isNew) {
            usedEntries_.emplace_back(&mapping, &entry);
        }
        return use->second;
    }

    static void reportUnmatched(const ssp::ParameterMapping& mapping,
                                const ssp::MappingEntry& entry, const EntryUse& use) {
        findings::Findings& findings = mapping.file->findings;
        if (!use.hasSource) {
            findings.addWithCause(
                Code::MappingSourceUnmatched, entry.place, {SubjectKind::Parameter, entry.source},
                use.set->name, "{} is the name of no parameter in set {}{}", quoted(entry.source),
                quoted(use.set->name),
                use.lacksPrefix
                    ? fmt::format(", whose names begin with the prefix {} here", quoted(use.prefix))
                    : std::string());
        } else if (!use.hasTarget) {
            findings.addWithCause(
                Code::MappingTargetUnmatched, entry.place, {SubjectKind::Parameter, entry.target},
                use.where, "parameter {} is mapped to {}, which is the name of nothing in {}",
                quoted(entry.source), quoted(entry.target), use.where);
        }
    }

    void reportOverridden() {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const Assignment& lost = assignments_[i];
            const std::size_t winner = usedRow(lost.target);
            if (winner == i) {
                continue;
            }
            const Assignment& used = assignments_[winner];
            rows_[i].overriddenBy = winner;
            const bool isReported = lost.parameter == used.parameter ||
                                    (lost.binding == used.binding && lost.entry != nullptr &&
                                     lost.entry->target == used.entry->target); // by checkMapping()
            if (isReported) {
                continue;
            }
            const std::string place = placeText(used, lost);
            rows_[i].codes.push_back(Code::ParameterOverridden);
            lost.set->file->findings.add(
                Code::ParameterOverridden, lost.parameter->place,
                {SubjectKind::Parameter, lost.parameter->name},
                "parameter {} is set at {} and {}; {}, {}, is used", text::quoted(rows_[i].target),
                placeText(lost, used), place,
                lost.level == used.level ? "the later one" : "that of the higher system", place);
        }
    }

    void checkRow(std::size_t index) {
        const Assignment& assignment = assignments_[index];
        const auto parameter =
            static_cast<std::size_t>(assignment.parameter - assignment.set->parameters.data());
        const std::vector<Code>& own = contents_.at(assignment.set).codes[parameter];
        ParameterRow& row = rows_[index];
        row.codes.insert(row.codes.end(), own.begin(), own.end());
        if (assignment.target.isUnknown()) {
            return;
        }
        const ssp::Element& element = paths_.element(assignment.target.instance);
        const End& end = connectors_.resolve(element, assignment.target.name);
        checkAssignment(assignment, end, sizesOf(assignment.target, end), own.empty(), tables_,
                        row);
    }

    /// Returns the sizes of a target. Those that parameters set are the sizes that are used.
    std::optional<TargetSizes> sizesOf(const ParameterTarget& target, const End& end) {
        TargetSizes sizes;
        for (const ssp::Dimension& dimension : end.dimensions) {
            sizes.push_back(dimension.size);
            if (!dimension.sizeConnector.empty()) {
                sizes.back() = sizeOf({target.instance, dimension.sizeConnector, nullptr, nullptr},
                                      paths_.element(target.instance));
            }
        }
        return end.base == exchange::BaseType::None && sizes.empty() ? std::nullopt
                                                                     : std::optional(sizes);
    }

    std::optional<std::uint64_t> sizeOf(const ParameterTarget& size, const ssp::Element& element) {
        const std::size_t row = usedRow(size);
        if (row < rows_.size()) {
            const std::vector<std::string_view>& values = assignments_[row].parameter->values;
            return values.size() == 1 ? exchange::parseNumber<std::uint64_t>(values.front())
                                      : std::nullopt;
        }
        if (element.model == nullptr) {
            return std::nullopt;
        }
        const fmi::Description& description = *element.model->description;
        const fmi::Variable* const variable = tables_.names.variable(*element.model, size.name);
        const auto known = variable == nullptr ? description.sizes.end()
                                               : description.sizes.find(variable->valueReference);
        return known == description.sizes.end() ? std::nullopt : std::optional(known->second);
    }

    const ssp::Package& package_;
    Connectors& connectors_;
    ParameterTables tables_;
    ParameterNames paths_;
    exchange::Texts texts_;
    std::unordered_map<const ssp::ParameterSet*, ParameterSetContent> contents_;
    std::vector<ParameterRow> rows_;
    std::vector<Assignment> assignments_;                                     ///< of the rows
    std::unordered_map<TargetKey, std::size_t, boost::hash<TargetKey>> used_; ///< rows
    std::vector<const ssp::ParameterSet*> usedSets_; ///< in the order of their bindings
    std::unordered_map<const ssp::ParameterSet*, SetUse> uses_;
    std::vector<std::pair<const ssp::ParameterMapping*, const ssp::MappingEntry*>> usedEntries_;
    std::unordered_map<const ssp::MappingEntry*, EntryUse> entryUses_;
};

} // namespace

std::vector<ParameterRow> checkParameters(const ssp::Package& package, Connectors& connectors,
                                          NameIndex& names, Comparisons& comparisons) {
    return ParameterChecks(package, connectors, names, comparisons).check();
}

} // namespace tvtool::systems
