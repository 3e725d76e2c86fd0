#include <pybind11/stl.h>

#include <string>
#include <vector>

#include "handles.h"

namespace brum::python {

namespace {

SortHandle function_sort(const ManagerPtr& self, const std::vector<SortHandle>& arguments,
                         const SortHandle& result) {
  std::vector<const DataType*> sorts;
  for (const SortHandle& argument : arguments) {
    require_owner(self, argument);
    sorts.push_back(argument.sort);
  }
  require_owner(self, result);
  return {self, self->make_function_type(sorts, result.sort)};
}

SymbolHandle declare(const ManagerPtr& self, const Name& name, const SortHandle& sort) {
  require_owner(self, sort);
  return {self, self->declare(name.bytes, sort.sort)};
}

TermHandle constant(const ManagerPtr& self, const Name& name, const SortHandle& sort) {
  if (sort.sort->kind() == DataType::Kind::function) {
    throw TermManager::error("const: the sort is a function type");
  }
  return {self, self->make_term(declare(self, name, sort).symbol)};
}

TermHandle number(const ManagerPtr& self, py::handle value, const SortHandle* sort) {
  const QNumber read = to_number(value);
  if (sort == nullptr) {
    return {self, self->make_number(read)};
  }
  require_owner(self, *sort);
  return {self, self->make_number(read, sort->sort)};
}

}  // namespace

void add_manager(py::module_& module) {
  using py::arg;
  py::class_<TermManager, ManagerPtr> manager(
      module, "TermManager",
      "Makes and keeps sorts, symbols and terms, each once. Builds exactly what it is asked for.");
  refuse_pickling(manager);
  manager.def(py::init<>())
      .def_property_readonly("bool_sort",
                             [](const ManagerPtr& self) {
                               return SortHandle{self, self->get_bool_type()};
                             })
      .def_property_readonly("int_sort",
                             [](const ManagerPtr& self) {
                               return SortHandle{self, self->get_int_type()};
                             })
      .def_property_readonly("real_sort",
                             [](const ManagerPtr& self) {
                               return SortHandle{self, self->get_real_type()};
                             })
      .def(
          "bv_sort",
          [](const ManagerPtr& self, std::size_t width) {
            return SortHandle{self, self->make_bv_type(width)};
          },
          arg("width"), "The sort of bit-vectors of so many bits.")
      .def(
          "array_sort",
          [](const ManagerPtr& self, const SortHandle& index, const SortHandle& element) {
            require_owner(self, index);
            require_owner(self, element);
            return SortHandle{self, self->make_array_type(index.sort, element.sort)};
          },
          arg("index"), arg("element"), "The sort of arrays from index to element.")
      .def(
          "uninterpreted_sort",
          [](const ManagerPtr& self, const Name& name) {
            return SortHandle{self, self->make_uninterpreted_type(name.bytes)};
          },
          arg("name"), "The uninterpreted sort of this name.")
      .def("function_sort", &function_sort, arg("arguments"), arg("result"),
           "The type of functions from at least one argument.")
      .def("declare", &declare, arg("name"), arg("sort"),
           "The user's symbol of this name, declared at the first call.")
      .def(
          "function",
          [](const ManagerPtr& self, const Name& name, const std::vector<SortHandle>& arguments,
             const SortHandle& result) {
            return declare(self, name, function_sort(self, arguments, result));
          },
          arg("name"), arg("arguments"), arg("result"),
          "Declares an uninterpreted function, to be called with terms.")
      .def("const", &constant, arg("name"), arg("sort"), "Declares a constant and gives its term.")
      .def("true_",
           [](const ManagerPtr& self) {
             return TermHandle{self, self->make_true()};
           })
      .def("false_",
           [](const ManagerPtr& self) {
             return TermHandle{self, self->make_false()};
           })
      .def("number", &number, arg("value"), arg("sort") = nullptr,
           "A numeral: Int when the value is integral, else Real, or of the given sort. The value "
           "is an int, a Fraction or a text such as '1.25'.")
      .def(
          "bv",
          [](const ManagerPtr& self, py::handle value, std::size_t width) {
            return TermHandle{self, self->make_bv_number(to_number(value), width)};
          },
          arg("value"), arg("width"), "The bit-vector that stands for a number.")
      .def_property_readonly(
          "num_terms", [](const ManagerPtr& self) { return self->num_terms(); },
          "The number of distinct terms made so far.");
}

}  // namespace brum::python
