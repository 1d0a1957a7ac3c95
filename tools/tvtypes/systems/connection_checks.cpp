#include "systems/connection_checks.h"

#include "systems/flow.h"
#include "systems/signal_checks.h"
#include "text/quote.h"

#include <utility>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using findings::Code;
using ssp::Kind;

/// Clocks with an interval of their own provide their ticks, whatever their kind.
bool providesTicks(const End& end) {
    const std::string_view interval =
        end.connector == nullptr ? "" : end.connector->type.intervalVariability;
    return end.base == BaseType::Clock && !interval.empty() && interval != "triggered";
}

FlowEnd flowEnd(const End& end) {
    return {end.isSystem, providesTicks(end) && !end.isSystem ? Kind::Output : end.kind};
}

} // namespace

ConnectionRow ConnectionChecks::check(const ssp::Element& system,
                                      const ssp::Connection& connection) {
    ConnectionRow row;
    row.system = &system;
    row.record = &connection;
    row.source = connectors_.end(system, connection.start);
    row.target = connectors_.end(system, connection.end);
    const ConnectionReport report{row, system.file->file.findings};
    const bool hasStart = checkNames(row.source, connection.start, system, report);
    const bool hasEnd = checkNames(row.target, connection.end, system, report);
    if (!hasStart || !hasEnd) {
        row.effects = {Effect::Impossible};
        return row;
    }
    if (checkDirection(row, report)) {
        checkInflow(report);
    }
    checkSignal(report, comparisons_);
    sizes_.check(report);
    return row;
}

/// Returns whether the end names a connector, or a variable of a model.
bool ConnectionChecks::checkNames(const End& end, const ssp::EndReference& reference,
                                  const ssp::Element& system, const ConnectionReport& report) {
    if (end.element == nullptr) {
        report.add(Code::ConnectionElement, "{} is no element of {}",
                   text::quoted(*reference.element),
                   system.name.empty() ? "the system" : text::quoted(system.name));
        return false;
    }
    if (end.connector != nullptr) {
        return true;
    }
    const std::string owner =
        end.isSystem ? std::string("the system") : text::quoted(*reference.element);
    const bool isEntry = end.element->dictionary != nullptr &&
                         names_.entry(*end.element->dictionary, end.connectorName) != nullptr;
    report.add(Code::ConnectionConnector, "{} has no connector {}{}", owner,
               text::quoted(end.connectorName),
               end.variable != nullptr ? ", although its model has the variable"
               : isEntry               ? ", although its dictionary has the entry"
                                       : "");
    return end.variable != nullptr || isEntry;
}

/// Puts the ends of the row into the direction of flow. Returns whether there is one.
bool ConnectionChecks::checkDirection(ConnectionRow& row, const ConnectionReport& report) {
    if (row.source.element == row.target.element && !row.source.isSystem) {
        report.add(Code::ConnectionSelf, "{} is connected with itself",
                   text::quoted(row.source.elementName));
    }
    const FlowEnd start = flowEnd(row.source);
    const FlowEnd end = flowEnd(row.target);
    Flow flow = flowBetween(start, end);
    // Which of two clocks that both provide ticks follows the other one is left to the tool.
    if (providesTicks(row.source) && providesTicks(row.target) &&
        row.source.connectorName != row.target.connectorName) {
        flow = flow == Flow::Forbidden ? Flow::Forward : flow;
    }
    const bool isAllowed = flow != Flow::Forbidden;
    if (!isAllowed) {
        report.add(Code::ConnectionForbidden, "{} cannot be connected with {}", flowEndText(start),
                   flowEndText(end));
        // The likely direction is that in which each end could be connected with another element.
        const FlowEnd any{false, Kind::Unspecified};
        const bool isBackward =
            flowBetween(start, any) == Flow::Backward && flowBetween(any, end) == Flow::Backward;
        flow = isBackward ? Flow::Backward : Flow::Forward;
    }
    if (flow == Flow::Backward) {
        std::swap(row.source, row.target);
        row.isReversed = true;
    }
    return isAllowed;
}

void ConnectionChecks::checkInflow(const ConnectionReport& report) {
    const End& target = report.row.target;
    if (!takesOneInflow({target.isSystem, target.kind})) {
        return;
    }
    const auto [entry, isNew] =
        inflows_.try_emplace({report.row.system, target.element, target.connectorName});
    Inflows& inflows = entry->second;
    const bool isWhole = target.indices == nullptr;
    const bool isRepeated =
        !isNew && (isWhole || inflows.isWhole || inflows.indices.contains(*target.indices));
    if (isRepeated) {
        report.add(Code::InflowRepeated, "{} has a connection already (line {})",
                   text::quoted(endText(target)), inflows.line);
    }
    if (isNew) {
        inflows.line = report.row.record->place.line;
    }
    inflows.isWhole = inflows.isWhole || isWhole;
    if (!isWhole) {
        inflows.indices.insert(*target.indices);
    }
}

} // namespace tvtool::systems
