#include "fixedpoint/identifier.h"

#include "fixedpoint/record.h"
#include "text/parse_error.h"

#include <tvtypes/datatypetable.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>
#include <tuple>

namespace tvtool::fixedpoint {

namespace {

using TVTypeSys::DataTypeTable;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

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

/// Reads the names that are made of components. Throws a text::ParseError.
class NameReader {
  public:
    explicit NameReader(std::string_view text) : text_(text) {}

    fxpDataTypeProp read() {
        const auto record = recordOfStem(text_.substr(0, stemLength));
        if (!record) {
            fail(0, "a name begins with sfix, ufix, flts or fltu, or is that of a built-in "
                    "type");
        }
        record_ = *record;
        position_ = stemLength;
        readWordLength();
        while (skip('_')) {
            readComponent();
        }
        return record_;
    }

  private:
    [[noreturn]] void fail(std::size_t position, const char* reason) const {
        throw text::ParseError(reason, std::string(text_), position);
    }

    std::string_view digits() {
        const std::size_t begin = position_;
        while (position_ < text_.size() && isDigit(text_[position_])) {
            ++position_;
        }
        return text_.substr(begin, position_ - begin);
    }

    /// At least one digit.
    std::string_view someDigits() {
        const std::string_view some = digits();
        if (some.empty()) {
            fail(position_, "a digit is missing");
        }
        return some;
    }

    bool skip(char c) {
        const bool isThere = position_ < text_.size() && text_[position_] == c;
        position_ += isThere ? 1 : 0;
        return isThere;
    }

    void checkEnd() const {
        if (position_ < text_.size() && text_[position_] != '_') {
            fail(position_, "only an underscore or the end can follow here");
        }
    }

    void readWordLength() {
        const std::size_t begin = position_;
        const std::string_view text = digits();
        if (text.empty()) {
            fail(begin, "the word length is missing");
        }
        checkEnd();
        if (std::from_chars(text.data(), text.data() + text.size(), record_.WordLength).ec !=
            std::errc()) {
            fail(begin, "a word length is at most 2147483647");
        }
        if (!fxpDataTypeProp::preValidateWordLength(record_.WordLength)) {
            fail(begin, "a word length is at least 1");
        }
    }

    void readComponent() {
        const std::size_t begin = position_;
        const char letter = position_ < text_.size() ? text_[position_++] : '\0';
        if (std::string_view("ESFB").find(letter) == std::string_view::npos) {
            fail(begin, "an underscore stands before an exponent E, a slope S, a factor F "
                        "or a bias B");
        }
        if (const char* const reason = misplacement(letter)) {
            fail(begin, reason);
        }
        seen_ += letter;
        if (letter == 'E') {
            record_.FixedExponent = exponent();
        } else if (letter == 'S') {
            readSlope();
        } else if (letter == 'F') {
            readFactor();
        } else {
            record_.Bias = number();
        }
    }

    bool has(char letter) const { return seen_.find(letter) != std::string::npos; }

    /// Why a component cannot stand behind those that have been read; null if it can.
    const char* misplacement(char letter) const {
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

    std::int32_t exponent() {
        const std::size_t begin = position_;
        std::string text(skip('n') ? "-" : "");
        text += someDigits();
        checkEnd();
        std::int32_t value = 0;
        if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) {
            fail(begin, "an exponent is from -2147483648 to 2147483647");
        }
        return value;
    }

    /// Undoes the rewriting of a number for use in an identifier.
    double number() {
        const std::size_t begin = position_;
        std::string text(skip('n') ? "-" : "");
        const std::string_view whole = digits();
        text += whole;
        if (skip('p')) {
            text += '.';
            text += someDigits();
        } else if (whole.empty()) {
            fail(position_, "a digit is missing");
        }
        if (skip('e')) {
            text += skip('n') ? "e-" : "e";
            text += someDigits();
        }
        checkEnd();
        double value = 0;
        if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc()) {
            fail(begin, "the number is beyond what a double holds");
        }
        return value;
    }

    void readSlope() {
        const std::size_t begin = position_;
        const double slope = number();
        if (!fxpDataTypeProp::preValidateTotalSlope(slope)) {
            fail(begin, "a slope is greater than 0");
        }
        setSlope(slope, record_);
    }

    void readFactor() {
        const std::size_t begin = position_;
        record_.SlopeAdjustmentFactor = number();
        if (!fxpDataTypeProp::preValidateSlopeAdjustmentFactor(record_.SlopeAdjustmentFactor)) {
            fail(begin, "a factor is at least 1 and less than 2");
        }
    }

    std::string_view text_;
    std::size_t position_ = 0;
    fxpDataTypeProp record_{};
    std::string seen_; // the letters of the components
};

fxpDataTypeProp read(const std::string& name) {
    const int id = DataTypeTable::getBuiltInDataType(name.c_str());
    return DataTypeTable::checkForBuiltInDataType(id)
               ? *DataTypeTable::getBuiltinDataTypeProperties(id)
               : NameReader(name).read();
}

/// The text with letters in the case of names, and signs as names have them. An integer of any word
/// length gets the stem that it has where there is no built-in type.
std::string respelt(std::string text) {
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

/// The right name of what a text means but for its spelling.
std::string nameMeantBy(const std::string& text) {
    try {
        const fxpDataTypeProp record = read(respelt(text));
        return fxpDataTypeToIdentifierString(&record);
    } catch (const text::ParseError&) {
        return {};
    }
}

/// What there is to add to the reason why a text is no name.
std::string remarksOn(const std::string& text) {
    std::string remarks;
    if (const std::string right = nameMeantBy(text); !right.empty()) {
        remarks += fmt::format("; write {}", right);
    }
    int wordLength = 0;
    if (DataTypeTable::isAValidDataType(text.c_str()) &&
        DataTypeTable::isInstrinsicFixptName(text.c_str(), &wordLength)) {
        remarks += fmt::format("; the data type table, which looks at the beginning, takes it for "
                               "a fixed-point name of {} bits all the same",
                               wordLength);
    }
    return remarks;
}

} // namespace

fxpDataTypeProp recordNamed(const std::string& name) {
    try {
        return read(name);
    } catch (const text::ParseError& error) {
        throw text::ParseError(error.what() + remarksOn(name), name, error.position);
    }
}

} // namespace tvtool::fixedpoint
