#include "brum/printers/smtlib2_term_printer.h"

#include <span>

#include "brum/printers/declarations.h"
#include "brum/printers/reference_counts.h"
#include "brum/printers/reserve_text.h"
#include "brum/printers/symbol_collector.h"
#include "brum/printers/term_texts.h"
#include "brum/printers/write_text.h"
#include "brum/terms/term_index.h"
#include "brum/terms/term_walk.h"
#include "brum/utils/scope_exit.h"

namespace brum {

SmtLib2TermPrinter::SmtLib2TermPrinter(TermManager* manager, const std::string& logic_name,
                                       const std::string& benchmark_status, bool define_fun,
                                       const AnnotationMap* attributes)
    : SmtLibTermPrinter(false, manager, logic_name, benchmark_status),
      use_define_fun(define_fun),
      annotations(attributes) {}

void SmtLib2TermPrinter::print_term_and_children(std::ostream& out, const Term* term,
                                                 const std::vector<std::string>& children) {
  if (annotations == nullptr) {
    SmtLibTermPrinter::print_term_and_children(out, term, children);
    return;
  }
  const auto attributes = annotations->find(term);
  if (attributes == annotations->end()) {
    SmtLibTermPrinter::print_term_and_children(out, term, children);
    return;
  }
  write_text(out, "(! ");
  SmtLibTermPrinter::print_term_and_children(out, term, children);
  for (const auto& [keyword, value] : attributes->second) {
    write_text(out, " :");
    write_text(out, keyword);
    write_text(out, " ");
    write_text(out, value);
  }
  write_text(out, ")");
}

void SmtLib2TermPrinter::open_assertion(std::ostream& out) const {
  write_text(out, assert_attribute.empty() ? "(assert " : "(assert (! ");
}

// With `let` the assertion holds the bindings, so it is opened before them ...
void SmtLib2TermPrinter::print_define_section_start(std::ostream& out) {
  if (!use_define_fun && !is_plain_single_term()) {
    open_assertion(out);
  }
}

// ... with `define-fun` after the definitions.
void SmtLib2TermPrinter::print_formula_term(std::ostream& out, const std::string& text,
                                            const Term* /*term*/) {
  if (is_define_fun_mode()) {
    open_assertion(out);
  }
  write_text(out, text);
}

void SmtLib2TermPrinter::print_define_start(std::ostream& out, const std::string& label,
                                            const Term* term) {
  if (!is_define_fun_mode()) {
    SmtLibTermPrinter::print_define_start(out, label, term);
    return;
  }
  write_parts(out, piece_memory, "(define-fun ", label, " () ", kept_sort_text(term->sort()), " ");
}

void SmtLib2TermPrinter::print_define_end(std::ostream& out, const Term* term) {
  if (is_define_fun_mode()) {
    write_text(out, ")\n");
  } else {
    SmtLibTermPrinter::print_define_end(out, term);
  }
}

void SmtLib2TermPrinter::print_end(std::ostream& out) {
  if (open_lets > 0) {
    write_text(out, std::string(static_cast<std::size_t>(open_lets), ')'));
  }
  if (!is_plain_single_term()) {
    if (!assert_attribute.empty()) {
      write_text(out, " ");
      write_text(out, assert_attribute);
      write_text(out, ")");
    }
    write_text(out, ")");
  }
  write_text(out, "\n");
  open_lets = 0;
}

void SmtLib2TermPrinter::print_terms(std::ostream& out, const std::vector<const Term*>& terms) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> sorts;
  SymbolCollector collector(symbols, sorts);
  ReferenceCounts counts;
  TermOrder order;
  std::vector<std::size_t> ends;  // of what each term brings into the order
  for (const Term* term : terms) {
    collector.begin_term();
    counts.add_reference(
        term, [&](const Term* visited) { collector.add_symbol(visited->symbol); },
        [&](const Term* done) { order.push_back(done); });
    collector.end_term();
    ends.push_back(order.size());
  }
  if (!terms.empty()) {
    collector.end_terms(terms.back());
  }
  reserve_text(out, counts.expected_text_bytes());
  print_start(out);
  print_declarations(*this, out, sorts, symbols);
  print_define_section_start(out);
  const DefinitionRule rule = DefinitionRule::for_script(counts);
  TermTexts texts(*this, out, rule, counts);
  std::string label;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    const Term* term = terms[i];
    const std::string& text =
        texts.write(term, std::span<const Term* const>(order).subspan(begin, ends[i] - begin));
    begin = ends[i];
    label.clear();
    get_define_label(term, label);
    if (label != text) {
      print_define_start(out, label, term);
      write_text(out, text);
      print_define_end(out, term);
    }
  }
  print_formula_term(out, "true", mgr->make_true());
  print_define_section_end(out);
  print_end(out);
}

/// The buckets stay as many as they are. After a large assertion going through all of them for each
/// small one would cost more than all the rest, so then the entries are looked for one by one.
void SmtLib2TermPrinter::forget_definitions() {
  constexpr std::size_t most_buckets_of_entry = 16;
  const std::size_t size = trace_definitions.size();
  const bool is_sparse =
      size != 0 && size < trace_definitions.bucket_count() / most_buckets_of_entry;
  if (last_traced_ == nullptr || !is_sparse) {
    trace_definitions.clear(false);
    return;
  }
  TermSet visited;
  TermOrder handled;
  const auto enter = [&](const Term* term) { return visited.insert(term); };
  TermWalk().run(last_traced_, enter, [&](const Term* term) { handled.push_back(term); });
  trace_definitions.clear_keys(handled);
}

void SmtLib2TermPrinter::apitracer_print_term(std::ostream& out, const Term* term,
                                              const std::string& name) {
  const ScopeExit restore([this] {
    assert_attribute.clear();
    in_api_trace = false;
    single_term = false;
  });
  single_term = true;
  in_api_trace = true;
  assert_attribute = name;
  if (!use_define_fun) {
    forget_definitions();
    last_traced_ = term;
  }
  print_define_section_start(out);
  // Nested drivers are not used here: only the definitions and the assertion are written.
  const std::string text =
      use_define_fun ? do_print_term(out, term, trace_definitions, DefinitionRule::for_trace())
                     : do_print_term(out, term, trace_definitions);
  print_formula_term(out, text, term);
  print_end(out);
}

}  // namespace brum
