#ifndef BRUM_PRINTERS_DOT_TERM_PRINTER_H
#define BRUM_PRINTERS_DOT_TERM_PRINTER_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/term_printer.h"
#include "brum/terms/term_index.h"
#include "brum/utils/export.h"

namespace brum {

/// Draws the graph of a formula in the language of Graphviz: a node for each distinct term, with an
/// edge to each of its arguments, from left to right.
///
///     DotTermPrinter printer(&mgr);
///     printer.print_formula(std::cout, formula);            // everything
///     printer.print_graph(std::cout, formula, 100);         // the 100 nodes nearest the formula
///
/// The node of a term is called n and the term's id. Constants and numerals are boxes, other terms
/// ellipses that bear their operator, spelt as in SMT-LIB 2.6. A compound term that several places
/// refer to is filled, and bears the label that SmtLibTermPrinter gives it. The formula has a thick
/// line.
///
/// Also a complete example of a printer for another language. What stands for a term in the texts
/// of others is its node's name where the node is written already, else the lines that write it
/// and what is below it; the term around it writes these lines before its own.
class BRUM_EXPORT DotTermPrinter : public TermPrinter {
 public:
  /// Draws terms of `manager`, which must outlive the printer.
  explicit DotTermPrinter(TermManager* manager);

  /// Draws `formula` as print_formula() does, but of its terms only `most_nodes` (at least one), in
  /// the order of their distance from it. Where arguments are left out stands a node with three
  /// dots. Throws error for an interpreted symbol that SMT-LIB does not know, and std::bad_alloc.
  void print_graph(std::ostream& out, const Term* formula, std::size_t most_nodes);

  /// Writes the nodes and edges of `term` without the graph around them; `flag` has no meaning.
  void print_single_term(std::ostream& out, const Term* term, bool flag) override;

  void get_define_label(const Term* term, std::string& label) override;
  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override;
  void print_type_declaration(std::ostream& out, const DataType* type) override;

  /// Writes the node of a constant or numeral.
  void print_symbol_declaration(std::ostream& out, const Symbol* symbol) override;

  void print_define_section_start(std::ostream& out) override;
  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override;
  void print_define_end(std::ostream& out, const Term* term) override;
  void print_start(std::ostream& out) override;
  void print_end(std::ostream& out) override;
  void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override;

 private:
  void choose_nodes(const Term* formula, std::size_t most_nodes);
  bool is_shown(const Term* term) const { return !is_limited_ || chosen_.get(term); }

  void begin_drawing();
  void count_edge(const Term* argument);
  std::string label_of(const Term* term);
  void write_shared_nodes(std::ostream& out);

  SmtLibTermPrinter spelling_;

  bool is_limited_ = false;  // only the chosen terms are shown
  TermIndex<bool> chosen_;

  // Of the graph being drawn:
  TermIndex<std::uint8_t> edges_to_;  // 0, 1 or more
  std::vector<const Term*> shared_;   // compound terms with more than one edge to them
};

}  // namespace brum

#endif  // BRUM_PRINTERS_DOT_TERM_PRINTER_H
