#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "tests/printers/open_printers.h"
#include "tests/support/build_kind.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_int;
using testing::make_real;
using testing::OpenPrinter;

/// Records what print_atom() hands to print_term().
class HandOverPrinter : public OpenPrinter {
 public:
  using OpenPrinter::OpenPrinter;
  std::vector<const Term*> handed_over;

  void print_single_term(std::ostream& out, const Term* term, bool newlines) override {
    handed_over.push_back(term);
    EXPECT_FALSE(newlines);
    OpenPrinter::print_single_term(out, term, newlines);
  }
};

struct AtomRow {
  const Term* term;
  const char* v1;
  const char* v2;
  std::vector<const Term*> handed_over;
};

void expect_atoms(TermManager& mgr, const std::vector<AtomRow>& rows) {
  for (const bool v1 : {true, false}) {
    HandOverPrinter printer(v1, &mgr, "QF_UF", "sat");
    for (const AtomRow& row : rows) {
      printer.handed_over.clear();
      EXPECT_EQ(testing::text_of([&](std::ostream& out) { printer.print_atom(out, row.term); }),
                v1 ? row.v1 : row.v2);
      EXPECT_EQ(printer.handed_over, row.handed_over) << row.v2;
      EXPECT_FALSE(printer.single_term);
      EXPECT_TRUE(printer.use_newlines);
      EXPECT_EQ(printer.open_lets, 0);
    }
  }
}

TEST(PrintAtom, AtomsAndNegatedAtomsAreFlat) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_real(mgr, "x");
  const Term* y = make_real(mgr, "y");
  const Term* z = make_real(mgr, "z");
  const Term* atom = mgr.make_leq(mgr.make_plus(x, y), z);
  const Term* not_p = mgr.make_not(p);
  const Term* not_not_p = mgr.make_not(not_p);
  expect_atoms(mgr, {
                        {p, "p", "p", {}},
                        {atom, "(<= (+ x y) z)", "(<= (+ x y) z)", {}},
                        {not_p, "(not p)", "(not p)", {}},
                        {not_not_p, "(not (not p))", "(not (not p))", {}},
                        {mgr.make_not(atom), "(not (<= (+ x y) z))", "(not (<= (+ x y) z))", {}},
                        {mgr.make_equal(x, y), "(= x y)", "(= x y)", {}},
                        {mgr.make_true(), "true", "true", {}},
                        {mgr.make_false(), "false", "false", {}},
                        {x, "x", "x", {}},
                        {mgr.make_plus(x, y), "(+ x y)", "(+ x y)", {}},
                        {mgr.make_number(-1), "(~ 1)", "(- 1)", {}},
                    });
}

TEST(PrintAtom, BooleanStructureIsHandedOver) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* either = mgr.make_or(p, q);
  const Term* same = mgr.make_iff(p, q);
  const Term* not_both = mgr.make_not(both);
  const Term* not_not_either = mgr.make_not(mgr.make_not(either));
  const Term* not_same = mgr.make_not(same);
  const Term* not_true = mgr.make_not(mgr.make_true());
  const Term* not_not_false = mgr.make_not(mgr.make_not(mgr.make_false()));
  expect_atoms(
      mgr, {
               {both, "(and p q)", "(and p q)", {both}},
               {either, "(or p q)", "(or p q)", {either}},
               {same, "(iff p q)", "(= p q)", {same}},
               {not_both, "(not (and p q))", "(not (and p q))", {not_both}},
               {not_not_either, "(not (not (or p q)))", "(not (not (or p q)))", {not_not_either}},
               {not_same, "(not (iff p q))", "(not (= p q))", {not_same}},
               {not_true, "(not true)", "(not true)", {not_true}},
               {not_not_false, "(not (not false))", "(not (not false))", {not_not_false}},
           });
}

TEST(PrintAtom, BooleanStructureBelowAnAtomIsHandedOver) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* both = mgr.make_and(p, q);                          // 5
  const Term* condition = mgr.make_or(both, mgr.make_not(both));  // 6, 7
  ASSERT_EQ(both->id, 5U);
  const Symbol* f =
      mgr.declare("f", mgr.make_function_type({p->sort(), p->sort(), p->sort()}, p->sort()));
  const Term* not_p = mgr.make_not(p);
  expect_atoms(mgr,
               {
                   {mgr.make_leq(mgr.make_ite(both, x, y), x),
                    "(<= (ite (and p q) x y) x)",
                    "(<= (ite (and p q) x y) x)",
                    {both}},
                   {mgr.make_leq(mgr.make_ite(not_p, x, y), x),
                    "(<= (ite (not p) x y) x)",
                    "(<= (ite (not p) x y) x)",
                    {}},
                   {mgr.make_not(mgr.make_leq(mgr.make_ite(condition, x, y), x)),
                    "(not (<= (ite (flet ($def_5 (and p q)) (or $def_5 (not $def_5))) x y) x))",
                    "(not (<= (ite (let ((.def_5 (and p q))) (or .def_5 (not .def_5))) x y) x))",
                    {condition}},
                   {mgr.make_term(f, {both, not_p, mgr.make_true()}),
                    "(f (and p q) (not p) true)",
                    "(f (and p q) (not p) true)",
                    {both}},
                   {mgr.make_not(mgr.make_term(f, {mgr.make_not(both), both, q})),
                    "(not (f (not (and p q)) (and p q) q))",
                    "(not (f (not (and p q)) (and p q) q))",
                    {mgr.make_not(both), both}},
               });
}

