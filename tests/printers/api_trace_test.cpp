// Assertions of API traces.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "tests/printers/open_printers.h"
#include "tests/support/build_kind.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::error_of;
using testing::make_bool;
using testing::make_int;
using testing::OpenPrinter2;
using testing::single_term;
using testing::text_of;

std::string trace(SmtLib2TermPrinter& printer, const Term* term, const std::string& name = "") {
  return text_of([&](std::ostream& out) { printer.apitracer_print_term(out, term, name); });
}

void expect_at_rest(const OpenPrinter2& printer) {
  EXPECT_FALSE(printer.single_term);
  EXPECT_FALSE(printer.in_api_trace);
  EXPECT_TRUE(printer.use_newlines);
  EXPECT_EQ(printer.assert_attribute, "");
}

std::map<std::uint64_t, std::string> content(const DefinitionMap& defs) {
  std::map<std::uint64_t, std::string> texts;
  for (const auto& [term, text] : defs) {
    texts[term->id] = text;
  }
  return texts;
}

/// Two assertions that share the sum s = (+ x y), and each uses it twice.
struct SharedSum {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* sum = mgr.make_plus(x, y);                          // 3
  const Term* less = mgr.make_leq(sum, x);                        // 4
  const Term* first = mgr.make_and(less, mgr.make_leq(y, sum));   // 5, 6
  const Term* second = mgr.make_leq(sum, mgr.make_plus(sum, y));  // 7, 8
};

TEST(ApiTrace, DefinitionsAreRememberedWithDefineFun) {
  SharedSum f;
  OpenPrinter2 printer(&f.mgr, "QF_LIA", "sat", true, nullptr);
  EXPECT_EQ(trace(printer, f.first),
            "(define-fun .def_3 () Int (+ x y))\n"
            "(assert (and (<= .def_3 x) (<= y .def_3)))\n");
  expect_at_rest(printer);
  EXPECT_EQ(trace(printer, f.second), "(assert (<= .def_3 (+ .def_3 y)))\n");
  EXPECT_EQ(trace(printer, f.first), "(assert (and (<= .def_3 x) (<= y .def_3)))\n");
  expect_at_rest(printer);
}

TEST(ApiTrace, HooksSeeASingleTermOfATrace) {
  class Watching : public OpenPrinter2 {
   public:
    using OpenPrinter2::OpenPrinter2;
    int calls = 0;

   private:
    void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override {
      ++calls;
      EXPECT_TRUE(single_term);
      EXPECT_TRUE(in_api_trace);
      EXPECT_EQ(assert_attribute, ":named less");
      OpenPrinter2::print_formula_term(out, text, term);
    }
  };
  SharedSum f;
  for (const bool define_fun : {false, true}) {
    Watching printer(&f.mgr, "QF_LIA", "sat", define_fun, nullptr);
    trace(printer, f.less, ":named less");
    EXPECT_EQ(printer.calls, 1);
    expect_at_rest(printer);
  }
}

TEST(ApiTrace, EachAssertionHasItsOwnBindingsWithLet) {
  SharedSum f;
  OpenPrinter2 printer(&f.mgr, "QF_LIA", "sat", false, nullptr);
  const std::string first =
      "(assert (let ((.def_3 (+ x y)))\n(and (<= .def_3 x) (<= y .def_3))))\n";
  EXPECT_EQ(trace(printer, f.first), first);
  EXPECT_EQ(trace(printer, f.second),
            "(assert (let ((.def_3 (+ x y)))\n(<= .def_3 (+ .def_3 y))))\n");
  EXPECT_EQ(trace(printer, f.first), first);
  EXPECT_EQ(printer.open_lets, 0);
  expect_at_rest(printer);
}

