#include "support/failing_allocations.h"

#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr fxpDataTypeProp binaryPoint{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 0};
constexpr fxpDataTypeProp slopeAndBias{FXP_DT_FIXPT, 1, 16, -2, 1.5, 0.25, 0};

const std::string& constructor(const fxpDataTypeProp& record, int base, int scaling) {
    return fxpDataTypeToConstructorString(record, static_cast<FxpDT::baseCtorPrefer>(base),
                                          static_cast<FxpDT::scalingRepPrefer>(scaling));
}

} // namespace

TEST(FixedPointCache, EqualRecordsShareStrings) {
    for (const fxpDataTypeProp& record : {binaryPoint, slopeAndBias}) {
        const fxpDataTypeProp copy = record;
        EXPECT_TRUE(fxdt_isequal_to()(record, fxpDataTypeCacheFind(copy).record()));
        EXPECT_EQ(&fxpDataTypeToIdentifierString(&record), &fxpDataTypeToIdentifierString(&copy));
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&record),
                  fxpDataTypeToIdentifierString(&record));
        std::set<const std::string*> strings;
        for (const auto base : {FxpDT::PreferNumericType, FxpDT::PreferFixdt}) {
            for (const auto scaling :
                 {FxpDT::PreferFractionLength, FxpDT::PreferSlopeBias, FxpDT::PreferNoScaling}) {
                const std::string& text = constructor(record, base, scaling);
                EXPECT_EQ(&text, &constructor(copy, base, scaling));
                EXPECT_EQ(fxpDataTypeToConstructorString_NoCache(record, base, scaling), text);
                strings.insert(&text);
            }
        }
        EXPECT_EQ(6U, strings.size());
        EXPECT_EQ(&constructor(record, 1, 2), &constructor(record, 5, 3)) << "not enumerators";
    }
}

TEST(FixedPointCache, SlopeOrBiasSelectsTheOrderedMap) {
    fxpDataTypeProp minusZero = binaryPoint;
    minusZero.Bias = -0.0;
    fxpDataTypeProp factorOnly = slopeAndBias;
    factorOnly.Bias = 0.0;
    fxpDataTypeProp biasOnly = slopeAndBias;
    biasOnly.SlopeAdjustmentFactor = 1.0;
    for (const auto& record : {binaryPoint, minusZero, slopeAndBias, factorOnly, biasOnly}) {
        fxpDataTypeCacheFind(record);
        const bool isHashed = record.FixedExponent == binaryPoint.FixedExponent;
        EXPECT_EQ(isHashed ? 1U : 0U, dtCacheHash.count(record));
        EXPECT_EQ(isHashed ? 0U : 1U, dtCacheMap.count(record));
    }
}

TEST(FixedPointCache, OverrideStatesHaveTheirOwnEntries) {
    const std::string& before = fxpDataTypeToIdentifierString(&binaryPoint);
    // More entries than initial buckets: many share a bucket, and the table grows.
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
    EXPECT_EQ("sfix16_En4", before);

    fxpDataTypeProp off = binaryPoint;
    off.DataTypeOverrideState = 1;
    EXPECT_TRUE(fxdt_isequal_to()(binaryPoint, off));
    EXPECT_NE(constructor(binaryPoint, 1, 0), constructor(off, 1, 0));
}

TEST(FixedPointCache, ThreadsShareStrings) {
    constexpr int records = 2000;
    const auto recordAt = [](int i) {
        fxpDataTypeProp record = i % 2 == 0 ? binaryPoint : slopeAndBias;
        record.WordLength = 100 + i;
        return record;
    };
    std::vector<const std::string*> found[4];
    std::vector<std::thread> threads;
    for (auto& strings : found) {
        threads.emplace_back([&] {
            for (int i = 0; i < records; ++i) {
                const fxpDataTypeProp record = recordAt(i);
                strings.push_back(&fxpDataTypeToIdentifierString(&record));
                strings.push_back(&constructor(record, i % 3, i % 5));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int i = 0; i < records; ++i) {
        const fxpDataTypeProp record = recordAt(i);
        ASSERT_EQ(fxpDataTypeToIdentifierString_NoCache(&record),
                  *found[0][static_cast<std::size_t>(2 * i)]);
    }
    EXPECT_EQ(found[0], found[1]);
    EXPECT_EQ(found[0], found[2]);
    EXPECT_EQ(found[0], found[3]);
}

TEST(FixedPointCache, RequestsCanBeRepeatedAfterAFailedAllocation) {
    struct Request {
        fxpDataTypeProp record;
        std::string identifier;
        std::string constructor = "old";
    };
    for (fxpDataTypeProp record : {binaryPoint, slopeAndBias}) {
        record.FixedExponent = -1000;
        // A new record each time; the texts of all have the same length.
        int wordLength = 100000;
        expectUnchangedOnFailedAllocation(
            "request",
            [&] {
                record.WordLength = ++wordLength;
                return std::make_unique<Request>(Request{record, {}});
            },
            [](Request& request) {
                std::string arguments = request.constructor;
                fxpDataTypeToConstructorString_FixptGuts(arguments, request.record,
                                                         FxpDT::PreferSlopeBias);
                const std::string& all = constructor(request.record, 0, 1);
                std::string both = arguments.substr(0, 8) + all.substr(0, 14);
                request.identifier = fxpDataTypeToIdentifierString(&request.record).substr(0, 5);
                request.constructor = std::move(both);
            },
            [](const Request& request) { return request.identifier + request.constructor; });
    }
}

TEST(FixedPointCache, HashValuesAreStable) {
    struct {
        fxpDataTypeProp record;
        std::uint64_t hash;
    } const cases[] = {
        {binaryPoint, 0x00a3b7d46b98cff8},
        {{FXP_DT_SCALED_DOUBLE, 1, 32, -8, 1.5, 0.5, 1}, 0x00a3b7d45e9cd013},
        {{FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, -1}, 0x00a3b7d45f94aa06},
        {{static_cast<fxpModeDataType>(-1), UINT32_MAX, -1, INT32_MIN, 1.0, 0.0, 2},
         0x00a7bb192ccb8999},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.hash, fxdt_ihash()(c.record));
    }
}