TEST(PrintAtom, FlatTextHasNoConversionsDifferencesOrLabels) {
  TermManager mgr;
  const Term* i = make_int(mgr, "i");
  const Term* j = make_int(mgr, "j");
  const Term* r = make_real(mgr, "r");
  const Term* sum = mgr.make_plus(i, j);
  expect_atoms(mgr,
               {
                   {mgr.make_leq(i, r), "(<= i r)", "(<= i r)", {}},
                   {mgr.make_plus(r, sum), "(+ r (+ i j))", "(+ r (+ i j))", {}},
                   {mgr.make_int_modular_congruence(3, i, j),
                    "(divisible[3] i j)",
                    "((_ divisible 3) i j)",
                    {}},
                   {mgr.make_leq(sum, sum), "(<= (+ i j) (+ i j))", "(<= (+ i j) (+ i j))", {}},
               });
}

TEST(PrintAtom, AScriptPrinterBringsItsLineEnds) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  const Term* both = mgr.make_and(p, p);
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  const auto atom = [&](const Term* term) {
    return testing::text_of([&](std::ostream& out) { printer.print_atom(out, term); });
  };
  EXPECT_EQ(atom(mgr.make_leq(x, x)), "(<= x x)");
  EXPECT_EQ(atom(both), "(and p p)\n");
  EXPECT_EQ(atom(mgr.make_leq(mgr.make_ite(both, x, x), x)), "(<= (ite (and p p)\n x x) x)");
}

TEST(PrintAtom, UnprintableSymbolsThrow) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* foo = mgr.make_term(mgr.declare_interpreted("foo", mgr.get_int_type()));
  OpenPrinter printer(false, &mgr, "", "");
  std::ostringstream out;
  EXPECT_EQ(testing::error_of([&] { printer.print_atom(out, mgr.make_leq(x, foo)); }),
            "can't print interpreted symbol fooin SMT-LIB format");
  EXPECT_EQ(out.str(), "(<= x ");
  const DataType* type = mgr.make_function_type({mgr.get_int_type()}, mgr.get_bool_type());
  const Term* bar = mgr.make_term(mgr.declare_interpreted("bar", type), {x});
  out.str("");
  EXPECT_EQ(testing::error_of([&] { printer.print_atom(out, mgr.make_not(bar)); }),
            "can't print interpreted symbol barin SMT-LIB format");
  EXPECT_EQ(out.str(), "(not (");
}

TEST(PrintAtom, DeepNegationsAreFlatInLinearTimeOnASmallStack) {
  const std::size_t depth = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* atom = testing::make_negations(mgr, make_bool(mgr, "p"), depth);
    HandOverPrinter printer(false, &mgr, "", "");
    testing::CountingStream out;
    printer.print_atom(out, atom);
    EXPECT_EQ(out.counts.bytes, depth * 6 + 1);  // "(not " and ")" around "p"
    EXPECT_EQ(out.counts.open_brackets, depth);
    EXPECT_EQ(out.counts.close_brackets, depth);
    EXPECT_TRUE(printer.handed_over.empty());
  });
}

TEST(PrintAtom, DeepTermsNeedNoStack) {
  const std::size_t depth = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* c = make_bool(mgr, "c");
    const Term* x = make_int(mgr, "x");
    const Term* term = x;
    for (std::size_t i = 0; i < depth; ++i) {
      term = i % 2 == 0 ? mgr.make_plus(x, term) : mgr.make_ite(c, term, x);
    }
    OpenPrinter printer(false, &mgr, "", "");
    testing::CountingStream out;
    printer.print_atom(out, mgr.make_leq(term, x));
    // "(+ x " ")", "(ite c " " x)" and around all "(<= " " x)".
    EXPECT_EQ(out.counts.bytes, depth / 2 * 6 + depth / 2 * 10 + 8);
  });
}

TEST(PrintAtom, DeeplyNestedConditionsAreEachHandedOver) {
  // (ite (or c (<= x0 x)) x0 x) and so on: only the outermost condition reaches print_term().
  const std::size_t depth = testing::large_size(100'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* c = make_bool(mgr, "c");
    const Term* x = make_int(mgr, "x");
    const Term* y = make_int(mgr, "y");
    const Term* term = x;
    for (std::size_t i = 0; i < depth; ++i) {
      term = mgr.make_ite(mgr.make_or(c, mgr.make_leq(term, y)), x, y);
    }
    HandOverPrinter printer(false, &mgr, "", "");
    testing::CountingStream out;
    printer.print_atom(out, term);
    EXPECT_EQ(printer.handed_over.size(), 1U);
    EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
    EXPECT_LT(out.counts.bytes, depth * 60);
  });
}

}  // namespace
}  // namespace brum
