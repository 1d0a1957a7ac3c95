// The tables behind the check of a connection: direction, losses of types, conversions of units.
#include "exact/number.h"
#include "systems/flow.h"
#include "systems/type_conversion.h"
#include "systems/unit_conversion.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::systems {

namespace {

using exchange::BaseType;
using ssp::Kind;

/// The exact set of values of a numeric type: |x| <= 2^exponent with at most `digits` bits.
struct Numbers {
    int digits;
    int exponent;
    bool isSigned;
    bool isFloating;
};

Numbers numbersOf(BaseType base) {
    switch (base) {
    case BaseType::Float64:
        return {53, 1024, true, true};
    case BaseType::Float32:
        return {24, 128, true, true};
    case BaseType::Int8:
        return {7, 7, true, false};
    case BaseType::UInt8:
        return {8, 8, false, false};
    case BaseType::Int16:
        return {15, 15, true, false};
    case BaseType::UInt16:
        return {16, 16, false, false};
    case BaseType::Int32:
        return {31, 31, true, false};
    case BaseType::UInt32:
        return {32, 32, false, false};
    case BaseType::Int64:
        return {63, 63, true, false};
    case BaseType::UInt64:
        return {64, 64, false, false};
    default: // Boolean
        return {1, 1, false, false};
    }
}

TEST(TypeConversion, MatchesReferenceModel) {
    for (int i = 0; i <= static_cast<int>(BaseType::Boolean); ++i) {
        for (int j = 0; j <= static_cast<int>(BaseType::Boolean); ++j) {
            const auto source = static_cast<BaseType>(i);
            const auto target = static_cast<BaseType>(j);
            const Numbers from = numbersOf(source);
            const Numbers to = numbersOf(target);
            TypeLoss expected;
            expected.range = from.exponent > to.exponent || (from.isSigned && !to.isSigned);
            expected.digits = to.isFloating && from.digits > to.digits;
            expected.fraction = from.isFloating && !to.isFloating && target != BaseType::Boolean;
            EXPECT_EQ(lossBetween(source, target), expected) << i << " to " << j;
        }
    }
}

TEST(Flow, FollowsTheOwnersAndKindsOfBothEnds) {
    const FlowEnd input{false, Kind::Input};
    const FlowEnd output{false, Kind::Output};
    const FlowEnd systemInput{true, Kind::Input};
    const FlowEnd systemOutput{true, Kind::Output};
    const FlowEnd any{false, Kind::Unspecified};
    const struct {
        FlowEnd start;
        FlowEnd end;
        Flow flow;
    } cases[] = {{output, input, Flow::Forward},
                 {input, output, Flow::Backward},
                 {input, systemInput, Flow::Backward},
                 {systemInput, systemOutput, Flow::Forward},
                 {systemInput, systemInput, Flow::Forbidden},
                 {systemOutput, input, Flow::Forbidden},
                 {output, output, Flow::Forbidden},
                 {output, {false, Kind::Parameter}, Flow::Forbidden},
                 {{false, Kind::Inout}, {false, Kind::Inout}, Flow::Forbidden},
                 {{false, Kind::Constant}, {false, Kind::StructuralParameter}, Flow::Forward},
                 {any, output, Flow::Backward},
                 {any, any, Flow::Forward}};
    for (const auto& [start, end, flow] : cases) {
        EXPECT_EQ(flowBetween(start, end), flow) << flowEndText(start) << ", " << flowEndText(end);
    }
}

exchange::UnitDefinition unit(std::string_view name, int metres, int radians, double factor,
                              double offset) {
    exchange::UnitDefinition definition;
    definition.name = name;
    definition.base = exchange::BaseUnit{{0, metres, 0, 0, 0, 0, 0, radians}, factor, offset};
    return definition;
}

TEST(UnitConversion, IsThatOfTheDefinitions) {
    const auto a = unit("a", 1, 0, 0.001, 0);
    const auto b = unit("b", 1, 0, 0.1, 5);
    const auto c = unit("c", 2, 0, 1, 0);
    const auto d = unit("d", 1, 1, 0.001, 0);
    const auto check = [](const UnitEnd& from, const UnitEnd& to, UnitRelation relation,
                          double factor, double offset) {
        const UnitConversion conversion = convertUnits(from, to);
        EXPECT_EQ(conversion.relation, relation) << from.name << " to " << to.name;
        EXPECT_EQ(conversion.factor, factor);
        EXPECT_EQ(conversion.offset, offset);
    };
    check({"a", &a}, {"b", &b}, UnitRelation::Converted, 0.01, -50);
    check({"b", &b}, {"a", &a}, UnitRelation::Converted, 100, 5000);
    check({"b", &b}, {"a", &a, true}, UnitRelation::Converted, 100, 0);
    check({"a", &a}, {"other name", &a}, UnitRelation::Same, 1, 0);
    check({"a", &a}, {"c", &c}, UnitRelation::Incompatible, 1, 0);
    check({"a", &a}, {"d", &d}, UnitRelation::RadianDiffers, 1, 0);
    check({"a", &a}, {}, UnitRelation::None, 1, 0);
    // Without a definition, names decide, in any spelling.
    check({"a", &a}, {"a", nullptr}, UnitRelation::Same, 1, 0);
    check({"N.m", nullptr}, {"Nm", nullptr}, UnitRelation::Same, 1, 0);
    check({"mm", nullptr}, {"m", nullptr}, UnitRelation::Undecided, 1, 0);
    check({"a", &a}, {"xyz", nullptr}, UnitRelation::Undecided, 1, 0);
    check({"1/s", nullptr}, {"0/s", nullptr}, UnitRelation::Undecided, 1, 0);
}

} // namespace

} // namespace tvtool::systems
