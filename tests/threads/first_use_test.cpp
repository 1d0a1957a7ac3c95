// The first uses of the library in a process, from several threads with tables of their own. CTest
// runs each test in a process of its own; the preset tsan runs them under ThreadSanitizer.
#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>
#include <tvtypes/symbolicdims.h>
#include <tvtypes/units.h>

#include <gtest/gtest.h>

#include <barrier>
#include <functional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace TVTypeSys;

struct Case {
    const char* name;
    std::function<void(std::ostream&)> use;
};

void PrintTo(const Case& testCase, std::ostream* out) { *out << testCase.name; }

class FirstUse : public testing::TestWithParam<Case> {};

TEST_P(FirstUse, GivesEveryThreadTheSameResults) {
    std::vector<std::string> results(4);
    std::barrier start(static_cast<std::ptrdiff_t>(results.size()));
    std::vector<std::thread> threads;
    for (std::string& result : results) {
        threads.emplace_back([&start, &result] {
            start.arrive_and_wait();
            std::ostringstream out;
            GetParam().use(out);
            result = out.str();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_NE("", results.front());
    for (const std::string& result : results) {
        EXPECT_EQ(results.front(), result);
    }
}

void useTypes(std::ostream& out) {
    DataTypeTable table;
    table.registerDataType("sfix16_En3", DataTypeSourceUnchecked, nullptr);
    const int alias = table.registerAliasDataType("Alias", DataTypeSourceUnchecked, 0, nullptr);
    const double source[] = {1.5, -2.5, 1e10};
    std::int8_t target[3] = {};
    table.convertToUsingSrcId(2, alias, 3, source, nullptr, target);
    out << table << int{target[0]} << int{target[1]} << int{target[2]}
        << thrownError([&] { table.checkDataTypeId(-2); });
}

void useFixedPointTexts(std::ostream& out) {
    fxpDataTypeProp record = *static_cast<const fxpDataTypeProp*>(
        DataTypeTable::getBuiltinDataTypeProperties(2));
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 300; ++i) {
            record.FixedExponent = -(i % 100);
            record.Bias = i / 100;
            out << fxpDataTypeToIdentifierString(&record) << ' '
                << fxpDataTypeToConstructorString(record, FxpDT::PreferFixdt,
                                                  FxpDT::PreferSlopeBias)
                << '\n';
        }
    }
}

void useUnits(std::ostream& out) {
    UnitTable table;
    const int id = table.registerUnit("km/h", true);
    out << table << *table.getUnit(id)
        << thrownError([&] { table.registerUnit("no such unit", true); });
    std::vector<std::u16string> words;
    UnitDatabase::getUnitDatabase()->getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName, u"m",
                                                                    words);
    out << words.size();
    UnitDatabase own;
    own.clearAll();
    out << own;
}

void useSymbolicDims(std::ostream& out) {
    SymbolicDimsTable table;
    const int n = table.registerSymbolicDims("N");
    const int sum = table.registerSymbolicDimsExpr("(N+1)*(N-1)/2");
    table.addGreaterThanRelation(sum, n, nullptr);
    out << table << thrownError([&] { table.addEqualRelation(sum, n, nullptr); });
}

INSTANTIATE_TEST_SUITE_P(Threads, FirstUse,
                         testing::Values(Case{"Types", useTypes},
                                         Case{"FixedPointTexts", useFixedPointTexts},
                                         Case{"Units", useUnits},
                                         Case{"SymbolicDims", useSymbolicDims}),
                         [](const auto& info) { return info.param.name; });

} // namespace
