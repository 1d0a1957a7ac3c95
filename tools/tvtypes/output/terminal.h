/// \file
/// The width of the lines of an output stream, and text that is wrapped to it.
#pragma once

#include <cstddef>
#include <limits>
#include <ostream>
#include <string>
#include <string_view>

namespace tvtool::output {

/// The width of the lines of a stream that is no terminal.
inline constexpr std::size_t unlimitedWidth = std::numeric_limits<std::size_t>::max();

/// Returns the width of the terminal with a descriptor, in columns: that of the environment
/// variable COLUMNS, else that of the terminal, but at least 80. A descriptor of something else has
/// unlimited lines.
std::size_t lineWidthOf(int descriptor);

/// Sets the width of the lines of a stream. It is kept in the stream, like the other parameters of
/// formatting.
void setLineWidth(std::ostream& os, std::size_t width);

/// Returns the width of the lines of a stream: unlimited unless it was set.
std::size_t lineWidth(std::ostream& os);

/// Returns a text as lines of at most `width` columns, split at blanks, without a line break at the
/// end. All but the first are indented by `indent` columns. A word that is wider than a line is
/// split.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width);

/// Prints a text wrapped to the lines of the stream.
void printWrapped(std::string_view text, std::size_t indent, std::ostream& os);

} // namespace tvtool::output
