/// \file
/// NumPy arrays as vectors of the built-in types.
#pragma once

#include "convert/names.h"

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>

#include <cstddef>
#include <string>

namespace tvpython {

namespace py = pybind11;

using tvtool::convert::Element;

/// Returns the element type of an array. A complex integer is a structured dtype with the fields
/// "real" and "imag" of one integer type. Throws an ArgumentError for a dtype that is no built-in
/// type, or that has another byte order than this machine.
Element elementOf(const py::dtype& dtype);

/// Returns the dtype of an element type, as elementOf() takes it.
py::dtype dtypeOf(Element element);

/// Returns the element type of what Python gives as a dtype: the name of a built-in type, or what
/// numpy.dtype() takes. Throws an ArgumentError.
Element parseDtype(const py::handle& dtype);

/// The elements of an array, contiguous in memory.
struct Vector {
    py::array array; ///< in the order of rows or of columns; owns the memory
    Element element;
    bool isByColumns = false; ///< whether the first index varies fastest

    const void* data() const { return array.data(); }
    std::size_t size() const { return static_cast<std::size_t>(array.size()); }
};

/// Returns the elements of what numpy.asarray() takes. An array that is contiguous is not copied.
/// Integers of 64 bits become doubles if these have their values exactly. Throws an ArgumentError.
Vector vectorOf(const py::handle& values);

/// Returns a new array with the shape and order of another one.
py::array newArrayLike(const Vector& vector, const py::dtype& dtype);

/// Returns str() of an object.
inline std::string textOf(const py::handle& object) {
    return py::cast<std::string>(py::str(object));
}

/// Returns an array without dimensions as a scalar of NumPy, any other array as it is.
py::object scalarOrArray(py::array array);

} // namespace tvpython
