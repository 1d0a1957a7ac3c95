#include "units/conversion.h"

#include "files/stream_errors.h"

#include <fmt/format.h>

#include <stdexcept>

namespace tvtool::units {

namespace {

/// Longer than the texts that exact::parseDecimal() accepts.
constexpr std::size_t longestWord = 5000;

/// Returns the unit as it is written after a number; empty for no unit.
std::string unitText(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    if (begin == std::string::npos) {
        return {};
    }
    const std::string unit = text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
    return unit == "1" || unit == "-" || unit == unitless ? "" : unit;
}

bool isBlank(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

} // namespace

ValueConversion::ValueConversion(const std::string& from, const std::string& to, Values values,
                                 TVTypeSys::UnitTable& table)
    : values_(values) {
    UnitPair pair = relateUnits(from, to, values, table);
    from_ = unitText(from);
    to_ = unitText(to);
    conversion_ = pair.conversion;
    reason_ = pair.reason;
    notes_ = std::move(pair.notes);
    if (conversion_ && pair.libraryFactor) {
        const LibraryFactor ofLibrary = compareFactor(*pair.libraryFactor, conversion_->factor);
        if (ofLibrary.isWrong()) {
            libraryNote_ = ofLibrary.note();
        }
    }
}

ConvertedValue ValueConversion::convert(const std::string& value) const {
    const exact::Number result =
        exact::parseDecimal(value) * conversion_->factor + conversion_->offset;
    return {value, shownNumber(result, conversion_->piPower, conversion_->uncertainty)};
}

bool isDecimal(std::string_view text) {
    text.remove_prefix(text.starts_with('-') || text.starts_with('+') ? 1 : 0);
    return text.size() < longestWord && exact::splitDecimal(text).has_value();
}

Words::Words(std::istream& is) : is_(is) { files::throwOnFailure(is); }

bool Words::next(std::string& word) {
    using Traits = std::istream::traits_type;
    word.clear();
    for (int c = is_.get(); !Traits::eq_int_type(c, Traits::eof()); c = is_.get()) {
        if (!isBlank(c)) {
            if (word.size() < longestWord) {
                word += Traits::to_char_type(c);
            }
        } else if (!word.empty()) {
            is_.unget(); // so that line() is that of the word
            return true;
        } else if (c == '\n') {
            ++line_;
        }
    }
    return !word.empty();
}

} // namespace tvtool::units
