#ifndef BRUM_FUZZ_READ_AND_PRINT_H
#define BRUM_FUZZ_READ_AND_PRINT_H

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "brum/printers/check_names.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "fuzz/fuzz_input.h"

namespace brum::fuzz {

/// Above this many terms a text is read but not printed, so that an input takes little time.
inline constexpr std::size_t most_terms_to_print = 20000;

/// A text and the sorts by the names that its printer invented.
struct PrintedFormula {
  std::string text;
  hsh::HashMap<std::string, const DataType*> sorts;
};

inline void print_in(bool v1, TermManager& mgr, const Term* formula, PrintedFormula& printed) {
  SmtLibTermPrinter printer(v1, &mgr, "", "");
  std::ostringstream out;
  printer.print_formula(out, formula);
  printed.text = out.str();
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> sorts;
  TermPrinter::collect_symbols_and_types(formula, symbols, sorts);
  for (const DataType* sort : sorts) {
    if (TermManager::is_uninterpreted_type(sort))
      printed.sorts[printer.to_smtlib(sort)] = sort;
  }
}

template <class Reader>
const Term* read_printed(TermManager& mgr, const PrintedFormula& printed) {
  ReaderOptions options;
  options.sorts = &printed.sorts;
  std::istringstream in(printed.text);
  Script script;
  try {
    Reader(mgr, options).read(in, script);
  } catch (const Exception& error) {
    require(false, error.what(), printed.text);
  }
  const Query query = script.at_end();
  require(query.assertions.size() == 1, "a printed formula is one assertion", printed.text);
  return query.assertions.front();
}

/// Whether every symbol of the formula is written so that it stands for itself.
inline bool has_safe_names(TermManager& mgr, const Term* formula, bool v1) {
  return check_names(mgr, {formula}, v1).empty();
}

/// What is printed is read again, and in the end printing and reading change nothing more. (At
/// first an integral numeral of sort Real becomes an Int, and version 1 rewrites names, whose
/// numbers of bytes above 127 it rewrites once more.)
template <class Reader>
void print_and_read(bool v1, TermManager& mgr, const Term* formula) {
  const int rounds = v1 ? 4 : 2;
  std::string text;
  for (int round = 0; round < rounds; ++round) {
    PrintedFormula printed;
    try {
      print_in(v1, mgr, formula, printed);
    } catch (const TermPrinter::error&) {
      require(v1, "version 2 writes what a reader gives");
      return;
    }
    if (!has_safe_names(mgr, formula, v1))
      return;
    const Term* read = read_printed<Reader>(mgr, printed);
    if (read == formula)
      return;
    formula = read;
    text.swap(printed.text);
  }
  require(false, "a formula comes back", text);
}

inline const Term* conjunction(TermManager& mgr, const Query& query) {
  const Term* formula = mgr.make_true();
  for (const Term* assertion : query.assertions)
    formula = mgr.make_and(formula, assertion);
  for (const Term* assumption : query.assumptions)
    formula = mgr.make_and(formula, assumption);
  return formula;
}

/// An error is at a place of the text.
inline void check_error(const ReadError& error, std::string_view text) {
  std::size_t lines = 1;
  for (const char byte : text)
    lines += byte == '\n' ? 1U : 0U;
  require(error.position().line >= 1 && error.position().line <= lines, "a line of the text",
          error.what());
  require(error.position().column >= 1 && error.position().column <= text.size() + 1,
          "a column of the text", error.what());
  require(!error.message().empty(), "an error has a message");
}

/// Reads any bytes as a text; what was understood is printed in both versions and read again.
template <class Reader>
void read_and_print(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  TermManager mgr;
  Script script;
  try {
    std::istringstream in(text);
    Reader(mgr).read(in, script);
  } catch (const ReadError& error) {
    check_error(error, text);
    return;
  }
  if (mgr.num_terms() > most_terms_to_print)
    return;
  for (std::size_t number = 0; number <= script.num_queries() && number < 3; ++number) {
    const Query query = number == 0 ? script.at_end() : script.query(number);
    const Term* formula = conjunction(mgr, query);
    print_and_read<SmtLib2Reader>(false, mgr, formula);
    print_and_read<SmtLib1Reader>(true, mgr, formula);
  }
}

/// Reads any bytes as one term.
template <class Reader>
void read_as_term(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  TermManager mgr;
  mgr.declare("x", mgr.get_int_type());
  mgr.declare("p", mgr.get_bool_type());
  mgr.declare("v", mgr.make_bv_type(8));
  ReaderOptions options;
  options.use_signature = true;
  try {
    std::istringstream in(text);
    const Term* term = Reader(mgr, options).read_term(in);
    require(term != nullptr, "a term that was read is there");
  } catch (const ReadError& error) {
    check_error(error, text);
  }
}

}  // namespace brum::fuzz

#endif  // BRUM_FUZZ_READ_AND_PRINT_H
