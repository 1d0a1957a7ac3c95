/// \file
/// The picture of a checked system: components as boxes, systems as clusters, connections as edges.
#pragma once

#include "systems/records.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tvtool::systemreport {

/// What an edge of a graph connects.
enum class GraphDetail : std::uint8_t {
    Connectors, ///< each connection is an edge between connectors
    Elements    ///< all connections from one element to another are one edge
};

/// Returns the graph in the DOT language of Graphviz. Connections whose ends name no element are
/// left out. Elements have the id "element-N" with their index in CheckedSystem::elements;
/// connections "connection-N" with that of the row; edges between elements "connections-N" with
/// that of the first row.
std::string dotText(const systems::CheckedSystem& system,
                    GraphDetail detail = GraphDetail::Connectors);

/// The most connections that svgText() draws one by one.
inline constexpr std::size_t mostDrawnConnections = 300;
/// The most elements, and pairs of connected elements, that it draws at all. The layout of as many
/// takes a second or two.
inline constexpr std::size_t mostDrawnElements = 500;
inline constexpr std::size_t mostDrawnPairs = 1000;

enum class SvgForm : std::uint8_t {
    Document,
    Element ///< without XML declaration and document type, for an HTML page
};

/// Returns the graph as a picture in SVG, laid out by Graphviz in a child process; with
/// GraphDetail::Elements if it is large or cannot be laid out otherwise. Ids are those of the DOT
/// text. Throws a text::ArgumentError if it is too large, or cannot be laid out.
std::string svgText(const systems::CheckedSystem& system, SvgForm form = SvgForm::Document);

} // namespace tvtool::systemreport
