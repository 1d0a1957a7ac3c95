/// \file
/// Declaration of a report as a list of columns over a record type, from which both the table and
/// the JSON are printed. A column has a heading for the table, a member name for the JSON, and a
/// value:
///
///     const Columns<Word> wordColumns{
///         {"word", "word", &Word::text},
///         {"is", "kind", &Word::kind},
///         {"of", "unit", [](const Word& word) { return word.unit.name; }},
///     };
#pragma once

#include "output/json.h"
#include "output/table.h"
#include "output/terminal.h"
#include "text/quote.h"
#include "text/safe_text.h"
#include "text/utf8.h"

#include <boost/json.hpp>

#include <cstddef>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tvtool::output {

/// The heading or the member name of a column that is not in the table, or not in the JSON.
inline constexpr const char* none = nullptr;

/// Appends a value as the text of a table's cell, safe to print: nothing for null, a list with
/// commas, true and false as "yes" and "no". Texts longer than `longest` bytes are shortened.
template <class Type>
void appendCellText(const Type& value, std::size_t longest, std::string& text) {
    if constexpr (isOptionalType<Type>) {
        if (value) {
            appendCellText(*value, longest, text);
        }
    } else if constexpr (std::is_convertible_v<Type, std::string_view>) {
        const std::string_view view(value);
        if (view.size() <= longest && text::isPrintableAscii(view)) {
            text += view;
        } else {
            text += text::safeText(text::shortened(view, longest));
        }
    } else if constexpr (std::is_integral_v<Type> && !std::is_same_v<Type, bool>) {
        text += fmt::format_int(value).c_str();
    } else {
        text += cellText(jsonValue(value), longest);
    }
}

/// Appends a value as JSON, as jsonText() prints it, without building a document tree for texts and
/// integers.
template <class Type>
void appendJsonValue(const Type& value, std::string& text) {
    if constexpr (std::is_convertible_v<Type, std::string_view>) {
        const std::string_view view(value);
        if (view.empty()) {
            text += "null";
        } else if (text::isPrintableAscii(view) &&
                   view.find_first_of("\"\\") == std::string_view::npos) {
            text.append(1, '"').append(view).append(1, '"');
        } else {
            text += jsonText(boost::json::value(view));
        }
    } else if constexpr (std::is_integral_v<Type> && !std::is_same_v<Type, bool>) {
        text += fmt::format_int(value).c_str();
    } else {
        text += jsonText(jsonValue(value));
    }
}

template <class Row>
class Column {
  public:
    using Value = std::function<boost::json::value(const Row&)>;
    using Text = std::function<std::string(const Row&)>;
    using FittedText = std::function<std::string(const Row&, std::size_t width)>;

    /// \param value a member of the row, or a function of the row; see jsonValue() for the types.
    ///        Numbers are aligned to the right.
    template <class Function>
    Column(const char* heading, const char* member, Function value)
        : heading_(heading),
          member_(member),
          align_(alignOf<Function>()),
          value_([value](const Row& row) { return jsonValue(std::invoke(value, row)); }),
          append_([value](const Row& row, std::size_t longest, std::string& text) {
              appendCellText(std::invoke(value, row), longest, text);
          }),
          appendJson_([value](const Row& row, std::string& text) {
              appendJsonValue(std::invoke(value, row), text);
          }) {}

    /// Sets the text of a cell, which must be safe to print; without it the value is printed.
    Column shownAs(Text text) && {
        append_ = [text = std::move(text)](const Row& row, std::size_t, std::string& cell) {
            cell += text(row);
        };
        return std::move(*this);
    }
    /// Same, with the width that there is for it, which may be unlimited.
    Column fittedAs(FittedText text) && {
        append_ = [text](const Row& row, std::size_t, std::string& cell) {
            cell += text(row, unlimitedWidth);
        };
        fittedText_ = std::move(text);
        return std::move(*this);
    }
    /// Sets the largest number of bytes of a cell; longer texts are shortened.
    Column shortenedTo(std::size_t longest) && {
        longest_ = longest;
        return std::move(*this);
    }
    Column alignedLeft() && {
        align_ = Align::Left;
        return std::move(*this);
    }
    Column alignedRight() && {
        align_ = Align::Right;
        return std::move(*this);
    }
    /// Lets a column that is aligned to the right be shortened, if that of others is not enough.
    Column shrunkLast() && {
        shrinksLast_ = true;
        return std::move(*this);
    }
    /// Sets the width down to which the column is narrowed before columns are omitted.
    Column atLeast(std::size_t width) && {
        floor_ = width;
        return std::move(*this);
    }
    /// Lets the column be omitted from a table that does not fit, the highest rank first.
    Column omittedAt(int rank) && {
        omission_ = rank;
        return std::move(*this);
    }
    /// Omits the column from the table if all its cells are empty.
    Column ifAny() && {
        isOptional_ = true;
        return std::move(*this);
    }

