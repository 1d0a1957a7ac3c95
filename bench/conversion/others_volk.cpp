#include "conversion/others.h"

#include <volk/volk.h>

#include <cstdint>

namespace convbench {

namespace {

template <class T>
const T* in(const void* src) {
    return static_cast<const T*>(src);
}
template <class T>
T* out(void* dst) {
    return static_cast<T*>(dst);
}
unsigned int points(std::size_t count) { return static_cast<unsigned int>(count); }

struct Entry {
    int src;
    int dst;
    bool rounds; ///< saturates, ties to even
    OtherFcn convert;
};

// The scalars are factors of 1.
constexpr Entry entries[] = {
    {1, 2, true,
     [](const void* src, void* dst, std::size_t count) {
         volk_32f_s32f_convert_8i(out<std::int8_t>(dst), in<float>(src), 1, points(count));
     }},
    {1, 4, true,
     [](const void* src, void* dst, std::size_t count) {
         volk_32f_s32f_convert_16i(out<std::int16_t>(dst), in<float>(src), 1, points(count));
     }},
    {1, 6, true,
     [](const void* src, void* dst, std::size_t count) {
         volk_32f_s32f_convert_32i(out<std::int32_t>(dst), in<float>(src), 1, points(count));
     }},
    {2, 1, false,
     [](const void* src, void* dst, std::size_t count) {
         volk_8i_s32f_convert_32f(out<float>(dst), in<std::int8_t>(src), 1, points(count));
     }},
    {4, 1, false,
     [](const void* src, void* dst, std::size_t count) {
         volk_16i_s32f_convert_32f(out<float>(dst), in<std::int16_t>(src), 1, points(count));
     }},
    {6, 1, false,
     [](const void* src, void* dst, std::size_t count) {
         volk_32i_s32f_convert_32f(out<float>(dst), in<std::int32_t>(src), 1, points(count));
     }},
    {0, 1, false,
     [](const void* src, void* dst, std::size_t count) {
         volk_64f_convert_32f(out<float>(dst), in<double>(src), points(count));
     }},
    {1, 0, false,
     [](const void* src, void* dst, std::size_t count) {
         volk_32f_convert_64f(out<double>(dst), in<float>(src), points(count));
     }},
};

} // namespace

OtherFcn findInVolk(const Case& wanted) {
    const Cell& cell = wanted.cell;
    const bool inRange = wanted.data == Data::Kept ||
                         (wanted.data == Data::Lossy && (cell.to().size < 4 || cell.to().isFloat));
    for (const Entry& entry : entries) {
        if (entry.src == cell.src && entry.dst == cell.dst) {
            const bool sameModes = !entry.rounds || (cell.overflow == FXP_OVERFLOW_SATURATE &&
                                                     cell.rounding == FXP_ROUND_CONVERGENT);
            return sameModes && inRange ? entry.convert : nullptr;
        }
    }
    return nullptr;
}

} // namespace convbench
