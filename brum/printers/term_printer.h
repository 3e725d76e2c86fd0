#ifndef BRUM_PRINTERS_TERM_PRINTER_H
#define BRUM_PRINTERS_TERM_PRINTER_H

#include <ostream>
#include <string>
#include <vector>

#include "brum/printers/definition_map.h"
#include "brum/printers/definition_rule.h"
#include "brum/terms/term_manager.h"
#include "brum/utils/exception.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// The abstract base of term printers: it decides what of a document is written when, the hooks of
/// a concrete printer decide how it is spelt.
///
/// A document of one formula is, in this order: the start; the declarations of its sorts, then of
/// its symbols, each in the order of the hash set they were collected in; the start of the section
/// of definitions; the definitions of subterms; the formula; the end of the section; the end.
///
/// Every definition is written before any text that refers to its label, and none inside another.
/// A subterm is handled once per DefinitionMap. The walk keeps its own stack: never recurse on
/// terms, they may be millions deep. Time, memory and text are linear in the number of distinct
/// terms, nested depth and shared subterms notwithstanding.
///
/// A printer prints terms of the one manager it was made for, and is used by one thread at a time;
/// no other thread may change the manager meanwhile. The stream's state is never looked at. An
/// exception leaves at once whatever function it arises in; what was written stays on the stream,
/// and the printer may be used again.
class BRUM_EXPORT TermPrinter {
 public:
  /// Thrown by the hooks for what the format cannot express.
  class BRUM_EXPORT error : public Exception {
   public:
    explicit error(const std::string& msg) : Exception(msg) {}
  };

  /// Makes a printer of terms of `manager`, which must not be null and must outlive it.
  explicit TermPrinter(TermManager* manager) : mgr(manager) {}
  TermPrinter(const TermPrinter&) = delete;
  TermPrinter& operator=(const TermPrinter&) = delete;

  // The destructor and these twelve hooks, in this order, are all that is virtual. Classes compiled
  // elsewhere rely on the order of the slots: none is ever added, removed or moved.
  virtual ~TermPrinter() = default;

  // One term.

  /// Prints `term` as a bare expression, its definitions included, without the framing of a
  /// document. Called by users of the printer. With `flag` true the printer may break lines.
  virtual void print_single_term(std::ostream& out, const Term* term, bool flag) = 0;

  // The text of subterms.

  /// Replaces `label` by the name under which `term` is defined. Called before the definition is
  /// written; the same term must always get the same label.
  virtual void get_define_label(const Term* term, std::string& label) = 0;

  /// Writes the application of the symbol of `term` to arguments whose texts are `children`, in
  /// order. Called once for each handled term, with the stream of the document when the term is
  /// being defined, else with one into memory.
  virtual void print_term_and_children(std::ostream& out, const Term* term,
                                       const std::vector<std::string>& children) = 0;

  // Declarations.

  /// Declares `type`, or writes nothing when it needs no declaration. Called once for each
  /// collected sort, before all symbols.
  virtual void print_type_declaration(std::ostream& out, const DataType* type) = 0;

  /// Declares `symbol`, or writes nothing when it needs no declaration. Called once for each
  /// collected symbol, interpreted ones included.
  virtual void print_symbol_declaration(std::ostream& out, const Symbol* symbol) = 0;

  // The section of definitions.

  /// Opens the part of the document that holds the definitions and the formula.
  virtual void print_define_section_start(std::ostream& out) = 0;

  /// Closes it, after the formula. Writes nothing by default.
  virtual void print_define_section_end(std::ostream& out);

  /// Writes what comes before the text of the definition of `term` under `label`. What it opens,
  /// print_define_end() or print_end() closes.
  virtual void print_define_start(std::ostream& out, const std::string& label,
                                  const Term* term) = 0;

  /// Writes what comes after the text of the definition of `term`.
  virtual void print_define_end(std::ostream& out, const Term* term) = 0;

  // The document.

  /// Writes the header and resets what is counted per document. Called first.
  virtual void print_start(std::ostream& out) = 0;

  /// Closes what is still open and writes the footer. Called last.
  virtual void print_end(std::ostream& out) = 0;

  /// Writes the formula `term`, whose text is `text`; its definitions are written already.
  virtual void print_formula_term(std::ostream& out, const std::string& text, const Term* term) = 0;

  // What drives the hooks.

  /// Prints the document of one formula. Throws what the hooks throw and std::bad_alloc.
  void print_formula(std::ostream& out, const Term* formula);

  /// Prints one term as print_single_term() does, through its slot. With `flag` false the printers
  /// of this library break no line before the end of the expression.
  void print_term(std::ostream& out, const Term* term, bool flag);

  /// Adds to `symbols` every symbol of `term`, interpreted ones too, and to `types` the sorts that
  /// declarations of its user symbols name: the result and argument sorts, and the index and
  /// element sorts of arrays among them; never a function type. What the sets hold stays. Throws
  /// std::bad_alloc.
  static void collect_symbols_and_types(const Term* term, hsh::HashSet<const Symbol*>& symbols,
                                        hsh::HashSet<const DataType*>& types);

 protected:
  /// Gives the text by which `term` is to be written; before that, writes to `out` the definitions
  /// that this text needs and `defs` does not hold. Afterwards `defs` holds `term` and every
  /// subterm handled on the way, with their texts. After an exception `defs` holds what was handled
  /// so far.
  ///
  /// Shared are the subterms that the unhandled part of `term` refers to from several places.
  std::string do_print_term(std::ostream& out, const Term* term, DefinitionMap& defs);

  /// The same, with a rule of the driver's own for which subterms get a definition. Its counts must
  /// cover all places below `term` that refer to compound terms which `defs` does not hold.
  std::string do_print_term(std::ostream& out, const Term* term, DefinitionMap& defs,
                            const DefinitionRule& rule);

  /// The manager whose terms are printed; never changes.
  TermManager* mgr;
};

}  // namespace brum

#endif  // BRUM_PRINTERS_TERM_PRINTER_H