    const char* heading() const { return heading_; }
    const char* member() const { return member_; }
    /// Appends the value as JSON.
    void appendJson(const Row& row, std::string& text) const { appendJson_(row, text); }
    boost::json::value value(const Row& row) const { return value_(row); }
    /// Appends the text of a cell, safe to print; nothing if there is no value.
    void appendText(const Row& row, std::string& text) const { append_(row, longest_, text); }
    std::string text(const Row& row) const {
        std::string text;
        appendText(row, text);
        return text;
    }

    /// Returns the column in a table of rows, which must outlive it.
    template <class Rows>
    TableColumn tableColumn(const Rows& rows) const {
        TableColumn column;
        column.heading = heading_;
        column.align = align_;
        column.isOptional = isOptional_;
        column.floor = floor_;
        column.omission = omission_;
        column.cell = [this, &rows](std::size_t row, std::string& text) {
            appendText(rows[row], text);
        };
        if (fittedText_) {
            column.fittedCell = [this, &rows](std::size_t row, std::size_t width) {
                return fittedText_(rows[row], width);
            };
        }
        if (align_ == Align::Right) {
            column.shrink = shrinksLast_ ? Shrink::Last : Shrink::Never;
        }
        return column;
    }

  private:
    template <class Function>
    static constexpr Align alignOf() {
        using Result = std::remove_cvref_t<std::invoke_result_t<Function, const Row&>>;
        return isNumeric<Result> ? Align::Right : Align::Left;
    }

    const char* heading_;
    const char* member_;
    Align align_;
    bool isOptional_ = false;
    bool shrinksLast_ = false;
    std::size_t floor_ = TableColumn().floor;
    int omission_ = 0;
    std::size_t longest_ = static_cast<std::size_t>(-1);
    Value value_;
    std::function<void(const Row&, std::size_t longest, std::string&)> append_;
    std::function<void(const Row&, std::string&)> appendJson_;
    FittedText fittedText_;
};

template <class Row>
using Columns = std::vector<Column<Row>>;

template <class Row>
boost::json::object jsonObject(const Row& row, const Columns<Row>& columns) {
    boost::json::object object;
    for (const Column<Row>& column : columns) {
        if (column.member() != none) {
            object.emplace(column.member(), column.value(row));
        }
    }
    return object;
}

/// Appends the object of a row as JSON, as jsonObject() returns it.
template <class Row>
void appendJsonObject(const Row& row, const Columns<Row>& columns, std::string& text) {
    char separator = '{';
    for (const Column<Row>& column : columns) {
        if (column.member() != none) {
            text.append(1, separator).append(1, '"').append(column.member()).append("\":");
            column.appendJson(row, text);
            separator = ',';
        }
    }
    text += '}';
}

template <class Row>
boost::json::array jsonArray(const std::vector<Row>& rows, const Columns<Row>& columns) {
    boost::json::array array;
    array.reserve(rows.size());
    for (const Row& row : rows) {
        array.push_back(jsonObject(row, columns));
    }
    return array;
}

/// Returns a function for a column of a JSON array: the rows in a member, with their columns, which
/// must outlive it.
template <class Row, class Part>
auto rowsOf(std::vector<Part> Row::*member, const Columns<Part>& columns) {
    return [member, &columns](const Row& row) { return jsonArray(row.*member, columns); };
}

/// Prints a heading and a line for each row. `rows` is a container, or computes a row from its
/// index. An empty cell is shown as "-".
template <class Rows, class Row>
void printTable(const Rows& rows, const Columns<Row>& columns, fmt::text_style headingStyle,
                std::ostream& os) {
    std::vector<TableColumn> shown;
    for (const Column<Row>& column : columns) {
        if (column.heading() != none) {
            shown.push_back(column.tableColumn(rows));
        }
    }
    printTable(shown, rows.size(), headingStyle, os);
}

/// Prints an empty line and the table, or nothing without rows.
template <class Row>
void printSection(const std::vector<Row>& rows, const Columns<Row>& columns,
                  fmt::text_style headingStyle, std::ostream& os) {
    if (!rows.empty()) {
        os << '\n';
        printTable(rows, columns, headingStyle, os);
    }
}

/// Prints the table, or a line with `noRows` without rows.
template <class Row>
void printList(const std::vector<Row>& rows, const Columns<Row>& columns, const char* noRows,
               fmt::text_style headingStyle, std::ostream& os) {
    if (rows.empty()) {
        os << noRows << '\n';
    } else {
        printTable(rows, columns, headingStyle, os);
    }
}

/// Prints a line "  label  text" for each column with a heading and a text.
template <class Row>
void printFields(const Row& row, const Columns<Row>& columns, std::ostream& os) {
    for (const Column<Row>& column : columns) {
        if (column.heading() != none) {
            printField(column.heading(), column.text(row), os);
        }
    }
}

} // namespace tvtool::output
