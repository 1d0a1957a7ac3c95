#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

int allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }

void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

namespace {

using FxpDT::baseCtorPrefer;
using FxpDT::scalingRepPrefer;

std::string stringOf(const fxpDataTypeProp& record, int base, int scaling) {
    return fxpDataTypeToConstructorString_NoCache(record, static_cast<baseCtorPrefer>(base),
                                                  static_cast<scalingRepPrefer>(scaling));
}

/// What the host would make of a constructor string.
struct Reader {
    std::vector<std::string> arguments;

    explicit Reader(const std::string& text) {
        const std::size_t open = text.find('(');
        std::istringstream inside(text.substr(open + 1, text.size() - open - 2));
        for (std::string argument; std::getline(inside, argument, ',');) {
            arguments.push_back(argument);
        }
    }

    /// The value of a named argument, if it is there.
    std::optional<std::string> named(const std::string& name) const {
        const auto found = std::find(arguments.begin(), arguments.end(), name);
        return found == arguments.end() ? std::nullopt : std::optional(*(found + 1));
    }

    fxpDataTypeProp record() const {
        fxpDataTypeProp record{FXP_DT_FIXPT, 0, 0, 0, 1.0, 0.0, 0};
        record.DataTypeOverrideState = named("'DataTypeOverride'") == "'Off'" ? 1 : 0;
        if (arguments[0] == "'double'") {
            return {FXP_DT_DOUBLE, 1, 64, 0, 1.0, 0.0, record.DataTypeOverrideState};
        }
        if (arguments[0] == "'single'") {
            return {FXP_DT_SINGLE, 1, 32, 0, 1.0, 0.0, record.DataTypeOverrideState};
        }
        if (arguments[0] == "'boolean'") {
            return {FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, record.DataTypeOverrideState};
        }
        if (named("'DataType'") == "'ScaledDouble'") {
            record.DataTypeMode = FXP_DT_SCALED_DOUBLE;
        }
        record.Signedness = arguments[0] == "[]" ? 2 : arguments[0] == "1" ? 1 : 0;
        record.WordLength = std::stoi(arguments[1]);
        const auto isName = [](const std::string& argument) { return argument[0] == '\''; };
        const auto last = std::find_if(arguments.begin(), arguments.end(), isName);
        const std::vector<std::string> scaling(arguments.begin() + 2, last);
        if (scaling.size() == 1) {
            record.FixedExponent = -std::stoi(scaling[0]);
        } else {
            int exponent = 0;
            record.SlopeAdjustmentFactor = 2 * std::frexp(std::stod(scaling[0]), &exponent);
            record.FixedExponent = exponent - 1;
            record.Bias = std::stod(scaling.back());
        }
        if (scaling.size() == 3) {
            record.FixedExponent += std::stoi(scaling[1]);
        }
        return record;
    }
};

} // namespace

