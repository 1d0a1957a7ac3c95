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

/// The most connections that svgText() draws one by one, and the most elements with connectors.
/// The layout of one more takes some seconds.
inline constexpr std::size_t mostDrawnConnections = 300;
inline constexpr std::size_t mostDetailedElements = 300;
/// The most elements, and pairs of connected elements, that it draws at all.
inline constexpr std::size_t mostDrawnElements = 500;

enum class SvgForm : std::uint8_t {
    Document,
    Element ///< without XML declaration and document type, for an HTML page
};

/// Returns the graph as a picture in SVG, laid out by Graphviz; with GraphDetail::Elements if it is
/// large. Ids are those of the DOT text. Throws a text::ArgumentError if it is too large, or cannot
/// be laid out. Not to be called by two threads at once.
std::string svgText(const systems::CheckedSystem& system, SvgForm form = SvgForm::Document);

} // namespace tvtool::systemreport
