#include "reference.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

namespace reference {

namespace {

constexpr int doubleId = 0;
constexpr int singleId = 1;
constexpr int booleanId = 8;

struct Type {
    std::size_t size;
    double lowest;
    double greatest;
    double (*load)(const std::byte*);
    void (*store)(double, std::byte*);
};

template <class T>
constexpr Type typeOf() {
    using Limits = std::numeric_limits<T>;
    return {sizeof(T),
            static_cast<double>(Limits::is_integer ? Limits::min() : -Limits::infinity()),
            static_cast<double>(Limits::is_integer ? Limits::max() : Limits::infinity()),
            [](const std::byte* at) {
                T value;
                std::memcpy(&value, at, sizeof value);
                return static_cast<double>(value);
            },
            [](double value, std::byte* at) {
                const T stored = static_cast<T>(value);
                std::memcpy(at, &stored, sizeof stored);
            }};
}

// By id; a boolean is a byte.
const Type types[typeCount] = {
    typeOf<double>(),       typeOf<float>(),         typeOf<std::int8_t>(),
    typeOf<std::uint8_t>(), typeOf<std::int16_t>(),  typeOf<std::uint16_t>(),
    typeOf<std::int32_t>(), typeOf<std::uint32_t>(), typeOf<std::uint8_t>()};

bool hasRounding(int srcId, int dstId) {
    return isFloat(srcId) && !isFloat(dstId) && dstId != booleanId;
}

bool isOutside(double x, int id) { return x < types[id].lowest || x > types[id].greatest; }

bool hasOverflow(int srcId, int dstId) {
    return !isFloat(dstId) && srcId != booleanId && dstId != booleanId &&
           (isOutside(types[srcId].lowest, dstId) || isOutside(types[srcId].greatest, dstId));
}

double rounded(double x, int rounding) {
    switch (rounding) {
    case 1:
        return static_cast<double>(std::floor(static_cast<long double>(x) + 0.5L));
    case 2:
        return std::ceil(x);
    case 3:
        return std::floor(x);
    case 5:
        return std::round(x);
    case 6:
        return std::nearbyint(x);
    default:
        return std::trunc(x);
    }
}

double wrapped(double x, const Type& type) {
    const double count = type.greatest - type.lowest + 1;
    const double rest = std::fmod(x, count);
    return rest < type.lowest ? rest + count : rest > type.greatest ? rest - count : rest;
}

std::vector<double> makeValues(int id) {
    std::vector<double> values;
    const Type& own = types[id];
    if (own.size < 4) {
        for (double x = own.lowest; x <= own.greatest; ++x) {
            values.push_back(x);
        }
        return values;
    }
    const auto add = [&](double x) {
        const double held = id == singleId ? static_cast<double>(static_cast<float>(x)) : x;
        if (isFloat(id)) {
            values.insert(values.end(), {held, -held});
        } else if (held == std::trunc(held) && !isOutside(held, id)) {
            values.push_back(held);
        }
    };
    const auto addAround = [&](double x) {
        add(x);
        for (const double end : {-HUGE_VAL, HUGE_VAL}) {
            double near = x;
            float nearSingle = static_cast<float>(x);
            for (int step = 0; step < 3; ++step) {
                add(near = std::nextafter(near, end));
                add(nearSingle = std::nextafterf(nearSingle, static_cast<float>(end)));
            }
        }
    };
    for (int power = -1; power <= 65; ++power) {
        for (double base : {-1.5, -1.0, -0.5, 0.0, 0.5, 1.0, 1.5, 2.5, 300.0}) {
            addAround(std::ldexp(1, power) + base);
            addAround(-std::ldexp(1, power) + base);
        }
    }
    for (double x = -2000; x <= 2000; x += 0.25) {
        add(x);
    }
    for (double x :
         {0.0, 0x1p-126, static_cast<double>(std::numeric_limits<float>::max()), HUGE_VAL,
          std::numeric_limits<double>::max(), 1e300, 1e-300, 5e-324, 1e20, std::nan("")}) {
        addAround(x);
    }
    // Random bits, and random values with uniform exponents.
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        add(id == singleId   ? std::bit_cast<float>(static_cast<std::uint32_t>(bits))
            : id == doubleId ? std::bit_cast<double>(bits)
                             : std::trunc(own.lowest + static_cast<double>(bits % 4294967296U)));
        add(std::ldexp(static_cast<double>(bits >> 11), static_cast<int>(bits % 64) - 60));
    }
    return values;
}

} // namespace

std::size_t sizeOf(int id) { return types[id].size; }

bool isFloat(int id) { return id <= singleId; }

double load(const std::byte* vector, std::size_t position, int id) {
    return types[id].load(vector + position * sizeOf(id));
}

void store(double value, std::byte* vector, std::size_t position, int id) {
    types[id].store(value, vector + position * sizeOf(id));
}

std::vector<Conversion> allConversions() {
    std::vector<Conversion> all;
    for (int srcId = 0; srcId < typeCount; ++srcId) {
        for (int dstId = 0; dstId < typeCount; ++dstId) {
            for (int rounding : {0, 1, 2, 3, 5, 6}) {
                for (int overflow : {0, 1}) {
                    if ((rounding == 0 || hasRounding(srcId, dstId)) &&
                        (overflow == 0 || hasOverflow(srcId, dstId))) {
                        all.push_back({srcId, dstId, overflow, rounding});
                    }
                }
            }
        }
    }
    return all;
}

bool canLose(const Conversion& c) {
    const bool toBoolean = c.dstId == booleanId && c.srcId != booleanId;
    const bool tooManyDigits =
        c.dstId == singleId && (c.srcId == doubleId || c.srcId == 6 || c.srcId == 7);
    return toBoolean || tooManyDigits || hasOverflow(c.srcId, c.dstId);
}

double convert(double x, const Conversion& c) {
    if (c.dstId == booleanId && c.srcId != booleanId) {
        return x != 0 ? 1 : 0;
    }
    if (isFloat(c.dstId)) {
        return c.dstId == singleId ? static_cast<double>(static_cast<float>(x)) : x;
    }
    const Type& type = types[c.dstId];
    if (std::isnan(x) || (std::isinf(x) && c.overflow == 0)) {
        return 0;
    }
    const double whole = rounded(x, c.rounding);
    return c.overflow == 0 ? wrapped(whole, type) : std::clamp(whole, type.lowest, type.greatest);
}

bool overflows(double x, const Conversion& c) {
    if (c.dstId == singleId) {
        return !std::isinf(x) && std::isinf(static_cast<float>(x));
    }
    return hasOverflow(c.srcId, c.dstId) && isOutside(rounded(x, c.rounding), c.dstId);
}

bool keeps(double x, const Conversion& c) { return !canLose(c) || convert(x, c) == x; }

const std::vector<double>& interestingValues(int id) {
    static std::vector<double> values[typeCount];
    if (values[id].empty()) {
        values[id] = makeValues(id);
    }
    return values[id];
}

} // namespace reference
