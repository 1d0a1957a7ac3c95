/// \file
/// Integers of any size, and arrays of integers that are no built-in type.
#pragma once

#include "arrays.h"

#include "exact/number.h"

namespace tvpython {

/// Returns an integer of Python.
inline py::object pythonInteger(const tvtool::exact::Integer& value) {
    return py::reinterpret_steal<py::object>(PyLong_FromString(value.str().c_str(), nullptr, 10));
}

/// Returns what numpy.asarray() takes as contiguous integers of a dtype. Throws an ArgumentError
/// for values that are no integers, or not in the range of the dtype.
Vector integersOf(const py::handle& values, const py::dtype& dtype);

} // namespace tvpython
