#include "text.h"

namespace brum::python {

namespace py = pybind11;

py::str to_text(std::string_view bytes) {
  auto text = py::reinterpret_steal<py::str>(PyUnicode_DecodeUTF8(
      bytes.data(), static_cast<py::ssize_t>(bytes.size()), "surrogateescape"));
  if (!text) {
    throw py::error_already_set();
  }
  return text;
}

bool read_name(py::handle value, Name& name) {
  if (py::isinstance<py::str>(value)) {
    const auto encoded = py::reinterpret_steal<py::bytes>(
        PyUnicode_AsEncodedString(value.ptr(), "utf-8", "surrogateescape"));
    if (!encoded) {  // a surrogate that stands for no byte
      PyErr_Clear();
      return false;
    }
    name.bytes = std::string(encoded);
    return true;
  }
  if (py::isinstance<py::bytes>(value)) {
    name.bytes = std::string(py::reinterpret_borrow<py::bytes>(value));
    return true;
  }
  if (py::isinstance<py::bytearray>(value)) {
    name.bytes = std::string(py::reinterpret_borrow<py::bytearray>(value));
    return true;
  }
  return false;
}

}  // namespace brum::python
