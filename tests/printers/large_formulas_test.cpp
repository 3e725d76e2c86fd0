// Deep, wide and shared formulas: their text means them, and time, memory and text are linear.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/printers/open_printers.h"
#include "tests/support/build_kind.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"
#include "tests/support/text_reader.h"

namespace brum {
namespace {

using testing::OpenPrinter;
using testing::OpenPrinter2;
using testing::run_on_small_stack;

/// The shapes, each with the formula (of sort Bool) that it gives for a number of compound terms.
struct Shape {
  const char* name;
  const Term* (*make)(TermManager&, std::size_t);
};

const Term* compared(TermManager& mgr, const Term* term) {
  return mgr.make_leq(term, testing::make_int(mgr, "limit"));
}

const Shape shapes[] = {
    {"negations",
     [](TermManager& mgr, std::size_t size) {
       return testing::make_negations(mgr, testing::make_bool(mgr, "p"), size);
     }},
    {"left chain",
     [](TermManager& mgr, std::size_t size) { return testing::make_left_chain(mgr, size); }},
    {"right chain",
     [](TermManager& mgr, std::size_t size) { return testing::make_right_chain(mgr, size); }},
    {"ladder", [](TermManager& mgr,
                  std::size_t size) { return compared(mgr, testing::make_ladder(mgr, size)); }},
    {"balanced tree",
     [](TermManager& mgr, std::size_t size) {
       return compared(mgr, testing::make_balanced_tree(mgr, size));
     }},
    {"random dag",
     [](TermManager& mgr, std::size_t size) {
       return compared(mgr, testing::make_random_dag(mgr, size, 7));
     }},
};

TEST(LargeFormulas, TheTextMeansTheFormula) {
  run_on_small_stack([] {
    for (const Shape& shape : shapes) {
      for (const std::size_t size : {10U, 64U, 65U, 66U, 67U, 130U, 131U, 5'000U}) {
        SCOPED_TRACE(std::string(shape.name) + " " + std::to_string(size));
        TermManager mgr;
        const Term* formula = shape.make(mgr, size);
        const std::size_t terms = mgr.num_terms();
        SmtLibTermPrinter v1(true, &mgr, "L", "sat");
        SmtLibTermPrinter v2(false, &mgr, "L", "sat");
        SmtLib2TermPrinter commands(&mgr, "L", "sat", true, nullptr);
        SmtLib2TermPrinter bindings(&mgr, "L", "sat", false, nullptr);
        EXPECT_EQ(testing::read_document(mgr, testing::document(v1, formula)), formula);
        EXPECT_EQ(testing::read_document(mgr, testing::document(v2, formula)), formula);
        EXPECT_EQ(testing::read_document(mgr, testing::document(commands, formula)), formula);
        EXPECT_EQ(testing::read_document(mgr, testing::document(bindings, formula)), formula);
        EXPECT_EQ(testing::read_expression(mgr, testing::single_term(v2, formula)), formula);
        EXPECT_EQ(mgr.num_terms(), terms);
      }
    }
  });
}

/// Counts the bytes of argument texts that the walk hands to the hook: the work of its copies.
class WorkCountingPrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::SmtLibTermPrinter;
  std::size_t work = 0;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    for (const std::string& child : children) {
      work += child.size();
    }
    SmtLibTermPrinter::print_term_and_children(out, term, children);
  }
};

struct Cost {
  std::size_t bytes = 0;
  std::size_t work = 0;
};

Cost cost_of(const Shape& shape, std::size_t size, bool v1) {
  Cost cost;
  run_on_small_stack([&] {
    TermManager mgr;
    const Term* formula = shape.make(mgr, size);
    WorkCountingPrinter printer(v1, &mgr, "L", "sat");
    testing::CountingStream out;
    printer.print_formula(out, formula);
    EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
    cost = {out.counts.bytes, printer.work};
  });
  return cost;
}

TEST(LargeFormulas, TextAndCopiesAreLinearInTheTerms) {
  const std::size_t size = testing::large_size(100'000);
  for (const Shape& shape : shapes) {
    for (const bool v1 : {true, false}) {
      SCOPED_TRACE(std::string(shape.name) + (v1 ? " v1" : " v2"));
      const Cost small = cost_of(shape, size / 10, v1);
      const Cost large = cost_of(shape, size, v1);
      // Ten times the terms, and one digit more in the names. A balanced tree has more levels, too,
      // and copies each leaf once a level.
      EXPECT_LT(large.bytes, small.bytes * 12);
      EXPECT_LT(large.work, small.work * 16);
      EXPECT_LT(large.bytes, size * 60);
      EXPECT_LT(large.work, size * 700);
    }
  }
}

TEST(LargeFormulas, AMillionTermsPrintOnASmallStack) {
  const std::size_t size = testing::large_size(1'000'000);
  for (const Shape& shape : shapes) {
    const Cost cost = cost_of(shape, size, false);
    EXPECT_GT(cost.bytes, size * 5) << shape.name;
    EXPECT_LT(cost.bytes, size * 60) << shape.name;
  }
}

TEST(LargeFormulas, ALadderIsBoundStepByStep) {
  // (let ((.def_K (+ .def_J .def_J))) for each step but the last.
  TermManager mgr;
  const std::size_t size = 2'000;
  const Term* formula = testing::make_ladder(mgr, size);
  std::string expected = "(let ((.def_2 (+ x x))) ";
  for (std::size_t id = 3; id <= size; ++id) {
    const std::string below = ".def_" + std::to_string(id - 1);
    expected += "(let ((.def_" + std::to_string(id) + " (+ " + below + " " + below + "))) ";
  }
  const std::string last = ".def_" + std::to_string(size);
  expected += "(+ " + last + " " + last + ")" + std::string(size - 1, ')');
  EXPECT_EQ(testing::v2_text(mgr, formula), expected);
}

TEST(LargeFormulas, MapsThatAreKeptHoldEveryText) {
  const std::size_t size = testing::large_size(100'000);
  run_on_small_stack([&] {
    TermManager mgr;
    const Term* formula = testing::make_right_chain(mgr, size);
    OpenPrinter printer(false, &mgr, "", "");
    testing::CountingStream out;
    DefinitionMap defs;
    const std::string text = printer.do_print_term(out, formula, defs);
    EXPECT_EQ(defs.size(), size + 2);
    std::size_t empty_texts = 0;
    for (const auto& [term, held] : defs) {
      empty_texts += held.empty() ? 1U : 0U;
    }
    EXPECT_EQ(empty_texts, 0U);
    EXPECT_EQ(defs[formula], text);
    EXPECT_EQ(printer.do_print_term(out, formula, defs), text);
  });
}

TEST(LargeFormulas, WideApplicationsAreLinear) {
  TermManager mgr;
  const std::size_t arity = 100'000;
  const std::vector<const DataType*> sorts(arity, mgr.get_bool_type());
  const Symbol* f = mgr.declare("f", mgr.make_function_type(sorts, mgr.get_bool_type()));
  const Term* p = testing::make_bool(mgr, "p");
  const Term* wide = mgr.make_term(f, std::vector<const Term*>(arity, p));
  OpenPrinter printer(false, &mgr, "", "");
  testing::CountingStream out;
  printer.print_single_term(out, mgr.make_not(wide), false);
  EXPECT_EQ(out.counts.bytes, std::string("(not (f))").size() + arity * 2);
}

}  // namespace
}  // namespace brum
