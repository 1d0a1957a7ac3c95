#include "output/svg.h"

#include "text/safe_text.h"
#include "text/utf8.h"

#include <boost/algorithm/string/replace.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cstddef>

namespace tvtool::output {

namespace {

constexpr double lowestLabel = 8;
constexpr double largestFont = 12;
// A larger font would cut off the descenders.
constexpr double fontPerHeight = 0.8;
constexpr double narrowestLetter = 3;

constexpr const char* head =
    R"svg(<?xml version="1.0" encoding="UTF-8"?>
<svg xmlns="http://www.w3.org/2000/svg" width="{0:.6g}" height="{1:.6g}" viewBox="0 0 {0:.6g} {1:.6g}">
<style>
text {{ font-family: "DejaVu Sans", Verdana, Arial, sans-serif; fill: #1c2733; }}
.title {{ font-size: 16px; font-weight: bold; }}
.note, .tick {{ font-size: 11px; fill: #55616e; }}
.tick {{ text-anchor: end; }}
.detail {{ fill: #55616e; }}
rect {{ stroke: #44525f; stroke-width: 0.75; }}
.struct {{ fill: #cfdcea; }}
.structArray {{ fill: #b3c7dc; }}
.leaf {{ fill: #fbfaf5; }}
.padding {{ fill: url(#hatching); stroke: #9aa4ae; }}
.thin {{ fill: #8796a5; stroke: none; }}
.paper {{ fill: #ffffff; stroke: none; }}
.hatch {{ stroke: #9aa4ae; stroke-width: 2; }}
line {{ stroke: #44525f; stroke-width: 0.75; }}
</style>
<defs><pattern id="hatching" width="6" height="6" patternUnits="userSpaceOnUse" patternTransform="rotate(45)"><rect width="6" height="6" class="paper"/><path d="M0 0V6" class="hatch"/></pattern></defs>
<rect width="100%" height="100%" class="paper"/>
)svg";

/// Returns the first characters of a text.
std::string_view firstCharacters(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    while (end < text.size() && (count > 0 || text::isContinuationByte(text[end]))) {
        count -= text::isContinuationByte(text[end]) ? 0 : 1;
        ++end;
    }
    return text.substr(0, end);
}

/// Returns a text as the content of an XML element.
std::string xmlText(std::string_view text) {
    std::string escaped = text::safeText(text);
    boost::replace_all(escaped, "&", "&amp;");
    boost::replace_all(escaped, "<", "&lt;");
    boost::replace_all(escaped, ">", "&gt;");
    return escaped;
}

} // namespace

void Svg::rectangle(const Box& box, std::string_view style, std::string_view title) {
    shapes_ += fmt::format("<rect x=\"{:.6g}\" y=\"{:.6g}\" width=\"{:.6g}\" height=\"{:.6g}\" "
                           "class=\"{}\"><title>{}</title></rect>\n",
                           box.x, box.y, box.width, box.height, style, xmlText(title));
}

void Svg::line(double x1, double y1, double x2, double y2) {
    shapes_ += fmt::format("<line x1=\"{:.6g}\" y1=\"{:.6g}\" x2=\"{:.6g}\" y2=\"{:.6g}\"/>\n", x1,
                           y1, x2, y2);
}

void Svg::text(double x, double y, std::string_view style, std::string_view content) {
    shapes_ += fmt::format("<text x=\"{:.6g}\" y=\"{:.6g}\" class=\"{}\">{}</text>\n", x, y, style,
                           xmlText(content));
}

void Svg::label(const Box& box, std::string_view name, std::string_view detail) {
    if (box.height < lowestLabel) {
        return;
    }
    const double font = std::min(largestFont, box.height * fontPerHeight);
    const auto letters = static_cast<std::size_t>(box.width / narrowestLetter);
    const bool hasTwoLines = box.height >= 3 * largestFont;
    const double middle = box.height / 2 + font * 0.36;
    const double first = hasTwoLines ? middle - font * 0.65 : middle;
    // A nested svg element clips its content.
    shapes_ += fmt::format("<svg x=\"{:.6g}\" y=\"{:.6g}\" width=\"{:.6g}\" height=\"{:.6g}\">"
                           "<text x=\"6\" y=\"{:.6g}\" font-size=\"{:.6g}\">{}",
                           box.x, box.y, box.width - 2, box.height, first, font,
                           xmlText(firstCharacters(name, letters)));
    if (!detail.empty()) {
        const std::string place =
            hasTwoLines ? fmt::format("x=\"6\" dy=\"{:.6g}\"", font * 1.3) : "dx=\"8\"";
        shapes_ += fmt::format("<tspan {} class=\"detail\">{}</tspan>", place,
                               xmlText(firstCharacters(detail, letters)));
    }
    shapes_ += "</text></svg>\n";
}

std::string Svg::document(double width, double height) const {
    return fmt::format(head, width, height) + shapes_ + "</svg>\n";
}

} // namespace tvtool::output
