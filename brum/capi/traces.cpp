#include "brum/capi/traces.h"

#include <cstddef>
#include <string>

#include "brum/capi/options.h"
#include "brum/capi/sink_stream.h"
#include "brum/printers/smtlib_identifiers.h"

using namespace brum::capi;

struct brum_trace {
  brum_manager* manager = nullptr;
  std::shared_ptr<brum::AnnotationMap> attributes;  // that the printer looks at
  std::unique_ptr<brum::SmtLib2TermPrinter> printer;
  bool is_cut_off = false;  // a piece is being written, or was not written to its end
};

namespace {

/// Runs `check`, which throws when the piece cannot be written, and then `print` with what that
/// gave, on the trace's printer and a stream into the sink. The printer refers to what it wrote
/// before, so a piece that is lost on its way ends the trace.
template <class Check, class Print>
brum_status write(brum_trace* trace, brum_sink sink, const Check& check,
                  const Print& print) noexcept {
  if (trace == nullptr) {
    return BRUM_ERROR_NULL;
  }
  return perform(trace->manager, [&] {
    const auto piece = check();
    SinkStream out(sink);
    if (trace->is_cut_off) {
      throw SinkFailure("an earlier piece of the trace was not written");
    }
    trace->is_cut_off = true;
    print(*trace->printer, out, piece);
    out.finish();
    trace->is_cut_off = false;
  });
}

const brum::DataType* require_uninterpreted(const brum_sort* sort) {
  const brum::DataType* declared = require(sort);
  if (!brum::TermManager::is_uninterpreted_type(declared)) {
    throw brum::TermManager::error("only uninterpreted sorts are declared, not " +
                                   declared->to_short_str());
  }
  return declared;
}

const brum::Symbol* require_user_symbol(const brum_symbol* symbol) {
  const brum::Symbol* declared = require(symbol);
  if (brum::TermManager::is_interpreted(declared)) {
    throw brum::TermManager::error("an operator cannot be declared");
  }
  return declared;
}

void require_formula(const brum_term* formula) {
  const brum::DataType* sort = require(formula)->sort();
  if (sort->kind() != brum::DataType::Kind::boolean) {
    throw brum::TermManager::error("the term is no formula, its sort is " + sort->to_short_str());
  }
}

/// Gives the attribute that names an assertion, empty without a name.
std::string name_attribute(const char* name) {
  if (name == nullptr) {
    return {};
  }
  const std::string text = name;
  if (text.empty() || text.find_first_of("|\\") != std::string::npos) {
    throw brum::Exception("an assertion cannot have the name `" + text + "`");
  }
  return ":named " + brum::v2_symbol(text);
}

}  // namespace

brum_trace* brum_trace_new(brum_manager* manager, const brum_options* options) noexcept {
  brum_trace* trace = nullptr;
  perform(manager, [&] {
    const brum_options& how = or_defaults(options);
    auto made = std::make_unique<brum_trace>();
    made->manager = manager;
    made->attributes = how.attributes;
    made->printer = make_version2_printer(manager->terms, how, how.form == BRUM_FORM_DEFINE_FUN);
    trace = made.release();
  });
  return trace;
}

void brum_trace_free(brum_trace* trace) noexcept {
  delete trace;
}

brum_status brum_trace_start(brum_trace* trace, brum_sink sink) noexcept {
  return write(
      trace, sink, [] { return nullptr; },
      [](brum::SmtLib2TermPrinter& printer, std::ostream& out, std::nullptr_t) {
        printer.print_start(out);
      });
}

brum_status brum_trace_declare_sort(brum_trace* trace, const brum_sort* sort,
                                    brum_sink sink) noexcept {
  return write(
      trace, sink, [&] { return require_uninterpreted(sort); },
      [](brum::SmtLib2TermPrinter& printer, std::ostream& out, const brum::DataType* declared) {
        printer.print_type_declaration(out, declared);
      });
}

brum_status brum_trace_declare(brum_trace* trace, const brum_symbol* symbol,
                               brum_sink sink) noexcept {
  return write(
      trace, sink, [&] { return require_user_symbol(symbol); },
      [](brum::SmtLib2TermPrinter& printer, std::ostream& out, const brum::Symbol* declared) {
        printer.print_symbol_declaration(out, declared);
      });
}

brum_status brum_trace_assert(brum_trace* trace, const brum_term* formula, const char* name,
                              brum_sink sink) noexcept {
  return write(
      trace, sink,
      [&] {
        require_formula(formula);
        return name_attribute(name);
      },
      [&](brum::SmtLib2TermPrinter& printer, std::ostream& out, const std::string& attribute) {
        printer.apitracer_print_term(out, object(formula), attribute);
      });
}
