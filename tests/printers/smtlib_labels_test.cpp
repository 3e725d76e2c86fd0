// Labels of definitions, and the names of the user's that they must keep clear of.

#include <gtest/gtest.h>

#include <string>

#include "brum/printers/label_prefix.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"
#include "tests/support/text_reader.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_int;
using testing::single_term;
using testing::v1_text;
using testing::v2_text;

std::string label_of(TermPrinter& printer, const Term* term) {
  std::string label = "what was there before";
  printer.get_define_label(term, label);
  return label;
}

TEST(SmtLibLabels, DerivedPrintersMakeTheirOwn) {
  class Labelling : public SmtLibTermPrinter {
   public:
    using SmtLibTermPrinter::make_label;
    using SmtLibTermPrinter::SmtLibTermPrinter;
  };
  TermManager mgr;
  const Term* x = make_int(mgr, "x");  // 1
  mgr.declare("s_1", mgr.get_int_type());
  mgr.declare("s_1_", mgr.get_int_type());
  const Labelling printer(false, &mgr, "", "");
  EXPECT_EQ(printer.make_label("def_", x), "def_1");
  EXPECT_EQ(printer.make_label("s_", x), "s_1__");
}

TEST(SmtLibLabels, HavePrefixesOfAnyLength) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  for (std::size_t length = 1; length <= 100; ++length) {
    const std::string prefix(length, 's');
    WithLabelPrefix<SmtLibTermPrinter> printer(prefix, false, &mgr, "", "");
    std::string expected = prefix;
    expected += '1';
    EXPECT_EQ(label_of(printer, x), expected);
  }
}

TEST(SmtLibLabels, AreMadeOfPrefixAndId) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  const Term* v = testing::make_bv(mgr, "v", 8);
  SmtLibTermPrinter v1(true, &mgr, "", "");
  SmtLibTermPrinter v2(false, &mgr, "", "");
  EXPECT_EQ(label_of(v1, p), "$def_1");
  EXPECT_EQ(label_of(v1, x), "?def_2");
  EXPECT_EQ(label_of(v1, v), "?def_3");
  EXPECT_EQ(label_of(v2, p), ".def_1");
  EXPECT_EQ(label_of(v2, x), ".def_2");
  EXPECT_EQ(label_of(v2, v), ".def_3");
  EXPECT_EQ(label_of(v2, v), ".def_3");
  const Term* atom = mgr.make_bvule(v, v);
  EXPECT_EQ(label_of(v1, atom), "$def_4");
}

TEST(SmtLibLabels, GetAnUnderscoreForEachClash) {
  for (int clashes = 0; clashes <= 5; ++clashes) {
    TermManager mgr;
    const Term* p = make_bool(mgr, "p");  // 1
    const Term* x = make_int(mgr, "x");   // 2
    std::string tail;
    for (int i = 0; i < clashes; ++i) {
      for (const char* stem : {"$def_1", "?def_2", ".def_1", ".def_2"}) {
        mgr.declare(stem + tail, mgr.get_int_type());
      }
      tail += '_';
    }
    SmtLibTermPrinter v1(true, &mgr, "", "");
    SmtLibTermPrinter v2(false, &mgr, "", "");
    EXPECT_EQ(label_of(v1, p), "$def_1" + tail);
    EXPECT_EQ(label_of(v1, x), "?def_2" + tail);
    EXPECT_EQ(label_of(v2, p), ".def_1" + tail);
    EXPECT_EQ(label_of(v2, x), ".def_2" + tail);
  }
}

TEST(SmtLibLabels, ClashOnlyWithTheWholeNameOfAUserSymbol) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  for (const char* name :
       {".def_1_", ".def_", ".def_11", "def_1", ".DEF_1", "|.def_1|", "?def_1"}) {
    mgr.declare(name, mgr.get_int_type());
  }
  mgr.declare_interpreted(".def_1", mgr.get_int_type());
  SmtLibTermPrinter v2(false, &mgr, "", "");
  EXPECT_EQ(label_of(v2, x), ".def_1");
  // In version 1 only the prefix in use counts.
  SmtLibTermPrinter v1(true, &mgr, "", "");
  EXPECT_EQ(label_of(v1, x), "?def_1_");
  const Term* p = make_bool(mgr, "p");
  EXPECT_EQ(label_of(v1, p), "$def_2");
}

TEST(SmtLibLabels, AnySymbolOfThatNameClashes) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(label_of(printer, x), ".def_1");
  mgr.declare(".def_1", mgr.make_function_type({mgr.get_bool_type()}, mgr.get_int_type()));
  EXPECT_EQ(label_of(printer, x), ".def_1_");
  mgr.declare(".def_1_", mgr.make_uninterpreted_type("A"));
  EXPECT_EQ(label_of(printer, x), ".def_1__");
}

