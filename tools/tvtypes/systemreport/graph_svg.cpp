// The layout of graphs by the library of Graphviz.
#include "systemreport/graph.h"
#include "text/argument_error.h"

#include <boost/container_hash/hash.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <graphviz/gvc.h>
#include <graphviz/gvplugin.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

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

/// More than any picture takes within the limits, in seconds.
constexpr rlim_t longestLayout = 20;

struct FreeContext {
    void operator()(GVC_t* context) const noexcept { gvFreeContext(context); }
};
struct CloseGraph {
    void operator()(Agraph_t* graph) const noexcept { agclose(graph); }
};
struct FreeData {
    void operator()(char* data) const noexcept { gvFreeRenderData(data); }
};

/// The layout of a graph.
class Layout {
  public:
    Layout(GVC_t* context, Agraph_t* graph)
        : context_(context), graph_(graph), isDone_(gvLayout(context, graph, "dot") == 0) {}
    ~Layout() { gvFreeLayout(context_, graph_); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;

    bool isDone() const { return isDone_; }

  private:
    GVC_t* context_;
    Agraph_t* graph_;
    bool isDone_;
};

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

/// Lays out the graph and writes the picture. Returns whether it could be.
bool layOut(const std::string& dot, int output) {
    const std::unique_ptr<GVC_t, FreeContext> context(gvContextPlugins(plugins, 0));
    const std::unique_ptr<Agraph_t, CloseGraph> graph(agmemread(dot.c_str()));
    if (context == nullptr || graph == nullptr) {
        return false;
    }
    const Layout layout(context.get(), graph.get());
    char* data = nullptr;
    unsigned int size = 0;
    if (!layout.isDone() || gvRenderData(context.get(), graph.get(), "svg", &data, &size) != 0) {
        return false;
    }
    const std::unique_ptr<char, FreeData> owner(data);
    return writeAll(output, {data, size});
}

/// The child process that lays out a graph: its errors are not printed, and it ends if it takes too
/// long or fails.
[[noreturn]] void runChild(const std::string& dot, int output) noexcept {
    for (const int number : {SIGABRT, SIGSEGV, SIGXCPU, SIGINT, SIGTERM, SIGHUP}) {
        std::signal(number, SIG_DFL);
    }
    const rlimit time{longestLayout, longestLayout};
    const rlimit noCoreFile{0, 0};
    const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const bool isReady = null >= 0 && dup2(null, STDERR_FILENO) >= 0 &&
                         setrlimit(RLIMIT_CPU, &time) == 0 &&
                         setrlimit(RLIMIT_CORE, &noCoreFile) == 0;
    // Not exit(), which would write what the parent has in its buffers.
    _exit(isReady && layOut(dot, output) ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// A child process whose output is read.
class Child {
  public:
    explicit Child(const std::string& dot) {
        if (pipe2(ends_.data(), O_CLOEXEC) != 0) {
            throw text::ArgumentError("the picture cannot be laid out: no pipe can be opened");
        }
        process_ = fork();
        if (process_ == 0) {
            runChild(dot, ends_[1]);
        }
        close(std::exchange(ends_[1], -1));
    }
    ~Child() {
        close(ends_[0]);
        wait();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    /// Returns the output; empty if the process failed.
    std::string output() {
        std::string text;
        std::array<char, 1 << 16> buffer{};
        ssize_t count = 0;
        while ((count = read(ends_[0], buffer.data(), buffer.size())) != 0) {
            if (count < 0 && errno != EINTR) {
                return {};
            }
            text.append(buffer.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
        }
        return wait() ? text : std::string();
    }

  private:
    /// Returns whether the process succeeded.
    bool wait() {
        if (process_ <= 0) {
            return false;
        }
        int status = 0;
        while (waitpid(process_, &status, 0) < 0) {
            if (errno != EINTR) {
                status = EXIT_FAILURE;
                break;
            }
        }
        process_ = -1;
        return status == 0;
    }

    std::array<int, 2> ends_{-1, -1};
    pid_t process_ = -1;
};

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
    using Pair = std::pair<const ssp::Element*, const ssp::Element*>;
    std::unordered_set<Pair, boost::hash<Pair>> pairs;
    for (const systems::ConnectionRow& row : system.connections) {
        pairs.emplace(row.source.element, row.target.element);
    }
    if (system.elements.size() > mostDrawnElements || pairs.size() > mostDrawnPairs) {
        throw text::ArgumentError(fmt::format(
            "a picture of {} elements and of connections between {} pairs of them takes "
            "too long (limits {} and {}); write the graph to a .dot file instead",
            system.elements.size(), pairs.size(), mostDrawnElements, mostDrawnPairs));
    }
    // The layout runs in a process of its own, as Graphviz ends it for some graphs.
    std::string svg;
    if (system.connections.size() <= mostDrawnConnections) {
        svg = Child(dotText(system, GraphDetail::Connectors)).output();
    }
    if (svg.empty()) {
        svg = Child(dotText(system, GraphDetail::Elements)).output();
    }
    if (svg.empty()) {
        throw text::ArgumentError(
            "Graphviz cannot lay out the picture; write the graph to a .dot file instead");
    }
    svg = withoutNames(svg);
    return (form == SvgForm::Document ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" : "") + svg;
}

} // namespace tvtool::systemreport
