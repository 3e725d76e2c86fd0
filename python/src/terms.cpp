#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <vector>

#include "handles.h"

namespace brum::python {

namespace {

using Kind = DataType::Kind;

bool is_bit_vector(const Term* term) {
  return term->sort()->kind() == Kind::bit_vector;
}

/// Throws py::type_error where an operator has no one meaning over bit-vectors.
void refuse_bit_vectors(const Term* term, const char* instead) {
  if (is_bit_vector(term)) {
    throw py::type_error(std::string("bit-vectors have no such operator: ") + instead);
  }
}

/// A builder of TermManager with two arguments.
using Binary = const Term* (TermManager::*)(const Term*, const Term*);

/// The operands of an operator: `self` and another term or number, in the order of the text.
struct Operands {
  const Term* left;
  const Term* right;
};

/// Gives nothing when `other` is neither a term nor a number, so that Python may ask it.
std::optional<Operands> operands(const TermHandle& self, py::handle other, bool reflected) {
  if (!py::isinstance<TermHandle>(other) && !is_number(other)) {
    return std::nullopt;
  }
  const Term* term = to_term(self.manager, other, self.term->sort());
  return reflected ? Operands{term, self.term} : Operands{self.term, term};
}

/// Defines `name` and, unless it is empty, `reflected_name`: `over_bv` over bit-vectors, else
/// `other`.
void add_operator(py::class_<TermHandle>& type, const char* name, const char* reflected_name,
                  Binary other, Binary over_bv) {
  const auto build = [other, over_bv](const TermHandle& self, py::handle operand,
                                      bool reflected) -> py::object {
    const std::optional<Operands> both = operands(self, operand, reflected);
    if (!both) {
      return py::reinterpret_borrow<py::object>(Py_NotImplemented);
    }
    const Binary make = is_bit_vector(both->left) ? over_bv : other;
    return py::cast(TermHandle{self.manager, ((*self.manager).*make)(both->left, both->right)});
  };
  type.def(
      name,
      [build](const TermHandle& self, py::handle operand) { return build(self, operand, false); },
      py::is_operator());
  type.def(
      reflected_name,
      [build](const TermHandle& self, py::handle operand) { return build(self, operand, true); },
      py::is_operator());
}

[[noreturn]] void refuse_sort(const char* name, const Term* term, const char* wanted) {
  throw TermManager::error(std::string(name) + ": an argument has sort " +
                           term->sort()->to_short_str() + ", expected " + wanted);
}

// An operation that makes several terms looks at its arguments before the first: where it fails, it
// leaves none behind.

void require_number(const char* name, const Term* term) {
  const Kind kind = term->sort()->kind();
  if (kind != Kind::integer && kind != Kind::real) {
    refuse_sort(name, term, "Int or Real");
  }
}

void require_bool(const char* name, const Term* term) {
  if (term->sort()->kind() != Kind::boolean) {
    refuse_sort(name, term, "Bool");
  }
}

/// The product with -1, of the sort of `a`.
const Term* minus(TermManager& mgr, const Term* a) {
  if (is_bit_vector(a)) {
    return mgr.make_bvneg(a);
  }
  require_number("-", a);
  return mgr.make_times(mgr.make_number(-1), a);
}

const Term* difference(TermManager& mgr, const Term* a, const Term* b) {
  if (is_bit_vector(a)) {
    return mgr.make_bvsub(a, b);
  }
  require_number("-", a);
  require_number("-", b);
  return mgr.make_plus(a, minus(mgr, b));
}

py::object subtract(const TermHandle& self, py::handle operand, bool reflected) {
  const std::optional<Operands> both = operands(self, operand, reflected);
  if (!both) {
    return py::reinterpret_borrow<py::object>(Py_NotImplemented);
  }
  return py::cast(TermHandle{self.manager, difference(*self.manager, both->left, both->right)});
}

/// `self <= operand`; swapped for `>=`, negated for the strict ones.
py::object compare(const TermHandle& self, py::handle operand, bool swapped, bool negated) {
  refuse_bit_vectors(self.term, "use ule, ult, sle or slt");
  const std::optional<Operands> both = operands(self, operand, swapped);
  if (!both) {
    return py::reinterpret_borrow<py::object>(Py_NotImplemented);
  }
  const Term* leq = self.manager->make_leq(both->left, both->right);
  return py::cast(TermHandle{self.manager, negated ? self.manager->make_not(leq) : leq});
}

void add_arithmetic(py::class_<TermHandle>& type) {
  add_operator(type, "__add__", "__radd__", &TermManager::make_plus, &TermManager::make_bvadd);
  add_operator(type, "__mul__", "__rmul__", &TermManager::make_times, &TermManager::make_bvmul);
  type.def(
          "__sub__",
          [](const TermHandle& self, py::handle operand) { return subtract(self, operand, false); },
          py::is_operator())
      .def(
          "__rsub__",
          [](const TermHandle& self, py::handle operand) { return subtract(self, operand, true); },
          py::is_operator())
      .def("__neg__",
           [](const TermHandle& self) {
             return TermHandle{self.manager, minus(*self.manager, self.term)};
           })
      .def(
          "__le__",
          [](const TermHandle& self, py::handle operand) {
            return compare(self, operand, false, false);
          },
          py::is_operator())
      .def(
          "__ge__",
          [](const TermHandle& self, py::handle operand) {
            return compare(self, operand, true, false);
          },
          py::is_operator())
      .def(
          "__lt__",
          [](const TermHandle& self, py::handle operand) {
            return compare(self, operand, true, true);
          },
          py::is_operator())
      .def(
          "__gt__",
          [](const TermHandle& self, py::handle operand) {
            return compare(self, operand, false, true);
          },
          py::is_operator())
      .def(
          "floor",
          [](const TermHandle& self) {
            return TermHandle{self.manager, self.manager->make_floor(self.term)};
          },
          "The largest integer not above a real.")
      .def(
          "congruent",
          [](const TermHandle& self, py::handle other, py::handle modulus) {
            const Term* term = to_term(self.manager, other, self.term->sort());
            return TermHandle{self.manager, self.manager->make_int_modular_congruence(
                                                to_number(modulus), self.term, term)};
          },
          py::arg("other"), py::arg("modulus"),
          "Whether two integers differ by a multiple of the modulus.");
}

void add_connectives(py::class_<TermHandle>& type) {
  add_operator(type, "__and__", "__rand__", &TermManager::make_and, &TermManager::make_bvand);
  add_operator(type, "__or__", "__ror__", &TermManager::make_or, &TermManager::make_bvor);
  type.def(
          "__invert__",
          [](const TermHandle& self) {
            TermManager& mgr = *self.manager;
            return TermHandle{self.manager, is_bit_vector(self.term) ? mgr.make_bvnot(self.term)
                                                                     : mgr.make_not(self.term)};
          },
          "Negation, or the complement of a bit-vector.")
      .def(
          "implies",
          [](const TermHandle& self, const TermHandle& other) {
            require_owner(self.manager, other);
            require_bool("implies", self.term);
            require_bool("implies", other.term);
            TermManager& mgr = *self.manager;
            return TermHandle{self.manager, mgr.make_or(mgr.make_not(self.term), other.term)};
          },
          py::arg("other"), "Builds (or (not self) other).")
      .def(
          "iff",
          [](const TermHandle& self, const TermHandle& other) {
            require_owner(self.manager, other);
            return TermHandle{self.manager, self.manager->make_iff(self.term, other.term)};
          },
          py::arg("other"))
      .def(
          "equals",
          [](const TermHandle& self, py::handle other) {
            const Term* term = to_term(self.manager, other, self.term->sort());
            return TermHandle{self.manager, self.manager->make_equal(self.term, term)};
          },
          py::arg("other"), "The formula that the two are equal; == compares the terms themselves.")
      .def(
          "ite",
          [](const TermHandle& self, const TermHandle& then_term, py::handle else_term) {
            require_owner(self.manager, then_term);
            const Term* other = to_term(self.manager, else_term, then_term.term->sort());
            return TermHandle{self.manager,
                              self.manager->make_ite(self.term, then_term.term, other)};
          },
          py::arg("then_term"), py::arg("else_term"), "If self then the one term, else the other.");
}

/// The number of a bit. Throws py::type_error for what is no integer, py::index_error for one that
/// no bit-vector has.
std::size_t to_bit(py::handle value) {
  if (py::isinstance<py::bool_>(value) || PyIndex_Check(value.ptr()) == 0) {
    throw py::type_error("the bits of a vector are numbered by int, not " +
                         std::string(py::str(py::type::handle_of(value).attr("__name__"))));
  }
  const auto number = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
  if (!number) {
    throw py::error_already_set();
  }
  const std::size_t bit = PyLong_AsSize_t(number.ptr());
  if (bit == static_cast<std::size_t>(-1) && PyErr_Occurred() != nullptr) {
    PyErr_Clear();
    throw py::index_error("the bits of a vector are numbered from 0 to its width less 1");
  }
  return bit;
}

/// `a[i]` of an array; `v[msb:lsb]` and `v[i]` of a bit-vector.
TermHandle item(const TermHandle& self, py::handle key) {
  TermManager& mgr = *self.manager;
  const DataType* sort = self.term->sort();
  if (sort->kind() == Kind::array) {
    const Term* index = to_term(self.manager, key, sort->get_component(0));
    return {self.manager, mgr.make_select(self.term, index)};
  }
  if (sort->kind() != Kind::bit_vector) {
    throw py::type_error("only arrays and bit-vectors have elements");
  }
  if (py::isinstance<py::slice>(key)) {
    if (!key.attr("step").is_none() || key.attr("start").is_none() || key.attr("stop").is_none()) {
      throw py::type_error("the bits of a vector are v[msb:lsb]");
    }
    return {self.manager,
            mgr.make_extract(to_bit(key.attr("start")), to_bit(key.attr("stop")), self.term)};
  }
  const std::size_t bit = to_bit(key);
  return {self.manager, mgr.make_extract(bit, bit, self.term)};
}

void add_arrays(py::class_<TermHandle>& type) {
  type.def("__getitem__", &item,
           "The element of an array; the bits v[msb:lsb] or the bit v[i] of a bit-vector.");
  type.def(
      "store",
      [](const TermHandle& self, py::handle index, py::handle element) {
        const DataType* sort = self.term->sort();
        if (sort->kind() != Kind::array) {
          throw TermManager::error("store: an array is wanted, not a term of sort " +
                                   sort->to_short_str());
        }
        const Term* at = to_term(self.manager, index, sort->get_component(0));
        const Term* value = to_term(self.manager, element, sort->get_component(1));
        return TermHandle{self.manager, self.manager->make_store(self.term, at, value)};
      },
      py::arg("index"), py::arg("element"), "The array with one element replaced.");
  // Without this Python would take the elements one by one for a sequence without end.
  type.attr("__iter__") = py::none();
}

py::str short_text(const TermHandle& self) {
  return to_text("<brum.Term " + std::to_string(self.term->id) + ", " +
                 std::string(self.term->symbol->name_view()) + " of " +
                 std::to_string(self.term->symbol->arity) + " arguments>");
}

/// The value of a numeral: an int, or a Fraction where it is no integer.
py::object value_of(const TermHandle& self) {
  const QNumber* number = self.manager->get_number(self.term->symbol);
  if (number == nullptr) {
    return py::none();
  }
  if (number->is_integer()) {
    return to_python(*number);
  }
  return py::module_::import("fractions")
      .attr("Fraction")(to_python(number->get_num()), to_python(number->get_den()));
}

}  // namespace

void add_terms(py::class_<TermHandle>& type) {
  type.def_property_readonly(
          "manager", [](const TermHandle& self) { return self.manager; },
          "The manager that keeps the term; alive as long as one of its terms is.")
      .def_property_readonly(
          "id", [](const TermHandle& self) { return self.term->id; },
          "The number of the term, counted from 1 in the order of making.")
      .def_property_readonly("sort",
                             [](const TermHandle& self) {
                               return SortHandle{self.manager, self.term->sort()};
                             })
      .def_property_readonly("symbol",
                             [](const TermHandle& self) {
                               return SymbolHandle{self.manager, self.term->symbol};
                             })
      .def_property_readonly("arguments",
                             [](const TermHandle& self) {
                               std::vector<TermHandle> arguments;
                               for (const Term* argument : self.term->arguments()) {
                                 arguments.push_back({self.manager, argument});
                               }
                               return arguments;
                             })
      .def_property_readonly("value", &value_of,
                             "The value of a numeral, an int or a Fraction; None for other terms.")
      .def(
          "__eq__",
          [](const TermHandle& self, py::handle other) {
            return py::isinstance<TermHandle>(other) &&
                   py::cast<const TermHandle&>(other).term == self.term;
          },
          "Whether the two are the same term; equals() builds the formula.")
      .def("__hash__",
           [](const TermHandle& self) { return reinterpret_cast<std::uintptr_t>(self.term) >> 3U; })
      .def("__bool__",
           [](const TermHandle& /*self*/) -> bool {
             throw py::type_error(
                 "a term is neither true nor false: use & | ~ rather than and, "
                 "or, not, and no chains of comparisons");
           })
      .def("__repr__", &short_text);
  add_arithmetic(type);
  add_connectives(type);
  add_arrays(type);
}

}  // namespace brum::python
