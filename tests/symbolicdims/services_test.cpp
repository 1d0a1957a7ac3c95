#include "symbolicdims/symbolicdims_fixture.h"

namespace TVTypeSys {
namespace {

using SymbolicDimsServices::Concat;
using SymbolicDimsServices::Const;

constexpr int untouched = -77;

class SymbolicServicesTest : public SymbolicTest {
  protected:
    // Returns the text of a constant's output, "" if it is unchanged, or the error.
    std::string constant(const std::vector<std::string>& sizes, bool vectorForm) {
        int output = untouched;
        const std::string error =
            thrownError([&] { Const::ComputeOutput(&table, sizes, output, vectorForm); });
        return error != "no error" ? error : output == untouched ? "" : text(output);
    }

    // Returns the text of the unknown input, which is given as "?", or the error; and its index.
    std::string missingInput(const std::vector<const char*>& inputs, const char* output, int axis,
                             bool vectorForm = false) {
        std::vector<int> ids;
        for (const char* input : inputs) {
            ids.push_back(std::string(input) == "?" ? -1 : id(input));
        }
        int result = untouched;
        int unknown = untouched;
        const std::string error = thrownError([&] {
            Concat::ComputeInput(&table, ids, id(output), result, unknown, axis, vectorForm,
                                 block(1));
        });
        return (error != "no error"   ? error
                : result == untouched ? "none"
                                      : text(result)) +
               " at " + std::to_string(unknown);
    }
};

TEST_F(SymbolicServicesTest, ComputesConstantOutput) {
    EXPECT_EQ(constant({}, false) + constant({}, true), "");
    EXPECT_EQ(constant({"2", "N"}, false), "[2,N]");
    EXPECT_EQ(constant({"1", "N"}, true), "N");
    EXPECT_EQ(constant({"N", "1"}, true), "N");
    EXPECT_EQ(constant({"1", "1"}, true), "1");
    for (const std::vector<std::string>& sizes :
         {std::vector<std::string>{"N", "M"}, {"1"}, {"1", "N", "1"}}) {
        EXPECT_EQ(constant(sizes, true), "InvalidSymbolicDimensionSpec()");
    }
    EXPECT_THROW(constant({"1", "0x10"}, true), boost::bad_lexical_cast);
}

TEST_F(SymbolicServicesTest, ComputesMissingConcatInput) {
    EXPECT_EQ(missingInput({"[2,K]", "?"}, "[M,K]", 0), "[M-2,K] at 1");
    EXPECT_EQ(missingInput({"?", "[2,K]"}, "[M,K]", 0, true), "M-2 at 0");
    EXPECT_EQ(missingInput({"[2,K]", "?", "?"}, "[M,K]", 0), "none at 2");
    EXPECT_EQ(missingInput({"?"}, "[M,K]", 1), "[M,K] at 0");
    EXPECT_EQ(missingInput({}, "[M,K]", 1), "none at -10");
    // An input that lacks this dimension is ignored along it.
    EXPECT_EQ(missingInput({"A", "[M,3]", "?"}, "[M,K]", 1), "[M,K-3] at 2");
    EXPECT_TRUE(table.hasEqualRelation(id("A"), id("M")));
    std::vector<int> stated;
    table.getSymbolicDimsConstraints(stated);
    EXPECT_EQ(stated.size(), 1);
}

TEST_F(SymbolicServicesTest, StatesConcatRelations) {
    id("C"); // the representative of the equal sizes
    // Dimensions that the output does not have are ignored.
    EXPECT_EQ(missingInput({"[2,A]", "[N,B]", "[3,A,9]"}, "[M,C]", 0), "none at -10");
    EXPECT_TRUE(table.hasEqualRelation(id("M"), id("N+5")));
    EXPECT_TRUE(table.hasEqualRelation(id("A"), id("B")));
    std::vector<int> stated;
    table.getSymbolicDimsConstraints(block(1), stated);
    EXPECT_EQ(stated.size(), 3);
}

TEST_F(SymbolicServicesTest, RejectsInvalidConcat) {
    for (const int axis : {-1, 2}) {
        EXPECT_EQ(missingInput({"[2,K]", "?"}, "[M,K]", axis),
                  "InvalidDimensionIndex(" + std::to_string(axis) + ", 2) at -77");
    }
    table.addGreaterThanRelation(id("G"), id("H"), nullptr);
    EXPECT_EQ(missingInput({"[2,A,H]", "?"}, "[M,B,G]", 0),
              "InconsistentSymbolicDimensionNotEqual(G, H, H) at 1");
    EXPECT_TRUE(table.hasEqualRelation(id("A"), id("B")));
}

} // namespace
} // namespace TVTypeSys
