#include "systemreport/graph.h"

#include "findings/rules.h"
#include "systemreport/dot_text.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tvtool::systemreport {

namespace {

using findings::Severity;
using ssp::ElementKind;
using ssp::Kind;
using systems::ConnectionRow;
using systems::Effect;
using systems::End;

/// Names in boxes are short, so that the picture stays narrow; tooltips show more of them.
constexpr std::size_t longestLabel = 40;

// Graphviz without fonts has the widths of three families. Those of Courier, 0.6 of the size, are
// the widths of all fonts with a fixed pitch, so texts fit their boxes whichever is used.
//
// The older ranking fails on cycles through several clusters, and the process with it.
constexpr const char* head = R"(digraph "system" {{
graph [rankdir=LR, newrank=true, nodesep=0.3, ranksep=0.7, pad=0.1, labeljust=l, id="system-graph", {0}]
node [shape=plain, fontsize=9, {0}]
edge [fontsize=8, arrowsize=0.6, color="#44525f", {0}]
)";
constexpr const char* fonts =
    R"(fontname="Courier New,Liberation Mono,DejaVu Sans Mono,monospace", fontcolor="#1c2733")";

constexpr const char* detailFont = R"(<font point-size="8" color="#55616e">{}</font>)";

/// A connector of an element; with GraphDetail::Elements all on one side of a system.
struct Port {
    std::string_view name;
    bool isLeft = true;
};

struct Node {
    std::vector<Port> ports; ///< in the order of the connections
    std::unordered_map<std::string_view, std::size_t> indices;
};

/// Connections that are drawn as one.
struct Edge {
    std::size_t row = 0; ///< of the first one
    std::size_t count = 0;
    std::optional<findings::Code> worst;
};

/// Returns the most severe code; the first one of several.
std::optional<findings::Code> worstCode(const std::vector<findings::Code>& codes) {
    const auto worst = std::ranges::min_element(
        codes, {}, [](findings::Code code) { return findings::ruleOf(code).severity; });
    return worst == codes.end() ? std::nullopt : std::optional(*worst);
}

/// Returns whether a connector is drawn at the left side of its element.
bool isLeftSide(const End& end, bool isSource) {
    switch (end.kind) {
    case Kind::Input:
    case Kind::Parameter:
    case Kind::StructuralParameter:
        return true;
    case Kind::Output:
    case Kind::CalculatedParameter:
    case Kind::Local:
    case Kind::Constant:
        return false;
    default:
        return isSource == end.isSystem;
    }
}

std::string numberText(double number) { return fmt::format("{:.6g}", number); }

/// Returns the conversion, the losses and the error of a connection, or else the warning, in lines.
std::vector<std::string> edgeLines(const ConnectionRow& row, std::optional<findings::Code> worst) {
    std::vector<std::string> lines;
    for (const Effect effect : row.effects) {
        if (effect == Effect::Converted) {
            lines.push_back(fmt::format("{} to {}", text::shortened(row.source.unit, longestLabel),
                                        text::shortened(row.target.unit, longestLabel)));
            const double factor = row.factor.value_or(1);
            const double offset = row.offset.value_or(0);
            std::string formula = factor == 1 ? "" : "x " + numberText(factor);
            if (offset != 0) {
                formula +=
                    fmt::format("{}{} {}", formula.empty() ? "" : " ", offset < 0 ? '-' : '+',
                                numberText(offset < 0 ? -offset : offset));
            }
            if (!formula.empty()) {
                lines.push_back(std::move(formula));
            }
        } else if (effect == Effect::Truncated) {
            lines.emplace_back("truncated");
        } else if (effect == Effect::Rounded) {
            lines.emplace_back("rounded");
        } else if (effect == Effect::MayOverflow) {
            lines.emplace_back("may overflow");
        }
    }
    if (worst) {
        const findings::Rule& rule = findings::ruleOf(*worst);
        const bool isNamed = rule.severity == Severity::Error ||
                             (rule.severity == Severity::Warning && lines.empty());
        if (isNamed) {
            lines.emplace_back(rule.name);
        }
    }
    return lines;
}

/// Returns the name of a file that contains a system: that of its folder or archive, if it has the
/// usual name.
std::string fileText(const ssp::SystemFile& file) {
    const std::filesystem::path path(file.file.path);
    const bool hasUsualName = path.filename() == "SystemStructure.ssd" && path.has_parent_path();
    return (hasUsualName ? path.parent_path().filename() : path.filename()).string();
}

/// Returns what a box shows below the name of its element.
std::vector<std::string> boxDetails(const ssp::Element& element) {
    if (element.kind == ElementKind::DictionaryReference) {
        return {fmt::format("dictionary {}", element.dictionaryName)};
    }
    if (element.system != nullptr) {
        return {fmt::format("system in {}", fileText(*element.system->file))};
    }
    if (element.model != nullptr) {
        return {std::string(element.model->description->modelName)};
    }
    return element.source ? std::vector{std::string(*element.source), std::string("not read")}
                          : std::vector<std::string>{};
}

