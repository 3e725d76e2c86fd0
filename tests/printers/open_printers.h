#ifndef BRUM_TESTS_PRINTERS_OPEN_PRINTERS_H
#define BRUM_TESTS_PRINTERS_OPEN_PRINTERS_H

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"

namespace brum::testing {

/// A printer whose state and walk a test may reach.
class OpenPrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::logic;
  using SmtLibTermPrinter::open_lets;
  using SmtLibTermPrinter::single_term;
  using SmtLibTermPrinter::SmtLibTermPrinter;
  using SmtLibTermPrinter::sort_counter;
  using SmtLibTermPrinter::status;
  using SmtLibTermPrinter::symbol_names;
  using SmtLibTermPrinter::tag_names;
  using SmtLibTermPrinter::type_names;
  using SmtLibTermPrinter::use_newlines;
  using SmtLibTermPrinter::v1_format;
  using TermPrinter::do_print_term;
  using TermPrinter::mgr;
};

/// The same for the printer of version 2 scripts.
class OpenPrinter2 : public SmtLib2TermPrinter {
 public:
  using SmtLib2TermPrinter::annotations;
  using SmtLib2TermPrinter::assert_attribute;
  using SmtLib2TermPrinter::in_api_trace;
  using SmtLib2TermPrinter::SmtLib2TermPrinter;
  using SmtLib2TermPrinter::trace_definitions;
  using SmtLib2TermPrinter::use_define_fun;
  using SmtLibTermPrinter::open_lets;
  using SmtLibTermPrinter::single_term;
  using SmtLibTermPrinter::use_newlines;
  using SmtLibTermPrinter::v1_format;
  using TermPrinter::do_print_term;
};

/// Gives what `write` writes to the stream it is called with.
inline std::string text_of(const std::function<void(std::ostream&)>& write) {
  std::ostringstream out;
  write(out);
  return out.str();
}

inline std::string document(TermPrinter& printer, const Term* formula) {
  return text_of([&](std::ostream& out) { printer.print_formula(out, formula); });
}

inline std::string single_term(TermPrinter& printer, const Term* term, bool newlines = false) {
  return text_of([&](std::ostream& out) { printer.print_single_term(out, term, newlines); });
}

/// The single term of a new printer of version 1.2 or 2.
inline std::string v1_text(TermManager& mgr, const Term* term) {
  SmtLibTermPrinter printer(true, &mgr, "", "");
  return single_term(printer, term);
}
inline std::string v2_text(TermManager& mgr, const Term* term) {
  SmtLibTermPrinter printer(false, &mgr, "", "");
  return single_term(printer, term);
}

/// Gives the message of the TermPrinter::error that `call` throws, "no error" if it throws none.
inline std::string error_of(const std::function<void()>& call) {
  try {
    call();
  } catch (const TermPrinter::error& caught) {
    return caught.what();
  }
  return "no error";
}

/// Puts the declarations of the heads of some terms into the order in which a document of `terms`
/// has them. That order is the one of a hash set, which follows addresses and so differs from run
/// to run.
inline std::string declarations(const std::vector<const Term*>& terms,
                                const std::vector<std::pair<const Term*, std::string>>& lines) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  for (const Term* term : terms) {
    TermPrinter::collect_symbols_and_types(term, symbols, types);
  }
  std::string text;
  for (const Symbol* symbol : symbols) {
    for (const auto& [term, line] : lines) {
      if (term->symbol == symbol) {
        text += line;
      }
    }
  }
  return text;
}

}  // namespace brum::testing

#endif
