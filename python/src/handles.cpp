#include "handles.h"

namespace brum::python {

namespace {

PyObject* refuse_new(PyTypeObject* type, PyObject* /*arguments*/, PyObject* /*keywords*/) {
  PyErr_Format(PyExc_TypeError, "%.200s has no constructor: a TermManager makes its objects",
               type->tp_name);
  return nullptr;
}

}  // namespace

bool is_made(py::handle object) {
  PyObject* base = py::detail::get_internals().instance_base;
  if (!PyObject_TypeCheck(object.ptr(), reinterpret_cast<PyTypeObject*>(base))) {
    return true;  // no object of this module: whatever looks for one refuses it
  }
  auto* instance = reinterpret_cast<py::detail::instance*>(object.ptr());
  if (instance->simple_layout) {
    return instance->simple_holder_constructed;
  }
  for (const auto& part : py::detail::values_and_holders(instance)) {
    if (!part.holder_constructed()) {
      return false;
    }
  }
  return true;
}

py::custom_type_setup without_constructor() {
  return py::custom_type_setup([](PyHeapTypeObject* type) { type->ht_type.tp_new = &refuse_new; });
}

}  // namespace brum::python
