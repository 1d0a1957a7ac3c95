#include "table_fixture.h"

#include <cmath>
#include <cstdint>
#include <stdexcept>

using namespace TVTypeSys;

namespace {

std::uintptr_t word(int number) { return static_cast<std::uintptr_t>(number); }
std::uintptr_t word(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

template <class... Arguments>
std::vector<std::uintptr_t> words(Arguments... arguments) {
    return {word(arguments)...};
}

// The arguments of the last call of `record`, and the status that it returns; below 0 it throws.
std::vector<std::uintptr_t> recorded;
int statusToReturn = 0;

// A function of any signature.
template <class... Arguments>
int record(_tvDataTypeAccess_tag* access, Arguments... arguments) {
    if (statusToReturn < 0) {
        throw std::runtime_error("not of the library");
    }
    recorded = words(access->table, arguments...);
    return statusToReturn;
}

class ValueOperationsTest : public TableTest {
  protected:
    // An alias of an alias of a type with all functions, which return this status.
    int typeReturning(int status) {
        DataType& type = at(plain("T"));
        type.setConvertBetweenFcn(record);
        type.setIsPositiveFcn(record);
        type.setIsNegativeFcn(record);
        type.setGreaterThanFcn(record);
        type.setGreaterEqualFcn(record);
        statusToReturn = status;
        return alias("A", alias("B", type.getId()));
    }

    const double x[3] = {1, -2, 0};
    const double y[3] = {1, 1, 1};
    unsigned char out[4] = {7, 7, 7, 7};
};

} // namespace

TEST_F(ValueOperationsTest, CallsFunctionWithResolvedIds) {
    const int id = typeReturning(12);
    const int end = table.getDataTypeId("T");
    const int byte = alias("Byte", 3);
    const auto expect = [this](int status, auto... arguments) {
        EXPECT_EQ(12, status);
        EXPECT_EQ(words(&table, nullptr, arguments...), recorded);
    };
    expect(table.convertToUsingSrcId(byte, id, 3, x, y, out), 3, end, 3, x, y, out);
    expect(table.convertToUsingDstId(id, byte, 0, x, y, out), end, 3, 0, x, y, out);
    expect(table.isPositive(id, 3, x, y, out), end, 3, x, y, out);
    expect(table.isNegative(id, 3, x, y, out), end, 3, x, y, out);
    expect(table.greaterThan(id, 3, x, y, this, out), end, 3, x, y, this, out);
    expect(table.greaterEqual(id, 3, x, y, this, out), end, 3, x, y, this, out);
    EXPECT_TRUE(table.convertToUsingSrcIdWithStatus(byte, id, 3, x, y, out));
    EXPECT_TRUE(table.isPositiveWithStatus(id, 3, x, y, out));
    statusToReturn = -1;
    EXPECT_THROW(table.isPositiveWithStatus(id, 3, x, y, out), std::runtime_error);

    EXPECT_EQ(1, table.greaterThan(-1, 3, y, x, nullptr, out));
    EXPECT_EQ(0, std::memcmp(out, "\0\1\1\7", 4)) << "\"auto\" compares like double";
}

TEST_F(ValueOperationsTest, ThrowsForMissingOrFailingFunction) {
    const std::pair<int, std::string> cases[] = {{typeReturning(0), "FcnUnknownError(A)"},
                                                 {10, "FcnDoesNotExist(integer)"},
                                                 {plain("New"), "FcnDoesNotExist(New)"}};
    for (const auto& [type, end] : cases) {
        const int id = type; // a structured binding cannot be captured
        const auto error = [&end = end](const char* name) { return "DataType" + (name + end); };
        // The function of the other type must not be called.
        const int other = id == 10 ? table.getDataTypeId("A") : 10;
        EXPECT_ERROR(error("ConvertBetween"), table.convertToUsingSrcId(other, id, 3, x, y, out));
        EXPECT_ERROR(error("ConvertBetween"), table.convertToUsingDstId(id, other, 3, x, y, out));
        EXPECT_ERROR(error("IsPositive"), table.isPositive(id, 3, x, y, out));
        EXPECT_ERROR(error("IsNegative"), table.isNegative(id, 3, x, y, out));
        EXPECT_ERROR(error("GreaterThan"), table.greaterThan(id, 3, x, y, x, out));
        EXPECT_ERROR(error("GreaterEqual"), table.greaterEqual(id, 3, x, y, x, out));
        EXPECT_FALSE(table.convertToUsingSrcIdWithStatus(other, id, 3, x, y, out));
        EXPECT_FALSE(table.isPositiveWithStatus(id, 3, x, y, out));
    }
}

TEST_F(ValueOperationsTest, NonZeroArray) {
    // Two real elements, and one complex.
    const auto nonZero = [this](const auto& values, int id) {
        const bool found = table.checkIfNonZeroArray(values, 2, id, false);
        EXPECT_EQ(found, table.checkIfNonZeroArray(values, 1, id, true));
        EXPECT_FALSE(table.checkIfNonZeroArray(values, 0, id, true));
        return found;
    };
    const double minusZero[] = {0.0, -0.0};
    const double notANumber[] = {0.0, std::nan("")};
    const float smallest[] = {0.0F, -1e-45F};
    EXPECT_FALSE(nonZero(minusZero, 0));
    EXPECT_TRUE(nonZero(minusZero, alias("Speed", 0)))
        << "compared with the bytes of the ground value";
    EXPECT_TRUE(nonZero(notANumber, 0));
    EXPECT_TRUE(nonZero(smallest, 1));
    EXPECT_FALSE(nonZero("\0\0\0\0\0\0\0\x80", 1));

    DataType& offset = at(plain("Offset"));
    EXPECT_FALSE(nonZero("", offset.getId())) << "no size: nothing is read";
    offset.setSize(2);
    offset.setGround("\5\0");
    EXPECT_FALSE(nonZero("\5\0\5\0", offset.getId()));
    EXPECT_TRUE(nonZero("\5\0\5\1", offset.getId()));
}

TEST_F(ValueOperationsTest, ParameterNamesAndLoggingTypes) {
    const int color = plain("Color");
    at(color).setType(DataTypeQualifierEnum);
    table.setDataTypeStorageId(color, 6);
    const auto expect = [this](int id, const char* parameterName, int loggingId) {
        EXPECT_EQ(parameterName, table.getDTACompliantString(id));
        EXPECT_EQ(loggingId, table.getDataTypeLoggingId(id)) << parameterName;
    };
    expect(-1, "auto", -1);
    expect(8, "boolean", 8);
    expect(9, "fcn_call", 0);
    expect(plain("sfix16_En3"), "fixdt('sfix16_En3')", 0);
    expect(alias("Byte", 3), "Byte", 0);
    expect(structure("B"), "Bus: B", 0);
    expect(color, "Enum: Color", 6);
    expect(alias("Paint", color), "Paint", 6);
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.getDataTypeLoggingId(-10));
}
