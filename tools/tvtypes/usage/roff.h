/// \file
/// Manual pages in the macros of man.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::usage {

/// Escapes a text so that it is printed as it is, with hyphens that can be searched and copied.
/// Bytes that are no UTF-8 are replaced.
std::string roffText(std::string_view text);

/// Writes a manual page.
class ManualPage {
  public:
    /// \param name   of the page, without the section 1
    /// \param date   of the page; empty for none
    /// \param source what it belongs to, with the version
    ManualPage(std::string_view name, std::string_view date, std::string_view source);

    /// Begins a section, whose heading is printed in capital letters.
    void section(std::string_view heading);
    void subsection(std::string_view heading);
    void paragraph(std::string_view text);
    /// Adds an item of a list: a term and what it means.
    void item(std::string_view term, std::string_view text);
    /// Adds lines that are printed as they are, indented.
    void literal(std::string_view lines);
    /// Adds a line of roff.
    void line(std::string_view roff);

    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

/// Returns a text that is printed in bold.
std::string bold(std::string_view text);
/// Returns a text that is printed in italics.
std::string italic(std::string_view text);

} // namespace tvtool::usage
