#include <pybind11/stl.h>

#include <memory>
#include <optional>
#include <string>

#include "file_stream.h"
#include "options.h"

namespace brum::python {

namespace {

/// A script that is written to a file object while a run goes on.
class Trace {
 public:
  Trace(ManagerPtr manager, py::object file, const Options& options, bool global_declarations)
      : manager_(std::move(manager)),
        file_(std::move(file)),
        attributes_(std::make_unique<AnnotationMap>()),
        printer_(make_version2_printer(*manager_, options, *attributes_)) {
    write([&](std::ostream& out) {
      if (global_declarations) {
        out << "(set-option :global-declarations true)\n";
      }
      printer_->print_start(out);
    });
  }

  void declare(py::handle object) {
    if (py::isinstance<SortHandle>(object)) {
      declare_sort(py::cast<const SortHandle&>(object));
    } else if (py::isinstance<TermHandle>(object)) {
      const auto& term = py::cast<const TermHandle&>(object);
      declare_symbol({term.manager, term.term->symbol});
    } else {
      declare_symbol(py::cast<const SymbolHandle&>(object));
    }
  }

  void annotate(const TermHandle& term, const Name& keyword, const Name& value) {
    require_owner(manager_, term);
    (*attributes_)[term.term].emplace_back(keyword.bytes, value.bytes);
  }

  void assert_formula(const TermHandle& formula, const std::optional<Name>& name) {
    require_owner(manager_, formula);
    if (formula.term->sort() != manager_->get_bool_type()) {
      throw TermManager::error("the term is no formula, its sort is " +
                               formula.term->sort()->to_short_str());
    }
    std::string attribute;
    if (name) {
      const std::string& text = name->bytes;
      if (text.empty() || text.find_first_of("|\\") != std::string::npos) {
        throw TermPrinter::error("an assertion cannot have the name `" + text + "`");
      }
      attribute = ":named ";
      attribute += is_reserved_word(text) ? "|" + text + "|" : printer_->to_smtlib(text);
    }
    write([&](std::ostream& out) { printer_->apitracer_print_term(out, formula.term, attribute); });
  }

  void command(const std::string& text) {
    write([&](std::ostream& out) { out << text << '\n'; });
  }

 private:
  void declare_sort(const SortHandle& sort) {
    require_owner(manager_, sort);
    if (!TermManager::is_uninterpreted_type(sort.sort)) {
      throw TermManager::error("only uninterpreted sorts are declared, not " +
                               sort.sort->to_short_str());
    }
    write([&](std::ostream& out) { printer_->print_type_declaration(out, sort.sort); });
  }

  void declare_symbol(const SymbolHandle& symbol) {
    require_owner(manager_, symbol);
    if (TermManager::is_interpreted(symbol.symbol)) {
      throw TermManager::error("an operator cannot be declared");
    }
    write([&](std::ostream& out) { printer_->print_symbol_declaration(out, symbol.symbol); });
  }

  /// Each piece is handed to the file at once: the run may end anywhere.
  template <class Print>
  void write(const Print& print) {
    FileStream out(file_);
    print(out);
    out.finish();
  }

  ManagerPtr manager_;
  py::object file_;
  std::unique_ptr<AnnotationMap> attributes_;
  std::unique_ptr<SmtLib2TermPrinter> printer_;
};

}  // namespace

void add_traces(py::module_& module) {
  using py::arg;
  py::class_<Trace>(module, "Trace",
                    "A script that is written to a file object while an incremental run goes on.")
      .def(py::init([](const ManagerPtr& manager, const py::object& file, bool define_fun,
                       const std::string& logic, const std::string& status,
                       const std::string& label_prefix, bool global_declarations) {
             const Options options{2, define_fun, logic, status, label_prefix, false, false};
             return std::make_unique<Trace>(manager, file, options, global_declarations);
           }),
           arg("manager").none(false), arg("file"), py::kw_only(), arg("define_fun") = true,
           arg("logic") = "", arg("status") = "", arg("label_prefix") = "",
           arg("global_declarations") = true)
      .def("declare", &Trace::declare, arg("what"),
           "Declares an uninterpreted sort, a symbol, or the symbol of a constant.")
      .def("annotate", &Trace::annotate, arg("term"), arg("keyword"), arg("value"),
           "From now on prints the attribute with the term.")
      .def("assert_", &Trace::assert_formula, arg("formula"), arg("name") = py::none(),
           "Asserts a formula, under a name of its own if one is given.")
      .def(
          "push",
          [](Trace& self, std::size_t levels) {
            self.command("(push " + std::to_string(levels) + ")");
          },
          arg("levels") = 1)
      .def(
          "pop",
          [](Trace& self, std::size_t levels) {
            self.command("(pop " + std::to_string(levels) + ")");
          },
          arg("levels") = 1)
      .def("check_sat", [](Trace& self) { self.command("(check-sat)"); });
}

}  // namespace brum::python
