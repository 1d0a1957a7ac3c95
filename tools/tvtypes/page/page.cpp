#include "page/page.h"

#include "findings/text.h"
#include "model/memory_map.h"
#include "output/json.h"
#include "page/page_html.h"
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

std::string titleText(const report::Inspection& inspection) {
    const std::string file = text::safeText(inspection.file);
    const std::string_view model = inspection.description().modelName;
    return model.empty() ? file : fmt::format("{} ({})", text::safeText(model), file);
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

/// Returns the JSON of the inspection, with a member "layouts", as the content of a script element:
/// without "<", so without the end of the element and the beginning of a comment.
std::string scriptData(const report::Inspection& inspection) {
    std::string object = printed([&](std::ostream& os) { report::printJson(inspection, os); });
    object.erase(object.rfind('}'));
    object += ",\"layouts\":" + output::jsonText(layouts(inspection)) + '}';
    boost::replace_all(object, "<", "\\u003c");
    return object;
}

std::string htmlText(std::string text) {
    boost::replace_all(text, "&", "&amp;");
    boost::replace_all(text, "<", "&lt;");
    boost::replace_all(text, ">", "&gt;");
    return text;
}

std::string plainList(const report::Inspection& inspection) {
    return printed([&](std::ostream& os) {
        os << report::summaryText(inspection.model, inspection.file, inspection.variables)
           << "\n\n";
        findings::TextPrinter({.colour = false, .all = true}, os)
            .print(inspection.model.findings.all(), inspection.file);
    });
}

} // namespace

std::string htmlPage(const report::Inspection& inspection) {
    const std::pair<std::string_view, std::string> contents[] = {
        {"{{title}}", htmlText(titleText(inspection))},
        {"{{findings}}", htmlText(plainList(inspection))},
        {"{{report}}", scriptData(inspection)},
    };
    std::string html;
    std::string_view rest = pageHtml;
    // The contents are appended and never searched, as they may contain such marks.
    for (std::size_t mark = rest.find("{{"); mark != std::string_view::npos;
         mark = rest.find("{{")) {
        html += rest.substr(0, mark);
        rest.remove_prefix(mark);
        const auto content = std::ranges::find_if(
            contents, [&](const auto& entry) { return rest.starts_with(entry.first); });
        if (content == std::end(contents)) {
            html += "{{";
            rest.remove_prefix(2);
        } else {
            html += content->second;
            rest.remove_prefix(content->first.size());
        }
    }
    return html += rest;
}

} // namespace tvtool::page
