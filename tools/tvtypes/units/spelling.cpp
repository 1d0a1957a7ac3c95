#include "units/spelling.h"

#include "exact/number.h"
#include "text/number.h"
#include "text/parse_error.h"
#include "units/tokens.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

namespace tvtool::units {

namespace {

constexpr std::int64_t greatestPower = std::numeric_limits<std::int32_t>::max();
constexpr std::int64_t tooGreat = greatestPower + 1;
constexpr const char* factorExpected = "a unit, a number or (";
constexpr const char* operatorExpected = "a sign such as *, / or ^, or the end";
constexpr const char* closingExpected = "a sign such as *, / or ^, or )";
constexpr const char* powerExpected =
    "a whole number, not above 2147483647, since units have whole powers";
constexpr const char* shorterExpected = "a shorter number";
constexpr const char* rootOfUnit = "the root of a unit is no unit, since units have whole powers";

struct PowerWord {
    std::string_view word;
    int power;
};

constexpr std::array<PowerWord, 4> powersBefore{
    {{"square", 2}, {"sq", 2}, {"cubic", 3}, {"cu", 3}}};
constexpr std::array<PowerWord, 2> powersAfter{{{"squared", 2}, {"cubed", 3}}};

/// Functions of values, which are not names of units.
constexpr std::array<std::string_view, 8> functions{"sqrt",  "cbrt", "root", "log",
                                                    "log10", "ln",   "lg",   "exp"};

/// Returns the power of a word; 0 if it is none.
template <std::size_t Count>
int wordPower(const std::array<PowerWord, Count>& words, const Token& token) {
    const auto found = std::ranges::find(words, token.text, &PowerWord::word);
    return token.kind == TokenKind::Name && found != words.end() ? found->power : 0;
}

bool isPoint(const Token& token) { return token.kind == TokenKind::Times && token.text == "."; }

/// Parses a whole number with an optional sign; empty for another text or a greater number.
std::optional<std::int64_t> wholeNumber(std::string_view text) {
    const auto number = text::parseNumber<std::int64_t>(text);
    const bool isValid = number && *number <= greatestPower && *number >= -greatestPower;
    return isValid ? number : std::nullopt;
}

/// Returns the value of a number token; empty if it is too long or its power of ten too great.
std::optional<exact::Number> numberValue(std::string_view text) {
    constexpr std::size_t longest = 30;
    constexpr int greatestExponent = 300;
    const auto parts = text.size() <= longest ? exact::splitDecimal(text) : std::nullopt;
    const int exponent = parts ? parts->exponent - parts->decimals : 0;
    return parts && std::abs(exponent) <= greatestExponent
               ? std::optional(exact::Number(parts->digits) * exact::powerOfTen(exponent))
               : std::nullopt;
}

/// The power of a group follows it. So factors are collected with their groups, and the powers of
/// the groups are applied at the end.
class Parser {
  public:
    explicit Parser(std::string_view text) : text_(text), tokens_(text) {}

    Spelling parse() {
        if (!isEmpty()) {
            while (parseFactor()) {
            }
        }
        return applyGroups();
    }

  private:
    /// A product in parentheses, or the whole text. Its power applies to all factors in it.
    struct Group {
        std::size_t parent = 0;
        std::int64_t sign = 1; ///< before the group; also of a factor joined to it
        std::int64_t power = 1;
        bool isSquare = false; ///< whether its brackets are square
    };
    struct Factor {
        std::size_t group = 0;
        std::int64_t sign = 1; ///< -1 after a /
        std::int64_t power = 1;
        std::size_t position = 0;
        Joint joint = Joint::Sign;
        bool followsDivisor = false;
        std::string_view name; ///< empty for a number
        std::string_view qualifier;
        exact::Number number = 1;
    };

    [[noreturn]] void fail(std::size_t position, const std::string& expected) const {
        throw text::ParseError("expected " + expected, std::string(text_), position);
    }
    [[noreturn]] void failAtNext(const char* expected) const {
        if (tokens_.next().kind == TokenKind::Root) {
            throw text::ParseError(rootOfUnit, std::string(text_), tokens_.next().position);
        }
        fail(tokens_.next().position, expected);
    }

    /// Returns whether the text is blank or a dash alone.
    bool isEmpty() const {
        Tokens rest = tokens_;
        if (rest.next().kind == TokenKind::Minus) {
            rest.take();
        }
        return rest.next().kind == TokenKind::End;
    }

    /// Parses the opening of a group, or a factor with what follows it up to the next factor.
    /// Returns whether there is a next one.
    bool parseFactor() {
        if (isGroupStart_ && tokens_.next().kind == TokenKind::Over) {
            tokens_.take();
            sign_ = -1;
        }
        isGroupStart_ = false;
        switch (tokens_.next().kind) {
        case TokenKind::Open:
            openGroup();
            return true;
        case TokenKind::Name:
            takeName();
            break;
        case TokenKind::Number:
            takeNumber();
            break;
        default:
            failAtNext(factorExpected);
        }
        parsePowers(factors_.back().power);
        if (followsName_) {
            skipAbbreviationPoint();
        }
        if (Factor& factor = factors_.back(); !factor.name.empty() && factor.qualifier.empty()) {
            factor.qualifier = parseQualifier(factor.name, factor.position);
        }
        while (openGroups_ > 0 && tokens_.next().kind == TokenKind::Close) {
            closeGroup();
        }
        return parseOperator();
    }

