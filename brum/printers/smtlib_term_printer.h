#ifndef BRUM_PRINTERS_SMTLIB_TERM_PRINTER_H
#define BRUM_PRINTERS_SMTLIB_TERM_PRINTER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "brum/printers/term_printer.h"
#include "brum/printers/text_piece.h"
#include "brum/utils/export.h"

namespace brum {

/// Prints terms as SMT-LIB text: a benchmark of version 1.2 or a script of version 2.6.
///
///     SmtLibTermPrinter printer(true, &mgr, "QF_LRA", "unknown");
///     printer.print_formula(std::cout, formula);
///
/// Shared subterms become `let` bindings (in version 1.2 `flet` for formulas) around the formula.
/// Uninterpreted sorts are declared under invented names U0, U1, ...; user symbols keep their
/// names, quoted where the version demands it. The names that the printer works out are kept for
/// its lifetime.
///
/// Numbers in the text are plain decimals whatever the locale and the flags of the stream.
class BRUM_EXPORT SmtLibTermPrinter : public TermPrinter {
 public:
  /// Makes a printer for version 1.2 (`is_v1` true) or version 2. The logic's name and the status
  /// go into the header as they are; an empty one leaves its line out.
  SmtLibTermPrinter(bool is_v1, TermManager* manager, const std::string& logic_name,
                    const std::string& benchmark_status);

  // The hooks; smtlib_document.cpp has the framing, smtlib_sorts.cpp the declarations.

  /// Prints `term` as one expression. With `newlines` each definition and the formula end with a
  /// line break; without it there is none, but for the one at the end that SmtLib2TermPrinter
  /// always writes. Nothing is declared.
  void print_single_term(std::ostream& out, const Term* term, bool newlines) override;

  /// Gives `?def_7` or `$def_7` (version 1.2, the latter for formulas) or `.def_7` (version 2) for
  /// the term with id 7, with as many underscores after it as keep it apart from user symbols.
  void get_define_label(const Term* term, std::string& label) override;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override;

  /// Declares an uninterpreted sort under the next invented name. A sort declared again gets a new
  /// name, which holds from then on, also in the texts of sorts made of it.
  void print_type_declaration(std::ostream& out, const DataType* type) override;

  /// Declares a user symbol. Throws error, after the name was written, for a sort that the version
  /// cannot express.
  void print_symbol_declaration(std::ostream& out, const Symbol* symbol) override;

  void print_define_section_start(std::ostream& out) override;
  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override;
  void print_define_end(std::ostream& out, const Term* term) override;
  void print_start(std::ostream& out) override;
  void print_end(std::ostream& out) override;
  void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override;

  /// Prints an atom, or a negated one, written out in full: without definitions, conversions to
  /// Real or differences for congruences. Boolean structure, also below an atom, is printed by
  /// print_term() instead. The text of a term that is shared again and again is exponential in the
  /// number of its subterms.
  void print_atom(std::ostream& out, const Term* term);

  // Spelling. Each gives the text of its argument in the printer's version.

  /// Throws error for an interpreted symbol that SMT-LIB does not know.
  std::string to_smtlib(const Symbol* symbol);

  /// Turns a user's name into an identifier. Version 1.2: bytes outside the alphabet become
  /// numbers. Version 2: put between bars where it is no simple symbol; bars and backslashes in it
  /// are not looked at, and the empty name stays empty (check_names() tells which names are safe).
  std::string to_smtlib(const std::string& name) const;

  /// Gives the empty text for a sort that has none (an undeclared uninterpreted sort, a function
  /// type in version 2). Throws error for a sort that version 1.2 cannot express.
  std::string to_smtlib(const DataType* sort);

  /// Writes negative numbers and fractions as applications.
  std::string to_smtlib(QNumber value) const;

  /// True for every symbol but the user's.
  bool is_interpreted(const Symbol* symbol) const { return TermManager::is_interpreted(symbol); }

 protected:
  /// Gives a label: `prefix` (as ".def_"), the id of `term`, and as many underscores as it takes to
  /// be no user symbol's name.
  std::string make_label(std::string_view prefix, const Term* term) const;

  /// Replaces `label` by the same.
  void make_label(std::string_view prefix, const Term* term, std::string& label) const;

  /// The same text as to_smtlib(sort), without a copy: the one that type_names holds.
  const std::string& kept_sort_text(const DataType* sort);

  /// Version 1.2 spelling, else version 2.
  bool v1_format;

  std::string logic;
  std::string status;

  /// The number of bindings opened and not yet closed in the current document.
  std::int32_t open_lets = 0;

  /// The texts of symbols: the distinguished ones from the start, others once worked out. Names of
  /// user symbols and of tag_names are not kept here.
  hsh::HashMap<const Symbol*, std::string> symbol_names;

  /// The names of operators that have no indices. Read only after construction.
  hsh::HashMap<SymbolTag::tag, std::string> tag_names;

  /// The texts of sorts, once worked out or invented.
  hsh::HashMap<const DataType*, std::string> type_names;

  /// The number of the next invented sort name.
  std::int32_t sort_counter = 0;

  /// True while print_single_term() runs: no framing, no declarations.
  bool single_term = false;

  /// Line breaks rather than blanks after definitions and around the formula.
  bool use_newlines = true;

  /// Memory in which the hooks put a piece of text together before they write it at once, where it
  /// does not fit into the stream's own buffer. For write_parts() and the like.
  PieceMemory piece_memory;

 private:
  void name_distinguished_symbols();
  void name_operators();
  std::string indexed_operator(const Symbol* symbol) const;
  std::string numeral(const Symbol* symbol) const;

  /// The same text as to_smtlib(symbol), without a copy: valid until the next call.
  std::string_view name_of(const Symbol* symbol);

  /// The text of a symbol in symbol_names or tag_names, worked out now if need be; null for a
  /// user's symbol that neither holds. The first knows the recent ones.
  const std::string* kept_name(const Symbol* symbol);
  const std::string* look_up_name(const Symbol* symbol);

  std::string v1_sort_text(const DataType* sort);
  std::string v1_function_text(const DataType* sort);
  std::string v1_array_text(const DataType* sort) const;
  std::string v2_sort_text(const DataType* sort, bool trust_kept_arrays);
  const std::string& sort_text(const DataType* sort);
  std::string& text_of(const DataType* sort);
  void refresh_type_names();

  bool is_connective(const Symbol* symbol) const;
  bool is_printed_flat(const Term* term) const;

  /// An operator and its text in symbol_names or tag_names.
  struct RecentName {
    const Symbol* symbol = nullptr;
    const std::string* text = nullptr;
  };

  std::array<RecentName, 16> recent_names_;  // by address, so that most names need no look-up
  std::uint64_t version_of_recent_ = 0;      // of symbol_names and tag_names together
  bool type_names_stale_ = false;  // a sort was renamed: texts of sorts made of it may be old
  std::string quoted_name_;        // the last name from name_of() that nothing else holds
};

}  // namespace brum

#endif  // BRUM_PRINTERS_SMTLIB_TERM_PRINTER_H
