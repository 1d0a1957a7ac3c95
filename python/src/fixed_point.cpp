// Fixed-point types, and quantization of arrays.
#include "arrays.h"
#include "errors.h"
#include "integers.h"
#include "module.h"

#include "fixedpoint/details.h"
#include "fixedpoint/identifier.h"
#include "fixedpoint/quantization.h"
#include "fixedpoint/record.h"
#include "fixedpoint/stored_integers.h"

#include <tvtypes/functions.h>

#include <fmt/format.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace tvpython {

using tvtool::convert::Modes;
using tvtool::convert::Type;
using tvtool::fixedpoint::Grid;

namespace {

fxpDataTypeProp recordOf(const std::string& name) {
    return tvtool::fixedpoint::parseTypeName(name);
}

fxpDataTypeProp recordOfKeywords(const tvtool::fixedpoint::RecordTexts& texts) {
    try {
        return tvtool::fixedpoint::makeRecord(texts);
    } catch (const std::invalid_argument& error) {
        // The tool's sentence has the name of its option, --word-length.
        std::string sentence = error.what();
        if (const std::size_t dashes = sentence.find("--"); dashes != std::string::npos) {
            const auto begin = sentence.begin() + static_cast<std::ptrdiff_t>(dashes);
            const auto end = std::find(begin, sentence.end(), ' ');
            std::replace(begin + 2, end, '-', '_');
            sentence.erase(dashes, 2);
        }
        throw ArgumentError(sentence);
    }
}

Grid gridOf(const fxpDataTypeProp& record) {
    if (record.DataTypeMode == FXP_DT_FIXPT &&
        record.WordLength > tvtool::fixedpoint::longestStoredWord) {
        throw ArgumentError(fmt::format("{} has more than {} bits, and NumPy no such integers",
                                        fxpDataTypeToIdentifierString(&record),
                                        tvtool::fixedpoint::longestStoredWord));
    }
    return tvtool::fixedpoint::requireGrid(record);
}

/// Returns the dtype of the stored integers of a type.
py::dtype storedDtype(const fxpDataTypeProp& record) {
    return py::dtype(fmt::format("{}{}", record.Signedness == 1 ? 'i' : 'u',
                                 tvtool::fixedpoint::storedSize(record)));
}

/// Returns a vector of a real type as doubles, which have its values exactly.
Vector asDoubles(const py::handle& values) {
    Vector vector = vectorOf(values);
    if (vector.element.isComplex) {
        throw ArgumentError("fixed-point types store real values, and the array is complex");
    }
    if (vector.element.type == Type::Double) {
        return vector;
    }
    py::array doubles = newArrayLike(vector, dtypeOf({Type::Double, false}));
    tvConvertBuiltInDTypeVectWithCheck(
        vector.data(), vector.size(), static_cast<int>(vector.element.type), false,
        doubles.mutable_data(), vector.size(), static_cast<int>(Type::Double), false,
        FXP_OVERFLOW_SATURATE, FXP_ROUND_ZERO, false);
    vector.array = std::move(doubles);
    vector.element = {Type::Double, false};
    return vector;
}

py::object quantize(const fxpDataTypeProp& record, const py::object& values,
                    std::string_view rounding, std::string_view overflow) {
    const Modes modes{tvtool::convert::parseOverflow("overflow", overflow),
                      tvtool::convert::parseRounding("rounding", rounding)};
    const Grid grid = gridOf(record);
    const Vector vector = asDoubles(values);
    py::array stored = newArrayLike(vector, storedDtype(record));
    const std::size_t count = vector.size();
    const auto* doubles = static_cast<const double*>(vector.data());
    void* integers = stored.mutable_data();
    {
        const py::gil_scoped_release release;
        tvtool::fixedpoint::quantizeArray(doubles, integers, count, record, grid, modes);
    }
    return scalarOrArray(std::move(stored));
}

py::object realValues(const fxpDataTypeProp& record, const py::object& stored) {
    const Grid grid = gridOf(record);
    const Vector vector = integersOf(stored, storedDtype(record));
    py::array values = newArrayLike(vector, dtypeOf({Type::Double, false}));
    const std::size_t count = vector.size();
    const void* integers = vector.data();
    auto* doubles = static_cast<double*>(values.mutable_data());
    std::size_t done = 0;
    {
        const py::gil_scoped_release release;
        done = tvtool::fixedpoint::realValues(integers, doubles, count, record, grid);
    }
    if (done != count) {
        throw ArgumentError(fmt::format(
            "the integer at index {} of the elements is not in the range of {}, {} to {}", done,
            fxpDataTypeToIdentifierString(&record), grid.least.str(), grid.greatest.str()));
    }
    return scalarOrArray(std::move(values));
}

py::dict details(const fxpDataTypeProp& record) {
    TVTypeSys::DataTypeTable table;
    const auto details = tvtool::fixedpoint::typeDetails("", record, table);
    py::dict result;
    result["name"] = details.identifier;
    result["kind"] = details.kind;
    result["storage"] = details.storage.empty() ? py::object(py::none()) : py::str(details.storage);
    result["range"] = details.range.text();
    result["slope"] = details.slope;
    return result;
}

} // namespace

void addFixedPoint(py::module_& module) {
    using tvtool::fixedpoint::RecordTexts;
    py::class_<RecordTexts>(module, "FixedPointTexts")
        .def(py::init())
        .def_readwrite("signed", &RecordTexts::signedness)
        .def_readwrite("word_length", &RecordTexts::wordLength)
        .def_readwrite("slope", &RecordTexts::slope)
        .def_readwrite("factor", &RecordTexts::factor)
        .def_readwrite("exponent", &RecordTexts::exponent)
        .def_readwrite("fraction_length", &RecordTexts::fractionLength)
        .def_readwrite("bias", &RecordTexts::bias)
        .def_readwrite("scaled_double", &RecordTexts::isScaledDouble);
    py::class_<fxpDataTypeProp>(module, "FixedPointRecord")
        .def(py::init(&recordOf))
        .def(py::init(&recordOfKeywords))
        .def_property_readonly("signed",
                               [](const fxpDataTypeProp& self) { return self.Signedness == 1; })
        .def_readonly("word_length", &fxpDataTypeProp::WordLength)
        .def_readonly("exponent", &fxpDataTypeProp::FixedExponent)
        .def_readonly("factor", &fxpDataTypeProp::SlopeAdjustmentFactor)
        .def_readonly("bias", &fxpDataTypeProp::Bias)
        .def("details", &details)
        .def("dtype",
             [](const fxpDataTypeProp& self) {
                 gridOf(self);
                 return storedDtype(self);
             })
        .def("limits",
             [](const fxpDataTypeProp& self) {
                 const Grid grid = tvtool::fixedpoint::requireGrid(self);
                 return py::make_tuple(pythonInteger(grid.least), pythonInteger(grid.greatest));
             })
        .def("constructor",
             [](const fxpDataTypeProp& self, bool isNumericType, int scaling) {
                 return fxpDataTypeToConstructorString_NoCache(
                     self, isNumericType ? FxpDT::PreferNumericType : FxpDT::PreferFixdt,
                     static_cast<FxpDT::scalingRepPrefer>(scaling));
             })
        .def("quantize", &quantize)
        .def("real_values", &realValues);
}

} // namespace tvpython