    void openGroup() {
        const bool isSquare = tokens_.take().text == "[";
        groups_.push_back({group_, sign_, sign_, isSquare});
        group_ = groups_.size() - 1;
        ++openGroups_;
        sign_ = 1;
        joint_ = Joint::Sign;
        isGroupStart_ = true;
    }

    void closeGroup() {
        Group& closed = groups_[group_];
        if ((tokens_.next().text == "]") != closed.isSquare) {
            failAtNext(closingExpected);
        }
        tokens_.take();
        group_ = closed.parent;
        sign_ = closed.sign;
        followsName_ = false;
        --openGroups_;
        parsePowers(closed.power);
    }

    /// Parses a name with what belongs to it, except for its powers.
    void takeName() {
        const std::int64_t power = std::max(wordPower(powersBefore, tokens_.next()), 1);
        if (power != 1) {
            tokens_.take();
            if (isPoint(tokens_.next())) {
                tokens_.take();
            }
            if (tokens_.next().kind != TokenKind::Name) {
                failAtNext("a unit");
            }
        }
        const Token token = tokens_.take();
        factors_.push_back({group_, sign_, power, token.position, joint_, followsDivisor_,
                            token.text, parseQualifier(token.text, token.position), 1});
        followsName_ = true;
        followsDivisor_ = false;
        skipAbbreviationPoint();
        if (token.text.back() >= '0' && token.text.back() <= '9') {
            checkNoFraction();
        }
    }

    void takeNumber() {
        const Token token = tokens_.next();
        if (followsName_ && joint_ != Joint::Sign) {
            fail(token.position, operatorExpected);
        }
        const std::optional<exact::Number> number = numberValue(token.text);
        if (!number) {
            fail(token.position, shorterExpected);
        }
        tokens_.take();
        factors_.push_back({group_, sign_, 1, token.position, {}, false, {}, {}, *number});
        followsName_ = false;
    }

    /// Parses a name in parentheses after a name; empty if something else follows.
    std::string_view parseQualifier(std::string_view name, std::size_t position) {
        if (tokens_.next().kind != TokenKind::Open) {
            return {};
        }
        if (std::ranges::find(functions, name) != functions.end()) {
            throw text::ParseError("a function of a unit is no unit, since units have whole powers",
                                   std::string(text_), position);
        }
        Tokens ahead = tokens_;
        ahead.take();
        const Token qualifier = ahead.take();
        if (qualifier.kind != TokenKind::Name || ahead.take().kind != TokenKind::Close) {
            return {};
        }
        tokens_ = ahead;
        return qualifier.text;
    }

    void skipAbbreviationPoint() {
        if (!isPoint(tokens_.next()) || tokens_.next().isAfterBlank) {
            return;
        }
        Tokens ahead = tokens_;
        ahead.take();
        switch (ahead.next().kind) {
        case TokenKind::End:
        case TokenKind::Close:
        case TokenKind::Minus:
        case TokenKind::Over:
        case TokenKind::Caret:
            tokens_ = ahead;
            break;
        case TokenKind::Name:
            tokens_ = ahead.next().isAfterBlank ? ahead : tokens_;
            break;
        default:
            break;
        }
    }

    void parsePowers(std::int64_t& power) {
        for (;;) {
            const Token next = tokens_.next();
            std::optional<std::int64_t> exponent;
            if (next.kind == TokenKind::Caret) {
                tokens_.take();
                exponent = parseExponent();
                checkNoFraction();
            } else if (next.kind == TokenKind::Superscript && !next.isAfterBlank) {
                exponent = wholeNumber(superscriptNumber(tokens_.take().text));
            } else if (isSignedPower()) {
                exponent = parseSigned();
            } else if (const int word = wordPower(powersAfter, next)) {
                tokens_.take();
                exponent = word;
            } else {
                return;
            }
            power *= exponent.value_or(tooGreat);
            if (!exponent || power > greatestPower || power < -greatestPower) {
                fail(next.position, powerExpected);
            }
        }
    }

    /// Rejects the power of a name that goes on as a fraction, as in Hz^1/2 and m3/2.
    void checkNoFraction() const {
        if (!followsName_ || tokens_.next().kind != TokenKind::Over) {
            return;
        }
        Tokens ahead = tokens_;
        ahead.take();
        const Token denominator = ahead.take();
        if (denominator.kind == TokenKind::Number && !denominator.isAfterBlank &&
            ahead.next().kind != TokenKind::Name) {
            failAtNext(powerExpected);
        }
    }

