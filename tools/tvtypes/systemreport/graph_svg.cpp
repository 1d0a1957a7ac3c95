// The layout of graphs by the library of Graphviz.
#include "systemreport/graph.h"
#include "text/argument_error.h"
#include "text/safe_text.h"

#include <fmt/format.h>

#include <graphviz/gvc.h>
#include <graphviz/gvplugin.h>

#include <memory>
#include <set>
#include <string_view>
#include <utility>

extern "C" {
// NOLINTBEGIN(readability-identifier-naming): exported by the plugins
extern gvplugin_library_t gvplugin_core_LTX_library;
extern gvplugin_library_t gvplugin_dot_layout_LTX_library;
// NOLINTEND(readability-identifier-naming)
}

namespace tvtool::systemreport {

namespace {

/// The two plugins that draw. With further ones, pictures would depend on the fonts and the
/// configuration of the system.
constexpr lt_symlist_t plugins[] = {
    {"gvplugin_core_LTX_library", &gvplugin_core_LTX_library},
    {"gvplugin_dot_layout_LTX_library", &gvplugin_dot_layout_LTX_library},
    {nullptr, nullptr}};

/// Suppresses what Graphviz prints on the standard error, and keeps the first error.
class Messages {
  public:
    Messages() : level_(agseterr(AGERR)), printer_(agseterrf(keep)) { first().clear(); }
    ~Messages() {
        agseterrf(printer_);
        agseterr(level_);
    }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    static std::string& first() {
        static std::string text;
        return text;
    }

  private:
    static int keep(char* message) {
        if (first().size() < 200) {
            first() += message;
        }
        return 0;
    }

    agerrlevel_t level_;
    agusererrf printer_;
};

struct FreeContext {
    void operator()(GVC_t* context) const noexcept { gvFreeContext(context); }
};
struct CloseGraph {
    void operator()(Agraph_t* graph) const noexcept { agclose(graph); }
};
struct FreeData {
    void operator()(char* data) const noexcept { gvFreeRenderData(data); }
};

[[noreturn]] void fail() {
    throw text::ArgumentError(
        fmt::format("the picture cannot be laid out{}{}; write the graph to a .dot file instead",
                    Messages::first().empty() ? "" : ": ", text::inOneLine(Messages::first())));
}

/// The layout of a graph.
class Layout {
  public:
    Layout(GVC_t* context, Agraph_t* graph) : context_(context), graph_(graph) {
        if (gvLayout(context, graph, "dot") != 0) {
            fail();
        }
    }
    ~Layout() { gvFreeLayout(context_, graph_); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

  private:
    GVC_t* context_;
    Agraph_t* graph_;
};

std::string laidOut(const std::string& dot) {
    const Messages messages;
    const std::unique_ptr<GVC_t, FreeContext> context(gvContextPlugins(plugins, 0));
    const std::unique_ptr<Agraph_t, CloseGraph> graph(agmemread(dot.c_str()));
    if (context == nullptr || graph == nullptr) {
        fail();
    }
    const Layout layout(context.get(), graph.get());
    char* data = nullptr;
    unsigned int size = 0;
    const int status = gvRenderData(context.get(), graph.get(), "svg", &data, &size);
    const std::unique_ptr<char, FreeData> owner(data);
    if (status != 0 || data == nullptr) {
        fail();
    }
    return {data, size};
}

/// Returns the element svg without comments and without the titles of nodes and edges, which are
/// their names in the DOT text.
std::string withoutNames(std::string_view svg) {
    std::string result;
    result.reserve(svg.size());
    svg.remove_prefix(std::min(svg.find("<svg"), svg.size()));
    while (!svg.empty()) {
        const std::string_view line = svg.substr(0, svg.find('\n') + 1);
        svg.remove_prefix(line.empty() ? svg.size() : line.size());
        if (!line.starts_with("<!--") && !line.starts_with("<title>")) {
            result += line;
        }
    }
    return result;
}

} // namespace

std::string svgText(const systems::CheckedSystem& system, SvgForm form) {
    std::set<std::pair<const ssp::Element*, const ssp::Element*>> pairs;
    for (const systems::ConnectionRow& row : system.connections) {
        pairs.emplace(row.source.element, row.target.element);
    }
    if (system.elements.size() > mostDrawnElements || pairs.size() > mostDrawnElements) {
        throw text::ArgumentError(fmt::format(
            "a picture of {} elements and connections between {} pairs of them takes too long to "
            "lay out (limit {}); write the graph to a .dot file instead",
            system.elements.size(), pairs.size(), mostDrawnElements));
    }
    const bool isLarge = system.connections.size() > mostDrawnConnections ||
                         system.elements.size() > mostDetailedElements;
    const std::string svg = withoutNames(
        laidOut(dotText(system, isLarge ? GraphDetail::Elements : GraphDetail::Connectors)));
    return (form == SvgForm::Document ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" : "") + svg;
}

} // namespace tvtool::systemreport
