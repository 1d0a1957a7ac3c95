#include "dims/names.h"

#include "text/parse_error.h"
#include "text/utf16.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <optional>
#include <system_error>

namespace tvtool::dims {

namespace {

/// Begins an identifier that encodes a name: the hexadecimal digits of its bytes follow.
constexpr std::string_view mark = "tvq_";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Returns the end of the identifier at a position, which is the position if there is none.
std::size_t identifierEnd(std::string_view text, std::size_t begin) {
    std::size_t end = begin;
    while (end < text.size() && (isLetter(text[end]) || (end > begin && isDigit(text[end])))) {
        ++end;
    }
    return end;
}

/// Returns the end of identifiers with points between them.
std::size_t dottedEnd(std::string_view text, std::size_t begin) {
    std::size_t end = identifierEnd(text, begin);
    while (end > begin && end < text.size() && text[end] == '.' &&
           identifierEnd(text, end + 1) > end + 1) {
        end = identifierEnd(text, end + 1);
    }
    return end;
}

/// Returns the end of a name in quotes, behind the closing quote; npos if there is none.
std::size_t quotedEnd(std::string_view text, std::size_t begin) {
    for (std::size_t i = begin + 1; i < text.size(); ++i) {
        if (text[i] == '"') {
            return i + 1;
        }
        i += text[i] == '\\' ? 1 : 0;
    }
    return std::string_view::npos;
}

/// Returns the 16-bit character of an escape such as \u001b at a position; empty for another text.
std::optional<char16_t> escapedCharacter(std::string_view text, std::size_t position) {
    constexpr std::size_t digits = 4;
    const std::string_view escape = text.substr(position, 2 + digits);
    std::uint16_t character = 0;
    if (escape.size() < 2 + digits || !escape.starts_with("\\u")) {
        return std::nullopt;
    }
    const char* const end = escape.data() + escape.size();
    const auto [next, error] = std::from_chars(escape.data() + 2, end, character, 16);
    return error == std::errc() && next == end ? std::optional(char16_t{character}) : std::nullopt;
}

std::string unquoted(std::string_view quoted) {
    std::string name;
    for (std::size_t i = 1; i + 1 < quoted.size();) {
        // Escapes that follow each other may be the two halves of a character.
        std::u16string characters;
        for (; const auto character = escapedCharacter(quoted, i); i += 6) {
            characters += *character;
        }
        if (!characters.empty()) {
            name += text::toUtf8(characters);
            continue;
        }
        i += quoted[i] == '\\' ? 1 : 0;
        name += quoted[i++];
    }
    return name;
}

std::string inQuotes(std::string_view name) {
    std::string quoted = "\"";
    for (const char c : name) {
        quoted += c == '"' || c == '\\' ? "\\" : "";
        quoted += c;
    }
    return quoted + '"';
}

std::string encoded(std::string_view name) {
    std::string identifier(mark);
    for (const char c : name) {
        fmt::format_to(std::back_inserter(identifier), "{:02x}", static_cast<unsigned char>(c));
    }
    return identifier;
}

int digitValue(char c) { return isDigit(c) ? c - '0' : c - 'a' + 10; }

/// Returns the name that an identifier encodes; the identifier if it encodes none.
std::string decoded(std::string_view identifier) {
    if (!identifier.starts_with(mark)) {
        return std::string(identifier);
    }
    std::string name;
    for (std::size_t i = mark.size(); i + 1 < identifier.size(); i += 2) {
        name += static_cast<char>(digitValue(identifier[i]) * 16 + digitValue(identifier[i + 1]));
    }
    return inQuotes(name);
}

} // namespace

std::size_t EncodedText::givenPosition(std::size_t position) const {
    const auto next =
        std::ranges::upper_bound(starts, position, {}, &std::pair<std::size_t, std::size_t>::first);
    const auto& [here, given] = *std::prev(next);
    const std::size_t end = next == starts.end() ? std::string::npos : next->second;
    return std::min(given + (position - here), end);
}

EncodedText encodeNames(const std::string& text) {
    EncodedText result;
    result.starts.emplace_back(0, 0);
    const auto append = [&](std::string_view part, std::size_t end) {
        result.text += part;
        result.starts.emplace_back(result.text.size(), end);
    };
    for (std::size_t begin = 0; begin < text.size();) {
        const std::string_view all(text);
        std::size_t end = dottedEnd(all, begin);
        const std::string_view name = all.substr(begin, end - begin);
        if (text[begin] == '"') {
            end = quotedEnd(all, begin);
            if (end == std::string::npos || end == begin + 2) {
                throw text::ParseError(end == begin + 2 ? "a name is missing between the quotes"
                                                        : "the quote of this name is not closed",
                                       text, begin);
            }
            // A name that needs no quotes is the same with them.
            const std::string quoted = unquoted(all.substr(begin, end - begin));
            const bool isPlain =
                identifierEnd(quoted, 0) == quoted.size() && !quoted.starts_with(mark);
            append(isPlain ? quoted : encoded(quoted), end);
        } else if (name.find('.') != std::string_view::npos || name.starts_with(mark)) {
            append(encoded(name), end);
        } else {
            end = std::max(end, begin + 1);
            // A number takes the letters behind it along, which are no name then.
            while (isDigit(text[begin]) && end < text.size() &&
                   (isDigit(text[end]) || isLetter(text[end]))) {
                ++end;
            }
            result.text += all.substr(begin, end - begin);
        }
        begin = end;
    }
    return result;
}

std::string decodeNames(std::string_view text) {
    std::string result;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = identifierEnd(text, begin);
        if (end == begin) {
            result += text[begin++];
        } else {
            result += decoded(text.substr(begin, end - begin));
            begin = end;
        }
    }
    return result;
}

std::string nameInExpression(std::string_view name) {
    return !name.empty() && dottedEnd(name, 0) == name.size() ? std::string(name) : inQuotes(name);
}

std::size_t findName(std::string_view expression, std::string_view name) {
    for (std::size_t begin = 0; begin < expression.size();) {
        const std::size_t end = identifierEnd(expression, begin);
        if (expression.substr(begin, end - begin) == name) {
            return begin;
        }
        begin = end > begin ? end : begin + 1;
    }
    return std::string_view::npos;
}

std::string withoutQuotedNames(std::string_view line) {
    std::string masked(line);
    for (std::size_t begin = masked.find('"'); begin != std::string::npos;) {
        const std::size_t end = std::min(quotedEnd(line, begin), line.size());
        std::fill(masked.begin() + static_cast<std::ptrdiff_t>(begin),
                  masked.begin() + static_cast<std::ptrdiff_t>(end), 'q');
        begin = masked.find('"', end);
    }
    return masked;
}

} // namespace tvtool::dims
