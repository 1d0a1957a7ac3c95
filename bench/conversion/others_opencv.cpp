#include "conversion/others.h"

#include <opencv2/core.hpp>

#include <utility>

namespace convbench {

namespace {

// By built-in id, double to int32. OpenCV has no uint32.
constexpr int depths[] = {CV_64F, CV_32F, CV_8S, CV_8U, CV_16S, CV_16U, CV_32S};
constexpr std::size_t known = std::size(depths);

template <std::size_t Pair>
void convertAll(const void* src, void* dst, std::size_t count) {
    const int size = static_cast<int>(count);
    constexpr int from = CV_MAKETYPE(depths[Pair / known], 1);
    constexpr int to = CV_MAKETYPE(depths[Pair % known], 1);
    // Matrix headers over the buffers; one of the right size and type is not reallocated.
    const cv::Mat source(1, size, from, const_cast<void*>(src));
    cv::Mat destination(1, size, to, dst);
    source.convertTo(destination, to);
}

template <std::size_t... Pair>
OtherFcn selectConversion(std::size_t pair, std::index_sequence<Pair...>) {
    static constexpr OtherFcn conversions[] = {convertAll<Pair>...};
    return conversions[pair];
}

} // namespace

OtherFcn findInOpenCv(const Case& wanted) {
    const Cell& cell = wanted.cell;
    const auto src = static_cast<std::size_t>(cell.src);
    const auto dst = static_cast<std::size_t>(cell.dst);
    if (src >= known || dst >= known) {
        return nullptr;
    }
    const bool sameModes = (!cell.overflowMatters || cell.overflow == FXP_OVERFLOW_SATURATE) &&
                           (!cell.roundingMatters || cell.rounding == FXP_ROUND_CONVERGENT);
    const bool inRange = !cell.fromFloatToInteger() || wanted.data == Data::Kept ||
                         (wanted.data == Data::Lossy && cell.to().size < 4);
    if (!sameModes || !inRange) {
        return nullptr;
    }
    cv::setNumThreads(1);
    return selectConversion(known * src + dst, std::make_index_sequence<known * known>());
}

} // namespace convbench
