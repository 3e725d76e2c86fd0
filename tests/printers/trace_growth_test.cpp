#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <sstream>
#include <string>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/readers/smtlib2_reader.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"

// Traces of thousands of assertions, each made after the one before was printed: time and text grow
// with the number of calls, and the text still says what was asserted.

namespace brum {

namespace {

const Term* apply_twice(TermManager& mgr, const Term* term) {
  const DataType* boolean = mgr.get_bool_type();
  const Symbol* f = mgr.declare("f", mgr.make_function_type({boolean, boolean}, boolean));
  return mgr.make_term(f, {term, term});
}

struct Cost {
  std::size_t bytes = 0;
  double seconds = 0;  // of the processor
};

/// Builds and prints a trace of t1 = f(t0, t0), t2 = f(t1, t1) and so on.
Cost cost_of_growing(std::size_t calls) {
  TermManager mgr;
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  testing::CountingStream out;
  const std::clock_t start = std::clock();
  const Term* term = testing::make_bool(mgr, "p");
  for (std::size_t i = 0; i < calls; ++i) {
    term = apply_twice(mgr, term);
    printer.apitracer_print_term(out, term, "");
  }
  const std::clock_t end = std::clock();
  return {out.counts.bytes, static_cast<double>(end - start) / CLOCKS_PER_SEC};
}

/// Prints one large assertion and then many over it, each made after the one before was printed.
Cost cost_over_one_large_term(std::size_t calls) {
  TermManager mgr;
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  testing::CountingStream out;
  const Term* large = testing::make_left_chain(mgr, 5'000);
  printer.apitracer_print_term(out, large, "");
  const std::size_t before = out.counts.bytes;
  const std::clock_t start = std::clock();
  for (std::size_t i = 0; i < calls; ++i) {
    const Term* other = testing::make_bool(mgr, "q" + std::to_string(i));
    printer.apitracer_print_term(out, mgr.make_and(other, mgr.make_or(large, other)), "");
  }
  const std::clock_t end = std::clock();
  return {out.counts.bytes - before, static_cast<double>(end - start) / CLOCKS_PER_SEC};
}

/// The least of several measurements: what else the machine does only adds.
Cost least(Cost (*cost)(std::size_t), std::size_t calls) {
  constexpr int measurements = 5;
  Cost best = cost(calls);
  for (int i = 1; i < measurements; ++i) {
    best.seconds = std::min(best.seconds, cost(calls).seconds);
  }
  return best;
}

void expect_linear(Cost (*cost)(std::size_t)) {
  const Cost quarter = least(cost, 2'500);
  const Cost whole = least(cost, 10'000);
  // Four times the calls, whose labels get longer by a digit. Quadratic costs would be 16 times.
  EXPECT_GE(whole.bytes, quarter.bytes * 4);
  EXPECT_LE(whole.bytes, quarter.bytes * 5);
  EXPECT_LE(whole.seconds, quarter.seconds * 9);
}

}  // namespace

TEST(TraceGrowth, TenThousandAssertionsOverAGrowingTermAreLinear) {
  expect_linear(cost_of_growing);
}

TEST(TraceGrowth, TenThousandAssertionsOverOneLargeTermAreLinear) {
  expect_linear(cost_over_one_large_term);
}

TEST(TraceGrowth, TextDoublesUpToTheLongestInlineOne) {
  TermManager mgr;
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  std::ostringstream out;
  const Term* term = testing::make_bool(mgr, "p");  // 1
  for (int i = 0; i < 3; ++i) {
    term = apply_twice(mgr, term);
    printer.apitracer_print_term(out, term, "");
  }
  EXPECT_EQ(out.str(),
            "(assert (f p p))\n"
            "(assert (f (f p p) (f p p)))\n"
            "(assert (f (f (f p p) (f p p)) (f (f p p) (f p p))))\n");
  // The k-th text has 2 * (length of the one before) + 5 bytes: 6 * 2^k - 5. The tenth is the first
  // beyond 4096 bytes, so it is defined, and the eleventh refers to it. Its id is 11.
  for (int i = 3; i < 9; ++i) {
    term = apply_twice(mgr, term);
    printer.apitracer_print_term(out, term, "");
  }
  out.str("");
  term = apply_twice(mgr, term);
  printer.apitracer_print_term(out, term, "");
  const std::string tenth = out.str();
  const std::string start = "(define-fun .def_11 () Bool (f (f ";
  const std::string end = ")))\n(assert .def_11)\n";
  EXPECT_EQ(tenth.substr(0, start.size()), start);
  EXPECT_EQ(tenth.substr(tenth.size() - end.size()), end);
  EXPECT_EQ(tenth.size(), std::string("(define-fun .def_11 () Bool ").size() + 6 * 1024 - 5 +
                              std::string(")\n(assert .def_11)\n").size());
  out.str("");
  printer.apitracer_print_term(out, apply_twice(mgr, term), "");
  EXPECT_EQ(out.str(), "(assert (f .def_11 .def_11))\n");
}

TEST(TraceGrowth, TheTraceReadsBackAsTheSameTerms) {
  TermManager mgr;
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  std::stringstream text;
  std::vector<const Term*> asserted;
  const Term* term = testing::make_bool(mgr, "p");
  for (int i = 0; i < 2'000; ++i) {
    term = apply_twice(mgr, term);
    asserted.push_back(term);
    printer.apitracer_print_term(text, term, "");
  }
  const std::size_t terms = mgr.num_terms();
  ReaderOptions options;
  options.use_signature = true;
  Script script;
  SmtLib2Reader(mgr, options).read(text, script);
  ASSERT_EQ(script.commands.size(), asserted.size());
  for (std::size_t i = 0; i < asserted.size(); ++i) {
    ASSERT_EQ(script.commands[i].term, asserted[i]) << "assertion " << i;
  }
  EXPECT_EQ(mgr.num_terms(), terms);
}

}  // namespace brum
