#include "fixedpoint/identifier.h"

#include "fixedpoint/constructor.h"
#include "fixedpoint/record.h"
#include "text/number.h"
#include "text/parse_error.h"

#include <tvtypes/datatypetable.h>

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <tuple>
#include <vector>

namespace tvtool::fixedpoint {

namespace {

using TVTypeSys::DataTypeTable;

/// Length of the stems sfix, ufix, flts and fltu.
constexpr std::size_t stemLength = 4;

std::optional<fxpDataTypeProp> recordOfStem(std::string_view stem) {
    for (const auto& [text, mode, signedness] : {std::tuple("sfix", FXP_DT_FIXPT, 1U),
                                                 {"ufix", FXP_DT_FIXPT, 0U},
                                                 {"flts", FXP_DT_SCALED_DOUBLE, 1U},
                                                 {"fltu", FXP_DT_SCALED_DOUBLE, 0U}}) {
        if (stem == text) {
            return fxpDataTypeProp{mode, signedness, 0, 0, 1.0, 0.0, 0};
        }
    }
    return std::nullopt;
}

/// Parses the names that are made of components. Throws a text::ParseError.
class NameParser {
  public:
    explicit NameParser(std::string_view text) : text_(text) {}

    fxpDataTypeProp parse() {
        const auto record = recordOfStem(text_.substr(0, stemLength));
        if (!record) {
            fail(0, "a name begins with sfix, ufix, flts or fltu, or is that of a built-in type");
        }
        record_ = *record;
        position_ = stemLength;
        parseWordLength();
        while (skip('_')) {
            parseComponent();
        }
        return record_;
    }

  private:
    [[noreturn]] void fail(std::size_t position, const char* reason) const {
        throw text::ParseError(reason, std::string(text_), position);
    }

    std::string_view takeDigits() {
        const std::size_t begin = position_;
        position_ = std::min(text_.find_first_not_of("0123456789", begin), text_.size());
        return text_.substr(begin, position_ - begin);
    }

    /// Takes at least one digit.
    std::string_view requireDigits() {
        const std::string_view digits = takeDigits();
        if (digits.empty()) {
            fail(position_, "a digit is missing");
        }
        return digits;
    }

    bool skip(char c) {
        const bool isThere = position_ < text_.size() && text_[position_] == c;
        position_ += isThere ? 1 : 0;
        return isThere;
    }

    /// Converts the number that ends the component. `reason` is the error if it is out of range.
    template <class Number>
    Number convertEnd(std::size_t begin, std::string_view number, const char* reason) const {
        if (position_ < text_.size() && text_[position_] != '_') {
            fail(position_, "only an underscore or the end can follow here");
        }
        const std::optional<Number> value = text::parseNumber<Number>(number);
        if (!value) {
            fail(begin, reason);
        }
        return *value;
    }

    void parseWordLength() {
        const std::size_t begin = position_;
        const std::string_view digits = takeDigits();
        if (digits.empty()) {
            fail(begin, "the word length is missing");
        }
        record_.WordLength = convertEnd<int>(begin, digits, "a word length is at most 2147483647");
        if (!fxpDataTypeProp::preValidateWordLength(record_.WordLength)) {
            fail(begin, "a word length is at least 1");
        }
    }

    void parseComponent() {
        const std::size_t begin = position_;
        const char letter = position_ < text_.size() ? text_[position_++] : '\0';
        if (std::string_view("ESFB").find(letter) == std::string_view::npos) {
            fail(begin, "an underscore stands before an exponent E, a slope S, a factor F or a "
                        "bias B");
        }
        if (const char* const reason = orderFault(letter)) {
            fail(begin, reason);
        }
        seen_ += letter;
        if (letter == 'E') {
            record_.FixedExponent = parseExponent();
        } else if (letter == 'S') {
            const double slope = parseNumber();
            if (!fxpDataTypeProp::preValidateTotalSlope(slope)) {
                fail(begin + 1, "a slope is greater than 0");
            }
            setSlope(slope, record_);
        } else if (letter == 'F') {
            record_.SlopeAdjustmentFactor = parseNumber();
            if (!fxpDataTypeProp::preValidateSlopeAdjustmentFactor(record_.SlopeAdjustmentFactor)) {
                fail(begin + 1, "a factor is at least 1 and less than 2");
            }
        } else {
            record_.Bias = parseNumber();
        }
    }