    /// Returns whether a sign and a digit follow without blanks, as in s-1.
    bool isSignedPower() const {
        const Token& sign = tokens_.next();
        if ((sign.kind != TokenKind::Minus && sign.kind != TokenKind::Plus) || sign.isAfterBlank) {
            return false;
        }
        Tokens ahead = tokens_;
        ahead.take();
        return ahead.next().kind == TokenKind::Number && !ahead.next().isAfterBlank;
    }

    std::int64_t parseExponent() {
        std::size_t open = 0;
        for (; tokens_.next().kind == TokenKind::Open; ++open) {
            tokens_.take();
        }
        const std::int64_t exponent = parseSigned();
        for (; open > 0; --open) {
            if (tokens_.next().kind != TokenKind::Close) {
                failAtNext(tokens_.next().kind == TokenKind::Over ? powerExpected : ")");
            }
            tokens_.take();
        }
        return exponent;
    }

    std::int64_t parseSigned() {
        const TokenKind sign = tokens_.next().kind;
        if (sign == TokenKind::Minus || sign == TokenKind::Plus) {
            tokens_.take();
        }
        const std::optional<std::int64_t> number = wholeNumber(tokens_.next().text);
        if (tokens_.next().kind != TokenKind::Number || !number) {
            failAtNext(powerExpected);
        }
        tokens_.take();
        return sign == TokenKind::Minus ? -*number : *number;
    }

    /// Parses an operator, if there is one. Returns whether a factor follows.
    bool parseOperator() {
        switch (tokens_.next().kind) {
        case TokenKind::Over:
            tokens_.take();
            sign_ = -1;
            joint_ = Joint::Sign;
            return true;
        case TokenKind::Times:
            followsDivisor_ = followsName_ && sign_ < 0;
            sign_ = 1;
            joint_ = tokens_.take().text == "*" ? Joint::Sign : Joint::Dot;
            return true;
        case TokenKind::Minus:
            parseDash();
            joint_ = Joint::Dash;
            return true;
        case TokenKind::Open:
        case TokenKind::Name:
        case TokenKind::Number:
            joint_ = !followsName_                 ? Joint::Sign
                     : tokens_.next().isAfterBlank ? Joint::Blank
                                                   : Joint::None;
            return true;
        case TokenKind::End:
            if (openGroups_ == 0) {
                return false;
            }
            [[fallthrough]];
        default:
            failAtNext(openGroups_ > 0 ? closingExpected : operatorExpected);
        }
    }

    /// Parses a dash between names, as in kW-h.
    void parseDash() {
        if (tokens_.next().isAfterBlank) {
            failAtNext(operatorExpected);
        }
        tokens_.take();
        if (tokens_.next().kind != TokenKind::Name || tokens_.next().isAfterBlank) {
            failAtNext("a power or a unit");
        }
    }

    /// Applies the powers of the groups to their factors.
    Spelling applyGroups() {
        // A product beyond the greatest power is limited, so that nested ones do not overflow.
        const auto limited = [](std::int64_t power) {
            return std::clamp(power, -tooGreat, tooGreat);
        };
        // A group follows its parent, whose power has been multiplied out before.
        for (std::size_t i = 1; i < groups_.size(); ++i) {
            groups_[i].power = limited(groups_[i].power * groups_[groups_[i].parent].power);
        }
        Spelling spelling;
        for (const Factor& factor : factors_) {
            const std::int64_t outer = factor.sign * groups_[factor.group].power;
            const std::int64_t power = factor.power * outer;
            if (std::abs(limited(power)) == tooGreat || std::abs(outer) == tooGreat) {
                fail(factor.position, "powers that come to no more than 2147483647");
            }
            if (!factor.name.empty()) {
                spelling.names.push_back(
                    {factor.name, factor.position, static_cast<std::int32_t>(factor.power),
                     static_cast<std::int32_t>(outer), factor.joint, factor.sign < 0,
                     factor.followsDivisor, factor.qualifier});
                continue;
            }
            if (factor.number == 0 && power < 0) {
                fail(factor.position, "a divisor other than 0");
            }
            const std::optional<exact::Number> number = exact::power(factor.number, power);
            const std::optional<exact::Number> product =
                number ? exact::product(spelling.factor, *number) : std::nullopt;
            if (!product) {
                fail(factor.position, shorterExpected);
            }
            spelling.factor = *product;
        }
        return spelling;
    }

    std::string_view text_;
    Tokens tokens_;
    std::vector<Group> groups_{{}};
    std::vector<Factor> factors_;
    std::size_t group_ = 0; ///< the innermost open group
    std::size_t openGroups_ = 0;
    std::int64_t sign_ = 1; ///< of the next factor
    Joint joint_ = Joint::Sign;
    bool followsDivisor_ = false; ///< whether the next name follows a sign after a divisor
    bool followsName_ = false;    ///< whether the latest operand is a name
    bool isGroupStart_ = true;
};

} // namespace

Spelling parseSpelling(std::string_view text) { return Parser(text).parse(); }

} // namespace tvtool::units
