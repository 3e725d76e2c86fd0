#include "brum/printers/term_printer.h"

#include "brum/printers/declarations.h"
#include "brum/printers/reserve_text.h"
#include "brum/printers/symbol_collector.h"
#include "brum/printers/term_texts.h"

namespace brum {

namespace {

/// Writes the definitions below `term` that `defs` lacks and gives the text of `term`. Counts into
/// `counts`, which `rule` may refer to.
std::string write_term(TermPrinter& printer, std::ostream& out, const Term* term,
                       DefinitionMap& defs, ReferenceCounts& counts, const DefinitionRule& rule) {
  TermOrder order;
  counts.add_term(
      term, &defs, [](const Term*) {}, [&](const Term* done) { order.push_back(done); });
  reserve_text(out, counts.expected_text_bytes());
  TermTexts texts(printer, out, rule, defs);
  if (!order.empty()) {
    texts.reserve_entries(order.size());
  }
  return texts.write(term, order);
}

}  // namespace

void TermPrinter::print_define_section_end(std::ostream& /*out*/) {}

void TermPrinter::print_formula(std::ostream& out, const Term* formula) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  SymbolCollector collector(symbols, types);
  ReferenceCounts counts;
  TermOrder order;
  counts.add_term(
      formula, nullptr, [&](const Term* term) { collector.add_symbol(term->symbol); },
      [&](const Term* term) { order.push_back(term); });
  collector.end_term();
  reserve_text(out, counts.expected_text_bytes());
  print_start(out);
  print_declarations(*this, out, types, symbols);
  print_define_section_start(out);
  const DefinitionRule rule = DefinitionRule::for_formula(counts);
  TermTexts texts(*this, out, rule, counts);
  print_formula_term(out, texts.write(formula, order), formula);
  print_define_section_end(out);
  print_end(out);
}

void TermPrinter::print_term(std::ostream& out, const Term* term, bool flag) {
  print_single_term(out, term, flag);
}

void TermPrinter::collect_symbols_and_types(const Term* term, hsh::HashSet<const Symbol*>& symbols,
                                            hsh::HashSet<const DataType*>& types) {
  SymbolCollector(symbols, types).add_term(term);
}

std::string TermPrinter::do_print_term(std::ostream& out, const Term* term, DefinitionMap& defs) {
  ReferenceCounts counts;
  return write_term(*this, out, term, defs, counts, DefinitionRule::for_formula(counts));
}

std::string TermPrinter::do_print_term(std::ostream& out, const Term* term, DefinitionMap& defs,
                                       const DefinitionRule& rule) {
  ReferenceCounts counts;
  return write_term(*this, out, term, defs, counts, rule);
}

}  // namespace brum
