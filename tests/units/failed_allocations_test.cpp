// What remains after a failed allocation.
#include "support/failing_allocations.h"
#include "units/database_fixture.h"

namespace {

using namespace TVTypeSys;

/// Texts that are longer than those that std::u16string stores in itself.
const std::u16string longName = u"a name of a unit that needs memory";

std::unique_ptr<Unit> makeUnit(const std::u16string& expression) {
    std::unique_ptr<Unit> unit(UnitFactory::createUnit(
        0, longName, expression, "a display text that needs memory", {2, 1, 0}, {0, 1, 0},
        {u"first alias", u"second alias", u"third alias", u"fourth alias", u"fifth alias"}, "",
        {u"SI"}, false, UnitFactory::getDefaultAbstractUnit()));
    unit->symbol = longName + u" symbol";
    return unit;
}

/// One object of each class.
struct State {
    State() : added(makeUnit(u"m*kg")), parsed(makeUnit(u"kN*degC/min^2*kN")), monomial() {
        table.registerUnit("km/s", true);
        database.addUnit(unit);
        parseUnitExpr(u"metre*second", monomial);
    }

    Unit unit{*makeUnit(u"m")};
    UnitTable table;
    UnitDatabase database;
    std::unique_ptr<Unit> added;
    std::unique_ptr<Unit> parsed;
    Monomial monomial;
    int id = 7;
};

std::string narrow(const std::u16string& text) { return {text.begin(), text.end()}; }

std::ostream& operator<<(std::ostream& out, const UnitBase::ReferenceSet& units) {
    for (const UnitBase& unit : units) {
        out << narrow(unit.name + u"|" + unit.symbol + u"|" + unit.expression) << '\n';
    }
    return out;
}

std::string snapshot(State& state) {
    std::ostringstream out;
    out << state.table.getNumUnits();
    for (const char* text : {"inherit", "unitless", "km/s", "kN*celsius/minute^2", "m"}) {
        out << ' ' << state.table.getUnitId(text);
    }
    for (int id = -1; id < 6; ++id) {
        if (const UnitBase* unit = state.table.getUnit(id)) {
            out << UnitBase::ReferenceSet{boost::cref(*unit)} << unit->display
                << unit->baseScalingFactor.toString();
        }
    }
    const UnitDatabase& database = state.database;
    out << database.getNumUnits() << ' ' << database.getNumUnitSystems() << database.getAllUnits();
    for (const std::u16string& text :
         {longName, state.added->symbol, state.added->aliases.back()}) {
        out << database.getUnit(text);
    }
    std::vector<std::u16string> words = state.monomial.names;
    for (const auto by : {UnitDatabase::SearchByName, UnitDatabase::SearchByAlias}) {
        database.getAutoCompleteUnitSuggestions(by, u"", words);
    }
    for (const std::u16string& word : words) {
        out << narrow(word) << '\n';
    }
    out << testing::PrintToString(state.monomial.powers) << state.parsed->exprTermMap.size() << ' '
        << state.parsed->fundamentalExprAST.size() << state.parsed->baseScalingFactor.toString()
        << state.id;
    return out.str();
}

class FailedUnitAllocations : public WithUnitDatabase {};

TEST_F(FailedUnitAllocations, LeaveEverythingUnchanged) {
    const std::pair<const char*, std::function<void(State&)>> operations[] = {
        {"composite unit", [](State& s) { s.table.registerUnit("kN*celsius/minute^2", true); }},
        {"unit of the database", [](State& s) { s.table.registerUnit("m", true); }},
        {"known unit", [](State& s) { s.table.registerUnit("km/s", true); }},
        {"RegisterUnit",
         [](State& s) { UnitTable::RegisterUnit(&s.table, "Model/A block", "kN/minute", &s.id); }},
        {"UnitTable::addUnit",
         [](State& s) {
             std::unique_ptr<Unit> unit = makeUnit(u"m*kg");
             unit->setId(4);
             s.table.addUnit(longName, unit.get());
             static_cast<void>(unit.release());
         }},
        {"resetToBuiltin", [](State& s) { s.table.resetToBuiltin(); }},
        {"UnitDatabase::addUnit", [](State& s) { s.database.addUnit(*s.added); }},
        {"unit system", [](State& s) { s.database.addUnitSystem(UnitSystem(longName)); }},
        {"clearAll", [](State& s) { s.database.clearAll(); }},
        {"parse", [](State& s) { s.parsed->parseExpressionAndGenerateAST(); }},
        {"parseUnitExpr", [](State& s) { parseUnitExpr(u"m^2/(kg*s)", s.monomial); }},
        {"product",
         [](State& s) {
             Monomial factor;
             parseUnitExpr(u"second/a_name_that_needs_memory", factor);
             s.monomial /= factor;
         }},
    };
    for (const auto& [name, operation] : operations) {
        expectUnchangedOnFailedAllocation(
            name, [] { return std::make_unique<State>(); }, operation, snapshot);
    }
}

// A load keeps what it had read when it failed: each unit that is counted is found.
TEST_F(FailedUnitAllocations, InterruptLoad) {
    const std::u16string path(fnd::filesystem::get_install_path() + UnitDatabase::unitDBPath);
    database();
    bool triggered = true;
    for (int index = 0; triggered; ++index) {
        UnitDatabase loaded;
        {
            const FailingAllocations failing(index, Failures::Once);
            try {
                loaded.loadUnitDatabase(path);
            } catch (const std::bad_alloc&) {
            } catch (const fnd::except::IException& error) {
                EXPECT_EQ(messageSummary(error.diagnostic(), 1),
                          "UnitDatabaseFileUnreadable(memory ran out)");
            }
            triggered = failing.triggered();
        }
        const UnitBase::ReferenceSet all = loaded.getAllUnits();
        ASSERT_EQ(all.size(), loaded.getNumUnits());
        for (const UnitBase& unit : all) {
            ASSERT_EQ(loaded.getUnit(unit.symbol).count(boost::cref(unit)), 1) << index;
        }
        ASSERT_TRUE(triggered || all.size() == units.size());
    }
}

} // namespace
