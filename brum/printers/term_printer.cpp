#include "brum/printers/term_printer.h"

#include "brum/printers/symbol_collector.h"
#include "brum/printers/term_text_walk.h"

namespace brum {

void TermPrinter::print_define_section_end(std::ostream& /*out*/) {}

void TermPrinter::print_formula(std::ostream& out, const Term* formula) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  SymbolCollector collector(symbols, types);
  ReferenceCounts counts;
  counts.add_term_and_call(formula, [&](const Term* term) { collector.add_symbol(term->symbol); });
  print_start(out);
  for (const DataType* type : types) {
    print_type_declaration(out, type);
  }
  for (const Symbol* symbol : symbols) {
    print_symbol_declaration(out, symbol);
  }
  print_define_section_start(out);
  const DefinitionRule rule = DefinitionRule::for_formula(counts);
  DefinitionMap defs;
  TermTextWalk walk(*this, out, defs, rule, InlineTexts::release);
  walk.reserve(counts.num_terms());
  print_formula_term(out, walk.run(formula), formula);
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
  counts.add_term(term, &defs);
  return do_print_term(out, term, defs, DefinitionRule::for_formula(counts));
}

std::string TermPrinter::do_print_term(std::ostream& out, const Term* term, DefinitionMap& defs,
                                       const DefinitionRule& rule) {
  return TermTextWalk(*this, out, defs, rule, InlineTexts::keep).run(term);
}

}  // namespace brum
