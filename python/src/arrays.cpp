#include "arrays.h"

#include "convert/values.h"
#include "errors.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tvpython {

using tvtool::convert::Type;
using tvtool::convert::Wide;

namespace {

/// The kind of a dtype of NumPy, and its item size in bytes.
struct DtypeRow {
    Type type;
    char kind;
    py::ssize_t size;
};

constexpr std::array<DtypeRow, 9> dtypeRows{{{Type::Double, 'f', 8},
                                             {Type::Single, 'f', 4},
                                             {Type::Int8, 'i', 1},
                                             {Type::UInt8, 'u', 1},
                                             {Type::Int16, 'i', 2},
                                             {Type::UInt16, 'u', 2},
                                             {Type::Int32, 'i', 4},
                                             {Type::UInt32, 'u', 4},
                                             {Type::Boolean, 'b', 1}}};

std::string listOfTypes() {
    return fmt::format("{}; complex ones are complex64, complex128 and complex_dtype()",
                       fmt::join(tvtool::convert::typeNames(), ", "));
}

[[noreturn]] void refuse(const py::handle& dtype) {
    throw ArgumentError(
        fmt::format("dtype {} is not one of the built-in types: {}", textOf(dtype), listOfTypes()));
}

std::optional<Element> realElement(char kind, py::ssize_t size) {
    for (const DtypeRow& row : dtypeRows) {
        if (row.kind == kind && row.size == size) {
            return Element{row.type, false};
        }
    }
    return std::nullopt;
}

/// Returns the element of a structured dtype whose fields are the parts of a complex integer.
std::optional<Element> structuredElement(const py::dtype& dtype) {
    const py::object names = dtype.attr("names");
    if (names.is_none() || !names.equal(py::make_tuple("real", "imag"))) {
        return std::nullopt;
    }
    const auto real = py::reinterpret_borrow<py::dtype>(dtype.attr("__getitem__")("real"));
    const auto imaginary = py::reinterpret_borrow<py::dtype>(dtype.attr("__getitem__")("imag"));
    if (!real.equal(imaginary) || dtype.itemsize() != 2 * real.itemsize()) {
        return std::nullopt;
    }
    const bool isNative = real.byteorder() != '>' && real.byteorder() != '<';
    const std::optional<Element> part =
        isNative ? realElement(real.kind(), real.itemsize()) : std::nullopt;
    // The library has one byte for both parts of a boolean, NumPy two.
    return part && part->type != Type::Boolean ? std::optional(Element{part->type, true})
                                               : std::nullopt;
}

std::optional<Element> findElement(const py::dtype& dtype) {
    const char kind = dtype.kind();
    if (kind == 'V') {
        return structuredElement(dtype);
    }
    if (kind == 'c') {
        std::optional<Element> element = realElement('f', dtype.itemsize() / 2);
        if (element) {
            element->isComplex = true;
        }
        return element;
    }
    return realElement(kind, dtype.itemsize());
}

void checkByteOrder(const py::dtype& dtype) {
    // NumPy writes '=' for the order of this machine.
    if (dtype.byteorder() == '>' || dtype.byteorder() == '<') {
        throw ArgumentError(
            fmt::format("the array has the byte order of other machines (dtype {}); "
                        "array.astype(array.dtype.newbyteorder(\"=\")) has that of this one",
                        textOf(dtype.attr("str"))));
    }
}

/// Returns the kind of integers of 64 bits.
Wide wideOf(const py::dtype& dtype) {
    return dtype.itemsize() != 8 ? Wide::None
           : dtype.kind() == 'i' ? Wide::Int64
           : dtype.kind() == 'u' ? Wide::UInt64
                                 : Wide::None;
}

bool isContiguous(const py::array& array, int order) { return (array.flags() & order) != 0; }

/// Returns integers of 64 bits as doubles of the same values.
py::array toDoubles(const py::array& contiguous, Wide wide) {
    auto doubles =
        py::reinterpret_steal<py::array>(contiguous.attr("copy")(py::arg("order") = "A").release());
    const auto size = static_cast<std::size_t>(doubles.size());
    auto* values = static_cast<std::byte*>(doubles.mutable_data());
    if (const std::size_t index = tvtool::convert::toDoubles(wide, values, size); index != size) {
        throw ArgumentError(fmt::format("the integer of 64 bits at index {} is no double; "
                                        "convert reads such integers as doubles",
                                        index));
    }
    return doubles.attr("view")(dtypeOf({Type::Double, false}));
}

} // namespace

