// Exact conversions between units.
#include "errors.h"
#include "integers.h"
#include "module.h"

#include "exact/number.h"
#include "units/factor.h"

#include <pybind11/stl.h>

#include <string>

namespace tvpython {

namespace py = pybind11;

namespace {

/// Returns a number as the numerator and the denominator of a fraction.
py::tuple parts(const tvtool::exact::Number& number) {
    return py::make_tuple(pythonInteger(numerator(number)), pythonInteger(denominator(number)));
}

/// Returns the factor and the offset of the conversion, the power of pi in the factor, the relative
/// uncertainty, and how the texts were read.
py::tuple relateUnits(const std::string& from, const std::string& to, bool areDifferences) {
    using tvtool::units::Values;
    TVTypeSys::UnitTable table;
    const tvtool::units::UnitPair pair = tvtool::units::relateUnits(
        from, to, areDifferences ? Values::Differences : Values::Points, table);
    if (!pair.conversion) {
        throw ArgumentError(pair.reason);
    }
    const tvtool::units::Conversion& conversion = *pair.conversion;
    return py::make_tuple(parts(conversion.factor), parts(conversion.offset), conversion.piPower,
                          conversion.uncertainty, pair.notes);
}

} // namespace

void addUnits(py::module_& module) {
    module.def("relate_units", relateUnits, py::arg("source"), py::arg("destination"),
               py::arg("differences"));
}

} // namespace tvpython
