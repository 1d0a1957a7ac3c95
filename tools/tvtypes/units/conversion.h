/// \file
/// Conversion of values from one unit to another.
#pragma once

#include "exact/number.h"
#include "units/factor.h"

#include <cstddef>
#include <istream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

struct ConvertedValue {
    std::string value; ///< as given
    ShownNumber result;
};

/// Conversion between two units; without common fundamental units there is none.
class ValueConversion {
  public:
    /// Registers the units in the table. Throws a text::ParseError.
    ValueConversion(const std::string& from, const std::string& to, Values values,
                    TVTypeSys::UnitTable& table);

    /// Returns whether values can be converted; otherwise reason() has the reason.
    bool exists() const { return conversion_.has_value(); }
    const std::string& reason() const { return reason_; }

    const std::string& from() const { return from_; } ///< as given; empty for no unit
    const std::string& to() const { return to_; }     ///< as given; empty for no unit
    Values values() const { return values_; }
    /// How the units were read.
    const std::vector<std::string>& notes() const { return notes_; }
    /// How the factor of the library is wrong; empty if it is not.
    const std::string& libraryNote() const { return libraryNote_; }

    /// Converts the value of a decimal text, which is any number of characters long. Throws a
    /// std::invalid_argument for another text. \pre exists()
    ConvertedValue convert(const std::string& value) const;

  private:
    std::string from_;
    std::string to_;
    Values values_;
    std::optional<Conversion> conversion_;
    std::string reason_;
    std::vector<std::string> notes_;
    std::string libraryNote_;
};

/// Returns whether a text is a decimal number with an optional sign.
bool isDecimal(std::string_view text);

/// Words of a stream, with their lines.
class Words {
  public:
    /// Reading throws std::ios_base::failure if the stream fails.
    explicit Words(std::istream& is);

    /// Reads the next word, which is cut off if it is longer than any valid number. Returns false
    /// at the end.
    bool next(std::string& word);
    /// Returns the line of the last word, from 1.
    std::size_t line() const { return line_; }

  private:
    std::istream& is_;
    std::size_t line_ = 1;
};

} // namespace tvtool::units
