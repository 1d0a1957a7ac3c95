#include "table_fixture.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

using namespace TVTypeSys;

namespace {

std::uintptr_t word(int number) { return static_cast<std::uintptr_t>(number); }
std::uintptr_t word(const void* pointer) { return reinterpret_cast<std::uintptr_t>(pointer); }

template <class... Arguments>
std::vector<std::uintptr_t> words(Arguments... arguments) {
    return {word(arguments)...};
}

// What `see` was called with last, and the status that it gives.
std::vector<std::uintptr_t> seen;
int statusToGive = 0;

// A function of any type.
template <class... Arguments>
int see(_tvDataTypeAccess_tag* access, Arguments... arguments) {
    if (statusToGive < 0) {
        throw std::runtime_error("of another class");
    }
    seen = words(access->table, arguments...);
    return statusToGive;
}

class ValueOperationsTest : public TableTest {
  protected:
    // An alias of an alias of a type that has all functions, which give this status.
    int typeGiving(int status) {
        DataType& type = at(plain("T"));
        type.setConvertBetweenFcn(see);
        type.setIsPositiveFcn(see);
        type.setIsNegativeFcn(see);
        type.setGreaterThanFcn(see);
        type.setGreaterEqualFcn(see);
        statusToGive = status;
        return alias("A", alias("B", type.getId()));
    }

    const double x[3] = {1, -2, 0};
    const double y[3] = {1, 1, 1};
    unsigned char out[4] = {7, 7, 7, 7};
};

} // namespace

TEST_F(ValueOperationsTest, CallTheFunctionOfTheType) {
    const int id = typeGiving(12);
    const int end = table.getDataTypeId("T");
    const int byte = alias("Byte", 3);
    const auto expect = [this](int status, auto... arguments) {
        EXPECT_EQ(12, status);
        EXPECT_EQ(words(&table, nullptr, arguments...), seen);
    };
    expect(table.convertToUsingSrcId(byte, id, 3, x, y, out), 3, end, 3, x, y, out);
    expect(table.convertToUsingDstId(id, byte, 0, x, y, out), end, 3, 0, x, y, out);
    expect(table.isPositive(id, 3, x, y, out), end, 3, x, y, out);
    expect(table.isNegative(id, 3, x, y, out), end, 3, x, y, out);
    expect(table.greaterThan(id, 3, x, y, this, out), end, 3, x, y, this, out);
    expect(table.greaterEqual(id, 3, x, y, this, out), end, 3, x, y, this, out);
    EXPECT_TRUE(table.convertToUsingSrcIdWithStatus(byte, id, 3, x, y, out));
    EXPECT_TRUE(table.isPositiveWithStatus(id, 3, x, y, out));
    statusToGive = -1;
    EXPECT_THROW(table.isPositiveWithStatus(id, 3, x, y, out), std::runtime_error);

    EXPECT_EQ(1, table.greaterThan(-1, 3, y, x, nullptr, out));
    EXPECT_EQ(0, std::memcmp(out, "\0\1\1\7", 4)) << "\"auto\" compares like double";
}

TEST_F(ValueOperationsTest, AreRefusedWithoutAFunctionAndWhereItFails) {
    const struct {
        int id;
        std::string why;
    } cases[] = {{typeGiving(0), "FcnUnknownError(A)"},
                 {10, "FcnDoesNotExist(integer)"},
                 {plain("New"), "FcnDoesNotExist(New)"}};
    for (const auto& c : cases) {
        const int id = c.id;
        const std::string& why = c.why;
        // The other side has no function, or another one.
        const int other = id == 10 ? table.getDataTypeId("A") : 10;
        EXPECT_REFUSED("DataTypeConvertBetween" + why,
                       table.convertToUsingSrcId(other, id, 3, x, y, out));
        EXPECT_REFUSED("DataTypeConvertBetween" + why,
                       table.convertToUsingDstId(id, other, 3, x, y, out));
        EXPECT_REFUSED("DataTypeIsPositive" + why, table.isPositive(id, 3, x, y, out));
        EXPECT_REFUSED("DataTypeIsNegative" + why, table.isNegative(id, 3, x, y, out));
        EXPECT_REFUSED("DataTypeGreaterThan" + why, table.greaterThan(id, 3, x, y, x, out));
        EXPECT_REFUSED("DataTypeGreaterEqual" + why, table.greaterEqual(id, 3, x, y, x, out));
        EXPECT_FALSE(table.convertToUsingSrcIdWithStatus(other, id, 3, x, y, out));
        EXPECT_FALSE(table.isPositiveWithStatus(id, 3, x, y, out));
    }
}

TEST_F(ValueOperationsTest, FindWhatIsNotZero) {
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
    EXPECT_TRUE(nonZero(minusZero, alias("Speed", 0))) << "its bytes are not those of the ground";
    EXPECT_TRUE(nonZero(notANumber, 0));
    EXPECT_TRUE(nonZero(smallest, 1));
    EXPECT_FALSE(nonZero("\0\0\0\0\0\0\0\x80", 1));

    DataType& offset = at(plain("Offset"));
    EXPECT_FALSE(nonZero("", offset.getId())) << "no size, and nothing is read";
    offset.setSize(2);
    offset.setGround("\5\0");
    EXPECT_FALSE(nonZero("\5\0\5\0", offset.getId()));
    EXPECT_TRUE(nonZero("\5\0\5\1", offset.getId()));
}

TEST_F(ValueOperationsTest, NameAndLogTypesByTheirKind) {
    const int fixed = plain("sfix16_En3");
    const int color = plain("Color");
    at(color).setType(DataTypeQualifierEnum);
    table.setDataTypeStorageId(color, 6);
    const int bus = table.registerStructDataType("B", clientSource, nullptr);
    const int paint = alias("Paint", color);
    EXPECT_EQ("fixdt('sfix16_En3')", table.getDTACompliantString(fixed));
    EXPECT_EQ("Enum: Color", table.getDTACompliantString(color));
    EXPECT_EQ("Bus: B", table.getDTACompliantString(bus));
    EXPECT_EQ("auto", table.getDTACompliantString(-1));
    EXPECT_EQ("Paint", table.getDTACompliantString(paint));
    EXPECT_EQ(
        (std::vector<int>{-1, 8, 0, 0, 0, 6, 6}),
        (std::vector<int>{table.getDataTypeLoggingId(-1), table.getDataTypeLoggingId(8),
                          table.getDataTypeLoggingId(9), table.getDataTypeLoggingId(fixed),
                          table.getDataTypeLoggingId(alias("Byte", 3)),
                          table.getDataTypeLoggingId(color), table.getDataTypeLoggingId(paint)}));
    EXPECT_REFUSED("InvalidDataTypeId(-10)", table.getDataTypeLoggingId(-10));
}
