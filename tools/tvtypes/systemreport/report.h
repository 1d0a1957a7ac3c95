/// \file
/// The report of a checked system.
#pragma once

#include "systems/records.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>

namespace tvtool::systemreport {

/// Which connections are listed.
enum class ConnectionChoice : std::uint8_t {
    All,
    Converted, ///< those that change the value
    Findings,  ///< those with errors and warnings
    None
};

struct Options {
    ConnectionChoice connections = ConnectionChoice::All;
    bool isChosen = false;         ///< whether the call says which connections to list
    bool showsAllFindings = false; ///< whether no finding is folded or left out
};

struct Report {
    const systems::CheckedSystem& checked;
    std::string file; ///< as the call names it
    Options options;
};

/// Returns whether a connection is listed.
bool isListed(const systems::ConnectionRow& row, ConnectionChoice choice);

/// Returns the number of findings of a severity in all files.
std::size_t countFindings(const systems::CheckedSystem& checked, findings::Severity severity);

/// Returns "FILE: SSP 1.0, system "X": 3 components, ...; 1 error, no warnings, no notes".
std::string summaryText(const systems::CheckedSystem& checked, const std::string& file);

/// Returns what a connection does to a value: "same", "0.01 * x, truncated".
std::string effectText(const systems::ConnectionRow& row);

/// Prints the report as text: the connections first, the findings last.
void printText(const Report& report, bool colour, std::ostream& os);
/// Prints the findings of all files as text.
void printFindings(const systems::CheckedSystem& checked, bool showsAll, bool colour,
                   std::ostream& os);
/// Prints the report as one JSON object in one line. Absent values are null.
void printJson(const Report& report, std::ostream& os);

} // namespace tvtool::systemreport
