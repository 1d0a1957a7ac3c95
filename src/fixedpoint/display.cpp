// Display of records on standard output.
#include <tvtypes/fixedpoint/properties.h>

#include <cstdio>

namespace {

constexpr const char* modeNames[] = {"FXP_DT_FIXPT", "FXP_DT_SCALED_DOUBLE", "FXP_DT_DOUBLE",
                                     "FXP_DT_SINGLE", "FXP_DT_BOOLEAN"};

} // namespace

const char* fxpDtpGetClassName(const fxpDataTypeProp* record) {
    const auto mode = static_cast<std::uint32_t>(record->DataTypeMode);
    return mode <= FXP_DT_BOOLEAN ? modeNames[mode] : "UNKNOWN";
}

bool fxpDtpPreAssert(bool condition, const fxpDataTypeProp* record) {
    if (!condition) {
        std::printf("Data Type Assertion\n");
        displayFxpDTP(record);
    }
    return condition;
}

void displayFxpDTP(const fxpDataTypeProp* record) {
    std::printf("\nDataTypeMode        %d   %s\n", static_cast<int>(record->DataTypeMode),
                fxpDtpGetClassName(record));
    std::printf("Signedness            %u\n", record->Signedness);
    std::printf("WordLength            %d\n", record->WordLength);
    std::printf("SlopeAdjustmentFactor %#25.17g\n", record->SlopeAdjustmentFactor);
    std::printf("FixedExponent         %d\n", record->FixedExponent);
    std::printf("Bias                  %#25.17g\n", record->Bias);
    std::printf("\n");
}

void displayFxpDTPFlat(const fxpDataTypeProp* record) {
    std::printf("\nMode=%d(%s)  Signed=%u  WL=%d  SAF=%#25.17g  FE=%d  B=%#25.17g\n",
                static_cast<int>(record->DataTypeMode), fxpDtpGetClassName(record),
                record->Signedness, record->WordLength, record->SlopeAdjustmentFactor,
                record->FixedExponent, record->Bias);
}
