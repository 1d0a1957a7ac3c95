#include "fixedpoint/constructor.h"

#include "fixedpoint/record.h"
#include "text/number.h"
#include "text/parse_error.h"

#include <tvtypes/datatypetable.h>

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace tvtool::fixedpoint {

namespace {

using TVTypeSys::DataTypeTable;

/// An argument without the blanks around it.
struct Argument {
    std::string_view text;
    std::size_t position = 0; ///< in the constructor text
};

class Parser {
  public:
    explicit Parser(const std::string& text) : text_(text) {}

    fxpDataTypeProp parse() {
        splitArguments();
        fxpDataTypeProp record = parseType();
        for (; next_ < arguments_.size(); next_ += 2) {
            parseProperty(record);
        }
        return record;
    }

  private:
    [[noreturn]] void fail(std::size_t position, const std::string& reason) const {
        throw text::ParseError(reason, text_, position);
    }
    [[noreturn]] void fail(const Argument& argument, const std::string& reason) const {
        fail(argument.position, reason);
    }

    void splitArguments() {
        constexpr std::string_view blanks = " \t";
        const std::string_view text(text_);
        const std::size_t open = text.find('(');
        const std::string_view function = text.substr(0, open);
        if (function != "fixdt" && function != "numerictype") {
            fail(0, "a constructor is fixdt(...) or numerictype(...)");
        }
        const std::size_t end = text.find_last_not_of(blanks);
        if (text[end] != ')') {
            fail(text.size(), "the ) at the end is missing");
        }
        for (std::size_t begin = open + 1; begin <= end;) {
            const std::size_t stop = std::min(text.find(',', begin), end);
            const std::size_t first = std::min(text.find_first_not_of(blanks, begin), stop);
            const std::string_view argument = text.substr(first, stop - first);
            arguments_.push_back(
                {argument.substr(0, argument.find_last_not_of(blanks) + 1), first});
            begin = stop + 1;
        }
    }

    /// Returns the next argument, which is `what`.
    Argument take(const char* what) {
        if (next_ == arguments_.size() || arguments_[next_].text.empty()) {
            fail(next_ == arguments_.size() ? text_.rfind(')') : arguments_[next_].position,
                 fmt::format("{} is missing", what));
        }
        return arguments_[next_++];
    }

    static bool isQuoted(std::string_view text) {
        return text.size() >= 2 && (text.front() == '\'' || text.front() == '"') &&
               text.back() == text.front();
    }

    std::string unquoted(const Argument& argument) const {
        if (!isQuoted(argument.text)) {
            fail(argument, "a text in quotes is expected here");
        }
        return std::string(argument.text.substr(1, argument.text.size() - 2));
    }

    template <class Value>
    Value number(const Argument& argument, bool (*isValid)(Value), const char* allowed) const {
        const std::optional<Value> value = text::parseNumber<Value>(argument.text);
        if (!value || !isValid(*value)) {
            fail(argument, allowed);
        }
        return *value;
    }

    fxpDataTypeProp parseType() {
        const Argument first = take("the signedness");
        if (isQuoted(first.text)) {
            const std::string name = unquoted(first);
            const int id = DataTypeTable::getBuiltInDataType(name.c_str());
            if (name != "double" && name != "single" && name != "boolean") {
                fail(first, "a type in quotes is 'double', 'single' or 'boolean'");
            }
            return *DataTypeTable::getBuiltinDataTypeProperties(id);
        }
        fxpDataTypeProp record{FXP_DT_FIXPT, 0, 0, 0, 1.0, 0.0, 0};
        if (first.text != "0" && first.text != "1" && first.text != "[]") {
            fail(first, "the signedness is 0, 1 or []");
        }
        record.Signedness = first.text == "[]" ? openSignedness : first.text == "1" ? 1 : 0;
        record.WordLength =
            number<int>(take("the word length"), fxpDataTypeProp::preValidateWordLength,
                        "a word length is a whole number from 1 to 2147483647");
        parseScaling(record);
        return record;
    }

    void parseScaling(fxpDataTypeProp& record) {
        std::vector<Argument> numbers;
        while (next_ < arguments_.size() && !isQuoted(arguments_[next_].text)) {
            numbers.push_back(take("a number"));
        }
        constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
        if (numbers.size() > 3) {
            fail(numbers[3], "a scaling has at most three numbers");
        }
        if (numbers.size() == 1) {
            record.FixedExponent = static_cast<std::int32_t>(-number<std::int64_t>(
                numbers[0],
                [](std::int64_t length) { return length >= -most && length <= most + 1; },
                "a fraction length is a whole number from -2147483647 to 2147483648"));
            return;
        }
        if (numbers.size() == 2) {
            setSlope(number<double>(numbers[0], fxpDataTypeProp::preValidateTotalSlope,
                                    "a slope is a number greater than 0 that a double holds"),
                     record);
        } else if (numbers.size() == 3) {
            record.SlopeAdjustmentFactor =
                number<double>(numbers[0], fxpDataTypeProp::preValidateSlopeAdjustmentFactor,
                               "a factor is at least 1 and less than 2");
            record.FixedExponent = number<std::int32_t>(
                numbers[1], [](std::int32_t) { return true; },
                "an exponent is from -2147483648 to 2147483647");
        }
        if (numbers.size() > 1) {
            record.Bias = number<double>(numbers.back(), fxpDataTypeProp::preValidateBias,
                                         "a bias is a number that a double holds");
        }
    }

    void parseProperty(fxpDataTypeProp& record) const {
        const Argument& name = arguments_[next_];
        const std::string property = unquoted(name);
        if (next_ + 1 == arguments_.size()) {
            fail(name, "this property has no value");
        }
        const std::string value = unquoted(arguments_[next_ + 1]);
        const bool isFixedPoint = record.DataTypeMode == FXP_DT_FIXPT;
        if (property == "DataType" && value == "ScaledDouble" && isFixedPoint) {
            record.DataTypeMode = FXP_DT_SCALED_DOUBLE;
        } else if (property == "DataTypeOverride" && value == "Off") {
            record.DataTypeOverrideState = 1;
        } else {
            fail(name, "the properties are 'DataType','ScaledDouble', of a type with a word "
                       "length, and 'DataTypeOverride','Off'");
        }
    }

    const std::string& text_;
    std::vector<Argument> arguments_;
    std::size_t next_ = 0;
};

} // namespace

bool isConstructor(const std::string& text) { return text.find('(') != std::string::npos; }

fxpDataTypeProp parseConstructor(const std::string& text) { return Parser(text).parse(); }

} // namespace tvtool::fixedpoint
