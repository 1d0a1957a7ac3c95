// The parts of the unit database that clients may use by themselves.
#include "support/random_seed.h"
#include "units/database_fixture.h"

#include <algorithm>
#include <array>
#include <map>
#include <random>
#include <set>

namespace {

using namespace TVTypeSys;
using Words = std::vector<std::u16string>;

std::u16string randomText(std::mt19937& random, std::size_t longest) {
    std::u16string text;
    for (std::size_t length = random() % (longest + 1); text.size() < length;) {
        text += u"aB\xD800"[random() % 3];
    }
    return text;
}

TEST(Trie, MatchesSetOfWords) {
    std::mt19937 random(randomSeed(7));
    Trie trie;
    std::set<std::u16string> words;
    for (int i = 0; i < 200; ++i) {
        const std::u16string word = randomText(random, 6);
        trie.addWord(word);
        if (!word.empty()) {
            words.insert(word);
        }
        const std::u16string prefix = randomText(random, 3);
        Words found{u"first"};
        trie.getWords(found, prefix);
        const auto begins = [&](const auto& one) { return one.substr(0, prefix.size()) == prefix; };
        std::set<std::u16string> expected;
        std::copy_if(words.begin(), words.end(), std::inserter(expected, expected.end()), begins);
        ASSERT_EQ(found.size(), 1 + expected.size());
        for (auto one = found.begin() + 1; one != found.end(); ++one) {
            ASSERT_EQ(expected.erase(*one), 1);
            // A word follows those that begin it.
            ASSERT_TRUE(std::none_of(expected.begin(), expected.end(), [&](const auto& later) {
                return one->substr(0, later.size()) == later;
            }));
        }
    }
}

TEST(Trie, HoldsLongWordsAndPartialPaths) {
    Trie trie;
    const std::u16string word(1000000, u'x');
    trie.addWord(word);
    Words found;
    trie.getWords(found, word.substr(1));
    EXPECT_EQ(found, Words({word}));
    Node* a = trie.getRoot()->addChild(u'a', true);
    EXPECT_EQ(trie.getRoot()->addChild(u'a', false), a); // still the end of a word
    a->addChild(u'b', false);
    EXPECT_EQ(trie.findLastNodeForMatchingString(u"ab")->getCharacter(), u'b');
    EXPECT_EQ(trie.findLastNodeForMatchingString(u"abc"), nullptr);
    found.clear();
    trie.getStringCombinations(a, found, u"-");
    trie.getStringCombinations(nullptr, found, u"-");
    EXPECT_EQ(found, Words({u"-"})); // "ab" is not a word
    trie.getRoot()->remove();
    trie.getWords(found, u"");
    EXPECT_EQ(found.size(), 1);
}

TEST(UnitBaseInstanceMapping, MatchesMultimaps) {
    std::size_t warnings = 0, expectedWarnings = 0;
    const auto before = tvsvSetWarningHandler([&](const tvsvDiagnosticImpl&) { ++warnings; });
    std::mt19937 random(randomSeed(11));
    std::vector<std::unique_ptr<UnitBase>> units;
    std::array<std::multimap<std::u16string, const UnitBase*>, 3> expected;
    UnitBaseInstanceMapping mapping;
    for (int i = 0; i < 300; ++i) {
        units.emplace_back(UnitFactory::createAbstractUnit(u"m", {1, 1, 0}, {0, 1, 0}));
        UnitBase& unit = *units.back();
        unit.name = randomText(random, 3);
        unit.symbol = randomText(random, 3);
        for (std::size_t count = random() % 4; unit.aliases.size() < count;) {
            unit.aliases.push_back(randomText(random, 3));
        }
        const auto known = expected[2];
        const auto add = [&](std::size_t role, const std::u16string& text) {
            expectedWarnings += text.empty() || (role == 2 && known.count(text) != 0);
            if (!text.empty()) {
                expected[role].emplace(text, &unit);
            }
        };
        add(0, unit.name);
        add(1, unit.symbol);
        std::for_each(unit.aliases.begin(), unit.aliases.end(),
                      [&](const auto& alias) { add(2, alias); });
        mapping.addUnit(&unit);
        ASSERT_EQ(warnings, expectedWarnings);
    }
    constexpr std::array find = {&UnitBaseInstanceMapping::findUnitByName,
                                 &UnitBaseInstanceMapping::findUnitBySymbol,
                                 &UnitBaseInstanceMapping::findUnitByAlias};
    for (int i = 0; i < 500; ++i) {
        const std::u16string text = randomText(random, 3);
        for (std::size_t role = 0; role < find.size(); ++role) {
            std::vector<const UnitBase*> found, all;
            (mapping.*find[role])(found, text);
            const auto [first, last] = expected[role].equal_range(text);
            std::transform(first, last, std::back_inserter(all),
                           [](const auto& e) { return e.second; });
            ASSERT_EQ(found, all);
        }
    }
    tvsvSetWarningHandler(before);
}

TEST(FundamentalUnits, AreExtensible) {
    FundamentalUnits units;
    const UnitBase::Reference angle = units.createAndAddAbstractUnit("Angle", "a", "angle");
    units.createAndAddConcreteUnit("rad", "rad", "Radians", angle);
    units.createAndAddDimensionlessAbstractUnit("None", nullptr, "none");
    EXPECT_EQ(std::next(units.abstract().begin())->get().name, u"angle");
    EXPECT_EQ(std::next(units.concrete().begin(), 6)->get().name, u"Radians");
    EXPECT_EQ(std::next(units.dimensionless().begin())->get().name, u"none");
    EXPECT_EQ(std::next(units.dimensionless().begin())->get().fundamentalExprAST.size(), 9);
}

} // namespace
