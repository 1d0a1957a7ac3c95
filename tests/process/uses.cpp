#include "process/uses.h"

#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>
#include <tvtypes/symbolicdims.h>
#include <tvtypes/units.h>

using namespace TVTypeSys;

namespace {

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
    fxpDataTypeProp record =
        *static_cast<const fxpDataTypeProp*>(DataTypeTable::getBuiltinDataTypeProperties(2));
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
    const int density = table.registerUnit("lb/ft^3", true); // its product overflows
    out << table.getNumUnits() << *table.getUnit(id)
        << table.getUnit(density)->baseScalingFactor.toString()
        << thrownError([&] { table.registerUnit("no such unit", true); });
    std::vector<std::u16string> words;
    UnitDatabase::getUnitDatabase()->getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName,
                                                                    u"m", words);
    out << words.size();
    UnitDatabase own;
    own.clearAll();
    out << own << thrownError([&] { own.loadUnitDatabase(u"/no such file"); })
        << table.getUnit(id)->getBaseUnitSymbol(8).size() << UnitTable::getNumBaseUnits();
}

void useSymbolicDims(std::ostream& out) {
    SymbolicDimsTable table;
    const int n = table.registerSymbolicDims("N");
    const int sum = table.registerSymbolicDimsExpr("(N+1)*(N-1)/2");
    table.addGreaterThanRelation(sum, n, nullptr);
    out << table << thrownError([&] { table.addEqualRelation(sum, n, nullptr); });
}

} // namespace

const Use uses[] = {{"Types", useTypes},
                    {"FixedPointTexts", useFixedPointTexts},
                    {"Units", useUnits},
                    {"SymbolicDims", useSymbolicDims}};
