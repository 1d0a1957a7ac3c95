/// \file
/// The parts of the module. Each function adds the classes and functions of one subject.
#pragma once

#include <pybind11/pybind11.h>

namespace tvpython {

void addConversion(pybind11::module_& module);
void addDims(pybind11::module_& module);
void addFixedPoint(pybind11::module_& module);
void addTool(pybind11::module_& module);
void addTypes(pybind11::module_& module);
void addUnits(pybind11::module_& module);

} // namespace tvpython
