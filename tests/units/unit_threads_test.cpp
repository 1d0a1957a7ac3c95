// Loads of the unit database in several threads, beside private databases.
#include "units/database_fixture.h"

#include <atomic>
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

} // namespace
