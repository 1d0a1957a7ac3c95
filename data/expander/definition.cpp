#include "definition.h"

#include "fault.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <vector>

namespace tvdata {

namespace {

constexpr int largestPower = 200;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_';
}

/// Scanner with the tokens that numbers and expressions have in common.
class Reader {
  public:
    explicit Reader(std::string_view text) : text_(text) {}

    bool atEnd() const { return position_ == text_.size(); }

    bool take(char c) {
        if (atEnd() || text_[position_] != c) {
            return false;
        }
        ++position_;
        return true;
    }

    template <class Accepts>
    std::string_view takeWhile(Accepts accepts) {
        const std::size_t begin = position_;
        while (!atEnd() && accepts(text_[position_])) {
            ++position_;
        }
        return text_.substr(begin, position_ - begin);
    }

    /// Reads the integer after a "^".
    int takePower() {
        const bool negative = take('-');
        const std::string_view digits = takeWhile(isDigit);
        int power = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), power);
        if (digits.empty() || error != std::errc() || power > largestPower) {
            fail();
        }
        return negative ? -power : power;
    }

    bool startsWith(std::string_view start) const {
        return text_.substr(position_).starts_with(start);
    }

    void skip(std::size_t count) { position_ += count; }

    [[noreturn]] void fail() const {
        throw Fault(fmt::format("syntax error in \"{}\" at character {}", text_, position_ + 1));
    }

  private:
    std::string_view text_;
    std::size_t position_ = 0;
};

Exact decimal(std::string_view whole, std::string_view decimals) {
    // Without leading zeros: they would make the text octal.
    std::string digits = std::string(whole) + std::string(decimals);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return Exact(Integer(digits)) / raised(Exact(10), static_cast<int>(decimals.size()));
}

Number takeDecimal(Reader& reader, std::string_view whole) {
    const std::string_view decimals =
        reader.take('.') ? reader.takeWhile(isDigit) : std::string_view();
    Number number{.rational = decimal(whole, decimals)};
    if (number.rational == 0) {
        throw Fault(fmt::format("\"{}\" is not positive", whole));
    }
    if (reader.take('(')) {
        const std::string_view digits = reader.takeWhile(isDigit);
        if (digits.empty() || !reader.take(')')) {
            reader.fail();
        }
        number.uncertainty = decimal(digits, "") /
                             raised(Exact(10), static_cast<int>(decimals.size())) / number.rational;
    }
    return number;
}

Number takeFactor(Reader& reader) {
    const std::string_view word = reader.takeWhile(isNameCharacter);
    if (word.empty()) {
        reader.fail();
    }
    Number number;
    if (word == "pi") {
        number.piPower = 1;
    } else if (std::ranges::all_of(word, isDigit)) {
        number = takeDecimal(reader, word);
    } else {
        throw Fault(fmt::format("\"{}\" is not a number", word));
    }
    return reader.take('^') ? raised(number, reader.takePower()) : number;
}

Powers takeExpression(Reader& reader);

Powers takeTerm(Reader& reader) {
    Powers term;
    if (reader.take('(')) {
        if (reader.startsWith("(")) {
            reader.fail();
        }
        term = takeExpression(reader);
        if (!reader.take(')')) {
            reader.fail();
        }
    } else {
        const std::string_view name = reader.takeWhile(isNameCharacter);
        if (name.empty()) {
            reader.fail();
        }
        term.emplace(name, 1);
    }
    while (reader.take('^')) {
        const int power = reader.takePower();
        if (power == 0) {
            term.clear();
        }
        for (auto& entry : term) {
            entry.second *= power;
        }
    }
    return term;
}

Powers takeExpression(Reader& reader) {
    Powers powers;
    if (reader.startsWith("1/")) {
        reader.skip(1);
    } else {
        powers = takeTerm(reader);
    }
    while (true) {
        if (reader.take('*')) {
            multiply(powers, takeTerm(reader), 1);
        } else if (reader.take('/')) {
            multiply(powers, takeTerm(reader), -1);
        } else {
            return powers;
        }
    }
}

} // namespace

Number parseNumber(std::string_view text) {
    Reader reader(text);
    Number number = takeFactor(reader);
    while (!reader.atEnd()) {
        if (reader.take('*')) {
            number *= takeFactor(reader);
        } else if (reader.take('/')) {
            number *= raised(takeFactor(reader), -1);
        } else {
            reader.fail();
        }
    }
    return number;
}

Definition parseDefinition(std::string_view text) {
    const std::size_t blank = text.find(' ');
    Definition definition;
    if (blank != std::string_view::npos) {
        definition.factor = parseNumber(text.substr(0, blank));
        text.remove_prefix(blank + 1);
    }
    definition.expression = text;
    return definition;
}

void multiply(Powers& product, const Powers& factor, int power) {
    for (const auto& [name, exponent] : factor) {
        product[name] += power * exponent;
    }
}

Powers parseExpression(std::string_view text) {
    Reader reader(text);
    Powers powers = takeExpression(reader);
    if (!reader.atEnd()) {
        reader.fail();
    }
    return powers;
}

std::string formatExpression(const Powers& powers) {
    std::vector<std::string> over;
    std::vector<std::string> under;
    for (const auto& [name, power] : powers) {
        const int size = std::abs(power);
        const std::string term = size > 1 ? fmt::format("{}^{}", name, size) : name;
        if (power >= 0) {
            over.push_back(term);
        }
        if (power <= 0) {
            under.push_back(term);
        }
    }
    const std::string numerator = over.empty() ? "1" : fmt::format("{}", fmt::join(over, "*"));
    const std::string denominator = fmt::format("{}", fmt::join(under, "*"));
    switch (under.size()) {
    case 0:
        return over.empty() ? "m^0" : numerator;
    case 1:
        return fmt::format("{}/{}", numerator, denominator);
    default:
        return fmt::format("{}/({})", numerator, denominator);
    }
}

bool isName(std::string_view text) {
    return !text.empty() && std::ranges::all_of(text, isNameCharacter);
}

} // namespace tvdata
