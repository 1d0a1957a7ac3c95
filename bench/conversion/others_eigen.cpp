#include "conversion/others.h"

#include <Eigen/Core>

#include <cstdint>
#include <tuple>
#include <utility>

namespace convbench {

namespace {

// A boolean source is a byte, a boolean destination a bool.
using Sources = std::tuple<double, float, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
                           std::int32_t, std::uint32_t, std::uint8_t>;
using Destinations = std::tuple<double, float, std::int8_t, std::uint8_t, std::int16_t,
                                std::uint16_t, std::int32_t, std::uint32_t, bool>;

template <class T>
using Vector = Eigen::Array<T, Eigen::Dynamic, 1>;

template <class S, class D>
void castAll(const void* src, void* dst, std::size_t count) {
    const auto size = static_cast<Eigen::Index>(count);
    const Eigen::Map<const Vector<S>, Eigen::Aligned64> from(static_cast<const S*>(src), size);
    Eigen::Map<Vector<D>, Eigen::Aligned64> to(static_cast<D*>(dst), size);
    to = from.template cast<D>();
}

template <std::size_t... Pair>
OtherFcn selectCast(std::size_t pair, std::index_sequence<Pair...>) {
    static constexpr OtherFcn casts[] = {castAll<std::tuple_element_t<Pair / 9, Sources>,
                                                 std::tuple_element_t<Pair % 9, Destinations>>...};
    return casts[pair];
}

} // namespace

OtherFcn findInEigen(const Case& wanted) {
    const Cell& cell = wanted.cell;
    const bool sameModes = cell.overflow == FXP_OVERFLOW_WRAP && cell.rounding == FXP_ROUND_ZERO;
    const bool defined = !cell.fromFloatToInteger() || wanted.data == Data::Kept;
    if (!sameModes || !defined || (cell.src == booleanId && cell.dst == booleanId)) {
        return nullptr;
    }
    return selectCast(static_cast<std::size_t>(9 * cell.src + cell.dst),
                      std::make_index_sequence<81>());
}

} // namespace convbench
