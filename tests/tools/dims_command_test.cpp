#include "support.h"

#include "exact/number.h"
#include "support/random_seed.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <array>
#include <random>

namespace tvtool {

namespace {

using testing::HasSubstr;

TEST(DimsCommand, ShowsSimplifiedDimensions) {
    const Outcome outcome = run({"dims", "--json", "(2*N + 4)/2", "N+2", "[2, N+N]", "1/(N-N)",
                                 "[N+N, M/(2*M-M-M)]", "[1,2]+3", "--", "-N"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const boost::json::array details = outcome.json().at("dimensions").as_array();
    std::vector<std::string> rows;
    for (const boost::json::value& entry : details) {
        rows.push_back(boost::json::serialize(
            boost::json::array{entry.at("simplified"), entry.at("obstacle"), entry.at("equals")}));
    }
    const std::vector<std::string> expected{
        R"_(["N+2",null,null])_",
        R"_(["N+2",null,0])_",
        R"_(["[2,2*N]",null,null])_",
        R"_(["1/(N-N)","division by zero: N-N is 0",null])_",
        R"_(["[2*N,M/(2*M-M-M)]","division by zero: 2*M-M-M is 0",null])_",
        R"_(["[1,2]+3","a list stands inside arithmetic",null])_",
        R"_(["-N",null,null])_"};
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(details[0].at("simplifiedId"), details[1].at("id"));
    EXPECT_EQ(details[2].at("size"), "4*N");
    EXPECT_EQ(details[0].at("size"), nullptr);
    EXPECT_THAT(run({"dims", "[N+N,1/(N-N)]"}).out,
                HasSubstr("stays as it is in part: division by"));
}

TEST(DimsCommand, ReportsPositionOfInvalidExpression) {
    const std::pair<const char*, const char*> rows[] = {
        {"2*(N+", "\"2*(N+\": column 6: the expression is not complete\n  2*(N+\n       ^\n"},
        {"N $M", "column 3: an expression does not go on like this\n  N $M\n    ^\n"},
        {"\x1b[2J", "column 1: an expression does not go on like this\n  \\u001b[2J\n  ^\n"},
        {"", "column 1: the expression is not complete"}};
    for (const auto& [text, error] : rows) {
        // Valid expressions are shown although another one is invalid.
        const Outcome outcome = run({"dims", text, "N+N"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(error));
        EXPECT_THAT(outcome.out, HasSubstr("2*N"));
    }
}

/// Reference model: the transitive closure of relations between a few sizes.
class Closure {
  public:
    static constexpr int count = 9; ///< four numbers, five names

    Closure() {
        for (int i = 0; i < 4; ++i) {
            for (int j = 0; j < i; ++j) {
                add(i, '>', j);
            }
        }
    }

    static std::string sizeName(int size) {
        return size < 4 ? std::to_string(size) : std::string(1, static_cast<char>('J' + size));
    }

    void add(int a, char relation, int b) {
        raise(a, b, relation == '>' ? 2 : 1);
        raise(b, a, relation == '>' ? 0 : 1);
        for (int via = 0; via < count; ++via) {
            for (int i = 0; i < count; ++i) {
                for (int j = 0; j < count; ++j) {
                    if (between(i, via) > 0 && between(via, j) > 0) {
                        raise(i, j, std::max(between(i, via), between(via, j)));
                    }
                }
            }
        }
    }

    const char* answer(int a, char relation, int b) const {
        const bool isEqual = a == b || (between(a, b) == 1 && between(b, a) == 1);
        if (relation == '=' ? isEqual : between(a, b) == 2) {
            return "yes";
        }
        const bool isOtherwise =
            between(b, a) == 2 || (relation == '=' ? between(a, b) == 2 : isEqual);
        return isOtherwise ? "no" : "not known";
    }

  private:
    int between(int a, int b) const { return relations_[static_cast<std::size_t>(a * count + b)]; }
    void raise(int a, int b, int relation) {
        int& known = relations_[static_cast<std::size_t>(a * count + b)];
        known = std::max(known, relation);
    }

    std::array<int, count * count> relations_{}; ///< 0 none, 1 equal, 2 greater
};

TEST(DimsFacts, MatchesTransitiveClosure) {
    std::mt19937 random(randomSeed(5));
    const auto pick = [&](int below) {
        return std::uniform_int_distribution<int>(0, below - 1)(random);
    };
    for (int script = 0; script < 100; ++script) {
        Closure closure;
        // Over fractions, as the reference model does not count.
        std::string text = "integer off\n";
        std::vector<std::string> expected;
        for (int line = 0; line < 40; ++line) {
            const int a = pick(Closure::count);
            const int b = pick(Closure::count);
            const char relation = pick(2) == 0 ? '=' : '>';
            const std::string answer = closure.answer(a, relation, b);
            // A contradiction is not stated but asked for.
            const bool isQuestion = pick(2) == 0 || answer == "no";
            text += fmt::format("{} {} {}{}\n", Closure::sizeName(a), relation == '=' ? "==" : ">",
                                Closure::sizeName(b), isQuestion ? " ?" : "");
            if (isQuestion) {
                expected.push_back(answer);
            } else {
                closure.add(a, relation, b);
            }
        }
        const boost::json::object json = run({"dims", "--facts", "-", "--json"}, text).json();
        std::vector<std::string> answers;
        for (const boost::json::value& answer : json.at("answers").as_array()) {
            answers.emplace_back(answer.at("follows").as_string());
        }
        EXPECT_EQ(answers, expected) << text;
        EXPECT_TRUE(json.at("contradictions").as_array().empty()) << text;
    }
}

/// Random expressions of five names, with their values for one choice of the names.
class RandomSizes {
  public:
    explicit RandomSizes(unsigned seed) : random_(randomSeed(seed)) {
        for (int& value : values_) {
            value = pick(1, 12);
        }
    }

    struct Size {
        std::string text;
        exact::Number value;
    };

    Size size() {
        Size size = term();
        for (int terms = pick(0, 2); terms > 0; --terms) {
            const Size next = term();
            const bool isSum = pick(0, 2) > 0;
            size.text += (isSum ? "+" : "-") + next.text;
            size.value += isSum ? next.value : exact::Number(-next.value);
        }
        if (pick(0, 3) == 0) {
            const int divisor = pick(2, 4);
            return {fmt::format("({})/{}", size.text, divisor), size.value / divisor};
        }
        return size;
    }

    int pick(int least, int most) {
        return std::uniform_int_distribution<int>(least, most)(random_);
    }

  private:
    Size name() {
        const auto index = static_cast<std::size_t>(pick(0, 4));
        return {std::string(1, static_cast<char>('A' + index)), values_.at(index)};
    }

    Size term() {
        const Size first = name();
        switch (pick(0, 3)) {
        case 0: {
            const Size second = name();
            return {first.text + "*" + second.text, first.value * second.value};
        }
        case 1: {
            const int factor = pick(1, 9);
            return {fmt::format("{}*{}", factor, first.text), first.value * factor};
        }
        case 2: {
            const int number = pick(0, 20);
            return {std::to_string(number), number};
        }
        default:
            return first;
        }
    }

    std::mt19937 random_;
    std::array<int, 5> values_{};
};

TEST(DimsFacts, AcceptsFactsThatHoldTogether) {
    int answers = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        RandomSizes random(seed);
        std::string text;
        std::vector<bool> holds;
        for (int line = 0; line < 14; ++line) {
            RandomSizes::Size left = random.size();
            const RandomSizes::Size right = random.size();
            if (random.pick(0, 1) == 0) {
                // Makes both sides equal.
                const exact::Number difference = right.value - left.value;
                left.text += fmt::format("{}{}", difference < 0 ? "" : "+", difference.str());
                left.value = right.value;
            }
            if (line % 3 == 2) {
                const bool isEqual = random.pick(0, 1) == 0;
                text += fmt::format("{} {} {} ?\n", left.text, isEqual ? "==" : ">", right.text);
                holds.push_back(isEqual ? left.value == right.value : left.value > right.value);
            } else {
                const char* const relation = left.value == right.value  ? "=="
                                             : left.value > right.value ? ">"
                                                                        : "<";
                text += fmt::format("{} {} {}\n", left.text, relation, right.text);
            }
        }
        const boost::json::object json = run({"dims", "--facts", "-", "--json"}, text).json();
        EXPECT_TRUE(json.at("contradictions").as_array().empty()) << text;
        ASSERT_EQ(json.at("answers").as_array().size(), holds.size()) << text;
        for (std::size_t i = 0; i < holds.size(); ++i) {
            const boost::json::value& answer = json.at("answers").at(i);
            EXPECT_NE(answer.at("follows"), holds[i] ? "no" : "yes") << text << answer.at("text");
            answers += answer.at("follows") == "not known" ? 0 : 1;
        }
    }
    EXPECT_GT(answers, 20);
}

TEST(DimsFacts, ReadsItsOwnLists) {
    // Reports escape control characters; a backslash before u is another name.
    const std::string input = "\"s.n\" > M # a\nM == 2*\"s n\"\nK > 1 # a\nK > 1 # b\n"
                              "\"a\x1b\u202e\\\\u0041\" > 2\n";
    const auto facts = [](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.json().at("facts").as_array();
    };
    const boost::json::array expected = facts(run({"dims", "--facts", "-", "--json"}, input));
    EXPECT_EQ(expected.size(), 4U);
    for (const char* const form : {"--list", "--json"}) {
        const std::string list = run({"dims", "--facts", "-", form}, input).out;
        EXPECT_EQ(facts(run({"dims", "--facts", "-", "--json"}, list)), expected) << list;
    }
    const std::string inspected =
        run({"inspect", "--json", TVTYPES_EXAMPLES "/vehicle_suspension.xml"}).out;
    EXPECT_FALSE(facts(run({"dims", "--facts", "-", "--json"}, inspected)).empty());
    const std::string checked =
        run({"check", "--json", TVTYPES_TEST_SYSTEMS "/connection_dimensions"}).out;
    const Outcome repeated = run({"dims", "--facts", "-", "--json"}, checked);
    EXPECT_EQ(repeated.json().at("contradictions").as_array().size(), 1U) << checked;
}

TEST(DimsFacts, ReportsPositionInInvalidLine) {
    const std::pair<const char*, const char*> rows[] = {
        {"N => 2", ":1:3: there is no such relation; it is ==, > or <\n  N => 2\n    ^\n"},
        {"N >= 03", ":1:3: there is no relation >=; for whole numbers, write N > 2\n"},
        {"2*N <= M+K # x",
         ":1:5: there is no relation <=; for whole numbers, write 2*N < M+K + 1\n"},
        {"N == INHERIT", ":1:6: INHERIT stands for a size that is not known yet, so there are"},
        {"N > [2, 3+INHERIT]", ":1:11: INHERIT stands for a size that is not known yet"},
        {"NOSYMBOLIC > 2", ":1:1: NOSYMBOLIC stands for a size that is not known yet"},
        {"\r\n  N 2 # x", ":2:6: a relation is missing: ==, > or <"},
        {" > 2", ":1:2: the left side is missing"},
        {"N == ?", ":1:6: the right side is missing"},
        {"N > M > K", ":1:7: a line has one relation"},
        {"N > 2*(M ? # x", ":1:9: the expression is not complete"},
        {"\xC3\xA4 > 2", ":1:1: an expression does not go on like this"},
        {"N\x1b > 2", "  N\\u001b > 2\n   ^\n"}};
    for (const auto& [text, error] : rows) {
        const Outcome outcome = run({"dims", "--facts", "-"}, std::string(text) + "\nA > B\n");
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(error));
        EXPECT_THAT(outcome.out, HasSubstr("-: 1 fact,"));
    }
    EXPECT_EQ(run({"dims", "--facts", "-"}, "\xEF\xBB\xBFN > 2\r\n").status, 0);
    const Outcome example = run({"dims", "--facts", TVTYPES_EXAMPLES "/filter_bank.facts"});
    EXPECT_EQ(example.status, 0) << example.out;
    EXPECT_EQ(example.err, "");
}

TEST(DimsFacts, HandlesLongChainsAndInvalidFiles) {
    std::string chain;
    for (int i = 0; i < 5000; ++i) {
        chain += fmt::format("N{} > N{}\nM{} == M{}\n", i, i + 1, i, i + 1);
    }
    const Outcome outcome = run({"dims", "--facts", "-"}, chain + "N5000 > N0\nM0 > M5000\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("N4 > N5 (line 9), ... 4990 more ..., N4995 > N4996"));
    EXPECT_LT(outcome.out.size(), 2000U);

    const std::string mega(1000000, 'x');
    const std::string texts[] = {std::string("N > 2\0", 6),
                                 std::string(5000000, 'x'),
                                 mega + mega + " > 1",
                                 std::string(100000, '(') + " > 1",
                                 chain.substr(0, 100) + " ? ? ?",
                                 repeatedText("no fact\n", 100000)};
    for (const std::string& text : texts) {
        const Outcome refused = run({"dims", "--facts", "-"}, text);
        EXPECT_EQ(refused.status, 2) << refused.out;
        EXPECT_LT(refused.err.size(), 3000U);
        EXPECT_TRUE(refused.err.starts_with("tvtypes: -:")) << refused.err;
    }
    EXPECT_EQ(run({"dims", "--facts", "-"}, mega + " > " + mega + "+1\n").status, 1);
}

} // namespace

} // namespace tvtool
