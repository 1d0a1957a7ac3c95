#include "reference.h"

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

struct Range {
    double lowest;
    double greatest;
    double count() const { return greatest - lowest + 1; }
};

Range rangeOf(int id) {
    switch (id) {
    case 2:
        return {-128, 127};
    case 3:
        return {0, 255};
    case 4:
        return {-32768, 32767};
    case 5:
        return {0, 65535};
    case 6:
        return {-2147483648.0, 2147483647};
    case 7:
        return {0, 4294967295};
    case booleanId:
        return {0, 255};
    default:
        return {-std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    }
}

template <class T>
double loadAs(const std::byte* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return static_cast<double>(value);
}

template <class T>
void storeAs(double value, std::byte* at) {
    const T stored = static_cast<T>(value);
    std::memcpy(at, &stored, sizeof stored);
}

bool hasRounding(int srcId, int dstId) {
    return isFloat(srcId) && !isFloat(dstId) && dstId != booleanId;
}

bool hasOverflow(int srcId, int dstId) {
    const Range from = rangeOf(srcId);
    const Range to = rangeOf(dstId);
    return !isFloat(dstId) && srcId != booleanId && dstId != booleanId &&
           (from.lowest < to.lowest || from.greatest > to.greatest);
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

double wrapped(double x, Range range) {
    const double rest = std::fmod(x, range.count());
    return rest < range.lowest     ? rest + range.count()
           : rest > range.greatest ? rest - range.count()
                                   : rest;
}

std::vector<double> makeValues(int id) {
    std::vector<double> values;
    const Range own = rangeOf(id);
    if (sizeOf(id) < 4) {
        for (double x = own.lowest; x <= own.greatest; ++x) {
            values.push_back(x);
        }
        return values;
    }
    const auto add = [&](double x) {
        const double held = id == singleId ? static_cast<double>(static_cast<float>(x)) : x;
        if (isFloat(id)) {
            values.push_back(held);
            values.push_back(-held);
        } else if (held == std::trunc(held) && held >= own.lowest && held <= own.greatest) {
            values.push_back(held);
        }
    };
    const auto addAround = [&](double x) {
        add(x);
        float narrow = static_cast<float>(x);
        float narrowUp = narrow;
        double down = x;
        double up = x;
        for (int step = 0; step < 3; ++step) {
            add(down = std::nextafter(down, -HUGE_VAL));
            add(up = std::nextafter(up, HUGE_VAL));
            add(narrow = std::nextafterf(narrow, -HUGE_VALF));
            add(narrowUp = std::nextafterf(narrowUp, HUGE_VALF));
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
    addAround(0);
    addAround(0x1p-126);
    addAround(std::numeric_limits<float>::max());
    for (double x : {HUGE_VAL, std::numeric_limits<double>::max(), 1e300, 1e-300, 5e-324, 1e20}) {
        add(x);
    }
    add(std::numeric_limits<double>::quiet_NaN());
    // Any bits at all, and any exponent with what it leads to.
    std::mt19937_64 random(7);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        if (id == singleId) {
            add(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
        } else if (id == doubleId) {
            add(std::bit_cast<double>(bits));
        } else {
            add(std::trunc(own.lowest + static_cast<double>(bits % 4294967296U)));
        }
        add(std::ldexp(static_cast<double>(bits >> 11), static_cast<int>(bits % 64) - 60));
    }
    return values;
}

} // namespace

std::size_t sizeOf(int id) {
    constexpr std::size_t sizes[typeCount] = {8, 4, 1, 1, 2, 2, 4, 4, 1};
    return sizes[id];
}

bool isFloat(int id) { return id <= singleId; }

double load(const std::byte* vector, std::size_t position, int id) {
    const std::byte* at = vector + position * sizeOf(id);
    switch (id) {
    case doubleId:
        return loadAs<double>(at);
    case singleId:
        return loadAs<float>(at);
    case 2:
        return loadAs<std::int8_t>(at);
    case 4:
        return loadAs<std::int16_t>(at);
    case 5:
        return loadAs<std::uint16_t>(at);
    case 6:
        return loadAs<std::int32_t>(at);
    case 7:
        return loadAs<std::uint32_t>(at);
    default:
        return loadAs<std::uint8_t>(at);
    }
}

void store(double value, std::byte* vector, std::size_t position, int id) {
    std::byte* at = vector + position * sizeOf(id);
    switch (id) {
    case doubleId:
        return storeAs<double>(value, at);
    case singleId:
        return storeAs<float>(value, at);
    case 2:
        return storeAs<std::int8_t>(value, at);
    case 4:
        return storeAs<std::int16_t>(value, at);
    case 5:
        return storeAs<std::uint16_t>(value, at);
    case 6:
        return storeAs<std::int32_t>(value, at);
    case 7:
        return storeAs<std::uint32_t>(value, at);
    default:
        return storeAs<std::uint8_t>(value, at);
    }
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
    const Range range = rangeOf(c.dstId);
    if (std::isnan(x) || (std::isinf(x) && c.overflow == 0)) {
        return 0;
    }
    const double whole = rounded(x, c.rounding);
    if (c.overflow == 0) {
        return wrapped(whole, range);
    }
    return whole < range.lowest ? range.lowest : whole > range.greatest ? range.greatest : whole;
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
