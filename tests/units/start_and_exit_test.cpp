// First use of units in several threads, and use while static objects are destroyed.
#include "units/database_fixture.h"

#include <atomic>
#include <cstdlib>
#include <thread>

namespace {

using TVTypeSys::Rational;
using TVTypeSys::UnitDatabase;
using TVTypeSys::UnitTable;

class UnitThreads : public WithUnitDatabase {};

TEST_F(UnitThreads, LoadDatabaseOnce) {
    for (int round = 0; round < 20; ++round) {
        UnitDatabase::_unit_database_.reset();
        std::atomic<int> waiting = 4;
        std::vector<std::thread> threads;
        const auto start = [&](auto operation) {
            threads.emplace_back([&, operation] {
                for (--waiting; waiting > 0;) {
                }
                operation();
            });
        };
        for (int i = 0; i < 3; ++i) {
            start([] {
                UnitTable table;
                EXPECT_EQ(table.registerUnit("kN*km", true), 1);
                EXPECT_EQ(table.registerUnit("kN*km", true), 1);
                EXPECT_EQ(table.getUnit(1)->baseScalingFactor, Rational(1, 1, 6));
                std::vector<std::u16string> words;
                database().getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName, u"kilo",
                                                          words);
                EXPECT_EQ(words.size(), 2);
            });
        }
        start([] {
            for (int i = 0; i < 10; ++i) {
                UnitDatabase own;
                own.clearAll();
            }
        });
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(database().getNumUnitSystems(), 1);
    }
}

/// Uses units and throws errors. Ends with their state as the exit status.
void useUnitsAndExit() {
    UnitDatabase::_unit_database_.reset(); // loads again
    UnitTable table;
    const auto& speed = *table.getUnit(table.registerUnit("km/h", true));
    const auto& other = *table.getUnit(table.registerUnit("m/s", true));
    bool works = std::abs(speed.getScalingFactorToConvertTo(other) * 3.6 - 1) < 1e-15 &&
                 speed.getBaseUnitSymbol(8).empty() && UnitTable::getNumBaseUnits() == 1;
    try {
        table.registerUnit("furlong*x", true);
        works = false;
    } catch (const fnd::except::IException& error) {
        works = works && std::string(error.what()).find("\"furlong*x\"") != std::string::npos;
    }
    std::vector<std::u16string> words;
    UnitDatabase::getUnitDatabase()->getAutoCompleteUnitSuggestions(UnitDatabase::SearchBySymbol,
                                                                    u"km", words);
    UnitDatabase absent;
    try {
        absent.loadUnitDatabase(u"/absent");
        works = false;
    } catch (const fnd::except::IException& error) {
        works = works && std::string(error.what()).find("No such file") != std::string::npos;
    }
    std::_Exit(works && !words.empty() ? 0 : 1);
}

/// Destroyed after objects that functions of the libraries have created on first use.
struct AtExit {
    ~AtExit() {
        if (armed) {
            useUnitsAndExit();
        }
    }
    bool armed = false;
} atExit;

TEST(UnitExit, WorksInStaticDestructors) {
    UnitTable().registerUnit("km/h", true);
    EXPECT_EXIT(
        {
            atExit.armed = true;
            std::exit(2);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
