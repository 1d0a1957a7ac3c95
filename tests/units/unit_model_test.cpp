#include "units/database_fixture.h"

namespace {

using namespace TVTypeSys;

class UnitModel : public WithUnitDatabase {
  protected:
    /// Returns a unit whose expression is not parsed.
    static std::unique_ptr<Unit> blank(const std::u16string& expression,
                                       const Rational& scaling = Rational::unity) {
        return std::unique_ptr<Unit>(UnitFactory::createUnit(
            expression, scaling, Rational::zero, UnitFactory::getDefaultAbstractUnit()));
    }
    static std::unique_ptr<Unit> parsed(const std::u16string& expression) {
        auto made = blank(expression);
        made->parseExpressionAndGenerateAST();
        return made;
    }
    static std::string canonicalForm(const UnitBase& shown) {
        std::ostringstream stream;
        shown.displayCanonicalForm(stream);
        return stream.str() + " " + shown.baseScalingFactor.toString();
    }
};

TEST_F(UnitModel, BuildsCanonicalForms) {
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"N", "kg^1m^1s^-2 1/1*1e0"},
        {u"kN^2*km", "kg^2m^3s^-4 1/1*1e9"},
        {u"ft^3/min", "m^3s^-1 18435447/390625*1e-5"},
        {u"m/km", "m^0 1/1*1e-3"},
        {u"m^0", " 1/1*1e0"},
        {u"degC/m", "m^-1degC^1 1/1*1e0"},
        {u"cd*A^-1", "A^-1cd^1 1/1*1e0"}, // not in the file, but fundamental
    };
    for (const auto& [expression, expected] : cases) {
        EXPECT_EQ(canonicalForm(*parsed(expression)), expected);
    }
    EXPECT_EQ(parsed(u"kN*m")->exprTermMap.begin()->first.get().name, u"Metres");
    EXPECT_TRUE(warnings().empty());
}

TEST_F(UnitModel, ComputesScaleFactors) {
    EXPECT_EQ(unit(u"km").getScalingFactorToConvertTo(unit(u"m")), 1000.0);
    EXPECT_EQ(unit(u"m").getScalingFactorToConvertTo(unit(u"km")), 0.001);
    EXPECT_EQ(parsed(u"N*s")->getScalingFactorToConvertTo(*parsed(u"kg*km/s")), 0.001);
    // Offsets are not part of a factor.
    EXPECT_EQ(unit(u"degC").getScalingFactorToConvertTo(unit(u"K")), 1.0);
    EXPECT_ERROR("UnitsNotSeparatedByScalingFactor(Metres, Seconds)",
                 unit(u"m").getScalingFactorToConvertTo(unit(u"s")));
    EXPECT_ERROR("UnitsNotSeparatedByScalingFactor()",
                 parsed(u"degC/m")->getScalingFactorToConvertTo(*parsed(u"K/m")));
    const UnitBase& length = database().getAbstractUnit(u"length").begin()->get();
    EXPECT_EQ(length.getScalingFactorToConvertTo(length), 1.0);
    EXPECT_ERROR("UnitsNotSeparatedByScalingFactor(length, Metres)",
                 length.getScalingFactorToConvertTo(unit(u"m")));
}

TEST_F(UnitModel, RejectsInvalidExpressions) {
    EXPECT_ERROR("ParsingError(m*)", parsed(u"m*"));
    const auto half = blank(u"m*furlong");
    EXPECT_ERROR("UnitNotInDatabase(furlong)", half->parseExpressionAndGenerateAST());
    EXPECT_EQ(canonicalForm(*half), "m^1 1/1*1e0");
    EXPECT_FALSE(UnitBase::isValidUnitExpr(u"m*furlong"));
    EXPECT_TRUE(UnitBase::isValidUnitExpr(u"furlong^0"));
    // A fundamental unit that is not in the file.
    EXPECT_FALSE(UnitBase::isValidUnitName(u"cd"));
}

TEST_F(UnitModel, OrdersUnitsByNameSymbolAndExpression) {
    EXPECT_EQ(blank(u"m")->compare(*blank(u"s")), -1);
    EXPECT_EQ(blank(u"s")->compare(*blank(u"m")), 1);
    const auto small = blank(u"m");
    const auto great = blank(u"m", {1000, 1, 0});
    EXPECT_EQ(small->compare(*great), 1);
    EXPECT_EQ(great->compare(*small), 0);
    EXPECT_EQ(great->getScalingFactorToConvertTo(*small), 1.0);
    EXPECT_LT(unit(u"Metres").compare(unit(u"celsius")), 0);
    EXPECT_EQ(unit(u"celsius").getDisplayString(), u"K");
}

TEST_F(UnitModel, DeterminesEquivalence) {
    EXPECT_TRUE(parsed(u"kg*m/s^2")->equivalentToUnit(unit(u"N")));
    EXPECT_FALSE(unit(u"N").equivalentToUnit(unit(u"kN")));
    EXPECT_TRUE(unit(u"N").compatibleWithUnit(unit(u"kN")));
    EXPECT_FALSE(unit(u"N").compatibleWithUnit(unit(u"m")));
    // Units that are not parsed have equal, empty forms.
    EXPECT_TRUE(blank(u"m")->dimensionallyEquivalentWithUnit(*blank(u"s")));
    EXPECT_FALSE(parsed(u"m*s/s")->dimensionallyEquivalentWithUnit(unit(u"m")));
    const UnitBase& unspecified = UnitFactory::getDefaultAbstractUnit();
    UnitBase::ReferenceSet other;
    database().addMatchingFundamentalAbstractUnitToList(u"Unspecified", other);
    ASSERT_EQ(other.size(), 1);
    EXPECT_NE(unspecified.compare(*other.begin()), 0);
    EXPECT_TRUE(unspecified.equivalentToUnit(*other.begin()));
    const UnitBase& length = database().getAbstractUnit(u"length").begin()->get();
    EXPECT_TRUE(unspecified.equivalentToUnit(length) && length.equivalentToUnit(unspecified));
}

TEST_F(UnitModel, CloneClearsPrecisionFlags) {
    auto lossy = blank(u"m");
    lossy->scaling = Rational(99999, 1, 0) ^ 3;
    lossy->symbol = u"x";
    lossy->parseExpressionAndGenerateAST();
    EXPECT_EQ(warnings(), std::vector<std::string>({"LossOfPrecision(x)"}));
    const std::unique_ptr<Unit> copy(lossy->clone());
    EXPECT_EQ(copy->baseScalingFactor, lossy->baseScalingFactor);
    EXPECT_EQ(copy->scaling.precision() + copy->baseScalingFactor.precision(), 0);
}

TEST_F(UnitModel, HasFundamentalUnits) {
    const auto& length = database().getAbstractUnit(u"length").begin()->get();
    EXPECT_EQ(length.getBaseUnitSymbol(0), u"N");
    EXPECT_EQ(unit(u"m").getBaseUnitSymbol(7) + unit(u"m").getBaseUnitSymbol(8), u"b");
    EXPECT_EQ(database().getFundamentalAbstractUnitSymbol(7), u"T");
    TVTypeSys::UnitBase::ReferenceSet found;
    database().addMatchingFundamentalUnitToList(u"Bits", found); // only the expression
    EXPECT_TRUE(found.empty());
    database().addMatchingFundamentalUnitToList(u"bits", found);
    database().addMatchingFundamentalUnitToList(u"b", found);
    EXPECT_EQ(found.size(), 1);
}

} // namespace
