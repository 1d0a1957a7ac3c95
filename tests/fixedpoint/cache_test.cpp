#include "support/failing_allocations.h"

#include <tvtypes/fixedpoint.h>

#include <set>
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
    for (const double factor : {1.0, 1.5}) {
        for (const double bias : {0.0, -0.0, 0.25}) {
            const fxpDataTypeProp record{FXP_DT_FIXPT, 1, 16, -4, factor, bias, 0};
            fxpDataTypeCacheFind(record);
            const bool isHashed = factor == 1.0 && bias == 0.0;
            EXPECT_EQ(isHashed ? 1U : 0U, dtCacheHash.count(record));
            EXPECT_EQ(isHashed ? 0U : 1U, dtCacheMap.count(record));
        }
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
            ASSERT_TRUE(fxdt_isequal_to()(binaryPoint, record) || record.Bias != 0);
            ASSERT_EQ(state, entry.record().DataTypeOverrideState);
            entries.insert(&entry);
        }
    }
    EXPECT_EQ(20000U, entries.size());
    EXPECT_EQ(&before, &fxpDataTypeToIdentifierString(&binaryPoint));
    EXPECT_EQ("sfix16_En4", before);
}

TEST(FixedPointCache, ThreadsShareStrings) {
    std::vector<const std::string*> found[4];
    std::vector<std::thread> threads;
    for (auto& strings : found) {
        threads.emplace_back([&] {
            for (int i = 0; i < 2000; ++i) {
                fxpDataTypeProp record = i % 2 == 0 ? binaryPoint : slopeAndBias;
                record.WordLength = 100 + i;
                strings.push_back(&fxpDataTypeToIdentifierString(&record));
                strings.push_back(&constructor(record, i % 3, i % 5));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (const auto& strings : found) {
        EXPECT_EQ(found[0], strings);
    }
}

TEST(FixedPointCache, RequestsCanBeRepeatedAfterAFailedAllocation) {
    struct Request {
        fxpDataTypeProp record;
        std::string text = "old";
    };
    for (fxpDataTypeProp record : {binaryPoint, slopeAndBias}) {
        record.FixedExponent = -1000;
        // A new record each time; the texts of all have the same length.
        int wordLength = 100000;
        expectUnchangedOnFailedAllocation(
            "request",
            [&] {
                record.WordLength = ++wordLength;
                return std::make_unique<Request>(Request{record});
            },
            [](Request& request) {
                std::string text = request.text;
                fxpDataTypeToConstructorString_FixptGuts(text, request.record,
                                                         FxpDT::PreferSlopeBias);
                text = text.substr(0, 8) + constructor(request.record, 0, 1).substr(0, 14);
                request.text = fxpDataTypeToIdentifierString(&request.record).substr(0, 5) + text;
            },
            [](const Request& request) { return request.text; });
    }
}

TEST(FixedPointCache, HashValuesAreStable) {
    const std::pair<fxpDataTypeProp, std::uint64_t> cases[] = {
        {binaryPoint, 0x00a3b7d46b98cff8},
        {{FXP_DT_SCALED_DOUBLE, 1, 32, -8, 1.5, 0.5, 1}, 0x00a3b7d45e9cd013},
        {{static_cast<fxpModeDataType>(-1), UINT32_MAX, -1, INT32_MIN, 1.0, 0.0, 2},
         0x00a7bb192ccb8999}};
    for (const auto& [record, hash] : cases) {
        EXPECT_EQ(hash, fxdt_ihash()(record));
    }
}
