#include "support/random_seed.h"

#include <tvtypes/units/expression.h>

#include <gtest/gtest.h>

#include <cctype>
#include <optional>
#include <random>
#include <string>

namespace {

std::u16string wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

std::string show(const Monomial& monomial) {
    std::string text = "=";
    for (std::size_t i = 0; i < monomial.names.size(); ++i) {
        const std::u16string& name = monomial.names[i];
        text += " " + std::string(name.begin(), name.end()) + "^";
        text += std::to_string(monomial.powers[i]);
    }
    return text;
}

/// Returns the names with their powers; "none" if the text is not an expression.
std::string parsed(const std::string& text) {
    Monomial result;
    return parseUnitExpr(wide(text), result) ? show(result) : "none";
}

// The documented examples, and bounds that random texts do not reach.
TEST(UnitExpression, ParsesNamesAndPowers) {
    const std::pair<const char*, const char*> cases[] = {{" kg * m / s ^ 2 ", "= kg^1 m^1 s^-2"},
                                                         {"m^2^-3", "= m^-6"},
                                                         {"1/(m*s)", "= m^-1 s^-1"},
                                                         {"5*kg", "= 5^1 kg^1"},
                                                         {"m/m", "= m^0"},
                                                         {"m^0*s", "= s^1"},
                                                         {"(m)*s", "= m^1 s^1"},
                                                         {"1e3/s", "= 1e3^1 s^-1"},
                                                         {"99999999999/s", "= 99999999999^1 s^-1"},
                                                         {"m^65536^65536", "= m^0"},
                                                         {"m^2147483647", "= m^2147483647"},
                                                         {"m^-2147483648", "= m^-2147483648"}};
    for (const auto& [text, expected] : cases) {
        EXPECT_EQ(parsed(text), expected) << text;
    }
    for (const char* text :
         {"((m)*s)", "m^2.5", "m^99999999999", "m^2147483648", "k g", "m-s", "m^- 2", ""}) {
        EXPECT_EQ(parsed(text), "none") << text;
    }
}

TEST(UnitExpression, KeepsResultOnError) {
    Monomial result(std::vector<wchar_t>{L'm', L'\x1F600'});
    ASSERT_FALSE(parseUnitExpr(u"s*", result));
    EXPECT_EQ(result.names, std::vector<std::u16string>({u"m\xF600"}));
    EXPECT_THROW(parseUnitExpr(u"m\xDC00", result), std::out_of_range);
    EXPECT_EQ(result.powers, std::vector<std::int32_t>({1}));
}

/// Reference parser: recursive descent with ordered choice and unlimited backtracking.
class Reference {
  public:
    static std::string parse(const std::string& text) {
        Reference reference{text};
        const auto result = reference.unitExpr();
        reference.skip();
        return result && reference.position_ == text.size() ? show(*result) : "none";
    }

  private:
    using Result = std::optional<Monomial>;
    explicit Reference(const std::string& text) : text_(text) {}

    void skip() { position_ = std::min(text_.find_first_not_of(' ', position_), text_.size()); }

    bool accept(char character) {
        skip();
        const bool found = position_ < text_.size() && text_[position_] == character;
        position_ += found ? 1 : 0;
        return found;
    }

    /// Applies the first rule that succeeds; backtracks from the others.
    template <class... Rules>
    Result firstOf(const Rules&... rules) {
        Result result;
        const std::size_t start = position_;
        static_cast<void>(((position_ = start, (result = rules()).has_value()) || ...));
        position_ = result ? position_ : start;
        return result;
    }

    static Result combined(Result left, bool isProduct, const Result& right) {
        if (!left || !right) {
            return {};
        }
        return isProduct ? *left *= *right : *left /= *right;
    }

    Result unitExpr() {
        Result result = firstOf(
            [&] {
                const Result left = exponentTerm();
                return left && accept('/') ? combined(left, false, factor()) : Result();
            },
            [&] { return factor(); });
        for (bool more = result.has_value(); more;) {
            const Result longer = firstOf([&] {
                const bool isProduct = accept('*');
                return isProduct || accept('/') ? combined(result, isProduct, factor()) : Result();
            });
            more = longer.has_value();
            result = more ? longer : result;
        }
        return result;
    }

