#ifndef BRUM_TESTS_PRINTERS_RECORDING_PRINTER_H
#define BRUM_TESTS_PRINTERS_RECORDING_PRINTER_H

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "brum/printers/term_printer.h"

namespace brum::testing {

/// A printer of a language of its own that records every call of a hook. Terms are recorded as t
/// and their id, streams as `document` for the stream given to the entry point and `memory` for any
/// other.
class RecordingPrinter : public TermPrinter {
 public:
  using TermPrinter::do_print_term;
  using TermPrinter::TermPrinter;

  /// Thrown by print_term_and_children() at the term `fails_at`.
  struct Failure : std::runtime_error {
    Failure() : std::runtime_error("hook") {}
  };

  std::vector<std::string> calls;
  const std::ostream* document = nullptr;
  const Term* fails_at = nullptr;

  void print_single_term(std::ostream& out, const Term* term, bool flag) override {
    record("single", out, name(term) + (flag ? " true" : " false"));
    out << "single";
  }
  void get_define_label(const Term* term, std::string& label) override {
    calls.push_back("label " + name(term) + (label.empty() ? "" : " over " + label));
    label = "L" + std::to_string(term->id);
  }
  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    std::string text = term->symbol->name;
    const char* separator = "(";
    for (const std::string& child : children) {
      text += separator + child;
      separator = ",";
    }
    text += children.empty() ? "" : ")";
    record("term", out, name(term) + " " + text);
    if (term == fails_at) {
      throw Failure();
    }
    out << text;
  }
  void print_type_declaration(std::ostream& out, const DataType* type) override {
    record("type", out, type->to_str());
  }
  void print_symbol_declaration(std::ostream& out, const Symbol* symbol) override {
    record("symbol", out, symbol->name);
  }
  void print_define_section_start(std::ostream& out) override {
    record("section start", out, "");
    out << "{";
  }
  void print_define_section_end(std::ostream& out) override {
    record("section end", out, "");
    out << "}";
  }
  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override {
    record("define", out, name(term) + " " + label);
    out << label << "=";
  }
  void print_define_end(std::ostream& out, const Term* term) override {
    record("defined", out, name(term));
    out << ";";
  }
  void print_start(std::ostream& out) override {
    record("start", out, "");
    out << "<";
  }
  void print_end(std::ostream& out) override {
    record("end", out, "");
    out << ">";
  }
  void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override {
    record("formula", out, name(term) + " " + text);
    out << text;
  }

  /// The document of `formula`.
  std::string print(const Term* formula) {
    std::ostringstream out;
    document = &out;
    print_formula(out, formula);
    return out.str();
  }

 private:
  static std::string name(const Term* term) { return "t" + std::to_string(term->id); }
  void record(const std::string& hook, const std::ostream& out, const std::string& what) {
    calls.push_back(hook + (&out == document ? " document" : " memory") +
                    (what.empty() ? "" : " " + what));
  }
};

}  // namespace brum::testing

#endif