    bool has(char letter) const { return seen_.find(letter) != std::string::npos; }

    /// Returns why a component cannot follow those before it; null if it can.
    const char* orderFault(char letter) const {
        if (has(letter)) {
            return "this component stands twice";
        }
        if (has('B')) {
            return "the bias stands last";
        }
        if ((letter == 'S' && !seen_.empty()) || (letter != 'B' && has('S'))) {
            return "a slope stands without a factor and an exponent";
        }
        return letter == 'F' && has('E') ? "the factor stands before the exponent" : nullptr;
    }

    std::int32_t parseExponent() {
        const std::size_t begin = position_;
        std::string text(skip('n') ? "-" : "");
        text += requireDigits();
        return convertEnd<std::int32_t>(begin, text,
                                        "an exponent is from -2147483648 to 2147483647");
    }

    /// Parses a number in the notation of names: n is a minus and p the point.
    double parseNumber() {
        const std::size_t begin = position_;
        std::string text(skip('n') ? "-" : "");
        const std::string_view whole = takeDigits();
        text += whole;
        if (skip('p')) {
            text += '.';
            text += requireDigits();
        } else if (whole.empty()) {
            fail(position_, "a digit is missing");
        }
        if (skip('e')) {
            text += skip('n') ? "e-" : "e";
            text += requireDigits();
        }
        return convertEnd<double>(begin, text, "the number is beyond what a double holds");
    }

    std::string_view text_;
    std::size_t position_ = 0;
    fxpDataTypeProp record_{};
    std::string seen_; ///< letters of the components so far
};

fxpDataTypeProp parseName(const std::string& name) {
    const int id = DataTypeTable::getBuiltInDataType(name.c_str());
    return DataTypeTable::checkForBuiltInDataType(id)
               ? *DataTypeTable::getBuiltinDataTypeProperties(id)
               : NameParser(name).parse();
}

/// Corrects the case of letters and the notation of numbers. The stems int and uint are replaced
/// unless the name is that of a built-in type.
std::string correctedSpelling(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    std::erase(text, '+');
    std::ranges::replace(text, '-', 'n');
    std::ranges::replace(text, '.', 'p');
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i - 1] == '_' && text[i] >= 'a' && text[i] <= 'z') {
            text[i] = static_cast<char>(text[i] - 'a' + 'A');
        }
    }
    for (const char* const stem : {"int", "uint"}) {
        if (text.starts_with(stem) && !DataTypeTable::nameOfBuiltInDataType(text.c_str())) {
            text.replace(0, text.find('t') + 1, *stem == 'u' ? "ufix" : "sfix");
        }
    }
    return text;
}

/// Returns what may be meant by an invalid name: itself with its spelling corrected, or the name of
/// a built-in type.
std::vector<std::string> suggestions(const std::string& text) {
    try {
        const std::string corrected = correctedSpelling(text);
        parseName(corrected);
        return {corrected};
    } catch (const text::ParseError&) {
        std::set<std::string> names;
        for (int id = 0; id < DataTypeTable::getNumBuiltInDataTypes(); ++id) {
            names.insert(DataTypeTable::getNameOfBuiltInDataType(id));
        }
        return text::suggestionsFor(text, names);
    }
}

/// Returns what the library makes of an invalid name, to append to the error.
std::string libraryRemark(const std::string& text) {
    int wordLength = 0;
    return DataTypeTable::isAValidDataType(text.c_str()) &&
                   DataTypeTable::isInstrinsicFixptName(text.c_str(), &wordLength)
               ? fmt::format("; the data type table, which looks at the beginning, takes it for "
                             "a fixed-point name of {} bits all the same",
                             wordLength)
               : "";
}

} // namespace

fxpDataTypeProp parseTypeName(const std::string& name) {
    if (isConstructor(name)) {
        return parseConstructor(name);
    }
    try {
        return parseName(name);
    } catch (const text::ParseError& error) {
        throw text::ParseError(error.what() + libraryRemark(name), name, error.position,
                               suggestions(name));
    }
}

} // namespace tvtool::fixedpoint
