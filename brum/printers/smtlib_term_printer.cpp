#include "brum/printers/smtlib_term_printer.h"

#include <initializer_list>
#include <string_view>
#include <utility>

#include "brum/terms/operator_names.h"

// Construction: what the printer knows from the start.

namespace brum {

SmtLibTermPrinter::SmtLibTermPrinter(bool is_v1, TermManager* manager,
                                     const std::string& logic_name,
                                     const std::string& benchmark_status)
    : TermPrinter(manager), v1_format(is_v1), logic(logic_name), status(benchmark_status) {
  type_names[mgr->get_real_type()] = "Real";
  type_names[mgr->get_int_type()] = "Int";
  if (!v1_format) {
    // Version 1.2 has no sort of formulas: asking for its name is an error there.
    type_names[mgr->get_bool_type()] = "Bool";
  }
  name_distinguished_symbols();
  name_operators();
}

void SmtLibTermPrinter::name_distinguished_symbols() {
  const std::initializer_list<std::pair<const Symbol*, std::string_view>> names = {
      {mgr->get_true_symbol(), "true"},    {mgr->get_false_symbol(), "false"},
      {mgr->get_and_symbol(), "and"},      {mgr->get_or_symbol(), "or"},
      {mgr->get_not_symbol(), "not"},      {mgr->get_iff_symbol(), v1_format ? "iff" : "="},
      {mgr->get_int_plus_symbol(), "+"},   {mgr->get_real_plus_symbol(), "+"},
      {mgr->get_int_times_symbol(), "*"},  {mgr->get_real_times_symbol(), "*"},
      {mgr->get_int_leq_symbol(), "<="},   {mgr->get_real_leq_symbol(), "<="},
      {mgr->get_floor_symbol(), "to_int"},
  };
  for (const auto& [symbol, name] : names) {
    symbol_names.insert_absent(symbol, name);
  }
}

void SmtLibTermPrinter::name_operators() {
  tag_names.expect_nodes(operator_names.size());
  tag_names.rehash(operator_names.size() * 2);  // at once, as nothing is written in its order
  for (const OperatorName& entry : operator_names) {
    if (!entry.indexed) {
      tag_names.insert_absent(entry.tag, entry.name);
    }
  }
}

}  // namespace brum
