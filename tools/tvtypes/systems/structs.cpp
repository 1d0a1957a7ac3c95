#include "systems/structs.h"

#include "systems/connection_report.h"
#include "text/quote.h"

#include <boost/container_hash/hash.hpp>

#include <fmt/ranges.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tvtool::systems {

namespace {

using findings::Code;

constexpr std::size_t mostNames = 3;

/// The system, and the element and the path of the source and of the target.
using GroupKey = std::tuple<const ssp::Element*, const ssp::Element*, std::string_view,
                            const ssp::Element*, std::string_view>;

/// A connector as a target, in the system that contains the connection.
using TargetKey = std::tuple<const ssp::Element*, const ssp::Element*, std::string_view>;

template <class Key, class Value>
using Map = std::unordered_map<Key, Value, boost::hash<Key>>;

/// Returns "A.bus".
std::string structText(const End& end) {
    return fmt::format("{}{}{}", end.elementName, end.elementName.empty() ? "" : ".",
                       structName(end.connectorName).path);
}

class StructChecks {
  public:
    StructChecks(std::vector<ConnectionRow>& connections, StructTypes& types)
        : connections_(connections), types_(types) {}

    std::vector<StructRow> check() {
        std::vector<std::vector<std::size_t>> groups;
        Map<GroupKey, std::size_t> indices;
        for (std::size_t i = 0; i < connections_.size(); ++i) {
            const ConnectionRow& row = connections_[i];
            const StructName source = structName(row.source.connectorName);
            const StructName target = structName(row.target.connectorName);
            if (source.path.empty() || target.path.empty() || row.source.connector == nullptr ||
                row.target.connector == nullptr) {
                continue;
            }
            const auto [entry, isNew] = indices.try_emplace(
                {row.system, row.source.element, source.path, row.target.element, target.path},
                groups.size());
            if (isNew) {
                groups.emplace_back();
            }
            groups[entry->second].push_back(i);
        }
        for (const std::vector<std::size_t>& group : groups) {
            if (group.size() > 1) {
                check(group);
            }
        }
        return std::move(rows_);
    }

  private:
    void check(const std::vector<std::size_t>& group) {
        const ConnectionRow& first = connections_[group.front()];
        const ConnectorStruct* const source = structOf(first.source);
        const ConnectorStruct* const target = structOf(first.target);
        if (source == nullptr || target == nullptr) {
            return;
        }
        std::unordered_set<std::string_view> targets;
        for (const std::size_t index : group) {
            targets.insert(connections_[index].target.connectorName);
        }
        rows_.push_back({first.system, structText(first.source), structText(first.target),
                         targets.size(), target->connectors.size(),
                         source->shape == target->shape});
        checkOrder(group);
        checkCompleteness(group, targets.size(), *target);
    }

    const ConnectorStruct* structOf(const End& end) {
        return types_.find(*end.element, end.connector->kind, structName(end.connectorName).path);
    }

    /// Reports elements that lead to another name than their own, although another element leads to
    /// that one.
    void checkOrder(const std::vector<std::size_t>& group) {
        std::unordered_map<std::string_view, std::string_view> sources; // by target
        for (const std::size_t index : group) {
            const ConnectionRow& row = connections_[index];
            sources.emplace(structName(row.target.connectorName).element,
                            structName(row.source.connectorName).element);
        }
        for (const std::size_t index : group) {
            ConnectionRow& row = connections_[index];
            const std::string_view name = structName(row.source.connectorName).element;
            const std::string_view target = structName(row.target.connectorName).element;
            const auto other = sources.find(name);
            if (name == target || other == sources.end() || other->second == name) {
                continue;
            }
            ConnectionReport{row, row.system->file->file.findings}.add(
                Code::StructCrossed, "{} leads to {}, and {} to {}", text::quoted(name),
                text::quoted(target), text::quoted(other->second), text::quoted(name));
        }
    }

    /// Collects the targets of all connections, at the first call.
    void collectConnected() {
        if (connected_.empty()) {
            for (const ConnectionRow& row : connections_) {
                connected_.emplace(row.system, row.target.element, row.target.connectorName);
            }
        }
    }

    void checkCompleteness(const std::vector<std::size_t>& group, std::size_t count,
                           const ConnectorStruct& target) {
        ConnectionRow& row = connections_[group.front()];
        if (2 * count < target.connectors.size()) {
            return;
        }
        collectConnected();
        std::vector<std::string> missing;
        std::size_t missingCount = 0;
        for (const ssp::Connector* const connector : target.connectors) {
            if (!connected_.contains({row.system, row.target.element, connector->name})) {
                ++missingCount;
                if (missing.size() < mostNames) {
                    missing.push_back(text::quoted(structName(connector->name).element));
                }
            }
        }
        if (missingCount == 0) {
            return;
        }
        const std::string path = structText(row.target);
        row.codes.push_back(Code::StructPartial);
        row.system->file->file.findings.add(
            Code::StructPartial, row.record->place, {findings::SubjectKind::Struct, path},
            "{} of {} elements of struct {} are connected with {}, and {}{} with nothing", count,
            target.connectors.size(), text::quoted(path), text::quoted(structText(row.source)),
            fmt::join(missing, ", "),
            missingCount > missing.size()
                ? fmt::format(" and {} more", missingCount - missing.size())
                : std::string());
    }

    std::vector<ConnectionRow>& connections_;
    StructTypes& types_;
    std::unordered_set<TargetKey, boost::hash<TargetKey>> connected_;
    std::vector<StructRow> rows_;
};

} // namespace

std::vector<StructRow> checkStructs(std::vector<ConnectionRow>& connections, StructTypes& types) {
    return StructChecks(connections, types).check();
}

} // namespace tvtool::systems
