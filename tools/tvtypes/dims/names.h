/// \file
/// Names of sizes that are no identifiers.
///
/// The grammar of the library has identifiers only. In expressions of the tool a name may also have
/// points, as sizes.n, or be any text in double quotes, as "a[1].n", with \" and \\ for a quote and
/// a backslash, and \uXXXX for others as in JSON, as reports print them. The tool registers such a
/// name as an identifier that encodes it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::dims {

/// An expression in the grammar of the library.
struct EncodedText {
    std::string text;
    /// Positions in this text and in the given one, at which equal parts begin; ascending.
    std::vector<std::pair<std::size_t, std::size_t>> starts;

    /// Returns the position in the given text.
    std::size_t givenPosition(std::size_t position) const;
};

/// Encodes the names in an expression. Throws a text::ParseError for a quote that is not closed and
/// for an empty name.
EncodedText encodeNames(const std::string& text);

/// Returns a text of the library with the encoded names in quotes.
std::string decodeNames(std::string_view text);

/// Returns a name as it is written in expressions: in quotes unless it is made of identifiers with
/// points between them.
std::string nameInExpression(std::string_view name);

/// Returns the position of a name in an expression in the grammar of the library; npos if the
/// expression does not have it.
std::size_t findName(std::string_view expression, std::string_view name);

/// Returns a line of the same length, in which the names in quotes have no character of a meaning.
std::string withoutQuotedNames(std::string_view line);

} // namespace tvtool::dims
