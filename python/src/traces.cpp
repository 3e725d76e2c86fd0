#include <pybind11/stl.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "brum/printers/smtlib_identifiers.h"
#include "file_stream.h"
#include "options.h"

namespace brum::python {

namespace {

/// A script that is written to a file object while a run goes on.
///
/// A write that fails ends it: nobody knows how much of the text arrived, and the printer refers to
/// definitions, or closes brackets, that the file may not hold.
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
    require_open();
    if (py::isinstance<SortHandle>(object)) {
      declare_sort(py::cast<const SortHandle&>(object));
    } else if (py::isinstance<TermHandle>(object)) {
      const auto& term = py::cast<const TermHandle&>(object);
      declare_symbol({term.manager, term.term->symbol});
    } else if (py::isinstance<SymbolHandle>(object)) {
      declare_symbol(py::cast<const SymbolHandle&>(object));
    } else {
      throw py::type_error("a sort, a symbol or a constant is declared, not " +
                           std::string(py::str(py::type::handle_of(object).attr("__name__"))));
    }
  }

  void annotate(const TermHandle& term, const Name& keyword, const Name& value) {
    require_open();
    require_owner(manager_, term);
    (*attributes_)[term.term].emplace_back(keyword.bytes, value.bytes);
  }

  void assert_formula(const TermHandle& formula, const std::optional<Name>& name) {
    require_open();
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
      attribute = ":named " + v2_symbol(text);
    }
    write([&](std::ostream& out) { printer_->apitracer_print_term(out, formula.term, attribute); });
  }

  /// What the trace refers to, for the garbage collector.
  py::handle file() const { return file_; }

  /// Lets go of the file, which ends the trace: the garbage collector breaks a cycle here.
  void drop_file() {
    state_ = State::ended;
    const py::object dropped = std::move(file_);
  }

  void command(const std::string& text) {
    require_open();
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

  /// `writing` is seen by a file whose write() calls the trace.
  enum class State : std::uint8_t { open, writing, ended };

  void require_open() const {
    if (state_ == State::ended) {
      throw Exception("the trace ended with a failed write");
    }
    if (state_ == State::writing) {
      throw Exception("the trace is being written");
    }
  }

  /// Each piece is handed to the file at once: the run may end anywhere.
  template <class Print>
  void write(const Print& print) {
    FileStream out(file_);
    state_ = State::writing;
    try {
      print(out);
      out.finish();
    } catch (...) {
      state_ = State::ended;
      throw;
    }
    state_ = State::open;
  }

  ManagerPtr manager_;
  py::object file_;
  std::unique_ptr<AnnotationMap> attributes_;
  std::unique_ptr<SmtLib2TermPrinter> printer_;
  State state_ = State::open;
};

}  // namespace

}  // namespace brum::python

namespace pybind11::detail {

/// What `__new__` alone made is no trace.
template <>
class type_caster<brum::python::Trace> : public type_caster_base<brum::python::Trace> {
 public:
  bool load(handle source, bool convert) {
    return brum::python::is_made(source) &&
           type_caster_base<brum::python::Trace>::load(source, convert);
  }
};

}  // namespace pybind11::detail

namespace brum::python {

namespace {

// The garbage collector asks a trace for its file, as the file may refer to the trace.

/// Gives null while the object has no trace, or shares its memory with other classes.
Trace* trace_of(PyObject* self) {
  const auto* instance = reinterpret_cast<py::detail::instance*>(self);
  if (!instance->simple_layout || !instance->simple_holder_constructed) {
    return nullptr;
  }
  return static_cast<Trace*>(instance->simple_value_holder[0]);
}

int traverse(PyObject* self, visitproc visit, void* arg) {
  Py_VISIT(Py_TYPE(self));
  if (const Trace* trace = trace_of(self)) {
    Py_VISIT(trace->file().ptr());
  }
  return 0;
}

int clear(PyObject* self) {
  if (Trace* trace = trace_of(self)) {
    trace->drop_file();
  }
  return 0;
}

/// The collector may run while the trace is taken apart, and must not meet it then.
void deallocate(PyObject* self) {
  PyObject_GC_UnTrack(self);
  py::detail::pybind11_object_dealloc(self);
}

py::custom_type_setup garbage_collected() {
  return py::custom_type_setup([](PyHeapTypeObject* type) {
    type->ht_type.tp_flags |= Py_TPFLAGS_HAVE_GC;
    type->ht_type.tp_traverse = &traverse;
    type->ht_type.tp_clear = &clear;
    type->ht_type.tp_dealloc = &deallocate;
  });
}

}  // namespace

void add_traces(py::module_& module) {
  using py::arg;
  py::class_<Trace> trace(
      module, "Trace", garbage_collected(),
      "A script that is written to a file object while an incremental run goes on. A write that "
      "fails ends the trace: every later call raises Error.");
  refuse_pickling(trace);
  trace
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