class Graph {
  public:
    Graph(const systems::CheckedSystem& system, GraphDetail detail)
        : system_(system), detail_(detail), nodes_(system.elements.size()) {
        for (std::size_t i = 0; i < system.elements.size(); ++i) {
            indices_.emplace(system.elements[i].element, i);
        }
        for (std::size_t i = 0; i < system.connections.size(); ++i) {
            addConnection(i);
        }
    }

    std::string text() && {
        add(head, fonts);
        for (const ssp::SystemFile& file : system_.package->systems) {
            addSystem(file.root(),
                      &file == &system_.package->systems.front() ? "" : fileText(file));
        }
        for (const std::string& ends : order_) {
            addEdge(ends, edges_.at(ends));
        }
        return std::move(text_) + "}\n";
    }

  private:
    template <class... Arguments>
    void add(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Arguments>(arguments)...);
    }

    void addConnection(std::size_t index) {
        const ConnectionRow& row = system_.connections[index];
        if (row.source.element == nullptr || row.target.element == nullptr) {
            return;
        }
        std::string ends =
            fmt::format("{} -> {}", endText(row.source, true), endText(row.target, false));
        if (detail_ == GraphDetail::Connectors) {
            ends += fmt::format(" [id=\"connection-{}\"", index);
        }
        const auto [entry, isNew] = edges_.try_emplace(ends, Edge{index, 0, {}});
        if (isNew) {
            order_.push_back(std::move(ends));
        }
        Edge& edge = entry->second;
        ++edge.count;
        std::vector<findings::Code> codes = row.codes;
        if (edge.worst) {
            codes.insert(codes.begin(), *edge.worst);
        }
        edge.worst = worstCode(codes);
    }

    /// Returns the node of an end, with the port and its side, and adds the port to the node.
    std::string endText(const End& end, bool isSource) {
        const bool isSystem = end.element->kind == ElementKind::System;
        const std::size_t index = indices_.at(end.element);
        if (detail_ == GraphDetail::Elements && !isSystem) {
            return fmt::format("e{}", index);
        }
        const bool isLeft = isLeftSide(end, isSource);
        const std::string_view name = detail_ == GraphDetail::Connectors ? end.connectorName
                                      : isLeft                           ? "inputs"
                                                                         : "outputs";
        Node& node = nodes_[index];
        const auto [entry, isNew] = node.indices.try_emplace(name, node.ports.size());
        if (isNew) {
            node.ports.push_back({name, isLeft});
        }
        const std::size_t port = entry->second;
        return isSystem
                   ? fmt::format("e{}p{}", index, port)
                   : fmt::format("e{}:p{}:{}", index, port, node.ports[port].isLeft ? "w" : "e");
    }

    /// \param file the name of the file if it is not that of the call, else empty
    void addSystem(const ssp::Element& system, const std::string& file) {
        const std::size_t index = indices_.at(&system);
        const std::string title =
            file.empty() ? dotLabel(system.name, longestLabel)
                         : dotLabel(file, longestLabel) + "<br align=\"left\"/>" +
                               fmt::format(detailFont, dotLabel(system.name, longestLabel));
        add("subgraph cluster_{0} {{\ngraph [id=\"element-{0}\", label=<{1}>, tooltip={2}, "
            "style=\"rounded,filled\", color=\"#9aa4ae\", fillcolor=\"{3}\", fontsize=10]\n",
            index, title, dotTooltip(elementTip(index)), depthColor(index));
        const Node& node = nodes_[index];
        for (std::size_t i = 0; i < node.ports.size(); ++i) {
            add("e{0}p{1} [id=\"element-{0}-connector-{1}\", shape=box, style=\"rounded,filled\", "
                "fillcolor=\"#ffffff\", color=\"#9aa4ae\", height=0.2, width=0.2, "
                "margin=\"0.08,0.03\", label=<{2}>, tooltip={3}]\n",
                index, i, dotLabel(node.ports[i].name, longestLabel),
                dotTooltip(node.ports[i].name));
        }
        for (const ssp::Element* const element : system.elements) {
            element->kind == ElementKind::System ? addSystem(*element, "") : addBox(*element);
        }
        if (node.ports.empty() && system.elements.empty()) {
            // Graphviz draws no cluster without a node.
            add("e{} [label=<{}>]\n", index, fmt::format(detailFont, "no elements"));
        }
        text_ += "}\n";
    }

    /// Systems are darker than those that contain them, up to a limit.
    const char* depthColor(std::size_t index) const {
        constexpr const char* colors[] = {"#fbfaf5", "#f2f4f6", "#e8edf2", "#dfe6ed"};
        return colors[std::min(system_.elements[index].depth, std::size(colors) - 1)];
    }

    std::string elementTip(std::size_t index) const {
        const systems::ElementRow& row = system_.elements[index];
        std::string tip = row.path.empty() ? std::string(row.element->name) : row.path;
        if (row.element->source) {
            tip += fmt::format(" ({})", text::shortened(*row.element->source));
        }
        return tip;
    }

    void addBox(const ssp::Element& element) {
        const std::size_t index = indices_.at(&element);
        const Node& node = nodes_[index];
        const bool isDictionary = element.kind == ElementKind::DictionaryReference;
        add("e{0} [id=\"element-{0}\", tooltip={1}, label=<<table border=\"1\" cellborder=\"0\" "
            "cellspacing=\"0\" cellpadding=\"4\" color=\"#44525f\" bgcolor=\"#ffffff\">",
            index, dotTooltip(elementTip(index)));
        add("<tr><td colspan=\"2\" bgcolor=\"{}\"><font point-size=\"10\">{}</font>",
            isDictionary ? "#e4dfcf" : "#cfdcea", dotLabel(element.name, longestLabel));
        for (const std::string& line : boxDetails(element)) {
            add("<br/><font point-size=\"3\"> </font><br/>{}",
                fmt::format(detailFont, dotLabel(line, longestLabel)));
        }
        text_ += "</td></tr>";
        addPortRows(node);
        const auto declared =
            std::ranges::count_if(element.connectors, [&](const ssp::Connector& c) {
                return !node.indices.contains(c.name);
            });
        if (detail_ == GraphDetail::Connectors && declared > 0) {
            const std::string more =
                node.ports.empty()
                    ? text::counted(static_cast<std::size_t>(declared), "connector", "connectors")
                    : fmt::format("+ {} more", declared);
            add("<tr><td colspan=\"2\">{}</td></tr>", fmt::format(detailFont, more));
        }
        text_ += "</table>>]\n";
    }

    /// Adds the connectors of the left side next to those of the right side.
    void addPortRows(const Node& node) {
        std::vector<std::size_t> sides[2];
        for (std::size_t i = 0; i < node.ports.size(); ++i) {
            sides[node.ports[i].isLeft ? 0 : 1].push_back(i);
        }
        const bool isOneSided = sides[0].empty() || sides[1].empty();
        for (std::size_t i = 0; i < std::max(sides[0].size(), sides[1].size()); ++i) {
            text_ += "<tr>";
            for (const std::vector<std::size_t>& side : sides) {
                if (i < side.size()) {
                    const Port& port = node.ports[side[i]];
                    add("<td port=\"p{}\" align=\"{}\"{}>{}</td>", side[i],
                        port.isLeft ? "left" : "right", isOneSided ? " colspan=\"2\"" : "",
                        dotLabel(port.name, longestLabel));
                } else if (!isOneSided) {
                    text_ += "<td></td>";
                }
            }
            text_ += "</tr>";
        }
    }

    void addEdge(const std::string& ends, const Edge& edge) {
        const ConnectionRow& row = system_.connections[edge.row];
        text_ += ends;
        std::string label;
        std::string tip;
        if (detail_ == GraphDetail::Connectors) {
            for (const std::string& line : edgeLines(row, edge.worst)) {
                label += (label.empty() ? "" : "<br/>") + dotLabel(line, 3 * longestLabel);
            }
            tip = connectionTip(row);
        } else {
            add(" [id=\"connections-{}\"", edge.row);
            label = edge.count == 1 ? "" : fmt::format("{}", edge.count);
            tip = text::counted(edge.count, "connection", "connections");
            tip += edge.worst ? fmt::format(": {}", findings::ruleOf(*edge.worst).name) : "";
        }
        if (!label.empty()) {
            add(", label=<{}>", label);
        }
        add(", tooltip={0}, labeltooltip={0}", dotTooltip(tip));
        if (edge.worst && findings::ruleOf(*edge.worst).severity != Severity::Note) {
            const bool isError = findings::ruleOf(*edge.worst).severity == Severity::Error;
            add(", color=\"{0}\", fontcolor=\"{0}\", penwidth=1.6",
                isError ? "#c62828" : "#c66900");
        }
        text_ += "]\n";
    }

    static std::string connectionTip(const ConnectionRow& row) {
        const auto name = [](const End& end) {
            return fmt::format("{}{}{}", text::shortened(end.elementName, longestLabel),
                               end.elementName.empty() ? "" : ".",
                               text::shortened(end.connectorName));
        };
        std::string tip = fmt::format("{} -> {}", name(row.source), name(row.target));
        for (std::size_t i = 0; i < row.codes.size(); ++i) {
            tip += fmt::format("{}{}", i == 0 ? ": " : ", ", findings::ruleOf(row.codes[i]).name);
        }
        return tip;
    }

    const systems::CheckedSystem& system_;
    GraphDetail detail_;
    std::unordered_map<const ssp::Element*, std::size_t> indices_;
    std::vector<Node> nodes_;                     ///< of the elements
    std::unordered_map<std::string, Edge> edges_; ///< by the text of their ends
    std::vector<std::string> order_;
    std::string text_;
};

} // namespace

std::string dotText(const systems::CheckedSystem& system, GraphDetail detail) {
    return Graph(system, detail).text();
}

} // namespace tvtool::systemreport
