#include "units/spelling.h"

#include "units/tokens.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>

namespace tvtool::units {

namespace {

constexpr std::int64_t greatestPower = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t beyond = greatestPower + 1;
constexpr const char* factorExpected = "a unit, a number or (";
constexpr const char* operatorExpected = "a sign such as *, / or ^, or the end";
constexpr const char* closingExpected = "a sign such as *, / or ^, or )";
constexpr const char* powerExpected = "a whole number, not above 2147483647";
constexpr const char* shorterExpected = "a shorter number";
constexpr std::size_t longestNumber = 30;
constexpr int greatestExponent = 300;

/// Numbers in full, blanks and further signs excluded.
std::optional<std::int64_t> wholeNumber(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isRight =
        error == std::errc() && stop == end && number <= greatestPower && number >= -greatestPower;
    return isRight ? std::optional(number) : std::nullopt;
}

/// A decimal number with or without point and exponent.
std::optional<exact::Number> exactNumber(std::string_view text) {
    if (text.size() > longestNumber) {
        return std::nullopt;
    }
    const std::size_t mantissaEnd = std::min(text.find_first_of("eE"), text.size());
    std::string digits(text.substr(0, mantissaEnd));
    std::int64_t exponent = 0;
    if (mantissaEnd < text.size()) {
        exponent = wholeNumber(text.substr(mantissaEnd + 1)).value_or(greatestPower);
    }
    if (const std::size_t point = digits.find('.'); point != std::string::npos) {
        exponent -= static_cast<std::int64_t>(digits.size() - point - 1);
        digits.erase(point, 1);
    }
    if (exponent < -greatestExponent || exponent > greatestExponent) {
        return std::nullopt;
    }
    // Zeros ahead would make it octal.
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    return exact::product(exact::Number(boost::multiprecision::cpp_int(digits)),
                          exact::powerOfTen(static_cast<int>(exponent)));
}

class Parser {
  public:
    Parser(std::string_view text, Spelling& spelling) : tokens_(text), spelling_(spelling) {}

    std::optional<Fault> parse() {
        if (isNothing()) {
            return std::nullopt;
        }
        while (!fault_ && !isComplete_) {
            parseFactor();
        }
        if (!fault_) {
            settle();
        }
        return fault_;
    }

  private:
    /// A product in parentheses, or the whole text. Its power counts for all that stands in it.
    struct Group {
        std::size_t parent = 0;
        std::int64_t sign = 1;
        std::int64_t power = 1;
    };
    /// What a power may follow: a name, a number or a group that has been closed.
    struct Factor {
        std::size_t group = 0; ///< that it stands in
        std::int64_t sign = 1;
        std::int64_t power = 1;
        std::size_t position = 0;
        std::string_view name; ///< a number has none
        exact::Number number;
    };

    void fail(std::size_t position, const char* expected) {
        if (!fault_) {
            fault_ = Fault{position, expected};
        }
    }
    void failHere(const char* expected) { fail(tokens_.next().position, expected); }

    /// Nothing, a 1 or a dash stand for no unit; a 1 is a number like any other.
    bool isNothing() {
        if (tokens_.next().sign == Sign::Minus) {
            Tokens rest = tokens_;
            rest.take();
            return rest.next().sign == Sign::End;
        }
        return tokens_.next().sign == Sign::End;
    }

    void parseFactor() {
        takeLeadingSlash();
        switch (tokens_.next().sign) {
        case Sign::Open:
            open();
            return;
        case Sign::Name:
        case Sign::Number:
            takeLeaf();
            break;
        default:
            return failHere(factorExpected);
        }
        parsePowers(factors_.back().power);
        parseClosings();
        parseOperator();
    }

    void takeLeadingSlash() {
        if (tokens_.next().sign == Sign::Over && isGroupStart_) {
            tokens_.take();
            sign_ = -1;
        }
        isGroupStart_ = false;
    }

    void open() {
        tokens_.take();
        groups_.push_back({group_, sign_, sign_});
        group_ = groups_.size() - 1;
        ++open_;
        sign_ = 1;
        isGroupStart_ = true;
    }

    void takeLeaf() {
        const Token token = tokens_.take();
        Factor factor{group_, sign_, 1, token.position, {}, 1};
        if (token.sign == Sign::Name) {
            factor.name = token.text;
        } else if (const std::optional<exact::Number> number = exactNumber(token.text)) {
            factor.number = *number;
        } else {
            fail(token.position, shorterExpected);
        }
        factors_.push_back(std::move(factor));
    }

    void parseClosings() {
        while (!fault_ && open_ > 0 && tokens_.next().sign == Sign::Close) {
            tokens_.take();
            const std::size_t closed = group_;
            group_ = groups_[closed].parent;
            sign_ = groups_[closed].sign;
            --open_;
            parsePowers(groups_[closed].power);
        }
    }

