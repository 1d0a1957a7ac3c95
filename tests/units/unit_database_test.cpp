#include "units/database_fixture.h"

#include <regex>

namespace {

using namespace TVTypeSys;
using Words = std::vector<std::u16string>;
using Texts = std::vector<std::string>;

class UnitDatabaseTest : public WithUnitDatabase {
  protected:
    /// Returns all elements of the error that loading throws, without paths.
    static Texts loadErrors() {
        Texts all;
        try {
            database();
        } catch (const fnd::except::IException& error) {
            for (std::size_t i = 0; i < error.diagnostic().size(); ++i) {
                all.push_back(std::regex_replace(messageSummary(error.diagnostic(), i),
                                                 std::regex("/.*oxd"), ""));
            }
        }
        return all;
    }
    static Words completed(UnitDatabase::SearchBy by, const std::u16string& prefix) {
        Words words;
        database().getAutoCompleteUnitSuggestions(by, prefix, words);
        return words;
    }
};

TEST_F(UnitDatabaseTest, LoadsOnFirstUse) {
    EXPECT_EQ(database().getNumUnits(), units.size());
    EXPECT_EQ(database().getNumAbstractUnits(), abstractUnits.size());
    EXPECT_TRUE(warnings().empty());
    const auto& celsius = static_cast<const Unit&>(unit(u"degC"));
    EXPECT_EQ(celsius.offset.toString(), "5463/2*1e-1");
    EXPECT_EQ(celsius.display, "\u00b0C");
    ASSERT_EQ(celsius.ownerUnitSystems.size(), 1); // the file has no system "Nowhere"
    EXPECT_EQ(celsius.ownerUnitSystems[0]->getName(), u"SI");
    EXPECT_EQ(celsius.abstractUnit.get().name, u"temperature");
    std::ostringstream text;
    text << database() << *database().getUnitSystem(u"SI") << unit(u"N");
    EXPECT_EQ(text.str(),
              "UnitDatabase\nNumber of Units : 10\n\n\nNumber of Abstract Units : 5\n\n\n"
              "Number of Abstract Units : 1\n\n\nUnit System: 'SI'\n"
              "Unit : 'kg*m/s^2'\n");
}

TEST_F(UnitDatabaseTest, SkipsInvalidRecords) {
    units = {
        record("Metres", "m", "m", "length"),     record("broken", "x", "m*", "length"),
        record("late", "y", "x*later", "length"), record("odd", "z", "m", "colour"),
        "{\"Name\": \"short\", \"Symbol\": 5}",   record("wide", "w", "m", "length", "", "1 1 3e9"),
        record("later", "v", "m", "length")};
    compounds = R"(, "compounds": [{"Other": "1/1"}])";
    writeFile();
    const std::string skipped = "UnitDatabaseFileLoadFieldError(, units)";
    EXPECT_EQ(loadErrors(),
              Texts({skipped, "ParsingError(m*)", skipped, "UnitNotInDatabase(x)", skipped,
                     "UnitNotInDatabase(colour)", skipped,
                     "UnitDatabaseFileLoadRecordError(units, 4, Symbol)", skipped,
                     "UnitDatabaseFileLoadRecordError(units, 5, Base10ExponentOfScaling)",
                     "UnitDatabaseFileLoadFieldError(, compounds)",
                     "UnitDatabaseFileLoadRecordError(compounds, 0, Factors)"}));
    EXPECT_EQ(database().getNumUnits(), 2); // no second attempt
}

TEST_F(UnitDatabaseTest, ReportsInvalidFiles) {
    write("{\"unitSystems\": 3, \"units\": []}");
    EXPECT_EQ(loadErrors(), Texts({"UnitDatabaseFileLoadMissingFieldError(, unitSystems)",
                                   "UnitDatabaseFileLoadMissingFieldError(, abstractUnits)"}));
    database().clearAll();
    write("{\"units\": [");
    const Texts errors = loadErrors();
    ASSERT_EQ(errors.size(), 2);
    EXPECT_EQ(errors[0], "UnitDatabaseFileOpenError()");
    EXPECT_EQ(errors[1].substr(0, 33), "UnitDatabaseFileUnreadable(line 1");
    database().clearAll();
    units = {record("no", "n", "m", "length", "", "1 0 0"), record("Metres", "m", "m", "length")};
    writeFile();
    EXPECT_THROW(database(), boost::bad_rational);
    EXPECT_EQ(database().getNumUnits(), 0);
}

TEST_F(UnitDatabaseTest, FindsNamesSymbolsAndAliases) {
    EXPECT_EQ(&unit(u"foot"), &unit(u"ft"));
    EXPECT_EQ(&unit(u"foot"), &unit(u"feet"));
    EXPECT_TRUE(database().getUnit(u"Foot").empty());
    EXPECT_EQ(completed(UnitDatabase::SearchBySymbol, u"m"), Words({u"m", u"min"}));
    EXPECT_EQ(completed(UnitDatabase::SearchByName, u"met"), Words());
    EXPECT_EQ(completed(UnitDatabase::SearchByAlias, u"met").size(), 2);
    EXPECT_EQ(completed(static_cast<UnitDatabase::SearchBy>(3), u""), Words());
    UnitBase::ReferenceSet found;
    database().appendAutoCompleteUnits(UnitDatabase::SearchByAlias, found, u"met");
    database().appendAutoCompleteAbstractUnits(UnitDatabase::SearchByName, found, u"t");
    ASSERT_EQ(found.size(), 3);
    EXPECT_EQ(found.begin()->get().name, u"Metres");
}

TEST_F(UnitDatabaseTest, WarnsOfDuplicates) {
    const auto add = [this](const char16_t* name, const char16_t* symbol, const Words& aliases,
                            const char16_t* expression = u"m") {
        const std::unique_ptr<Unit> added(
            UnitFactory::createUnit(0, name, expression, "", {2, 1, 0}, Rational::zero, aliases, "",
                                    {}, false, UnitFactory::getDefaultAbstractUnit()));
        added->symbol = symbol;
        database().addUnit(*added);
        return warnings();
    };
    EXPECT_EQ(add(u"kilometre", u"km", {u"other"}),
              Texts({"UnitAlreadyInDatabase(kilometre, km)"}));
    EXPECT_TRUE(database().getUnit(u"other").empty());
    EXPECT_EQ(add(u"", u"u", {u"feet", u"", u"own", u"own"}),
              Texts({"SymbolNotDefined()", "SimilarInstanceThere(u)", "SymbolNotDefined()"}));
    EXPECT_EQ(add(u"v", u"", {}), Texts({"NameNotDefined()"}));
    EXPECT_EQ(database().getUnit(u"feet").size(), 2);
    EXPECT_EQ(database().getUnit(u"own").size(), 1);
    EXPECT_EQ(add(u"u", u"w", {}), Texts());
    EXPECT_EQ(add(u"u", u"w", {}, u"s"), Texts());
    EXPECT_EQ(database().getUnit(u"u").size(), 3);
    EXPECT_EQ(add(u"u", u"w", {}, u"s"), Texts({"UnitAlreadyInDatabase(u, w)"}));
}

TEST_F(UnitDatabaseTest, ReloadsAfterClear) {
    UnitDatabase& cleared = database();
    cleared.clearAllUnits();
    EXPECT_EQ(cleared.getNumUnits(), 0);
    Words words;
    cleared.getAutoCompleteUnitSuggestions(UnitDatabase::SearchByName, u"foo", words);
    EXPECT_EQ(words, Words({u"foot"})); // words stay
    UnitBase::ReferenceSet found;
    cleared.appendAutoCompleteUnits(UnitDatabase::SearchByName, found, u"foo");
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(database().getNumUnits(), units.size());
    EXPECT_EQ(warnings().size(), abstractUnits.size());
}

} // namespace