Element elementOf(const py::dtype& dtype) {
    checkByteOrder(dtype);
    const std::optional<Element> element = findElement(dtype);
    if (!element) {
        refuse(dtype);
    }
    return *element;
}

py::dtype dtypeOf(Element element) {
    const DtypeRow& row = dtypeRows[static_cast<std::size_t>(element.type)];
    if (!element.isComplex) {
        return py::dtype(fmt::format("{}{}", row.kind, row.size));
    }
    if (row.kind == 'f') {
        return py::dtype(fmt::format("c{}", 2 * row.size));
    }
    const std::string part = fmt::format("{}{}", row.kind, row.size);
    py::list fields;
    fields.append(py::make_tuple("real", part));
    fields.append(py::make_tuple("imag", part));
    return py::dtype::from_args(fields);
}

Element parseDtype(const py::handle& dtype) {
    if (py::isinstance<py::dtype>(dtype)) {
        return elementOf(py::reinterpret_borrow<py::dtype>(dtype));
    }
    if (py::isinstance<py::str>(dtype)) {
        const std::string name = py::cast<std::string>(dtype);
        const std::vector<std::string> names = tvtool::convert::typeNames();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (names[i] == name) {
                return {static_cast<Type>(i), false};
            }
        }
    }
    // None is double for NumPy, and a forgotten argument here.
    if (dtype.is_none()) {
        refuse(dtype);
    }
    try {
        return elementOf(py::dtype::from_args(py::reinterpret_borrow<py::object>(dtype)));
    } catch (const py::error_already_set& error) {
        if (!error.matches(PyExc_TypeError) && !error.matches(PyExc_ValueError)) {
            throw;
        }
        refuse(py::repr(dtype));
    }
}

Vector vectorOf(const py::handle& values) {
    Vector vector;
    vector.array = py::array::ensure(values);
    if (!vector.array) {
        throw ArgumentError("the values are not an array, nor can NumPy make one of them");
    }
    const py::dtype dtype = vector.array.dtype();
    const Wide wide = wideOf(dtype);
    vector.element = wide == Wide::None ? elementOf(dtype) : Element{Type::Double, false};
    if (wide != Wide::None) {
        checkByteOrder(dtype);
    }
    if (!isContiguous(vector.array, py::array::c_style)) {
        vector.isByColumns = isContiguous(vector.array, py::array::f_style);
        if (!vector.isByColumns) {
            vector.array = py::array::ensure(vector.array, py::array::c_style);
        }
    }
    if (wide != Wide::None) {
        vector.array = toDoubles(vector.array, wide);
    }
    return vector;
}

py::array newArrayLike(const Vector& vector, const py::dtype& dtype) {
    const py::array& like = vector.array;
    const std::vector<py::ssize_t> shape(like.shape(), like.shape() + like.ndim());
    if (!vector.isByColumns) {
        return py::array(dtype, shape);
    }
    std::vector<py::ssize_t> strides(shape.size());
    py::ssize_t stride = dtype.itemsize();
    for (std::size_t i = 0; i < shape.size(); ++i) {
        strides[i] = stride;
        stride *= shape[i];
    }
    return py::array(dtype, shape, strides);
}

py::object scalarOrArray(py::array array) {
    return array.ndim() == 0 ? py::object(array[py::tuple()]) : std::move(array);
}

} // namespace tvpython
