#ifndef BRUM_TESTS_FAULTS_DOCUMENTS_H
#define BRUM_TESTS_FAULTS_DOCUMENTS_H

#include <array>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "tests/support/formulas.h"

namespace brum::testing {

/// A formula over bit-vectors and arrays that both versions can write, with long names, indexed
/// operators, numerals and shared subterms: more symbols, sorts and terms than a new table holds,
/// so that every table of a printer has to grow. With few widths it is small.
class WideFormula {
 public:
  static constexpr std::size_t many_widths = 12;
  static constexpr std::size_t few_widths = 2;

  explicit WideFormula(std::size_t num_widths = many_widths) {
    std::vector<const Term*> parts;
    for (std::size_t width = 1; width <= num_widths; ++width) {
      const std::string name = "a name that is longer than a string holds " + std::to_string(width);
      const Term* v = make_bv(mgr, name, width);
      const DataType* sort = mgr.make_array_type(v->sort(), v->sort());
      const Term* m = mgr.make_term(mgr.declare("m" + std::to_string(width), sort));
      const Term* one = mgr.make_bv_number(1, width);
      const Term* sum = mgr.make_bvadd(mgr.make_select(m, v), one);
      parts.push_back(mgr.make_equal(sum, mgr.make_bvmul(sum, v)));
    }
    formula = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i)
      formula = mgr.make_and(formula, parts[i]);
    atom = parts.front();
    annotations[parts[1]] = {{"weight", "0.5"}, {"a-keyword-of-some-length", "a-value"}};
    mgr.make_true();
  }

  TermManager mgr;
  const Term* formula = nullptr;
  const Term* atom = nullptr;
  AnnotationMap annotations;
};

/// A printer whose tables a test may look at.
class TablePrinter : public SmtLib2TermPrinter {
 public:
  using SmtLib2TermPrinter::SmtLib2TermPrinter;

  /// The numbers of buckets of its tables.
  std::vector<std::size_t> buckets() const {
    return {symbol_names.bucket_count(), type_names.bucket_count(),
            trace_definitions.bucket_count()};
  }

  bool is_idle() const {
    return !single_term && !in_api_trace && use_newlines && assert_attribute.empty();
  }
};

class PlainTablePrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::SmtLibTermPrinter;

  std::vector<std::size_t> buckets() const {
    return {symbol_names.bucket_count(), type_names.bucket_count()};
  }

  bool is_idle() const { return !single_term && use_newlines; }
};

/// One way to print a formula.
template <class Printer>
struct EntryPoint {
  std::string name;
  std::function<std::unique_ptr<Printer>(WideFormula&)> make;
  std::function<void(Printer&, std::ostream&, const WideFormula&)> print;

  /// How many tables of the printer itself grow.
  std::size_t growths = 0;

  /// A trace piece that failed leaves definitions behind, so that the next one differs.
  bool leaves_traces = false;
};

inline std::vector<EntryPoint<PlainTablePrinter>> plain_entry_points() {
  std::vector<EntryPoint<PlainTablePrinter>> all;
  for (const bool v1 : {true, false}) {
    const std::string version = v1 ? "v1 " : "v2 ";
    const auto make = [v1](WideFormula& f) {
      return std::make_unique<PlainTablePrinter>(v1, &f.mgr, "QF_AUFBV", "sat");
    };
    // Names of 12 equalities and 12 numerals beside 13 from the start; sorts: 24 beside 2 or 3.
    all.push_back(
        {version + "document", make,
         [](auto& printer, auto& out, const auto& f) { printer.print_formula(out, f.formula); }, 2,
         false});
    all.push_back({version + "single term", make,
                   [](auto& printer, auto& out, const auto& f) {
                     printer.print_single_term(out, f.formula, true);
                   },
                   1, false});
    all.push_back(
        {version + "term", make,
         [](auto& printer, auto& out, const auto& f) { printer.print_term(out, f.formula, false); },
         1, false});
    all.push_back({version + "atom", make,
                   [](auto& printer, auto& out, const auto& f) { printer.print_atom(out, f.atom); },
                   0, false});
  }
  return all;
}

inline std::vector<EntryPoint<TablePrinter>> script_entry_points() {
  std::vector<EntryPoint<TablePrinter>> all;
  for (const bool define_fun : {true, false}) {
    const std::string mode = define_fun ? "define-fun " : "let ";
    const auto make = [define_fun](WideFormula& f) {
      return std::make_unique<TablePrinter>(&f.mgr, "QF_AUFBV", "sat", define_fun, &f.annotations);
    };
    all.push_back(
        {mode + "document", make,
         [](auto& printer, auto& out, const auto& f) { printer.print_formula(out, f.formula); }, 2,
         false});
    all.push_back({mode + "single term", make,
                   [](auto& printer, auto& out, const auto& f) {
                     printer.print_single_term(out, f.formula, false);
                   },
                   1, false});
    all.push_back({mode + "terms", make,
                   [](auto& printer, auto& out, const auto& f) {
                     printer.print_terms(out, {f.formula, f.atom, f.formula->children[0]});
                   },
                   2, false});
    // The names of symbols, and the map of definitions, which grows at once for its 95 terms.
    all.push_back({mode + "trace", make,
                   [](auto& printer, auto& out, const auto& f) {
                     printer.apitracer_print_term(out, f.formula, ":named a-name-of-some-length");
                   },
                   2, true});
  }
  return all;
}

}  // namespace brum::testing

#endif  // BRUM_TESTS_FAULTS_DOCUMENTS_H
