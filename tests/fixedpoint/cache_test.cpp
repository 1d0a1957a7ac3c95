#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr fxpDataTypeProp binaryPoint{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 0};
constexpr fxpDataTypeProp slopeAndBias{FXP_DT_FIXPT, 1, 16, -2, 1.5, 0.25, 0};

const std::string& constructorOf(const fxpDataTypeProp& record, int base, int scaling) {
    return fxpDataTypeToConstructorString(record, static_cast<FxpDT::baseCtorPrefer>(base),
                                          static_cast<FxpDT::scalingRepPrefer>(scaling));
}

} // namespace

TEST(Cache, GivesEqualRecordsTheSameTexts) {
    for (const fxpDataTypeProp& record : {binaryPoint, slopeAndBias}) {
        const fxpDataTypeProp copy = record;
        EXPECT_EQ(&fxpDataTypeCacheFind(record), &fxpDataTypeCacheFind(copy));
        EXPECT_TRUE(fxdt_isequal_to()(record, fxpDataTypeCacheFind(copy).record()));
        EXPECT_EQ(&fxpDataTypeToIdentifierString(&record), &fxpDataTypeToIdentifierString(&copy));
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&record),
                  fxpDataTypeToIdentifierString(&record));
        std::set<const std::string*> slots;
        for (const int base : {0, 1}) {
            for (const int scaling : {0, 1, 2}) {
                const std::string& text = constructorOf(record, base, scaling);
                EXPECT_EQ(&text, &constructorOf(copy, base, scaling));
                EXPECT_EQ(fxpDataTypeToConstructorString_NoCache(
                              record, static_cast<FxpDT::baseCtorPrefer>(base),
                              static_cast<FxpDT::scalingRepPrefer>(scaling)),
                          text);
                slots.insert(&text);
            }
            EXPECT_EQ(&constructorOf(record, base, 2), &constructorOf(record, base, 3));
        }
        EXPECT_EQ(&constructorOf(record, 1, 0), &constructorOf(record, 5, 0));
        EXPECT_EQ(6U, slots.size());
    }
}

TEST(Cache, KeepsWhatHasSlopeOrBiasInOrder) {
    fxpDataTypeProp minusZero = binaryPoint;
    minusZero.Bias = -0.0;
    EXPECT_EQ(&fxpDataTypeCacheFind(binaryPoint), &fxpDataTypeCacheFind(minusZero));
    EXPECT_EQ(1U, dtCacheHash.count(binaryPoint));
    EXPECT_EQ(0U, dtCacheMap.count(binaryPoint));
    fxpDataTypeProp factorOnly = slopeAndBias;
    factorOnly.Bias = 0.0;
    fxpDataTypeProp biasOnly = slopeAndBias;
    biasOnly.SlopeAdjustmentFactor = 1.0;
    for (const fxpDataTypeProp& record : {slopeAndBias, factorOnly, biasOnly}) {
        fxpDataTypeCacheFind(record);
        EXPECT_EQ(0U, dtCacheHash.count(record));
        EXPECT_EQ(1U, dtCacheMap.count(record));
    }
}

TEST(Cache, TellsOverrideStatesApart) {
    EXPECT_FLOAT_EQ(1.0F, dtCacheHash.max_load_factor());
    const std::string& before = fxpDataTypeToIdentifierString(&binaryPoint);
    const std::string copy = before;
    // More than there are buckets: many fall into one.
    std::set<const fxpDataTypeCachedStrings*> entries;
    for (int state = 0; state < 10000; ++state) {
        for (fxpDataTypeProp record : {binaryPoint, slopeAndBias}) {
            record.DataTypeOverrideState = state;
            const fxpDataTypeCachedStrings& entry = fxpDataTypeCacheFind(record);
            ASSERT_EQ(state, entry.record().DataTypeOverrideState);
            entries.insert(&entry);
        }
    }
    EXPECT_EQ(20000U, entries.size());
    EXPECT_EQ(&before, &fxpDataTypeToIdentifierString(&binaryPoint));
    EXPECT_EQ(copy, before);

    fxpDataTypeProp off = binaryPoint;
    off.DataTypeOverrideState = 1;
    EXPECT_TRUE(fxdt_isequal_to()(binaryPoint, off));
    EXPECT_NE(constructorOf(binaryPoint, 1, 0), constructorOf(off, 1, 0));
}

TEST(Cache, HashesToTheSameValueForEver) {
    struct {
        fxpDataTypeProp record;
        std::uint64_t hash;
    } const cases[] = {
        {binaryPoint, 0x00a3b7d46b98cff8},
        {{FXP_DT_FIXPT, 0, 8, 3, 1.0, 0.0, 0}, 0x00a3b7d46bdee36e},
        {{FXP_DT_SCALED_DOUBLE, 1, 32, -8, 1.5, 0.5, 1}, 0x00a3b7d45e9cd013},
        {{FXP_DT_DOUBLE, 1, 64, 0, 1.0, 0.0, 0}, 0x00a3b7d4626fad3a},
        {{FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, -1}, 0x00a3b7d45f94aa06},
        {{static_cast<fxpModeDataType>(-1), UINT32_MAX, -1, INT32_MIN, 1.0, 0.0, 2},
         0x00a7bb192ccb8999},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.hash, fxdt_ihash()(c.record));
    }
}