TEST(ApiTrace, AttributesAreWrittenAsTheyAre) {
  SharedSum f;
  OpenPrinter2 commands(&f.mgr, "", "", true, nullptr);
  EXPECT_EQ(trace(commands, f.second, ":named |a b|"),
            "(define-fun .def_3 () Int (+ x y))\n"
            "(assert (! (<= .def_3 (+ .def_3 y)) :named |a b|))\n");
  expect_at_rest(commands);
  EXPECT_EQ(trace(commands, f.first, "anything"),
            "(assert (! (and (<= .def_3 x) (<= y .def_3)) anything))\n");
  EXPECT_EQ(trace(commands, f.second), "(assert (<= .def_3 (+ .def_3 y)))\n");
  OpenPrinter2 bindings(&f.mgr, "", "", false, nullptr);
  EXPECT_EQ(trace(bindings, f.second, ":named a1"),
            "(assert (! (let ((.def_3 (+ x y)))\n(<= .def_3 (+ .def_3 y))) :named a1))\n");
  expect_at_rest(bindings);
  EXPECT_EQ(trace(bindings, f.second),
            "(assert (let ((.def_3 (+ x y)))\n(<= .def_3 (+ .def_3 y))))\n");
}

TEST(ApiTrace, ATermWithoutSharedSubtermsIsOneAssertion) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* term = mgr.make_not(mgr.make_not(p));
  for (const bool define_fun : {true, false}) {
    OpenPrinter2 printer(&mgr, "QF_UF", "sat", define_fun, nullptr);
    EXPECT_EQ(trace(printer, term), "(assert (not (not p)))\n");
    EXPECT_EQ(trace(printer, p), "(assert p)\n");
    EXPECT_EQ(trace(printer, mgr.make_true()), "(assert true)\n");
    EXPECT_EQ(trace(printer, p, ":named a"), "(assert (! p :named a))\n");
  }
}

TEST(ApiTrace, AnAssertionMayDefineThousandsOfTerms) {
  TermManager mgr;
  SmtLib2TermPrinter printer(&mgr, "QF_LIA", "", true, nullptr);
  const Term* sum = make_int(mgr, "x");
  std::string name = "x";
  std::string expected;
  for (int level = 0; level < 5000; ++level) {
    sum = mgr.make_plus(sum, sum);
    const std::string label = ".def_" + std::to_string(sum->id);
    expected += "(define-fun " + label + " () Int (+ " + name + " " + name + "))\n";
    name = label;
  }
  expected += "(assert (<= " + name + " " + name + "))\n";
  EXPECT_EQ(trace(printer, mgr.make_leq(sum, sum)), expected);
}

TEST(ApiTrace, UsesInTheStoreDecideWithDefineFun) {
  // The sum is used once by each of two assertions, both made before the first is printed.
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* sum = mgr.make_plus(x, y);      // 3
  const Term* first = mgr.make_leq(sum, x);   // 4
  const Term* second = mgr.make_leq(x, sum);  // 5
  OpenPrinter2 commands(&mgr, "", "", true, nullptr);
  EXPECT_EQ(trace(commands, first), "(define-fun .def_3 () Int (+ x y))\n(assert (<= .def_3 x))\n");
  EXPECT_EQ(trace(commands, second), "(assert (<= x .def_3))\n");
  // With let only uses within the assertion count.
  OpenPrinter2 bindings(&mgr, "", "", false, nullptr);
  EXPECT_EQ(trace(bindings, first), "(assert (<= (+ x y) x))\n");
  EXPECT_EQ(trace(bindings, second), "(assert (<= x (+ x y)))\n");
}

TEST(ApiTrace, AnAssertedTermThatTheStoreUsesTwiceIsDefined) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* term = mgr.make_not(p);  // 2
  mgr.make_or(term, term);
  OpenPrinter2 printer(&mgr, "", "", true, nullptr);
  EXPECT_EQ(trace(printer, term), "(define-fun .def_2 () Bool (not p))\n(assert .def_2)\n");
  EXPECT_EQ(trace(printer, term), "(assert .def_2)\n");
}

TEST(ApiTrace, ATermHandledInlineStaysInline) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);  // 2
  OpenPrinter2 printer(&mgr, "", "", true, nullptr);
  EXPECT_EQ(trace(printer, inner), "(assert (not p))\n");
  EXPECT_EQ(trace(printer, mgr.make_and(inner, inner)), "(assert (and (not p) (not p)))\n");
}

