#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "handles.h"

namespace brum::python {

namespace {

std::string kind_of(const SortHandle& self) {
  switch (self.sort->kind()) {
    case DataType::Kind::boolean:
      return "bool";
    case DataType::Kind::integer:
      return "int";
    case DataType::Kind::real:
      return "real";
    case DataType::Kind::bit_vector:
      return "bit-vector";
    case DataType::Kind::array:
      return "array";
    case DataType::Kind::uninterpreted:
      return "uninterpreted";
    case DataType::Kind::function:
      return "function";
  }
  return "";
}

/// Applies a symbol; numbers become numerals of the argument's sort.
TermHandle call(const SymbolHandle& self, const py::args& arguments) {
  if (arguments.size() != self.symbol->arity) {
    throw py::type_error(std::string(self.symbol->name_view()) + " takes " +
                         std::to_string(self.symbol->arity) + " arguments, not " +
                         std::to_string(arguments.size()));
  }
  std::vector<const Term*> terms;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    terms.push_back(to_term(self.manager, arguments[i], self.symbol->type->get_component(i + 1)));
  }
  return {self.manager, self.manager->make_term(self.symbol, terms)};
}

template <class Handle, class Object>
void add_identity(py::class_<Handle>& type, Object Handle::*object) {
  type.def("__eq__", [object](const Handle& self, py::handle other) {
    return py::isinstance<Handle>(other) && py::cast<const Handle&>(other).*object == self.*object;
  });
  type.def("__hash__", [object](const Handle& self) {
    return reinterpret_cast<std::uintptr_t>(self.*object) >> 3U;
  });
}

}  // namespace

void add_sorts(py::module_& module) {
  py::class_<SortHandle> sort(module, "Sort", without_constructor(),
                              "A sort; made by a TermManager.");
  refuse_pickling(sort);
  sort.def_property_readonly("kind", &kind_of,
                             "'bool', 'int', 'real', 'bit-vector', 'array', 'uninterpreted' or "
                             "'function'.")
      .def_property_readonly(
          "width", [](const SortHandle& self) { return self.sort->width(); },
          "The width in bits of a bit-vector sort, else 0.")
      .def_property_readonly(
          "components",
          [](const SortHandle& self) {
            std::vector<SortHandle> components;
            for (std::size_t i = 0; i < self.sort->num_components(); ++i) {
              components.push_back({self.manager, self.sort->get_component(i)});
            }
            return components;
          },
          "Index and element of an array; result and arguments of a function type.")
      .def("__str__", [](const SortHandle& self) { return to_text(self.sort->to_str()); })
      .def("__repr__", [](const SortHandle& self) { return "<brum.Sort " + kind_of(self) + ">"; });
  add_identity(sort, &SortHandle::sort);

  py::class_<SymbolHandle> symbol(module, "Symbol", without_constructor(),
                                  "What stands at the head of a term; called with terms, it gives "
                                  "its application.");
  refuse_pickling(symbol);
  symbol
      .def_property_readonly(
          "name", [](const SymbolHandle& self) { return to_text(self.symbol->name_view()); })
      .def_property_readonly("arity", [](const SymbolHandle& self) { return self.symbol->arity; })
      .def_property_readonly(
          "sort",
          [](const SymbolHandle& self) {
            return SortHandle{self.manager, self.symbol->type};
          },
          "The sort of a constant, the function type of anything else.")
      .def_property_readonly(
          "is_interpreted",
          [](const SymbolHandle& self) { return TermManager::is_interpreted(self.symbol); },
          "Whether the symbol has a meaning of its own.")
      .def("__call__", &call)
      .def("__repr__", [](const SymbolHandle& self) {
        return to_text("<brum.Symbol " + std::string(self.symbol->name_view()) + ">");
      });
  add_identity(symbol, &SymbolHandle::symbol);
}

}  // namespace brum::python
