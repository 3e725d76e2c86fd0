#ifndef BRUM_TESTS_READERS_READING_H
#define BRUM_TESTS_READERS_READING_H

#include <sstream>
#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/terms/term_manager.h"

namespace brum::testing {

inline void read_into(Script& script, TermManager& mgr, const std::string& text,
                      const ReaderOptions& options = {}) {
  std::istringstream in(text);
  SmtLib2Reader(mgr, options).read(in, script);
}

/// Gives the assertions of a script without push and pop.
inline std::vector<const Term*> assertions_of(TermManager& mgr, const std::string& text) {
  Script script;
  read_into(script, mgr, text);
  return script.at_end().assertions;
}

/// Gives the message that reading the text ends with.
inline std::string error_of(const std::string& text) {
  TermManager mgr;
  Script script;
  try {
    read_into(script, mgr, text);
  } catch (const ReadError& error) {
    return error.what();
  }
  return "no error";
}

/// Gives a term as version 2 writes it. For terms without shared compound subterms.
inline std::string text_of(TermManager& mgr, const Term* term) {
  std::ostringstream out;
  SmtLibTermPrinter(false, &mgr, "", "").print_single_term(out, term, false);
  return out.str();
}

/// Gives the text of the one assertion of a script.
inline std::string assertion_text(const std::string& text) {
  TermManager mgr;
  const std::vector<const Term*> assertions = assertions_of(mgr, text);
  return assertions.size() == 1 ? text_of(mgr, assertions.front()) : "not one assertion";
}

}  // namespace brum::testing

#endif  // BRUM_TESTS_READERS_READING_H
