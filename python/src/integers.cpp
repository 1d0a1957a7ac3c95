#include "integers.h"

#include "errors.h"

#include <fmt/format.h>

#include <string>

namespace tvpython {

namespace {

/// Throws an ArgumentError unless all values are in the range of the dtype.
void checkRange(const py::array& array, const py::dtype& dtype) {
    if (array.size() == 0) {
        return;
    }
    const py::object limits = py::module_::import("numpy").attr("iinfo")(dtype);
    // As integers of Python, which compare exactly.
    const py::object least = array.attr("min")().attr("item")();
    const py::object greatest = array.attr("max")().attr("item")();
    if (least < limits.attr("min") || greatest > limits.attr("max")) {
        throw ArgumentError(fmt::format("the integers are {} to {}, and those of {} {} to {}",
                                        textOf(least), textOf(greatest), textOf(dtype),
                                        textOf(limits.attr("min")), textOf(limits.attr("max"))));
    }
}

} // namespace

Vector integersOf(const py::handle& values, const py::dtype& dtype) {
    Vector vector;
    py::array array = py::array::ensure(values);
    if (!array || (array.dtype().kind() != 'i' && array.dtype().kind() != 'u')) {
        throw ArgumentError(
            fmt::format("stored integers have an integer dtype, not {}",
                        array ? textOf(array.dtype()) : std::string("another type")));
    }
    if (!array.dtype().equal(dtype)) {
        checkRange(array, dtype);
        array = array.attr("astype")(dtype);
    }
    const bool isByRows = (array.flags() & py::array::c_style) != 0;
    vector.isByColumns = !isByRows && (array.flags() & py::array::f_style) != 0;
    vector.array = isByRows || vector.isByColumns ? std::move(array)
                                                  : py::array::ensure(array, py::array::c_style);
    return vector;
}

} // namespace tvpython