TEST(ApiTrace, ALongTextIsDefined) {
  // 6 k + n bytes for k negations around a name of n letters: 4096 for 682 and 4.
  const auto negations = [](std::size_t count, const std::string& inner) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
      text += "(not ";
    }
    return text + inner + std::string(count, ')');
  };
  TermManager mgr;
  const Term* p = make_bool(mgr, "pppp");                       // 1
  const Term* at_limit = testing::make_negations(mgr, p, 682);  // 683
  OpenPrinter2 printer(&mgr, "", "", true, nullptr);
  EXPECT_EQ(trace(printer, at_limit), "(assert " + negations(682, "pppp") + ")\n");
  const Term* above = mgr.make_not(at_limit);  // 684
  EXPECT_EQ(trace(printer, above),
            "(define-fun .def_684 () Bool " + negations(683, "pppp") + ")\n(assert .def_684)\n");
  EXPECT_EQ(trace(printer, mgr.make_not(above)), "(assert (not .def_684))\n");
}

TEST(ApiTrace, TheMapHoldsEveryHandledSubterm) {
  SharedSum f;
  OpenPrinter2 printer(&f.mgr, "", "", true, nullptr);
  trace(printer, f.first);
  EXPECT_EQ(content(printer.trace_definitions),
            (std::map<std::uint64_t, std::string>{{1, "x"},
                                                  {2, "y"},
                                                  {3, ".def_3"},
                                                  {4, "(<= .def_3 x)"},
                                                  {5, "(<= y .def_3)"},
                                                  {6, "(and (<= .def_3 x) (<= y .def_3))"}}));
  trace(printer, f.x);
  EXPECT_EQ(printer.trace_definitions.size(), 6U);
}

TEST(ApiTrace, TheMapIsEmptiedForEachAssertionWithLet) {
  SharedSum f;
  OpenPrinter2 printer(&f.mgr, "", "", false, nullptr);
  for (int i = 0; i < 100; ++i) {
    printer.trace_definitions[f.mgr.make_number(i)] = "old";
  }
  const std::size_t buckets = printer.trace_definitions.bucket_count();
  ASSERT_GT(buckets, 31U);
  trace(printer, f.x);
  EXPECT_EQ(content(printer.trace_definitions), (std::map<std::uint64_t, std::string>{{1, "x"}}));
  EXPECT_EQ(printer.trace_definitions.bucket_count(), buckets);
}

TEST(ApiTrace, NothingIsDeclared) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* c = mgr.make_term(mgr.declare("c", a));
  const Term* same = mgr.make_equal(c, c);
  OpenPrinter2 printer(&mgr, "QF_UF", "sat", true, nullptr);
  EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_type_declaration(out, a); }),
            "(declare-sort U0 0)\n");
  EXPECT_EQ(trace(printer, same), "(assert (= c c))\n");
}

TEST(ApiTrace, DefinitionsUseTheDeclaredNameOfTheSort) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Symbol* f = mgr.declare("f", mgr.make_function_type({a}, a));
  const Term* c = mgr.make_term(mgr.declare("c", a));  // 1
  const Term* fc = mgr.make_term(f, {c});              // 2
  OpenPrinter2 printer(&mgr, "", "", true, nullptr);
  text_of([&](std::ostream& out) { printer.print_type_declaration(out, a); });
  EXPECT_EQ(trace(printer, mgr.make_equal(fc, mgr.make_term(f, {fc}))),
            "(define-fun .def_2 () U0 (f c))\n(assert (= .def_2 (f .def_2)))\n");
}

TEST(ApiTrace, SingleTermsAndScriptsAreUntouchedByTraces) {
  SharedSum f;
  OpenPrinter2 printer(&f.mgr, "", "", true, nullptr);
  trace(printer, f.second, ":named a");
  EXPECT_EQ(single_term(printer, f.second), "(let ((.def_3 (+ x y))) (<= .def_3 (+ .def_3 y)))\n");
  EXPECT_EQ(trace(printer, f.second), "(assert (<= .def_3 (+ .def_3 y)))\n");
  const std::string script = text_of([&](std::ostream& out) { printer.print_terms(out, {f.sum}); });
  EXPECT_NE(script.find("(define-fun .def_3 () Int (+ x y))\n(assert true)\n"), std::string::npos);
}

