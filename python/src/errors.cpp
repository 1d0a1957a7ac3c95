#include "errors.h"

#include "convert/names.h"
#include "dims/reading.h"
#include "model/struct_layout.h"
#include "text/parse_error.h"

#include <fnd/except.h>
#include <tv_services/diagnostics.h>

#include <exception>
#include <utility>

namespace tvpython {

namespace py = pybind11;

namespace {

/// Sets the exception of Python. The message id is None for an error that is not the library's.
void setError(const char* sentence, const py::object& messageId, const py::tuple& arguments) {
    const py::object type = py::module_::import("tvtypes._errors").attr("Error");
    PyErr_SetObject(type.ptr(), type(sentence, messageId, arguments).ptr());
}

void setLibraryError(const fnd::except::IException& error) {
    const tvsvDiagnosticImpl& diagnostic = error.diagnostic();
    if (diagnostic.size() == 0) {
        setError(error.what(), py::none(), py::tuple());
        return;
    }
    const auto& texts = diagnostic.arguments(0);
    py::tuple arguments(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        arguments[i] = py::str(texts[i]);
    }
    setError(error.what(), py::str(diagnostic.messageId(0)), arguments);
}

void translate(std::exception_ptr thrown) {
    try {
        std::rethrow_exception(std::move(thrown));
    } catch (const fnd::except::IException& error) {
        setLibraryError(error);
    } catch (const tvtool::text::ParseError& error) {
        setError((error.text + ": " + error.what()).c_str(), py::none(), py::tuple());
    } catch (const tvtool::convert::Error& error) {
        setError(error.what(), py::none(), py::tuple());
    } catch (const tvtool::model::LayoutError& error) {
        setError(error.what(), py::none(), py::tuple());
    } catch (const std::invalid_argument& error) {
        // Of this module, and of the tool for its own arguments.
        setError(error.what(), py::none(), py::tuple());
    }
}

} // namespace

void registerErrors() { py::register_exception_translator(translate); }

} // namespace tvpython
