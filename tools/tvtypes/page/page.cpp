#include "page/page.h"

#include "findings/text.h"
#include "model/memory_map.h"
#include "output/json.h"
#include "page/page_html.h"
#include "systemreport/graph.h"
#include "text/argument_error.h"
#include "text/safe_text.h"

#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string_view>
#include <utility>

namespace tvtool::page {

namespace {

/// More pictures would make the page slow; the command layout draws each struct.
constexpr std::size_t mostPictures = 100;

/// Returns what a function prints.
template <class Print>
std::string printed(Print print) {
    std::ostringstream stream;
    // Without this, the stream turns std::bad_alloc into a state.
    stream.exceptions(std::ios_base::badbit);
    print(stream);
    return std::move(stream).str();
}

/// Returns a title: the name of what a file describes, and the file.
std::string titleText(std::string_view name, const std::string& file) {
    return name.empty() ? text::safeText(file)
                        : fmt::format("{} ({})", text::safeText(name), text::safeText(file));
}

/// Returns the pictures of the structs that no other struct contains.
boost::json::object layouts(const report::Inspection& inspection) {
    model::MemoryMaps maps = model::mapStructs(inspection.model, inspection.file, "");
    boost::json::array pictures;
    for (std::size_t i = 0; i < std::min(maps.structs.size(), mostPictures); ++i) {
        model::MemoryMaps one;
        one.structs.push_back(std::move(maps.structs[i]));
        pictures.push_back(
            {{"name", one.structs.front().name},
             {"svg", printed([&](std::ostream& os) { model::drawLayout(one, os); })}});
    }
    return {{"omitted", maps.structs.size() - pictures.size()}, {"pictures", std::move(pictures)}};
}

/// Returns the JSON that a function prints, with further members, as the content of a script
/// element: without "<", so without the end of the element and the beginning of a comment.
template <class Print>
std::string scriptData(Print print, const boost::json::object& members) {
    std::string object = printed(print);
    object.erase(object.rfind('}'));
    object += ',' + output::jsonText(members).substr(1);
    boost::replace_all(object, "<", "\\u003c");
    return object;
}

std::string htmlText(std::string text) {
    boost::replace_all(text, "&", "&amp;");
    boost::replace_all(text, "<", "&lt;");
    boost::replace_all(text, ">", "&gt;");
    return text;
}

/// What differs between pages, as HTML.
struct Contents {
    std::string title;
    std::string_view parts; ///< what the page has with scripts
    std::string findings;   ///< a plain list
    std::string report;     ///< JSON
    std::string_view script;
};

std::string filledTemplate(const Contents& contents) {
    const std::pair<std::string_view, std::string_view> parts[] = {
        {"{{title}}", contents.title},       {"{{contents}}", contents.parts},
        {"{{findings}}", contents.findings}, {"{{report}}", contents.report},
        {"{{views}}", contents.script},
    };
    std::string html;
    std::string_view rest = pageHtml;
    // The parts are appended and never searched, as they may contain such marks.
    for (std::size_t mark = rest.find("{{"); mark != std::string_view::npos;
         mark = rest.find("{{")) {
        html += rest.substr(0, mark);
        rest.remove_prefix(mark);
        const auto part = std::ranges::find_if(
            parts, [&](const auto& entry) { return rest.starts_with(entry.first); });
        if (part == std::end(parts)) {
            html += "{{";
            rest.remove_prefix(2);
        } else {
            html += part->second;
            rest.remove_prefix(part->first.size());
        }
    }
    return html += rest;
}

std::string plainList(const report::Inspection& inspection) {
    return printed([&](std::ostream& os) {
        os << report::summaryText(inspection.model, inspection.file, inspection.variables)
           << "\n\n";
        findings::TextPrinter({.colour = false, .all = true}, os)
            .print(inspection.model.findings.all(), inspection.file);
    });
}

std::string plainList(const systemreport::Report& report) {
    return printed([&](std::ostream& os) {
        os << systemreport::summaryText(report.checked, report.file) << "\n\n";
        systemreport::printFindings(report.checked, true, false, os);
    });
}

/// Returns the picture of the system, or why there is none.
boost::json::object pictureMembers(const systems::CheckedSystem& checked) {
    try {
        return {{"picture", systemreport::svgText(checked, systemreport::SvgForm::Element)},
                {"pictureError", nullptr}};
    } catch (const text::ArgumentError& error) {
        return {{"picture", nullptr}, {"pictureError", error.what()}};
    }
}

} // namespace

std::string htmlPage(const report::Inspection& inspection) {
    return filledTemplate({htmlText(titleText(inspection.description().modelName, inspection.file)),
                           "tables of the variables, types and units, and pictures of the structs",
                           htmlText(plainList(inspection)),
                           scriptData([&](std::ostream& os) { report::printJson(inspection, os); },
                                      {{"layouts", layouts(inspection)}}),
                           modelScript});
}

std::string htmlPage(const systemreport::Report& report) {
    systemreport::Report all = report;
    all.options.connections = systemreport::ConnectionChoice::All;
    return filledTemplate(
        {htmlText(titleText(all.checked.package->systems.front().name, all.file)),
         "a picture of the system, and tables of its connections, parameters and elements",
         htmlText(plainList(all)),
         scriptData([&](std::ostream& os) { systemreport::printJson(all, os); },
                    pictureMembers(all.checked)),
         systemScript});
}

} // namespace tvtool::page
