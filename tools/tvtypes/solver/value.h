/// \file
/// Numbers with an infinitesimal part, which make a strict bound a closed one: x > 2 is
/// x >= 2 + e.
#pragma once

#include "exact/number.h"

namespace tvtool::solver {

using exact::Number;

struct Value {
    Number real = 0;
    Number infinitesimal = 0;

    Value& operator+=(const Value& other) {
        real += other.real;
        infinitesimal += other.infinitesimal;
        return *this;
    }
    friend Value operator+(Value a, const Value& b) { return a += b; }
    friend Value operator-(const Value& a, const Value& b) {
        return {a.real - b.real, a.infinitesimal - b.infinitesimal};
    }
    friend Value operator*(const Value& a, const Number& factor) {
        return {a.real * factor, a.infinitesimal * factor};
    }
    friend bool operator<(const Value& a, const Value& b) {
        const int order = a.real.compare(b.real);
        return order != 0 ? order < 0 : a.infinitesimal < b.infinitesimal;
    }
    friend bool operator==(const Value& a, const Value& b) {
        return a.real == b.real && a.infinitesimal == b.infinitesimal;
    }
};

} // namespace tvtool::solver
