#include "tests/support/written_forms.h"

#include <array>
#include <sstream>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"

namespace brum::testing {

namespace {

/// The uninterpreted sorts of the generator.
constexpr std::array sort_names = {"S", "a sort", "U0"};

/// Keeps what was written and the sorts that the printer named.
void keep(Written& written, TermManager& mgr, SmtLibTermPrinter& printer,
          const std::ostringstream& out) {
  written.text = out.str();
  for (const char* name : sort_names) {
    const DataType* sort = mgr.make_uninterpreted_type(name);
    const std::string text = printer.to_smtlib(sort);
    if (!text.empty())
      written.sorts[text] = sort;
  }
}

ReaderOptions options_for(const Written& written, const std::string& logic, bool use_signature) {
  ReaderOptions options;
  options.sorts = &written.sorts;
  options.logic = logic;
  options.use_signature = use_signature;
  return options;
}

/// Reads a document and gives its last assertion, null if it has none.
template <class Reader>
const Term* read_document(TermManager& mgr, const Written& written, const ReaderOptions& options) {
  std::istringstream in(written.text);
  Script script;
  Reader(mgr, options).read(in, script);
  const Query query = script.at_end();
  return query.assertions.empty() ? nullptr : query.assertions.back();
}

template <class Reader>
const Term* read_term(TermManager& mgr, const Written& written, const std::string& logic) {
  std::istringstream in(written.text);
  return Reader(mgr, options_for(written, logic, true)).read_term(in);
}

template <bool v1_format>
void write_formula(TermManager& mgr, const Term* term, const std::string& logic, Written& written) {
  SmtLibTermPrinter printer(v1_format, &mgr, logic, "");
  std::ostringstream out;
  printer.print_formula(out, term);
  keep(written, mgr, printer, out);
}

template <bool v1_format>
void write_single(TermManager& mgr, const Term* term, const std::string& /*logic*/,
                  Written& written) {
  SmtLibTermPrinter printer(v1_format, &mgr, "", "");
  std::ostringstream out;
  printer.print_single_term(out, term, true);
  written.text = out.str();
}

template <bool define_fun>
void write_version_2(TermManager& mgr, const Term* term, const std::string& logic,
                     Written& written) {
  SmtLib2TermPrinter printer(&mgr, logic, "", define_fun, nullptr);
  std::ostringstream out;
  printer.print_formula(out, term);
  keep(written, mgr, printer, out);
}

/// The script that names a term, with an assertion of that name.
void write_terms(TermManager& mgr, const Term* term, const std::string& logic, Written& written) {
  SmtLib2TermPrinter printer(&mgr, logic, "", true, nullptr);
  std::ostringstream out;
  printer.print_terms(out, {term});
  std::string label;
  printer.get_define_label(term, label);
  out << "(assert " << label << ")\n";
  keep(written, mgr, printer, out);
}

template <bool define_fun>
void write_trace(TermManager& mgr, const Term* term, const std::string& /*logic*/,
                 Written& written) {
  SmtLib2TermPrinter printer(&mgr, "", "", define_fun, nullptr);
  std::ostringstream out;
  for (const char* name : sort_names)
    printer.print_type_declaration(out, mgr.make_uninterpreted_type(name));
  printer.apitracer_print_term(out, term, "");
  keep(written, mgr, printer, out);
}

template <class Reader>
const Term* read_plain(TermManager& mgr, const Written& written, const std::string& /*logic*/) {
  return read_document<Reader>(mgr, written, options_for(written, "", false));
}

const Term* read_trace(TermManager& mgr, const Written& written, const std::string& logic) {
  return read_document<SmtLib2Reader>(mgr, written, options_for(written, logic, true));
}

constexpr std::array forms = {
    WrittenForm{"v1", true, write_formula<true>, read_plain<SmtLib1Reader>},
    WrittenForm{"v2", false, write_formula<false>, read_plain<SmtLib2Reader>},
    WrittenForm{"define-fun", false, write_version_2<true>, read_plain<SmtLib2Reader>},
    WrittenForm{"v2 with let", false, write_version_2<false>, read_plain<SmtLib2Reader>},
    WrittenForm{"terms", false, write_terms, read_plain<SmtLib2Reader>},
    WrittenForm{"trace", false, write_trace<true>, read_trace},
    WrittenForm{"trace with let", false, write_trace<false>, read_trace},
    WrittenForm{"v1 term", true, write_single<true>, read_term<SmtLib1Reader>},
    WrittenForm{"v2 term", false, write_single<false>, read_term<SmtLib2Reader>},
};

}  // namespace

std::span<const WrittenForm> written_forms() {
  return forms;
}

}  // namespace brum::testing
