// What may run on several threads at once: the printers and readers of different managers, over
// terms without numbers. To be run under ThreadSanitizer, which sees what is shared. (With numbers
// nothing is promised: rational arithmetic writes tables that all numbers share.)

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "brum/printers/check_names.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/readers/smtlib2_reader.h"
#include "tests/support/formulas.h"

namespace brum::testing {
namespace {

/// A formula of Booleans, bit-vectors, arrays, functions and an uninterpreted sort; no numeral, and
/// no operator whose index is a rational.
const Term* make_formula(TermManager& mgr) {
  const DataType* sort = mgr.make_uninterpreted_type("a sort");
  const DataType* row = mgr.make_array_type(sort, mgr.make_bv_type(8));
  const Term* c = mgr.make_term(mgr.declare("c", sort));
  const Symbol* f = mgr.declare("f", mgr.make_function_type({sort}, mgr.get_bool_type()));
  const Term* rows = mgr.make_term(mgr.declare("rows", row));
  const Term* cell = mgr.make_select(rows, c);
  const Term* sum = mgr.make_bvadd(cell, mgr.make_bvnot(cell));
  const Term* formula = mgr.make_and(mgr.make_term(f, {c}), mgr.make_bvult(sum, cell));
  const Term* ladder = make_bool(mgr, "p");
  for (int level = 0; level < 50; ++level)
    ladder = mgr.make_iff(ladder, mgr.make_or(ladder, formula));
  return mgr.make_and(ladder, mgr.make_equal(mgr.make_zero_extend(3, sum),
                                             mgr.make_concat(make_bv(mgr, "w", 3), sum)));
}

/// Builds, checks, prints in every form and reads once, all in a manager of its own.
std::string work() {
  TermManager mgr;
  const Term* formula = make_formula(mgr);
  std::ostringstream out;
  for (const bool define_fun : {true, false}) {
    SmtLib2TermPrinter printer(&mgr, "QF_AUFBV", "sat", define_fun, nullptr);
    printer.print_formula(out, formula);
    printer.print_terms(out, {formula});
    printer.apitracer_print_term(out, formula, ":named a");
  }
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &mgr, "QF_AUFBV", "sat");
    printer.print_single_term(out, formula, true);
    out << check_names(mgr, {formula}, v1).size();
  }
  std::istringstream in(
      "(declare-fun p (Bool) Bool)(assert (! (p (and true (p false))) :named n))");
  Script script;
  SmtLib2Reader(mgr).read(in, script);
  out << script.commands.size();
  return out.str();
}

/// A refusal on each thread: exceptions share nothing either.
std::string refusal() {
  TermManager mgr;
  const Term* formula = mgr.make_term(mgr.declare_interpreted("foo", mgr.get_bool_type()));
  std::ostringstream out;
  try {
    SmtLibTermPrinter(false, &mgr, "", "").print_formula(out, formula);
  } catch (const TermPrinter::error& error) {
    return error.what();
  }
  return "";
}

/// Runs the work on four threads at once and gives the result of each.
template <class Work>
std::vector<std::string> run_on_threads(const Work& work_of_one) {
  constexpr int rounds = 20;
  std::vector<std::string> results(4);
  std::vector<std::thread> threads;
  for (std::string& result : results) {
    threads.emplace_back([&result, &work_of_one] {
      for (int round = 0; round < rounds; ++round)
        result = work_of_one();
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  return results;
}

TEST(Threads, PrintersOfDifferentManagersMayRunAtOnce) {
  // The order of the declarations follows the addresses, which differ between managers.
  const std::size_t expected = work().size();
  for (const std::string& result : run_on_threads(work))
    EXPECT_EQ(result.size(), expected);
}

TEST(Threads, SoMayTheirErrors) {
  for (const std::string& result : run_on_threads(refusal))
    EXPECT_EQ(result, "can't print interpreted symbol fooin SMT-LIB format");
}

}  // namespace
}  // namespace brum::testing
