#include "bench/printers.h"

#include <algorithm>
#include <array>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/printers/term_printer.h"

namespace brum::bench {

namespace {

/// Leaves the framework's walk and nothing else.
class SilentPrinter : public TermPrinter {
 public:
  using TermPrinter::TermPrinter;

  void print_single_term(std::ostream& out, const Term* term, bool /*flag*/) override {
    print_formula(out, term);
  }
  void get_define_label(const Term* /*term*/, std::string& /*label*/) override {}
  void print_term_and_children(std::ostream& /*out*/, const Term* /*term*/,
                               const std::vector<std::string>& /*children*/) override {}
  void print_type_declaration(std::ostream& /*out*/, const DataType* /*type*/) override {}
  void print_symbol_declaration(std::ostream& /*out*/, const Symbol* /*symbol*/) override {}
  void print_define_section_start(std::ostream& /*out*/) override {}
  void print_define_start(std::ostream& /*out*/, const std::string& /*label*/,
                          const Term* /*term*/) override {}
  void print_define_end(std::ostream& /*out*/, const Term* /*term*/) override {}
  void print_start(std::ostream& /*out*/) override {}
  void print_end(std::ostream& /*out*/) override {}
  void print_formula_term(std::ostream& /*out*/, const std::string& /*text*/,
                          const Term* /*term*/) override {}
};

/// Tells what the trace keeps.
class OpenTrace : public SmtLib2TermPrinter {
 public:
  using SmtLib2TermPrinter::SmtLib2TermPrinter;

  std::vector<std::size_t> kept_lengths() const {
    std::vector<std::size_t> lengths;
    lengths.reserve(trace_definitions.size());
    trace_definitions.for_each(
        [&](const auto& definition) { lengths.push_back(definition.second.size()); });
    return lengths;
  }
};

void print_v1(std::ostream& out, TermManager& manager, const Term* formula, const char* logic) {
  SmtLibTermPrinter(true, &manager, logic, "unknown").print_formula(out, formula);
}

void print_v2(std::ostream& out, TermManager& manager, const Term* formula, const char* logic) {
  SmtLibTermPrinter(false, &manager, logic, "unknown").print_formula(out, formula);
}

void print_define_fun(std::ostream& out, TermManager& manager, const Term* formula,
                      const char* logic) {
  SmtLib2TermPrinter(&manager, logic, "unknown", true, nullptr).print_formula(out, formula);
}

void print_terms(std::ostream& out, TermManager& manager, const Term* formula, const char* logic) {
  SmtLib2TermPrinter(&manager, logic, "unknown", true, nullptr).print_terms(out, {formula});
}

void print_trace(std::ostream& out, TermManager& manager, const Term* formula, const char* logic) {
  SmtLib2TermPrinter(&manager, logic, "", true, nullptr).apitracer_print_term(out, formula, "");
}

void print_let_trace(std::ostream& out, TermManager& manager, const Term* formula,
                     const char* logic) {
  SmtLib2TermPrinter(&manager, logic, "", false, nullptr).apitracer_print_term(out, formula, "");
}

void print_nothing(std::ostream& out, TermManager& manager, const Term* formula,
                   const char* /*logic*/) {
  SilentPrinter(&manager).print_formula(out, formula);
}

constexpr std::array<Form, 7> all_forms = {{{"v1", print_v1},
                                            {"v2", print_v2},
                                            {"define-fun", print_define_fun},
                                            {"terms", print_terms},
                                            {"trace", print_trace},
                                            {"let-trace", print_let_trace},
                                            {"walk", print_nothing}}};

constexpr std::string_view token = "(and x1 ";

}  // namespace

std::span<const Form> forms() {
  return all_forms;
}

const Form* form_named(std::string_view name) {
  const auto* const found = std::find_if(all_forms.begin(), all_forms.end(),
                                         [name](const Form& form) { return form.name == name; });
  return found == all_forms.end() ? nullptr : found;
}

CountingBuffer::int_type CountingBuffer::overflow(int_type byte) {
  ++count_;
  return traits_type::not_eof(byte);
}

std::streamsize CountingBuffer::xsputn(const char* /*bytes*/, std::streamsize count) {
  count_ += static_cast<std::size_t>(count);
  return count;
}

std::vector<std::size_t> kept_lengths(TermManager& manager, const Term* formula, const char* logic,
                                      bool define_fun) {
  CountingBuffer buffer;
  std::ostream unheard(&buffer);
  OpenTrace trace(&manager, logic, "", define_fun, nullptr);
  trace.apitracer_print_term(unheard, formula, "");
  return trace.kept_lengths();
}

std::size_t keep_texts(std::span<const std::size_t> lengths) {
  std::vector<std::string> texts;
  texts.reserve(lengths.size());
  std::size_t bytes = 0;
  for (const std::size_t length : lengths) {
    bytes += texts.emplace_back(length, 'x').size();
  }
  return bytes;
}

std::string append_tokens(std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) {
    text.append(token);
  }
  return text;
}

void write_tokens(std::ostream& out, std::size_t bytes) {
  for (std::size_t written = 0; written < bytes; written += token.size()) {
    out.write(token.data(), static_cast<std::streamsize>(token.size()));
  }
}

}  // namespace brum::bench
