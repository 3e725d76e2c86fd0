#include <pybind11/stl.h>

#include <string>
#include <string_view>
#include <vector>

#include "brum/utils/memory_stream.h"
#include "file_stream.h"
#include "options.h"

namespace brum::python {

namespace {

/// Gives what `print` writes as a Python str.
template <class Print>
py::str text_of(const Print& print) {
  MemoryStream out;
  print(out);
  return to_text(out.text());
}

void write_check_sat(std::ostream& out, const Options& options) {
  if (options.check_sat) {
    out << "(check-sat)\n";
  }
}

void print_document(std::ostream& out, const TermHandle& formula, const Options& options,
                    py::handle attributes) {
  if (formula.term->sort() != formula.manager->get_bool_type()) {
    throw TermManager::error("the term is no formula, its sort is " +
                             formula.term->sort()->to_short_str());
  }
  const auto kept = to_attributes(formula.manager, attributes);
  const auto printer = make_printer(*formula.manager, options, *kept);
  require_safe_names(*formula.manager, {formula.term}, options);
  printer->print_formula(out, formula.term);
  write_check_sat(out, options);
}

void print_terms(std::ostream& out, const std::vector<TermHandle>& handles, Options options,
                 py::handle attributes) {
  if (handles.empty()) {
    throw py::value_error("there must be at least one term");
  }
  options.define_fun = true;
  const ManagerPtr& manager = handles.front().manager;
  std::vector<const Term*> terms;
  for (const TermHandle& handle : handles) {
    require_owner(manager, handle);
    terms.push_back(handle.term);
  }
  const auto kept = to_attributes(manager, attributes);
  const auto printer = make_version2_printer(*manager, options, *kept);
  require_safe_names(*manager, terms, options);
  printer->print_terms(out, terms);
  write_check_sat(out, options);
}

py::str single_text(const TermHandle& self, int version, bool newlines, py::handle attributes) {
  Options options;
  options.version = version;
  const auto kept = to_attributes(self.manager, attributes);
  const auto printer = make_printer(*self.manager, options, *kept);
  MemoryStream out;
  printer->print_term(out, self.term, newlines);
  std::string_view text = out.text();
  if (text.ends_with('\n')) {
    text.remove_suffix(1);
  }
  return to_text(text);
}

py::str label(const TermHandle& self, const std::string& label_prefix) {
  Options options;
  options.label_prefix = label_prefix;
  const AnnotationMap none;
  std::string text;
  make_printer(*self.manager, options, none)->get_define_label(self.term, text);
  return to_text(text);
}

}  // namespace

void add_printing(py::module_& module, py::class_<TermHandle>& term) {
  using py::arg;
  term.def(
      "to_smtlib",
      [](const TermHandle& self, int version, bool define_fun, const std::string& logic,
         const std::string& status, const std::string& label_prefix, bool check_names,
         bool check_sat, py::handle attributes) {
        const Options options{version,      define_fun,  logic,    status,
                              label_prefix, check_names, check_sat};
        return text_of([&](std::ostream& out) { print_document(out, self, options, attributes); });
      },
      py::kw_only(), arg("version") = 2, arg("define_fun") = false, arg("logic") = "",
      arg("status") = "", arg("label_prefix") = "", arg("check_names") = true,
      arg("check_sat") = false, arg("attributes") = py::none(),
      "The document of this formula: a benchmark of SMT-LIB 1.2 or a script of version 2.");
  term.def(
      "write_smtlib",
      [](const TermHandle& self, const py::object& file, int version, bool define_fun,
         const std::string& logic, const std::string& status, const std::string& label_prefix,
         bool check_names, bool check_sat, py::handle attributes) {
        const Options options{version,      define_fun,  logic,    status,
                              label_prefix, check_names, check_sat};
        FileStream out(file);
        print_document(out, self, options, attributes);
        out.finish();
      },
      arg("file"), py::kw_only(), arg("version") = 2, arg("define_fun") = false, arg("logic") = "",
      arg("status") = "", arg("label_prefix") = "", arg("check_names") = true,
      arg("check_sat") = false, arg("attributes") = py::none(),
      "Writes the document to a file object piece by piece, text or binary.");
  term.def("to_text", &single_text, py::kw_only(), arg("version") = 2, arg("newlines") = false,
           arg("attributes") = py::none(),
           "The term as one expression, shared subterms named by let. Nothing is declared.");
  term.def("__str__",
           [](const TermHandle& self) { return single_text(self, 2, false, py::none()); });
  term.def(
      "atom_text",
      [](const TermHandle& self, int version) {
        Options options;
        options.version = version;
        const AnnotationMap none;
        const auto printer = make_printer(*self.manager, options, none);
        return text_of([&](std::ostream& out) { printer->print_atom(out, self.term); });
      },
      py::kw_only(), arg("version") = 2,
      "An atom or a negated one written out in full, without definitions.");
  term.def("label", &label, py::kw_only(), arg("label_prefix") = "",
           "The name under which terms_to_smtlib() defines the term.");
  module.def(
      "terms_to_smtlib",
      [](const std::vector<TermHandle>& terms, const std::string& logic, const std::string& status,
         const std::string& label_prefix, bool check_names, bool check_sat, py::handle attributes) {
        const Options options{2, true, logic, status, label_prefix, check_names, check_sat};
        return text_of([&](std::ostream& out) { print_terms(out, terms, options, attributes); });
      },
      arg("terms"), py::kw_only(), arg("logic") = "", arg("status") = "", arg("label_prefix") = "",
      arg("check_names") = true, arg("check_sat") = false, arg("attributes") = py::none(),
      "A script that defines each of the terms under its label and asserts true.");
  module.def(
      "write_terms",
      [](const std::vector<TermHandle>& terms, const py::object& file, const std::string& logic,
         const std::string& status, const std::string& label_prefix, bool check_names,
         bool check_sat, py::handle attributes) {
        const Options options{2, true, logic, status, label_prefix, check_names, check_sat};
        FileStream out(file);
        print_terms(out, terms, options, attributes);
        out.finish();
      },
      arg("terms"), arg("file"), py::kw_only(), arg("logic") = "", arg("status") = "",
      arg("label_prefix") = "", arg("check_names") = true, arg("check_sat") = false,
      arg("attributes") = py::none(), "Writes that script to a file object piece by piece.");
}

}  // namespace brum::python
