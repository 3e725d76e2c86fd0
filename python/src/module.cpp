#include "brum/capi/base.h"
#include "handles.h"

namespace brum::python {

namespace {

/// Sets the error of Python. The message may hold names that are not UTF-8.
void raise(py::handle type, const std::exception& problem) {
  PyErr_SetObject(type.ptr(), to_text(problem.what()).ptr());
}

}  // namespace

PYBIND11_MODULE(_brum, module) {
  module.doc() = "Terms and printers of brum.";
  module.attr("__version__") = brum_version();

  static py::exception<Exception> error(module, "Error");
  error.doc() = "What the library objects to; the other errors derive from it.";
  static py::exception<TermManager::error> sort_error(module, "SortError", error.ptr());
  sort_error.doc() = "Sorts, declarations or managers that do not fit together.";
  static py::exception<TermPrinter::error> form_error(module, "FormError", error.ptr());
  form_error.doc() = "What the form that was asked for cannot express.";
  // pybind11 wants the parameter by value.
  // NOLINTNEXTLINE(performance-unnecessary-value-param)
  py::register_local_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) {
        std::rethrow_exception(thrown);
      }
    } catch (const TermManager::error& problem) {
      raise(sort_error, problem);
    } catch (const TermPrinter::error& problem) {
      raise(form_error, problem);
    } catch (const Exception& problem) {
      raise(error, problem);
    } catch (const py::type_error& problem) {
      raise(PyExc_TypeError, problem);
    }
  });

  add_sorts(module);
  py::class_<TermHandle> term(module, "Term", without_constructor(),
                              "A term; a formula is a term of sort Bool.");
  refuse_pickling(term);
  add_manager(module);
  add_terms(term);
  add_bit_vectors(term);
  add_printing(module, term);
  add_traces(module);
}

}  // namespace brum::python
