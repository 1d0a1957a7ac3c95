#include "conversion/cells.h"

#include <algorithm>

namespace convbench {

namespace {

struct Named {
    fxpModeRounding_tag value;
    const char* name;
};

constexpr Named roundings[] = {{FXP_ROUND_ZERO, "zero"},   {FXP_ROUND_NEAR, "near"},
                               {FXP_ROUND_CEIL, "ceil"},   {FXP_ROUND_FLOOR, "floor"},
                               {FXP_ROUND_ROUND, "round"}, {FXP_ROUND_CONVERGENT, "convergent"}};

const char* roundingName(fxpModeRounding_tag rounding) {
    return std::find_if(std::begin(roundings), std::end(roundings),
                        [&](const Named& each) { return each.value == rounding; })
        ->name;
}

// In the order of the enumerators.
constexpr const char* shapeNames[] = {"real", "complex", "real>complex", "complex>real",
                                      "scalar>vector"};
constexpr const char* dataNames[] = {"kept", "lossy", "far"};

bool canLose(const Cell& cell) {
    return cell.from().lowest < cell.to().lowest || cell.from().greatest > cell.to().greatest ||
           cell.fromFloatToInteger();
}

// From 32-bit integers to single, which does not represent all of them.
bool canExceedDigits(const Cell& cell) {
    return !cell.from().isFloat && cell.to().isFloat && canLose(cell);
}

void addCases(std::vector<Case>& result, const Cell& cell, Data data, std::size_t count) {
    const auto add = [&](Shape shape, bool checked) {
        result.push_back({cell, shape, checked, data, count});
    };
    if (data == Data::Far) {
        if (cell.fromFloatToInteger()) {
            add(Shape::Real, false);
        }
        add(Shape::Real, true);
        return;
    }
    for (const Shape shape :
         {Shape::Real, Shape::Complex, Shape::RealToComplex, Shape::ComplexToReal, Shape::Scalar}) {
        const bool partsMatch = shape == Shape::Real || shape == Shape::Complex;
        if (partsMatch || cell.rounding == FXP_ROUND_ZERO) {
            add(shape, false);
            add(shape, true);
        }
    }
}

} // namespace

// double and single represent all integers up to 2^53 and 2^24.
const std::array<Type, 9> types = {{{"double", 8, true, -0x1p53, 0x1p53},
                                    {"single", 4, true, -0x1p24, 0x1p24},
                                    {"int8", 1, false, -0x80, 0x7F},
                                    {"uint8", 1, false, 0, 0xFF},
                                    {"int16", 2, false, -0x8000, 0x7FFF},
                                    {"uint16", 2, false, 0, 0xFFFF},
                                    {"int32", 4, false, -0x1p31, 0x1p31 - 1},
                                    {"uint32", 4, false, 0, 0x1p32 - 1},
                                    {"boolean", 1, false, 0, 1}}};

std::string Cell::name() const {
    std::string result = std::string(from().name) + '>' + to().name;
    if (!overflowMatters) {
        result += "/any";
    } else {
        result += overflow == FXP_OVERFLOW_SATURATE ? "/saturate" : "/wrap";
    }
    result += '/';
    return result + (roundingMatters ? roundingName(rounding) : "any");
}

tvBuiltinDtypeConvFcn Cell::function() const { return function(rounding); }

tvBuiltinDtypeConvFcn Cell::function(fxpModeRounding_tag other) const {
    return utGetTvBuiltinDtypeConvFcn(src, dst, overflow, other);
}

std::vector<Cell> allCells() {
    std::vector<Cell> result;
    for (int src = 0; src <= booleanId; ++src) {
        for (int dst = 0; dst <= booleanId; ++dst) {
            const Cell first{src, dst, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO, false, false};
            Cell saturating = first;
            saturating.overflow = FXP_OVERFLOW_SATURATE;
            const bool overflowMatters = saturating.function() != first.function();
            std::vector<tvBuiltinDtypeConvFcn> known;
            std::vector<Cell> found;
            for (const auto overflow : {FXP_OVERFLOW_WRAP, FXP_OVERFLOW_SATURATE}) {
                for (const Named& rounding : roundings) {
                    const Cell cell{src, dst, overflow, rounding.value, overflowMatters, false};
                    if (std::find(known.begin(), known.end(), cell.function()) == known.end()) {
                        known.push_back(cell.function());
                        found.push_back(cell);
                    }
                }
            }
            for (Cell& cell : found) {
                cell.roundingMatters = found.size() > 2;
                result.push_back(cell);
            }
        }
    }
    return result;
}

std::string Case::name() const {
    return cell.name() + '/' + shapeNames[static_cast<int>(shape)] +
           (checked ? "/checked/" : "/unchecked/") + dataNames[static_cast<int>(data)] + '/' +
           std::to_string(count);
}

std::size_t Case::srcBytes() const {
    const std::size_t elements = shape == Shape::Scalar ? 1 : count;
    return elements * cell.from().size * (srcIsComplex() ? 2 : 1);
}

std::size_t Case::dstBytes() const {
    // A boolean destination has one part, except from boolean, which is copied.
    const bool pairs = dstIsComplex() && (cell.dst != booleanId || cell.src == booleanId);
    return count * cell.to().size * (pairs ? 2 : 1);
}

std::vector<Case> allCases() {
    std::vector<Case> result;
    const std::vector<Cell> cells = allCells();
    for (auto first = cells.begin(); first != cells.end();) {
        const auto last = std::find_if(first, cells.end(), [&](const Cell& cell) {
            return cell.src != first->src || cell.dst != first->dst;
        });
        for (const Data data : {Data::Kept, Data::Lossy, Data::Far}) {
            const bool farMatters = first->fromFloatToInteger() || canExceedDigits(*first);
            if (data == Data::Far ? !farMatters : data == Data::Lossy && !canLose(*first)) {
                continue;
            }
            for (const std::size_t count : counts) {
                std::for_each(first, last,
                              [&](const Cell& cell) { addCases(result, cell, data, count); });
            }
        }
        first = last;
    }
    return result;
}

} // namespace convbench
