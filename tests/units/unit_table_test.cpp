#include "support/failing_allocations.h"
#include "units/database_fixture.h"

#include <cstring>

namespace {

using namespace TVTypeSys;

class UnitTableTest : public WithUnitDatabase {
  protected:
    int id(const char* text) { return table.registerUnit(text, true); }

    UnitTable table;
};

TEST_F(UnitTableTest, RegistersEachSpelling) {
    EXPECT_EQ(id("inherit"), -1);
    EXPECT_EQ(id("unitless"), 0);
    const char* const texts[] = {"m", "metre", "m/s", "m / s", "kN/ft"};
    for (int round = 0; round < 2; ++round) {
        for (int i = 0; i < 5; ++i) {
            EXPECT_EQ(id(texts[i]), i + 1);
            EXPECT_EQ(table.getUnit(i + 1)->getId(), i + 1);
        }
    }
    EXPECT_EQ(table.getUnit(2)->name, u"Metres");
    EXPECT_EQ(table.getUnit(5)->name, u"foot") << "an alias is not parsed into its units";
    EXPECT_TRUE(table.isUnitIdValid(-1) && !table.isUnitIdValid_NotInherit(-1));
    EXPECT_FALSE(UnitTable::isAValidUnit("inherit"));
}

TEST_F(UnitTableTest, NamesCompositeUnits) {
    const UnitBase& made = *table.getUnit(id("kN*degC/(meter*min^-2)"));
    EXPECT_EQ(made.name, u"kilonewton*celsius/(Metres*minute^-2)");
    EXPECT_EQ(made.symbol, u"kN*degC/(m*min^-2)");
    EXPECT_EQ(made.display, "kN*\u00b0C/(m*min^-2)");
    EXPECT_EQ(made.expression, u"kN*degC/(meter*min^-2)");
    EXPECT_EQ(made.baseScalingFactor.toString(), "36/1*1e5");
    for (const auto& [unit, term] : made.fundamentalExprAST) { // of degC too
        EXPECT_EQ(term.secondary, 0);
    }
    EXPECT_EQ(made.exprTermMap.begin()->second.secondary, 0);
    // Blanks are part of a token.
    EXPECT_EQ(table.getUnit(id("meter / s"))->symbol, u"meter / s");
    EXPECT_TRUE(table.getUnit(table.registerUnit("m*m", false))->fundamentalExprAST.empty());
}

class CompoundFactors : public WithUnitDatabase {
  protected:
    /// Writes a file with units in which products are close to a listed factor.
    CompoundFactors() {
        const char* const factors[][2] = {
            {"a", "300007 99991 0"},  {"b2", "99991 30011 0"},  {"c", "1201 7 0"},
            {"d", "343 1201 0"},      {"e", "450001 450000 5"}, {"f", "450001 450002 -2"},
            {"g", "200001 200000 0"}, {"h", "200001 200002 0"}, {"z", "1 65536 0"},
            {"w", "1 65536 0"},       {"y", "0 1 0"},           {"x", "-300007 99991 0"},
            {"far", "1 1 2147483647"}};
        for (const auto& [symbol, factor] : factors) {
            units.push_back(
                record(std::string("unit ") + symbol, symbol, "m", "length", "", factor));
        }
        compounds = R"(, "compounds": [{"Factors": "0/5 -1/2 3 4/ /5 7/0 99999999999/1 1.5/2 )"
                    "1442401/1 3/2x 300007/30011  1/1 ,\"}]";
        writeFile();
    }
};

TEST_F(CompoundFactors, ReplaceProductsThatOverflow) {
    const std::pair<const char*, const char*> cases[] = {
        {"a*b2", "300007/30011*1e0"},
        {" b2 * (km^2*a)", "300007/30011*1e6"},
        {"c^3*d", "1442401/1*1e0"},
        {"c^3*d/far^2", ""},     // the power of ten is below the range of int
        {"e*f", "1/1*1e3"},      // greater than the listed factor by 4.9e-12
        {"1/(e*f)", "1/1*1e-3"}, // less, with a mantissa near 10
        {"g*h", ""},             // by 2.5e-11
        {"x*b2", ""},
        {"a*b2*y", ""},
        {"a*b2/(c^90*d)", ""},
        {"a/km", "300007/99991*1e-3"}, // no overflow
        {"a*c", "360308407/699937*1e0"},
    };
    UnitTable table;
    for (const auto& [text, expected] : cases) {
        const UnitBase& composite = *table.getUnit(table.registerUnit(text, true));
        // A unit outside of a table has the product as it wraps.
        const std::unique_ptr<Unit> wrapped(
            UnitFactory::createUnit(composite.expression, Rational::unity, Rational::zero,
                                    UnitFactory::getDefaultAbstractUnit()));
        wrapped->parseExpressionAndGenerateAST();
        const Rational& factor = composite.baseScalingFactor;
        const Rational& product = wrapped->baseScalingFactor;
        EXPECT_EQ(factor.toString(), *expected == '\0' ? product.toString() : expected) << text;
        EXPECT_EQ(factor.precision(), *expected == '\0' ? product.precision() : 0) << text;
        EXPECT_TRUE(composite.dimensionallyEquivalentWithUnit(*wrapped)) << text;
    }
    EXPECT_THROW(table.registerUnit("z*w", true), boost::bad_rational);
}