TEST(Constructor, IsWrittenAsPreferred) {
    const fxpDataTypeProp binaryPoint{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 0};
    struct {
        fxpDataTypeProp record;
        int base;
        int scaling;
        const char* text;
    } const cases[] = {
        {binaryPoint, 1, 0, "fixdt(1,16,4)"},
        {binaryPoint, 0, 0, "numerictype(1,16,4)"},
        {binaryPoint, 1, 1, "fixdt(1,16,0.0625,0)"},
        {binaryPoint, 1, 2, "fixdt(1,16)"},
        {binaryPoint, 7, 3, "fixdt(1,16,0.0625,0)"},
        {{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 1}, 1, 0, "fixdt(1,16,4,'DataTypeOverride','Off')"},
        {{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 2}, 1, 0, "fixdt(1,16,4)"},
        {{FXP_DT_FIXPT, 0, 8, 3, 1.0, 0.0, 0}, 1, 0, "fixdt(0,8,-3)"},
        {{FXP_DT_FIXPT, 0, 8, 0, 1.0, -0.0, 0}, 1, 0, "fixdt(0,8,0)"},
        {{FXP_DT_FIXPT, 0, 8, 0, 1.0, -0.0, 0}, 1, 1, "fixdt(0,8,1,0)"},
        {{FXP_DT_FIXPT, 0, -1, INT32_MIN, 1.0, 0.0, 0}, 1, 0, "fixdt(0,4294967295,2147483648)"},
        {{FXP_DT_FIXPT, 1, 16, -2, 1.5, 0.25, 0}, 1, 0, "fixdt(1,16,0.375,0.25)"},
        {{FXP_DT_FIXPT, 1, 16, -2000, 1.5, 0.0, 0}, 0, 1, "numerictype(1,16,1.5,-2000,0)"},
        {{FXP_DT_FIXPT, 1, 16, 1023, 1.5, 0.0, 0}, 1, 0, "fixdt(1,16,1.348269851146737e+308,0)"},
        {{FXP_DT_FIXPT, 1, 16, 1024, 1.5, 0.0, 0}, 1, 0, "fixdt(1,16,1.5,1024,0)"},
        {{FXP_DT_FIXPT, 2, 16, -4, 1.0, 0.0, 0}, 0, 0, "numerictype([],16,4)"},
        {{FXP_DT_SCALED_DOUBLE, 1, 32, -8, 1.0, 0.0, 1},
         1,
         0,
         "numerictype(1,32,8,'DataType','ScaledDouble','DataTypeOverride','Off')"},
        {{FXP_DT_DOUBLE, 1, 64, 0, 1.0, 0.0, 0}, 1, 0, "fixdt('double')"},
        {{FXP_DT_SINGLE, 1, 32, 0, 1.0, 0.0, 0}, 0, 0, "numerictype('single')"},
        {{FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, 1}, 1, 0, "fixdt('boolean')"},
        {{static_cast<fxpModeDataType>(9), 0, 8, 0, 1.0, 0.0, 1},
         1,
         0,
         "fixdt('boolean','DataTypeOverride','Off')"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, stringOf(c.record, c.base, c.scaling));
    }
    std::string text = "fixdt(";
    fxpDataTypeToConstructorString_FixptGuts(text, binaryPoint, FxpDT::PreferFractionLength);
    EXPECT_EQ("fixdt(1,16,4", text);
}

TEST(Constructor, RebuildsTheRecord) {
    std::mt19937_64 random(7);
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    const auto fraction = [&] { return std::uniform_real_distribution<double>(0.0, 1.0)(random); };
    for (int i = 0; i < 5000; ++i) {
        const int exponent = pick(0, 9) == 0 ? pick(-2147483000, 2147483000) : pick(-1100, 1100);
        const fxpDataTypeProp record{
            pick(0, 1) == 0 ? FXP_DT_FIXPT : FXP_DT_SCALED_DOUBLE,
            static_cast<std::uint32_t>(pick(0, 2)),
            pick(0, 1) == 0 ? pick(1, 128) : pick(1, INT32_MAX),
            exponent,
            pick(0, 1) == 0 ? 1.0 : 1.0 + fraction(),
            pick(0, 1) == 0 ? 0.0 : std::ldexp(fraction() - 0.5, pick(-990, 990)),
            pick(0, 1)};
        ASSERT_TRUE(record.validateFxpDTProp());
        for (const int base : {0, 1}) {
            for (const int scaling : {0, 1}) {
                const std::string text = stringOf(record, base, scaling);
                ASSERT_TRUE(fxdt_isequal_to()(record, Reader(text).record())) << text;
                ASSERT_EQ(record.DataTypeOverrideState, Reader(text).record().DataTypeOverrideState)
                    << text;
            }
        }
    }
}

TEST(Constructor, AllocatesNothingButTheString) {
    const fxpDataTypeProp shortOne{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 0};
    const fxpDataTypeProp longOne{FXP_DT_SCALED_DOUBLE, 1, 32, -1000, 4.0 / 3, -1e-300 / 3, 1};
    for (const fxpDataTypeProp& record : {shortOne, longOne}) {
        const int before = allocations;
        const std::string constructor = stringOf(record, 1, 0);
        const std::string identifier = fxpDataTypeToIdentifierString_NoCache(&record);
        EXPECT_EQ(before + (record.Bias == 0.0 ? 0 : 2), allocations) << constructor << identifier;
    }
}
