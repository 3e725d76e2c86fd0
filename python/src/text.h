#ifndef BRUM_PYTHON_TEXT_H
#define BRUM_PYTHON_TEXT_H

#include <pybind11/pybind11.h>

#include <string>
#include <string_view>

namespace brum::python {

/// Decodes a text from UTF-8. Other bytes become the surrogates that Python writes back as those
/// bytes under the error handler `surrogateescape`.
pybind11::str to_text(std::string_view bytes);

/// A name or another short text as Python code gives it: bytes, or a str that to_text() may have
/// made.
struct Name {
  std::string bytes;
};

/// Takes the bytes of `value`. False when it is neither bytes nor a str that stands for bytes.
bool read_name(pybind11::handle value, Name& name);

}  // namespace brum::python

namespace pybind11::detail {

template <>
class type_caster<brum::python::Name> {
 public:
  PYBIND11_TYPE_CASTER(brum::python::Name, const_name("Union[str, bytes]"));

  bool load(handle source, bool /*convert*/) { return brum::python::read_name(source, value); }
};

}  // namespace pybind11::detail

#endif  // BRUM_PYTHON_TEXT_H
