#ifndef BRUM_PYTHON_HANDLES_H
#define BRUM_PYTHON_HANDLES_H

// What the objects of the Python module hold. Each keeps its manager alive.

#include <pybind11/pybind11.h>

#include <memory>

#include "brum/brum.h"
#include "text.h"

namespace brum::python {

namespace py = pybind11;

using ManagerPtr = std::shared_ptr<TermManager>;

struct SortHandle {
  ManagerPtr manager;
  const DataType* sort;
};

struct SymbolHandle {
  ManagerPtr manager;
  const Symbol* symbol;
};

struct TermHandle {
  ManagerPtr manager;
  const Term* term;
};

/// Whether `__init__` of the object has run: `__new__` alone leaves it without a value.
bool is_made(py::handle object);

/// For the class of what only a manager makes: `__new__` raises TypeError, as an object without a
/// value would end the interpreter.
py::custom_type_setup without_constructor();

/// Defines `__reduce_ex__` to raise TypeError: what pickle and copy make of an object by themselves
/// is one without a value.
template <class... Rest>
void refuse_pickling(py::class_<Rest...>& type) {
  type.def("__reduce_ex__", [](py::handle self, py::handle /*protocol*/) -> py::object {
    throw py::type_error("cannot pickle or copy objects of " +
                         std::string(py::str(py::type::handle_of(self))));
  });
}

/// Throws TermManager::error unless the object belongs to `manager`.
template <class Handle>
void require_owner(const ManagerPtr& manager, const Handle& handle) {
  if (handle.manager != manager) {
    throw TermManager::error("objects of different managers cannot be used together");
  }
}

/// Reads a Python int, fractions.Fraction or str (`-12`, `3/4`, `1.25`). Throws py::type_error for
/// anything else, bool included.
QNumber to_number(py::handle value);

/// True for what to_number() takes as an operand: an int that is no bool, or a Fraction.
bool is_number(py::handle value);

/// Gives the term that `value` stands for beside a term of sort `sort`: a term as it is, a number
/// as a numeral of that sort (a Fraction beside an Int is a Real). Throws py::type_error.
const Term* to_term(const ManagerPtr& manager, py::handle value, const DataType* sort);

/// Gives the Python integer.
py::int_ to_python(const QNumber& integer);

// Each adds classes to the module.
void add_sorts(py::module_& module);
void add_manager(py::module_& module);
void add_terms(py::class_<TermHandle>& type);
void add_bit_vectors(py::class_<TermHandle>& type);
void add_printing(py::module_& module, py::class_<TermHandle>& term);
void add_traces(py::module_& module);

}  // namespace brum::python

namespace pybind11::detail {

template <>
class type_caster<brum::python::ManagerPtr>
    : public copyable_holder_caster<brum::TermManager, brum::python::ManagerPtr> {
 public:
  bool load(handle source, bool convert) {
    return brum::python::is_made(source) &&
           copyable_holder_caster<brum::TermManager, brum::python::ManagerPtr>::load(source,
                                                                                     convert);
  }
};

}  // namespace pybind11::detail

#endif  // BRUM_PYTHON_HANDLES_H
