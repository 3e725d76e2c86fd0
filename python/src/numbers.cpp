#include <string>

#include "handles.h"

namespace brum::python {

namespace {

bool is_fraction(py::handle value) {
  return py::isinstance(value, py::module_::import("fractions").attr("Fraction"));
}

bool is_integer(py::handle value) {
  return py::isinstance<py::int_>(value) && !py::isinstance<py::bool_>(value);
}

/// The decimal digits of a Python int. Through hexadecimal ones, as Python limits the length of
/// decimal texts and takes quadratic time for them.
QNumber from_integer(py::handle value) {
  const std::string digits = py::str(py::module_::import("builtins").attr("hex")(value));
  const bool negative = digits.front() == '-';
  mpz_class number(digits.substr(negative ? 3 : 2), 16);
  if (negative) {
    number = -number;
  }
  return QNumber(number, 1);
}

}  // namespace

bool is_number(py::handle value) {
  return is_integer(value) || is_fraction(value);
}

QNumber to_number(py::handle value) {
  if (is_integer(value)) {
    return from_integer(value);
  }
  if (is_fraction(value)) {
    return from_integer(value.attr("numerator")) / from_integer(value.attr("denominator"));
  }
  if (py::isinstance<py::str>(value)) {
    Name text;
    if (!read_name(value, text)) {
      throw py::type_error("a number is written with digits");
    }
    return QNumber::from_string(text.bytes);
  }
  throw py::type_error("a number is an int, a fractions.Fraction or a text such as '1.25', not " +
                       std::string(py::str(py::type::handle_of(value).attr("__name__"))));
}

const Term* to_term(const ManagerPtr& manager, py::handle value, const DataType* sort) {
  if (py::isinstance<TermHandle>(value)) {
    const auto& handle = py::cast<const TermHandle&>(value);
    require_owner(manager, handle);
    return handle.term;
  }
  if (!is_number(value)) {
    throw py::type_error("a term or a number is wanted, not " +
                         std::string(py::str(py::type::handle_of(value).attr("__name__"))));
  }
  const QNumber number = to_number(value);
  switch (sort->kind()) {
    case DataType::Kind::integer:
      return manager->make_number(number);
    case DataType::Kind::real:
      return manager->make_number(number, sort);
    case DataType::Kind::bit_vector:
      return manager->make_bv_number(number, sort->width());
    default:
      throw TermManager::error("a number cannot stand where a term of sort " +
                               sort->to_short_str() + " is wanted");
  }
}

py::int_ to_python(const QNumber& integer) {
  const std::string digits = integer.num_mpz().get_str(16);
  return py::reinterpret_steal<py::int_>(PyLong_FromString(digits.c_str(), nullptr, 16));
}

}  // namespace brum::python