TEST_F(CompoundFactors, LastUntilUnitsAreCleared) {
    const auto factor = [] {
        UnitTable table;
        return table.getUnit(table.registerUnit("a*b2", true))->baseScalingFactor.toString();
    };
    for (int index = 0, failures = 1; failures != 0; ++index) {
        database().clearAll();
        UnitTable table;
        failures = 0;
        {
            const FailingAllocations failing(index, Failures::Once);
            try {
                table.registerUnit("a*b2", true);
            } catch (const std::bad_alloc&) {
                failures = 1;
            }
        }
        ASSERT_EQ(table.getNumUnits(), 3 - failures);
        ASSERT_EQ(factor(), "300007/30011*1e0") << index;
    }
    compounds.clear();
    writeFile();
    database().clearAll();
    EXPECT_NE(factor(), "300007/30011*1e0");
}

TEST_F(UnitTableTest, RejectsUnknownNames) {
    for (const char* text : {"furlong", "m*furlong", "m*", "", "m\xed\xa0\x80", "cd"}) {
        EXPECT_ERROR("InvalidUnitExpression(" + std::string(text) + ")", id(text));
        EXPECT_ERROR("InvalidDataType(" + std::string(text) + ")",
                     UnitTable::validateUnitExpr(text));
    }
    EXPECT_ERROR("InvalidUnitExpression()", id(nullptr));
    EXPECT_EQ(table.getNumUnits(), 2);
    int given = 7;
    tvsvDiagnosticImpl* diagnostic = UnitTable::RegisterUnit(&table, "Model/Gain", "x", &given);
    ASSERT_NE(diagnostic, nullptr);
    EXPECT_EQ(messageSummary(*diagnostic, 1), "DataTypeErrorFromBlock(Model/Gain)");
    tvsvDiscardDiagnostic(diagnostic);
    EXPECT_EQ(given, 7);
    EXPECT_EQ(UnitTable::RegisterUnit(&table, nullptr, "m", &given), nullptr);
    EXPECT_EQ(given, 1);
}

TEST_F(UnitTableTest, ExplainsInvalidTexts) {
    const auto sentence = [](const auto& operation) -> std::string {
        try {
            operation();
        } catch (const fnd::except::IException& error) {
            EXPECT_EQ(error.diagnostic().text(0), error.what());
            return error.what();
        }
        return "no error";
    };
    const std::pair<const char*, const char*> cases[] = {
        {"newtn", "\"newtn\" is not the name,"},
        {"kg*newtn/m/poond", "\"newtn\" in \"kg*newtn/m/poond\" is not the name,"},
        {"", "\"\" is not a unit expression. A unit"},
        {"m^", "\"m^\" is not a unit"},
        {"2*m", "\"2*m\" is not a unit"}, // 2 is a name here
        {"N\u00b7m", "\"N\u00b7m\" is not a unit"},
        {"kg m", "\"kg m\" is not a unit"},
        {"m^0.5", "\"m^0.5\" is not a unit"},
        {"m^newtn", "\"m^newtn\" is not a unit"},
        {"(m", "\"(m\" is not a unit"},
    };
    for (const auto& [text, expected] : cases) {
        const std::string registered = sentence([&, t = text] { id(t); });
        EXPECT_EQ(registered.substr(0, std::strlen(expected)), expected);
        EXPECT_EQ(registered, sentence([t = text] { UnitTable::validateUnitExpr(t); }));
    }
}

TEST_F(UnitTableTest, ComparesUnits) {
    EXPECT_FALSE(table.equivalentUnits(0, 0));
    EXPECT_FALSE(table.equivalentUnits(-1, 0));
    const int newton = id("N");
    EXPECT_TRUE(table.equivalentUnits(newton, newton));
    EXPECT_TRUE(table.equivalentUnits(newton, id("kg*m/s^2")));
    EXPECT_FALSE(table.equivalentUnits(newton, id("kN")));
    EXPECT_ERROR("InvalidDataTypeId(99)", table.equivalentUnits(99, newton));
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.checkUnitId(table.getUnitId("nowhere")));
}

TEST_F(UnitTableTest, ReusesIds) {
    const int metre = id("metre");
    const int speed = id("m/s");
    table.removeUnit(table.getUnit(speed));
    EXPECT_EQ(table.getUnitId("m/s"), -10);
    EXPECT_EQ(id("s/m"), speed);
    table.removeUnit(table.getUnit(metre)); // registered under another text than its expression
    EXPECT_EQ(table.getUnitId("metre"), -10);
    EXPECT_EQ(id("metre"), speed + 1);
    UnitTable other;
    EXPECT_ERROR("InvalidDataTypeId(-1)", table.removeUnit(other.getUnit(-1)));
    table.resetToBuiltin();
    EXPECT_EQ(table.getNumUnits(), 2);
    EXPECT_EQ(table.getUnitId("unitless"), 0);
    EXPECT_EQ(id("s/m"), 1);
}

TEST_F(UnitTableTest, OwnsAddedUnits) {
    const auto make = [](int given) {
        std::unique_ptr<UnitBase> made(unit(u"N").clone());
        made->setId(given);
        return made.release();
    };
    table.addUnit(u"first", make(40));
    const UnitBase* held = table.getUnit(40);
    table.addUnit(u"second", make(40));
    EXPECT_EQ(table.getUnit(40), held);
    EXPECT_EQ(table.getUnitId("second"), 40);
    EXPECT_EQ(id("m"), 41);
    table.removeUnit(held);
    table.addUnit(u"third", make(40));
    EXPECT_EQ(table.getUnitId("first"), -10);
    EXPECT_ERROR("InvalidUnitExpression(third)", id("third"));
    table.addUnit(u"last", make(std::numeric_limits<int>::max()));
    EXPECT_ERROR("InvalidDataTypeId(2147483647)", id("s"));
}

TEST_F(UnitTableTest, RevalidatesAfterClear) {
    EXPECT_EQ(id("m"), 1);
    units.clear();
    writeFile();
    database().clearAll();
    EXPECT_ERROR("InvalidUnitExpression(m)", id("m"));
}

} // namespace