TEST(ApiTrace, AttributesAroundTermsAreRemembered) {
  SharedSum f;
  AnnotationMap attributes;
  attributes[f.sum] = {{"named", "s"}};
  OpenPrinter2 printer(&f.mgr, "", "", true, &attributes);
  EXPECT_EQ(trace(printer, f.second),
            "(define-fun .def_3 () Int (! (+ x y) :named s))\n"
            "(assert (<= .def_3 (+ .def_3 y)))\n");
  EXPECT_EQ(trace(printer, f.first), "(assert (and (<= .def_3 x) (<= y .def_3)))\n");
}

// After a failure.

struct Unprintable {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");                                                    // 1
  const Term* sum = mgr.make_plus(x, x);                                                 // 2
  const Term* atom = mgr.make_leq(sum, sum);                                             // 3
  const Term* foo = mgr.make_term(mgr.declare_interpreted("foo", mgr.get_bool_type()));  // 4
  const Term* formula = mgr.make_and(atom, foo);                                         // 5
  const char* message = "can't print interpreted symbol fooin SMT-LIB format";
};

TEST(ApiTrace, AFailureWithDefineFunKeepsWhatWasHandled) {
  Unprintable f;
  OpenPrinter2 printer(&f.mgr, "", "", true, nullptr);
  std::ostringstream out;
  EXPECT_EQ(error_of([&] { printer.apitracer_print_term(out, f.formula, ":named a"); }), f.message);
  EXPECT_EQ(out.str(), "(define-fun .def_2 () Int (+ x x))\n");
  expect_at_rest(printer);
  EXPECT_EQ(printer.open_lets, 0);
  EXPECT_EQ(
      content(printer.trace_definitions),
      (std::map<std::uint64_t, std::string>{{1, "x"}, {2, ".def_2"}, {3, "(<= .def_2 .def_2)"}}));
  EXPECT_EQ(trace(printer, f.atom), "(assert (<= .def_2 .def_2))\n");
}

TEST(ApiTrace, AFailureWithLetLeavesBindingsForTheNextPieceToClose) {
  Unprintable f;
  OpenPrinter2 printer(&f.mgr, "", "", false, nullptr);
  std::ostringstream out;
  EXPECT_EQ(error_of([&] { printer.apitracer_print_term(out, f.formula, ":named a"); }), f.message);
  EXPECT_EQ(out.str(), "(assert (! (let ((.def_2 (+ x x)))\n");
  expect_at_rest(printer);
  EXPECT_EQ(printer.open_lets, 1);
  EXPECT_EQ(trace(printer, f.x), "(assert x))\n");
  EXPECT_EQ(printer.open_lets, 0);
  EXPECT_EQ(trace(printer, f.atom), "(assert (let ((.def_2 (+ x x)))\n(<= .def_2 .def_2)))\n");
}

TEST(ApiTrace, ADocumentAfterAFailureIsWhole) {
  Unprintable f;
  OpenPrinter2 printer(&f.mgr, "", "", false, nullptr);
  std::ostringstream out;
  error_of([&] { printer.apitracer_print_term(out, f.formula, ""); });
  EXPECT_EQ(printer.open_lets, 1);
  EXPECT_EQ(testing::document(printer, f.atom),
            "(set-info :source |printed by Brumlin|)\n(declare-fun x () Int)\n"
            "(assert (let ((.def_2 (+ x x)))\n(<= .def_2 .def_2)))\n");
}

