// The tool as a function, which the package calls for reports.
#include "module.h"

#include "tool.h"

#include <pybind11/stl.h>

#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace tvpython {

namespace py = pybind11;

namespace {

/// Runs a command line, without the lock of the interpreter. Returns the exit status, the output
/// and the errors.
std::tuple<int, py::bytes, py::bytes> runTool(const std::vector<std::string>& arguments) {
    std::vector<const char*> argv{"tvtypes"};
    for (const std::string& argument : arguments) {
        argv.push_back(argument.c_str());
    }
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    int status = 0;
    {
        const py::gil_scoped_release release;
        status = tvtool::runTool(static_cast<int>(argv.size()), argv.data(), {in, out, err});
    }
    return {status, py::bytes(out.str()), py::bytes(err.str())};
}

} // namespace

void addTool(py::module_& module) { module.def("run_tool", runTool, py::arg("arguments")); }

} // namespace tvpython
