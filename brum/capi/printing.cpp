#include "brum/capi/printing.h"

#include "brum/capi/options.h"
#include "brum/capi/sink_stream.h"
#include "brum/printers/check_names.h"
#include "brum/utils/concat.h"

using namespace brum::capi;
using brum::Term;

namespace {

/// Throws UnfitForm when the name of a symbol of `terms` would not stand for it in the asked form.
void require_safe_names(const brum_manager& manager, const std::vector<const Term*>& terms,
                        const brum_options& options) {
  if (!options.check_names) {
    return;
  }
  const std::vector<brum::NameProblem> problems =
      brum::check_names(manager.terms, terms, options.form == BRUM_FORM_V1);
  if (!problems.empty()) {
    const brum::NameProblem& first = problems.front();
    throw UnfitForm(brum::concat({"the name `", first.symbol->name_view(), "` ", first.reason}));
  }
}

void require_formula(const Term* term) {
  if (term->sort()->kind() != brum::DataType::Kind::boolean) {
    throw brum::TermManager::error("the term is no formula, its sort is " +
                                   term->sort()->to_short_str());
  }
}

}  // namespace

brum_status brum_print_formula(brum_manager* manager, const brum_term* formula,
                               const brum_options* options, brum_sink sink) noexcept {
  return perform(manager, [&] {
    const Term* term = require(formula);
    require_formula(term);
    const brum_options& how = or_defaults(options);
    require_safe_names(*manager, {term}, how);
    const auto printer = make_printer(manager->terms, how);
    SinkStream out(sink);
    printer->print_formula(out, term);
    out.finish();
  });
}

brum_status brum_print_terms(brum_manager* manager, const brum_term* const* terms, size_t count,
                             const brum_options* options, brum_sink sink) noexcept {
  return perform(manager, [&] {
    const auto list = require_all<Term>(terms, count);
    const brum_options& how = or_defaults(options);
    const auto printer = make_version2_printer(manager->terms, how, true);
    require_safe_names(*manager, list, how);
    SinkStream out(sink);
    printer->print_terms(out, list);
    out.finish();
  });
}

brum_status brum_print_term(brum_manager* manager, const brum_term* term,
                            const brum_options* options, brum_sink sink) noexcept {
  return perform(manager, [&] {
    const brum_options& how = or_defaults(options);
    const Term* printed = require(term);
    require_safe_names(*manager, {printed}, how);
    const auto printer = make_printer(manager->terms, how);
    SinkStream out(sink);
    printer->print_term(out, printed, how.newlines);
    if (how.newlines) {
      out.finish();
    } else {
      out.finish_without_line_end();
    }
  });
}

brum_status brum_print_atom(brum_manager* manager, const brum_term* atom,
                            const brum_options* options, brum_sink sink) noexcept {
  return perform(manager, [&] {
    const Term* printed = require(atom);
    const brum_options& how = or_defaults(options);
    require_safe_names(*manager, {printed}, how);
    const auto printer = make_printer(manager->terms, how);
    SinkStream out(sink);
    printer->print_atom(out, printed);
    out.finish();
  });
}

brum_status brum_print_label(brum_manager* manager, const brum_term* term,
                             const brum_options* options, brum_sink sink) noexcept {
  return perform(manager, [&] {
    const Term* named = require(term);
    const auto printer = make_printer(manager->terms, or_defaults(options));
    std::string label;
    printer->get_define_label(named, label);
    SinkStream out(sink);
    out << label;
    out.finish();
  });
}