    void parsePowers(std::int64_t& power) {
        for (bool goesOn = true; goesOn && !fault_;) {
            const Token& next = tokens_.next();
            const std::size_t position = next.position;
            std::optional<std::int64_t> exponent;
            if (next.sign == Sign::Caret) {
                tokens_.take();
                exponent = parseExponent();
            } else if (next.sign == Sign::Superscript && !next.isApart) {
                exponent = wholeNumber(raisedNumber(tokens_.take().text).view());
            } else if (isSignedPower()) {
                exponent = parseSigned();
            } else {
                goesOn = false;
                continue;
            }
            if (!exponent) {
                return fail(position, powerExpected);
            }
            power *= *exponent;
            if (power > greatestPower || power < -greatestPower) {
                return fail(position, powerExpected);
            }
        }
    }

    /// Whether a sign and a digit follow at once, as in s-1.
    bool isSignedPower() const {
        if ((tokens_.next().sign != Sign::Minus && tokens_.next().sign != Sign::Plus) ||
            tokens_.next().isApart) {
            return false;
        }
        Tokens ahead = tokens_;
        ahead.take();
        return ahead.next().sign == Sign::Number && !ahead.next().isApart;
    }

    std::optional<std::int64_t> parseExponent() {
        std::size_t open = 0;
        for (; tokens_.next().sign == Sign::Open; ++open) {
            tokens_.take();
        }
        const std::optional<std::int64_t> exponent = parseSigned();
        for (; open > 0 && exponent; --open) {
            if (tokens_.next().sign != Sign::Close) {
                failHere(")");
                return 1;
            }
            tokens_.take();
        }
        return exponent;
    }

    /// A fault stands where the digits should.
    std::optional<std::int64_t> parseSigned() {
        const Sign sign = tokens_.next().sign;
        if (sign == Sign::Minus || sign == Sign::Plus) {
            tokens_.take();
        }
        const std::optional<std::int64_t> number = wholeNumber(tokens_.next().text);
        if (tokens_.next().sign != Sign::Number || !number) {
            failHere(powerExpected);
            return std::nullopt;
        }
        tokens_.take();
        return sign == Sign::Minus ? -*number : *number;
    }

    void parseOperator() {
        switch (tokens_.next().sign) {
        case Sign::Over:
        case Sign::Times:
            sign_ = tokens_.take().sign == Sign::Over ? -1 : 1;
            return;
        case Sign::Minus:
            return parseDash();
        case Sign::Open:
        case Sign::Name:
        case Sign::Number:
            return;
        case Sign::End:
            isComplete_ = open_ == 0;
            return isComplete_ ? void() : failHere(closingExpected);
        default:
            return failHere(open_ > 0 ? closingExpected : operatorExpected);
        }
    }

    /// A dash joins names, as in kW-h.
    void parseDash() {
        if (tokens_.next().isApart) {
            return failHere(operatorExpected);
        }
        tokens_.take();
        if (tokens_.next().sign != Sign::Name || tokens_.next().isApart) {
            failHere("a power or a unit");
        }
    }

    /// Gives each factor the powers of the groups around it.
    void settle() {
        for (std::size_t i = 1; i < groups_.size(); ++i) {
            // Nothing can be above what a factor in it has been found to be.
            groups_[i].power = bounded(groups_[i].power * groups_[groups_[i].parent].power);
        }
        for (const Factor& factor : factors_) {
            const std::int64_t outer = factor.sign * groups_[factor.group].power;
            const std::int64_t power = factor.power * outer;
            if (std::abs(bounded(power)) == beyond || std::abs(outer) == beyond) {
                return fail(factor.position, "powers that come to no more than 2147483647");
            }
            if (!factor.name.empty()) {
                spelling_.names.push_back({factor.name, factor.position,
                                           static_cast<std::int32_t>(factor.power),
                                           static_cast<std::int32_t>(outer)});
                continue;
            }
            const std::optional<exact::Number> number = exact::power(factor.number, power);
            const std::optional<exact::Number> all =
                number ? exact::product(spelling_.factor, *number) : std::nullopt;
            if (!all) {
                return fail(factor.position, shorterExpected);
            }
            spelling_.factor = *all;
        }
    }

    /// Beyond the greatest power it does not matter by how much.
    static std::int64_t bounded(std::int64_t power) { return std::clamp(power, -beyond, beyond); }

    Tokens tokens_;
    Spelling& spelling_;
    std::optional<Fault> fault_;
    std::vector<Group> groups_{{}};
    std::vector<Factor> factors_;
    std::size_t group_ = 0; ///< the innermost one that is open
    std::size_t open_ = 0;
    std::int64_t sign_ = 1;
    bool isGroupStart_ = true;
    bool isComplete_ = false;
};

} // namespace

std::optional<Fault> parseSpelling(std::string_view text, Spelling& spelling) {
    spelling = {};
    return Parser(text, spelling).parse();
}

} // namespace tvtool::units