// With let each assertion stands alone. A large one leaves many buckets behind, among which the
// entries of the small ones after it are looked for one by one.
TEST(ApiTrace, BucketsStayForTheNextAssertion) {
  TermManager mgr;
  OpenPrinter2 printer(&mgr, "", "", false, nullptr);
  const Term* p = make_bool(mgr, "p");
  trace(printer, testing::make_left_chain(mgr, 100'000));
  const std::size_t buckets = printer.trace_definitions.bucket_count();
  EXPECT_GT(buckets, 100'000U);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(trace(printer, p), "(assert p)\n");
    EXPECT_EQ(content(printer.trace_definitions).size(), 1U);
    EXPECT_EQ(trace(printer, mgr.make_not(p)), "(assert (not p))\n");
    EXPECT_EQ(content(printer.trace_definitions).size(), 2U);
    EXPECT_EQ(printer.trace_definitions.bucket_count(), buckets);
  }
  // Subterms that are shared again and again are looked for once.
  const Term* shared = p;
  for (int i = 0; i < 60; ++i) {
    shared = mgr.make_and(shared, shared);
  }
  trace(printer, shared);
  EXPECT_EQ(content(printer.trace_definitions).size(), 61U);
  trace(printer, p);
  EXPECT_EQ(content(printer.trace_definitions).size(), 1U);
  // What a subclass has put there goes too.
  printer.trace_definitions[mgr.make_true()] = "old";
  EXPECT_EQ(trace(printer, p), "(assert p)\n");
  EXPECT_EQ(content(printer.trace_definitions).size(), 1U);
  EXPECT_EQ(printer.trace_definitions.bucket_count(), buckets);
}

TEST(ApiTrace, TheFirstAssertionEmptiesTheMapToo) {
  TermManager mgr;
  OpenPrinter2 printer(&mgr, "", "", false, nullptr);
  printer.trace_definitions.rehash(1'000);
  printer.trace_definitions[mgr.make_true()] = "old";
  EXPECT_EQ(trace(printer, make_bool(mgr, "p")), "(assert p)\n");
  EXPECT_EQ(content(printer.trace_definitions).size(), 1U);
  EXPECT_EQ(printer.trace_definitions.bucket_count(), 1'291U);
}

TEST(ApiTrace, SmallAssertionsDoNotPayForALargeOneBeforeThem) {
  const auto seconds_after = [](std::size_t size) {
    TermManager mgr;
    OpenPrinter2 printer(&mgr, "", "", false, nullptr);
    const Term* p = make_bool(mgr, "p");
    const Term* small = mgr.make_and(p, mgr.make_not(p));
    trace(printer, testing::make_left_chain(mgr, size));
    trace(printer, small);
    double best = 1;
    for (int tries = 0; tries < 5; ++tries) {
      const auto begin = std::chrono::steady_clock::now();
      for (int i = 0; i < 200; ++i) {
        trace(printer, small);
      }
      const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
      best = std::min(best, time.count());
    }
    return best;
  };
  // Going through the buckets of the larger one takes hundreds of times as long.
  EXPECT_LT(seconds_after(testing::large_size(300'000)), 30 * seconds_after(30));
}

/// Throws at one term, after its arguments were handed over.
class FailingPrinter : public OpenPrinter2 {
 public:
  using OpenPrinter2::OpenPrinter2;
  const Term* fails_at = nullptr;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    OpenPrinter2::print_term_and_children(out, term, children);
    if (term == fails_at) {
      throw std::runtime_error("hook");
    }
  }
};

TEST(ApiTrace, TheMapHoldsTheTextsThatAFailingHookHad) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");              // 1
  const Term* q = make_bool(mgr, "q");              // 2
  const Term* left = mgr.make_and(p, q);            // 3
  const Term* right = mgr.make_or(p, q);            // 4
  const Term* formula = mgr.make_iff(left, right);  // 5
  FailingPrinter printer(&mgr, "", "", true, nullptr);
  printer.fails_at = formula;
  std::ostringstream out;
  EXPECT_THROW(printer.apitracer_print_term(out, formula, ":named a"), std::runtime_error);
  expect_at_rest(printer);
  EXPECT_EQ(content(printer.trace_definitions),
            (std::map<std::uint64_t, std::string>{
                {1, "p"}, {2, "q"}, {3, "(and p q)"}, {4, "(or p q)"}}));
  printer.fails_at = nullptr;
  EXPECT_EQ(trace(printer, formula), "(assert (= (and p q) (or p q)))\n");
}

// Long traces.

/// Counts the bytes of argument texts that the walk hands to the hook: the work of the copies.
class WorkCountingPrinter : public SmtLib2TermPrinter {
 public:
  using SmtLib2TermPrinter::SmtLib2TermPrinter;
  std::size_t work = 0;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    for (const std::string& child : children) {
      work += child.size();
    }
    SmtLib2TermPrinter::print_term_and_children(out, term, children);
  }
};

struct TraceCost {
  std::size_t bytes = 0;
  std::size_t work = 0;
};

/// Prints `calls` assertions, each made after the one before was printed. `grow` gives the next
/// value of a growing term.
TraceCost cost_of_trace(std::size_t calls, const Term* (*grow)(TermManager&, const Term*)) {
  TraceCost cost;
  testing::run_on_small_stack([&] {
    TermManager mgr;
    WorkCountingPrinter printer(&mgr, "", "", true, nullptr);
    testing::CountingStream out;
    const Term* x = make_int(mgr, "x");
    const Term* term = x;
    for (std::size_t i = 0; i < calls; ++i) {
      term = grow(mgr, term);
      printer.apitracer_print_term(out, mgr.make_leq(term, x), "");
    }
    EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
    cost = {out.counts.bytes, printer.work};
  });
  return cost;
}

TEST(ApiTrace, LongTracesOverAGrowingTermAreLinear) {
  using Grow = const Term* (*)(TermManager&, const Term*);
  const Grow growths[] = {
      [](TermManager& mgr, const Term* term) { return mgr.make_plus(term, term); },
      [](TermManager& mgr, const Term* term) { return mgr.make_plus(term, make_int(mgr, "x")); },
      [](TermManager& mgr, const Term* term) { return mgr.make_plus(mgr.make_number(-7), term); },
  };
  for (const Grow grow : growths) {
    const TraceCost small = cost_of_trace(2'000, grow);
    const TraceCost large = cost_of_trace(10'000, grow);
    // Five times the calls; labels get longer by a digit. Between two definitions an assertion is
    // up to 4 KiB long.
    EXPECT_LT(large.bytes, small.bytes * 6);
    EXPECT_LT(large.work, small.work * 6);
    EXPECT_LT(large.bytes, std::size_t{10'000} * 4'300);
  }
}

TEST(ApiTrace, ManyAssertionsOverOneLargeTermAreLinear) {
  // A text is cut off after 455 conjunctions of 9 bytes, so the whole of 11 times 455 is.
  TermManager mgr;
  const Term* large = testing::make_left_chain(mgr, 5'005);
  ASSERT_EQ(large->id, 5'007U);
  WorkCountingPrinter printer(&mgr, "", "", true, nullptr);
  testing::CountingStream out;
  printer.apitracer_print_term(out, large, "");
  const std::size_t first = out.counts.bytes;
  for (int i = 0; i < 1'000; ++i) {
    const Term* p = make_bool(mgr, "q" + std::to_string(i));
    printer.apitracer_print_term(out, mgr.make_or(large, p), "");
  }
  // "(assert (or .def_5007 q999))" and a line end at most.
  EXPECT_LE(out.counts.bytes - first, 1'000U * 29);
}

TEST(ApiTrace, DeepAssertionsNeedNoStack) {
  const std::size_t depth = testing::large_size(100'000);
  for (const bool define_fun : {true, false}) {
    testing::run_on_small_stack([&] {
      TermManager mgr;
      const Term* term = testing::make_right_chain(mgr, depth);
      SmtLib2TermPrinter printer(&mgr, "", "", define_fun, nullptr);
      testing::CountingStream out;
      printer.apitracer_print_term(out, term, ":named a");
      EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
      EXPECT_LT(out.counts.bytes, depth * 11);
    });
  }
}

}  // namespace
}  // namespace brum
