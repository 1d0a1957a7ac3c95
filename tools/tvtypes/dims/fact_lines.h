/// \file
/// The lines of a file of facts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::dims {

/// Reads the lines of a text one at a time.
class FactLines {
  public:
    /// Throws a files::ReadError if the stream cannot be read.
    explicit FactLines(std::istream& is);

    /// Returns false at the end. The line is valid until the next call. Throws a files::ReadError
    /// for a line longer than 4 MiB and for a byte of value 0.
    bool next(std::string_view& line);

    std::uint64_t number() const { return number_; }

  private:
    std::istream& is_;
    std::vector<char> buffer_;
    std::uint64_t number_ = 0;
};

/// A part of a line, without the blanks around it.
struct Side {
    std::string text;
    std::size_t position = 0; ///< in the line
};

/// A fact or question.
struct FactLine {
    Side left;
    std::string_view relation; ///< "==", ">" or "<"
    Side right;
    bool isQuestion = false;
    std::string block; ///< empty if the line names none
};

/// Splits a line; empty for a blank line and a comment. Throws a text::ParseError.
std::optional<FactLine> splitLine(std::string_view line);

/// Returns whether a line is a setting with this text, without the comment behind it.
bool isSetting(std::string_view line, std::string_view text);

} // namespace tvtool::dims
