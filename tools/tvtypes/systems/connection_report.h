/// \file
/// The connection that is being checked, and its findings.
#pragma once

#include "systems/records.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <string>
#include <utility>

namespace tvtool::systems {

/// Returns "A.x", or "x" for a connector of the system.
std::string endText(const End& end);

struct ConnectionReport {
    ConnectionRow& row;
    findings::Findings& findings;

    /// Returns "A.x -> B.u", in the direction of flow.
    std::string name() const { return endText(row.source) + " -> " + endText(row.target); }

    /// Adds a finding about the connection, whose sentence follows its name.
    template <class... Arguments>
    void add(findings::Code code, fmt::format_string<Arguments...> sentence,
             Arguments&&... arguments) const {
        addAt(row.record->place, code, sentence, std::forward<Arguments>(arguments)...);
    }
    /// Same about a part of the connection.
    template <class... Arguments>
    void addAt(const exchange::Place& place, findings::Code code,
               fmt::format_string<Arguments...> sentence, Arguments&&... arguments) const {
        row.codes.push_back(code);
        const std::string connection = name();
        findings.add(code, place, {findings::SubjectKind::Connection, connection}, "{}: {}",
                     connection, fmt::format(sentence, std::forward<Arguments>(arguments)...));
    }
};

} // namespace tvtool::systems
