// The module tvtypes._native: the library and the tool in Python. The package tvtypes, whose
// sources are in python/tvtypes, is its interface; python/tvtypes/_native.pyi declares it.
#include "module.h"

#include "errors.h"

#include <tvtypes/functions.h>

PYBIND11_MODULE(_native, module) {
    // The stubs have the signatures.
    pybind11::options options;
    options.disable_function_signatures();
    tvpython::registerErrors();
    tvpython::addConversion(module);
    tvpython::addDims(module);
    tvpython::addFixedPoint(module);
    tvpython::addTool(module);
    tvpython::addTypes(module);
    tvpython::addUnits(module);
}