    Result factor() {
        Result result = firstOf([&] { return group(); }, [&] { return unitName(); });
        for (bool more = result.has_value(); more;) {
            const Result exponent =
                firstOf([&] { return accept('^') ? exponentTerm() : Result(); });
            more = exponent.has_value();
            result = more ? result->power(*exponent) : result;
        }
        return result;
    }

    Result group() {
        if (!accept('(')) {
            return {};
        }
        const Result result = firstOf([&] { return group(); }, [&] { return unitExpr(); });
        return result && accept(')') ? result : Result();
    }

    Result unitName() {
        skip();
        std::vector<wchar_t> name;
        while (position_ < text_.size() && std::isalnum(text_[position_]) != 0) {
            name.push_back(text_[position_++]);
        }
        return name.empty() ? Result() : Monomial(name);
    }

    Result exponentTerm() {
        return firstOf(
            [&] {
                const Result inner = accept('(') ? exponentTerm() : Result();
                return inner && accept(')') ? inner : Result();
            },
            [&] { return integer(); });
    }

    Result integer() {
        skip();
        const std::size_t start = position_;
        position_ += position_ < text_.size() && std::string("+-").find(text_[position_]) < 2;
        const std::size_t digits = position_;
        while (position_ < text_.size() && std::isdigit(text_[position_]) != 0) {
            ++position_;
        }
        Monomial result;
        if (position_ == digits || position_ - digits > 9) {
            return {};
        }
        result.value = std::stoi(text_.substr(start, position_ - start));
        return result;
    }

    const std::string& text_;
    std::size_t position_ = 0;
};

TEST(UnitExpression, MatchesReferenceParser) {
    std::mt19937 random(randomSeed(5));
    const std::string alphabet = "((()))))//**^^15+-m0s ";
    int expressions = 0;
    for (int i = 0; i < 100000; ++i) {
        std::string text;
        for (std::size_t length = 1 + random() % 14; text.size() < length;) {
            text += alphabet[random() % alphabet.size()];
        }
        const std::string expected = Reference::parse(text);
        ASSERT_EQ(parsed(text), expected) << text;
        expressions += expected != "none";
    }
    EXPECT_GT(expressions, 2000);
}

std::string repeated(const std::string& part, int times) {
    std::string text;
    for (int i = 0; i < times; ++i) {
        text += part;
    }
    return text;
}

std::string nested(const std::string& open, const std::string& core, int depth) {
    return repeated(open, depth) + core + repeated(")", depth);
}

// A parser that backtracks would take exponential or quadratic time.
TEST(UnitExpression, RunsInLinearTime) {
    EXPECT_EQ(parsed(nested("m*(", "m", 1000)), "= m^1001");
    EXPECT_EQ(parsed(nested("1/(", "+1/m", 1000)), "= m^-1");
    EXPECT_EQ(parsed("m^" + nested("(", "2", 1000)), "= m^2");
    EXPECT_EQ(parsed(nested("(", "+2", 1000) + "/s"), "= s^-1");
    for (const char* core : {"m", "+2/m", "2", "", "m/"}) {
        for (const char* open : {"(", "5/(", "(+5/(", "m^(", "((+5)/("}) {
            EXPECT_EQ(parsed(nested(open, core, 1001)), "none") << open << core;
            EXPECT_EQ(parsed(repeated(open, 100000) + core), "none") << open << core;
        }
    }
    std::string product = "1";
    Monomial right;
    for (int i = 0; i < 100000; ++i) {
        const std::string factor = "u" + std::to_string(i);
        product += "/" + factor;
        right.names.push_back(wide(factor));
        right.powers.push_back(1);
    }
    Monomial result;
    ASSERT_TRUE(parseUnitExpr(wide(product), result));
    EXPECT_EQ((result *= right).powers, std::vector<std::int32_t>(100000));
    EXPECT_EQ(parsed("(" + product + ")" + repeated("^1", 100000)).substr(0, 8), "= u0^-1 ");
}

} // namespace
