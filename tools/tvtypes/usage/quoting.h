/// \file
/// Texts in the scripts of shells.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::usage {

/// Puts a backslash before each of these characters.
inline std::string withBackslashes(std::string_view text, std::string_view characters) {
    std::string result;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos) {
            result += '\\';
        }
        result += c;
    }
    return result;
}

/// Quotes a text for bash and zsh, where nothing in single quotes is special.
inline std::string singleQuoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

/// Quotes a text for fish, where single quotes and backslashes in single quotes are escaped.
inline std::string fishQuoted(std::string_view text) {
    return "'" + withBackslashes(text, "'\\") + "'";
}

} // namespace tvtool::usage
