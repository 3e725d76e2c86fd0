#include <cstddef>

#include "handles.h"

namespace brum::python {

namespace {

/// Adds a method for a builder with two bit-vectors.
void add_binary(py::class_<TermHandle>& type, const char* name,
                const Term* (TermManager::*make)(const Term*, const Term*), const char* doc) {
  type.def(
      name,
      [make](const TermHandle& self, py::handle other) {
        const Term* term = to_term(self.manager, other, self.term->sort());
        return TermHandle{self.manager, ((*self.manager).*make)(self.term, term)};
      },
      py::arg("other"), doc);
}

/// Adds a method for a builder with a number of bits and a bit-vector.
void add_indexed(py::class_<TermHandle>& type, const char* name,
                 const Term* (TermManager::*make)(std::size_t, const Term*), const char* doc) {
  type.def(
      name,
      [make](const TermHandle& self, std::size_t bits) {
        return TermHandle{self.manager, ((*self.manager).*make)(bits, self.term)};
      },
      py::arg("bits"), doc);
}

void add_shift(py::class_<TermHandle>& type) {
  type.def("__lshift__", [](const TermHandle& self, py::handle other) {
    const Term* term = to_term(self.manager, other, self.term->sort());
    return TermHandle{self.manager, self.manager->make_bvshl(self.term, term)};
  });
  type.def("__rshift__", [](const TermHandle& /*self*/, py::handle /*other*/) -> TermHandle {
    throw py::type_error("a shift to the right is lshr or ashr");
  });
  type.def("__xor__", [](const TermHandle& self, py::handle other) {
    const Term* term = to_term(self.manager, other, self.term->sort());
    return TermHandle{self.manager, self.manager->make_bvxor(self.term, term)};
  });
  type.def("__rxor__", [](const TermHandle& self, py::handle other) {
    const Term* term = to_term(self.manager, other, self.term->sort());
    return TermHandle{self.manager, self.manager->make_bvxor(term, self.term)};
  });
}

}  // namespace

void add_bit_vectors(py::class_<TermHandle>& type) {
  add_shift(type);
  add_binary(type, "udiv", &TermManager::make_bvudiv, "Division of natural numbers.");
  add_binary(type, "sdiv", &TermManager::make_bvsdiv, "Division of signed numbers.");
  add_binary(type, "urem", &TermManager::make_bvurem, "Remainder of udiv.");
  add_binary(type, "srem", &TermManager::make_bvsrem, "Remainder of sdiv.");
  add_binary(type, "lshr", &TermManager::make_bvlshr, "Shift to the right with zeros.");
  add_binary(type, "ashr", &TermManager::make_bvashr, "Shift to the right with the sign.");
  add_binary(type, "ult", &TermManager::make_bvult, "Less, of natural numbers.");
  add_binary(type, "ule", &TermManager::make_bvule, "Less or equal, of natural numbers.");
  add_binary(type, "slt", &TermManager::make_bvslt, "Less, of signed numbers.");
  add_binary(type, "sle", &TermManager::make_bvsle, "Less or equal, of signed numbers.");
  add_binary(type, "comp", &TermManager::make_bvcomp, "One bit that says whether both are equal.");
  add_binary(type, "concat", &TermManager::make_concat, "The bits of self above those of other.");
  add_indexed(type, "rotate_left", &TermManager::make_rotate_left, "Rotation to the left.");
  add_indexed(type, "rotate_right", &TermManager::make_rotate_right, "Rotation to the right.");
  add_indexed(type, "zero_extend", &TermManager::make_zero_extend, "So many zeros above.");
  add_indexed(type, "sign_extend", &TermManager::make_sign_extend, "So many signs above.");
}

}  // namespace brum::python
