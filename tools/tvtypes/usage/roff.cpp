#include "usage/roff.h"

#include "text/utf16.h"

#include <fmt/format.h>

namespace tvtool::usage {

namespace {

/// Returns the escape sequence of a character that roff would interpret or typeset as another one;
/// empty for all others.
std::string_view escapeOf(char16_t c) {
    switch (c) {
    case u'\\':
        return "\\e";
    case u'-':
        return "\\-";
    case u'\'':
        return "\\(aq";
    case u'"':
        return "\\(dq";
    case u'`':
        return "\\(ga";
    case u'^':
        return "\\(ha";
    case u'~':
        return "\\(ti";
    default:
        return "";
    }
}

} // namespace

std::string roffText(std::string_view text) {
    constexpr char16_t firstLow = 0xDC00;
    std::string result;
    bool beginsLine = true;
    char32_t high = 0; // of a pair of surrogates
    for (const char16_t c : text::toUtf16(text)) {
        if (const std::string_view escape = escapeOf(c); !escape.empty()) {
            result += escape;
        } else if (c >= 0xD800 && c < firstLow) {
            high = c - 0xD800U;
            continue;
        } else if (c > u'~') {
            const char32_t code = high == 0 ? c : 0x10000U + (high << 10U) + c - firstLow;
            result += fmt::format("\\[u{:04X}]", static_cast<unsigned>(code));
        } else {
            // A point at the beginning of a line would make it a request.
            result += c == u'.' && beginsLine ? "\\&" : "";
            result += static_cast<char>(c);
        }
        high = 0;
        beginsLine = c == u'\n';
    }
    return result;
}

std::string bold(std::string_view text) { return "\\fB" + roffText(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + roffText(text) + "\\fR"; }

ManualPage::ManualPage(std::string_view name, std::string_view date, std::string_view source) {
    line(fmt::format(".TH {} 1 \"{}\" \"{}\" \"User commands\"", roffText(name), roffText(date),
                     roffText(source)));
    // Neither hyphenated nor justified, as the help.
    line(".nh");
    line(".ad l");
}

void ManualPage::section(std::string_view heading) {
    line(fmt::format(".SH \"{}\"", roffText(heading)));
}

void ManualPage::subsection(std::string_view heading) {
    line(fmt::format(".SS \"{}\"", roffText(heading)));
}

void ManualPage::paragraph(std::string_view text) {
    line(".PP");
    line(roffText(text));
}

void ManualPage::item(std::string_view term, std::string_view text) {
    line(".TP");
    line(term);
    line(text.empty() ? "\\&" : roffText(text));
}

void ManualPage::literal(std::string_view lines) {
    line(".PP");
    line(".RS 4");
    line(".nf");
    line(roffText(lines));
    line(".fi");
    line(".RE");
}

void ManualPage::line(std::string_view roff) {
    text_ += roff;
    text_ += '\n';
}

} // namespace tvtool::usage
