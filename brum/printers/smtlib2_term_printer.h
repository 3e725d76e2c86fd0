#ifndef BRUM_PRINTERS_SMTLIB2_TERM_PRINTER_H
#define BRUM_PRINTERS_SMTLIB2_TERM_PRINTER_H

#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/terms/annotation_map.h"
#include "brum/utils/export.h"

namespace brum {

/// Prints scripts of SMT-LIB 2.6 with what SmtLibTermPrinter lacks: shared subterms as `define-fun`
/// commands, attributes around terms, scripts that name several terms, and API traces.
///
///     SmtLib2TermPrinter printer(&mgr, "QF_LIA", "", true, nullptr);
///     printer.print_terms(std::cout, {first, second});
///
/// A single term (print_single_term) is always printed with `let`, whatever the mode.
class BRUM_EXPORT SmtLib2TermPrinter : public SmtLibTermPrinter {
 public:
  /// Makes a printer that defines shared subterms by `define-fun` commands (`define_fun` true) or
  /// by `let` around the assertion. `attributes`, which may be null, must outlive the printer: a
  /// term with an entry in it is printed as `(! term :keyword value ...)`, also when the entry is
  /// empty.
  SmtLib2TermPrinter(TermManager* manager, const std::string& logic_name,
                     const std::string& benchmark_status, bool define_fun,
                     const AnnotationMap* attributes);

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override;
  void print_define_section_start(std::ostream& out) override;
  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override;
  void print_define_end(std::ostream& out, const Term* term) override;
  void print_end(std::ostream& out) override;
  void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override;

  /// Prints a script that names each of `terms` by its label and asserts `true`: header,
  /// declarations, the definitions of shared subterms and of the terms, in their order. A compound
  /// term is defined once however often it is listed; a constant listed twice is defined twice,
  /// which no solver accepts.
  void print_terms(std::ostream& out, const std::vector<const Term*>& terms);

  /// Prints the assertion of `term`, for a script whose header and declarations the caller writes
  /// (the sorts through print_type_declaration() of this printer). `name`, when not empty, is
  /// written as it stands after the term inside `(! ...)`: a whole attribute such as `:named a`.
  ///
  /// With `define-fun` the definitions of earlier calls are remembered and referred to: the text
  /// must go to one script, in which they are still in force.
  ///
  /// After an exception the printer prints traces again, but text already written stays: in `let`
  /// mode the bindings that it left open are closed by the next piece.
  void apitracer_print_term(std::ostream& out, const Term* term, const std::string& name);

 protected:
  /// Shared subterms become `define-fun` commands rather than `let` bindings.
  bool use_define_fun;

  /// True while apitracer_print_term() runs.
  bool in_api_trace = false;

  /// Written after the asserted term inside `(! ...)`; empty but while apitracer_print_term() runs.
  std::string assert_attribute;

  /// What traces have handled; kept from call to call with `define-fun`.
  DefinitionMap trace_definitions;

  /// The caller's attributes; may be null.
  const AnnotationMap* annotations;

 private:
  /// True exactly while print_single_term() runs.
  bool is_plain_single_term() const { return single_term && !in_api_trace; }

  /// True while definitions are commands of their own.
  bool is_define_fun_mode() const { return use_define_fun && !is_plain_single_term(); }

  void open_assertion(std::ostream& out) const;
  void forget_definitions();

  const Term* last_traced_ = nullptr;  // with `let`: what trace_definitions was filled for
};

}  // namespace brum

#endif  // BRUM_PRINTERS_SMTLIB2_TERM_PRINTER_H