TEST(SmtLibLabels, FormulasWithSymbolsNamedLikeLabelsStayRight) {
  TermManager mgr;
  const Term* a = make_int(mgr, ".def_4");   // 1
  const Term* b = make_int(mgr, ".def_4_");  // 2
  const Term* c = make_int(mgr, "?def_4");   // 3
  const Term* sum = mgr.make_plus(a, b);     // 4
  ASSERT_EQ(sum->id, 4U);
  const Term* left = mgr.make_leq(sum, c);
  const Term* right = mgr.make_leq(mgr.make_plus(sum, a), b);
  const Term* formula = mgr.make_and(left, right);
  EXPECT_EQ(v2_text(mgr, formula),
            "(let ((.def_4__ (+ .def_4 .def_4_))) (and (<= .def_4__ ?def_4) (<= (+ .def_4__ "
            ".def_4) .def_4_)))");
  // In version 1 the names are escaped: a full stop may not begin, a question mark not be in them.
  EXPECT_EQ(v1_text(mgr, formula),
            "(let (?def_4_ (+ _.def_4 _.def_4_)) (and (<= ?def_4_ __h63_def_4) (<= (+ ?def_4_ "
            "_.def_4) _.def_4_)))");
}

TEST(SmtLibLabels, FormulasBoundByFletKeepClearToo) {
  TermManager mgr;
  const Term* a = make_bool(mgr, "$def_3");  // 1
  const Term* b = make_bool(mgr, ".def_3");  // 2
  const Term* both = mgr.make_and(a, b);     // 3
  const Term* formula = mgr.make_or(both, mgr.make_not(both));
  EXPECT_EQ(v1_text(mgr, formula),
            "(flet ($def_3_ (and __h36_def_3 _.def_3)) (or $def_3_ (not $def_3_)))");
  EXPECT_EQ(v2_text(mgr, formula),
            "(let ((.def_3_ (and $def_3 .def_3))) (or .def_3_ (not .def_3_)))");
}

TEST(SmtLibLabels, CommandsKeepClearToo) {
  TermManager mgr;
  const Term* a = make_int(mgr, ".def_2");  // 1
  const Term* sum = mgr.make_plus(a, a);    // 2
  const Term* formula = mgr.make_leq(sum, sum);
  mgr.declare(".def_2_", mgr.get_int_type());  // not in the formula: it clashes all the same
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  EXPECT_EQ(testing::document(printer, formula),
            "(set-info :source |printed by Brumlin|)\n"
            "(declare-fun .def_2 () Int)\n"
            "(define-fun .def_2__ () Int (+ .def_2 .def_2))\n"
            "(assert (<= .def_2__ .def_2__))\n");
}

TEST(SmtLibLabels, EveryTermOfALargeFormulaKeepsClear) {
  // Every compound term has a label that a variable of the formula bears.
  for (const unsigned seed : {1U, 2U, 3U}) {
    TermManager mgr;
    const Term* dag = testing::make_random_dag(mgr, 300, seed);
    for (int id = 1; id < 700; ++id) {
      const std::string label = ".def_" + std::to_string(id);
      dag = id % 7 == 0 ? mgr.make_plus(dag, make_int(mgr, label)) : dag;
      if (id % 3 == 0) {
        dag = mgr.make_plus(make_int(mgr, label + "_"), dag);
      }
    }
    const Term* formula = mgr.make_leq(dag, dag);
    EXPECT_EQ(testing::read_expression(mgr, v2_text(mgr, formula)), formula);
    SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
    EXPECT_EQ(testing::read_document(mgr, testing::document(printer, formula)), formula);
  }
}

TEST(LabelPrefix, LabelsBeginWithThePrefix) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* sum = mgr.make_plus(x, x);
  const Term* formula = mgr.make_leq(sum, sum);
  WithLabelPrefix<SmtLib2TermPrinter> printer("d_", &mgr, "QF_LIA", "", true, nullptr);
  EXPECT_EQ(label_of(printer, sum), "d_2");
  EXPECT_EQ(testing::document(printer, formula),
            "(set-logic QF_LIA)\n(set-info :source |printed by Brumlin|)\n"
            "(declare-fun x () Int)\n(define-fun d_2 () Int (+ x x))\n(assert (<= d_2 d_2))\n");
  EXPECT_EQ(single_term(printer, formula), "(let ((d_2 (+ x x))) (<= d_2 d_2))\n");
}

TEST(LabelPrefix, TheClashRuleHolds) {
  TermManager mgr;
  const Term* x = make_int(mgr, "d_2");
  const Term* sum = mgr.make_plus(x, x);
  const Term* formula = mgr.make_leq(sum, sum);
  mgr.declare("d_2_", mgr.get_bool_type());
  mgr.declare(".def_2", mgr.get_bool_type());
  WithLabelPrefix<SmtLib2TermPrinter> printer("d_", &mgr, "", "", false, nullptr);
  EXPECT_EQ(single_term(printer, formula), "(let ((d_2__ (+ d_2 d_2))) (<= d_2__ d_2__))\n");
  WithLabelPrefix<SmtLibTermPrinter> plain("e", false, &mgr, "", "");
  EXPECT_EQ(single_term(plain, formula), "(let ((e2 (+ d_2 d_2))) (<= e2 e2))");
}

}  // namespace
}  // namespace brum
