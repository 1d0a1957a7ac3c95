// Conversion of arrays between the built-in types.
#include "arrays.h"
#include "errors.h"
#include "module.h"

#include "convert/conversion.h"

#include <tvtypes/functions.h>

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvpython {

using tvtool::convert::Conversion;
using tvtool::convert::Losses;
using tvtool::convert::Modes;
using tvtool::convert::Occurrences;

namespace {

/// Below this number of elements, a conversion takes less time than releasing the lock of the
/// interpreter.
constexpr std::size_t fewElements = 1024;

/// Releases the lock of the interpreter unless a conversion is short.
class Unlocked {
  public:
    explicit Unlocked(std::size_t elements) {
        if (elements > fewElements) {
            release_.emplace();
        }
    }

  private:
    std::optional<py::gil_scoped_release> release_;
};

Modes parseModes(std::string_view rounding, std::string_view overflow) {
    return {tvtool::convert::parseOverflow("overflow", overflow),
            tvtool::convert::parseRounding("rounding", rounding)};
}

/// Converts without a check for losses.
void convertElements(const Vector& source, void* destination, Element element, Modes modes) {
    const std::size_t size = source.size();
    const void* data = source.data();
    const Unlocked unlocked(size);
    tvConvertBuiltInDTypeVectWithCheck(data, size, static_cast<int>(source.element.type),
                                       source.element.isComplex, destination, size,
                                       static_cast<int>(element.type), element.isComplex,
                                       modes.overflow, modes.rounding, false);
}

/// Returns the indices of elements in memory as tuples, by which the array can be indexed.
py::list indexTuples(const Occurrences& occurrences, const Vector& source) {
    py::list indices;
    const py::array& array = source.array;
    for (std::uint64_t index : occurrences.first) {
        py::tuple tuple(array.ndim());
        for (py::ssize_t i = 0; i < array.ndim(); ++i) {
            const py::ssize_t axis = source.isByColumns ? i : array.ndim() - 1 - i;
            const auto length = static_cast<std::uint64_t>(array.shape(axis));
            tuple[static_cast<std::size_t>(axis)] = py::int_(index % length);
            index /= length;
        }
        indices.append(std::move(tuple));
    }
    return indices;
}

py::object lossReport(const Losses& losses, const Vector& source) {
    const py::object greatest =
        losses.greatestError ? py::object(py::float_(losses.greatestError->value)) : py::none();
    return py::module_::import("tvtypes._losses")
        .attr("LossReport")(losses.elements, losses.lost.count, losses.overflowed.count,
                            indexTuples(losses.lost, source),
                            indexTuples(losses.overflowed, source), greatest, losses.nan,
                            losses.infinities);
}

Losses convertWithReport(const Vector& source, void* destination, Element element, Modes modes) {
    Conversion conversion(source.element, element, modes);
    const std::size_t size = source.size();
    const auto* data = static_cast<const std::byte*>(source.data());
    const Unlocked unlocked(size);
    conversion.convert(data, static_cast<std::byte*>(destination), size);
    return conversion.losses();
}

/// Throws an ArgumentError unless `out` can hold the result.
py::array checkedOut(const py::object& out, const Vector& source, Element element) {
    if (!py::isinstance<py::array>(out)) {
        throw ArgumentError("out is not a NumPy array");
    }
    auto array = py::reinterpret_borrow<py::array>(out);
    if (!array.writeable()) {
        throw ArgumentError("out is read-only");
    }
    if (elementOf(array.dtype()) != element) {
        throw ArgumentError(fmt::format("out has the dtype {}, and the result {}",
                                        textOf(array.dtype()), textOf(dtypeOf(element))));
    }
    const py::object shape = out.attr("shape");
    const py::object sourceShape = source.array.attr("shape");
    if (!shape.equal(sourceShape)) {
        throw ArgumentError(fmt::format("out has the shape {}, and the array {}", textOf(shape),
                                        textOf(sourceShape)));
    }
    return array;
}

/// Returns whether the result can be written to `out` while the source is read. With a report, an
/// element is read again after it has been converted.
bool canWriteTo(const py::array& out, const Vector& source, bool report) {
    const int order = source.isByColumns ? py::array::f_style : py::array::c_style;
    if ((out.flags() & order) == 0) {
        return false;
    }
    const auto* from = static_cast<const char*>(source.data());
    const auto* to = static_cast<const char*>(out.data());
    const bool isApart = to >= from + source.array.nbytes() || from >= to + out.nbytes();
    // In place, elements may not become larger.
    return isApart || (!report && to == from && out.itemsize() <= source.array.itemsize());
}

py::object convert(const py::object& values, const py::object& dtype, std::string_view rounding,
                   std::string_view overflow, const py::object& out, bool report) {
    const Modes modes = parseModes(rounding, overflow);
    const Element element = parseDtype(dtype);
    const Vector source = vectorOf(values);
    const bool hasOut = !out.is_none();
    const py::array given = hasOut ? checkedOut(out, source, element) : py::array();
    const bool isDirect = hasOut && canWriteTo(given, source, report);
    py::array result = isDirect ? given : newArrayLike(source, dtypeOf(element));

    py::object losses;
    if (report) {
        losses =
            lossReport(convertWithReport(source, result.mutable_data(), element, modes), source);
    } else {
        convertElements(source, result.mutable_data(), element, modes);
    }
    if (hasOut && !isDirect) {
        out[py::ellipsis()] = result;
    }
    py::object returned = hasOut ? out : scalarOrArray(std::move(result));
    return report ? py::object(py::make_tuple(std::move(returned), std::move(losses)))
                  : std::move(returned);
}

py::dtype complexDtype(const py::object& dtype) {
    const Element element = parseDtype(dtype);
    if (element.type == tvtool::convert::Type::Boolean) {
        throw ArgumentError("there are no complex values of the type boolean");
    }
    return dtypeOf({element.type, true});
}

} // namespace

void addConversion(py::module_& module) {
    module.def("convert", convert);
    module.def("complex_dtype", complexDtype);
    module.attr("type_names") = py::tuple(py::cast(tvtool::convert::typeNames()));
    module.attr("roundings") =
        py::tuple(py::cast(tvtool::convert::namesOf(tvtool::convert::roundings)));
    module.attr("overflows") =
        py::tuple(py::cast(tvtool::convert::namesOf(tvtool::convert::overflows)));
}

} // namespace tvpython
