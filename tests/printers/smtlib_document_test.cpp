#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/utils/large_memory.h"
#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::declarations;
using testing::document;
using testing::make_bool;
using testing::make_int;
using testing::make_real;
using testing::OpenPrinter;
using testing::single_term;
using testing::text_of;
using testing::v1_text;
using testing::v2_text;

/// (and (<= (+ x y) z) (<= z (+ x y))) over reals, the sum with id 7.
struct SharedSum {
  TermManager mgr;
  const Term* x = make_real(mgr, "x");
  const Term* y = make_real(mgr, "y");
  const Term* z = make_real(mgr, "z");
  const Term* fillers[3] = {mgr.make_true(), mgr.make_false(), mgr.make_number(1)};
  const Term* sum = mgr.make_plus(x, y);
  const Term* below = mgr.make_leq(sum, z);
  const Term* above = mgr.make_leq(z, sum);
  const Term* formula = mgr.make_and(below, above);
};

TEST(SmtLibDocument, ManySymbolsAreEachDeclaredOnce) {
  TermManager mgr;
  const Term* all = mgr.make_true();
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    all = mgr.make_and(all, make_bool(mgr, "p" + number));
  }
  SmtLibTermPrinter printer(false, &mgr, "QF_UF", "sat");
  const std::string text = document(printer, all);
  for (int i = 0; i < 100; ++i) {
    const std::string line = "(declare-fun p" + std::to_string(i) + " () Bool)\n";
    const std::size_t place = text.find(line);
    EXPECT_NE(place, std::string::npos) << line;
    EXPECT_EQ(text.find(line, place + 1), std::string::npos) << line;
  }
}

TEST(SmtLibDocument, Version1OfTheSharedSum) {
  SharedSum f;
  SmtLibTermPrinter printer(true, &f.mgr, "QF_LRA", "sat");
  EXPECT_EQ(document(printer, f.formula),
            "(benchmark unnamed\n"
            ":status sat\n"
            ":logic QF_LRA\n"
            ":source { printed by Brumlin }\n" +
                declarations({f.formula}, {{f.x, ":extrafuns ((x Real))\n"},
                                           {f.y, ":extrafuns ((y Real))\n"},
                                           {f.z, ":extrafuns ((z Real))\n"}}) +
                "\n"
                ":formula\n"
                "(let (?def_7 (+ x y))\n"
                "\n"
                "(and (<= ?def_7 z) (<= z ?def_7))\n"
                ")\n"
                ")\n");
}

TEST(SmtLibDocument, Version2OfTheSharedSum) {
  SharedSum f;
  SmtLibTermPrinter printer(false, &f.mgr, "QF_LRA", "sat");
  EXPECT_EQ(document(printer, f.formula),
            "(set-logic QF_LRA)\n"
            "(set-info :status sat)\n"
            "(set-info :source |printed by Brumlin|)\n" +
                declarations({f.formula}, {{f.x, "(declare-fun x () Real)\n"},
                                           {f.y, "(declare-fun y () Real)\n"},
                                           {f.z, "(declare-fun z () Real)\n"}}) +
                "(assert\n"
                "(let ((.def_7 (+ x y)))\n"
                "(and (<= .def_7 z) (<= z .def_7))\n"
                "))\n");
}

TEST(SmtLibDocument, SingleTermsOfTheSharedSum) {
  SharedSum f;
  const struct {
    bool v1;
    bool newlines;
    const char* text;
  } rows[] = {
      {true, false, "(let (?def_7 (+ x y)) (and (<= ?def_7 z) (<= z ?def_7)))"},
      {false, false, "(let ((.def_7 (+ x y))) (and (<= .def_7 z) (<= z .def_7)))"},
      {true, true, "(let (?def_7 (+ x y))\n\n(and (<= ?def_7 z) (<= z ?def_7))\n)"},
      {false, true, "(let ((.def_7 (+ x y)))\n(and (<= .def_7 z) (<= z .def_7))\n)"},
  };
  for (const auto& row : rows) {
    OpenPrinter printer(row.v1, &f.mgr, "QF_LRA", "sat");
    EXPECT_EQ(single_term(printer, f.formula, row.newlines), row.text);
    EXPECT_FALSE(printer.single_term);
    EXPECT_TRUE(printer.use_newlines);
    EXPECT_EQ(printer.open_lets, 0);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_term(out, f.formula, row.newlines); }),
              row.text);
  }
}

// So many definitions that what they refer to is fetched ahead, from near by and from far away.
TEST(SmtLibDocument, ManyDefinitionsReferToNearAndFarOnes) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const Symbol* f = mgr.declare("f", mgr.make_function_type({integer, integer, integer}, integer));
  std::vector<const Term*> terms = {make_int(mgr, "x")};
  std::vector<std::string> labels = {"x"};
  std::string definitions;
  for (std::size_t i = 0; i < 12'000; ++i) {
    terms.push_back(mgr.make_term(f, {terms[i], terms[i / 2], terms[i]}));
    labels.push_back(".def_" + std::to_string(terms.back()->id));
    definitions += "(let ((" + labels[i + 1] + " (f " + labels[i] + " " + labels[i / 2] + " " +
                   labels[i] + ")))\n";
  }
  const Term* formula = mgr.make_equal(terms.back(), terms.back());
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(document(printer, formula),
            "(set-info :source |printed by Brumlin|)\n" +
                declarations({formula}, {{terms[0], "(declare-fun x () Int)\n"},
                                         {terms[1], "(declare-fun f (Int Int Int) Int)\n"}}) +
                "(assert\n" + definitions + "(= " + labels.back() + " " + labels.back() + ")\n" +
                std::string(labels.size() - 1, ')') + ")\n");
}

TEST(SmtLibDocument, SingleTermsWithoutDefinitions) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  SmtLibTermPrinter v1(true, &mgr, "QF_UF", "sat");
  SmtLibTermPrinter v2(false, &mgr, "QF_UF", "sat");
  EXPECT_EQ(single_term(v1, p, false), "p");
  EXPECT_EQ(single_term(v2, p, false), "p");
  EXPECT_EQ(single_term(v1, p, true), "\np\n");
  EXPECT_EQ(single_term(v2, p, true), "p\n");
}

TEST(SmtLibDocument, LongTextsWaitForTheirNeighbours) {
  for (const std::size_t length : {std::size_t{100}, std::size_t{20'000}, huge_page_bytes}) {
    TermManager mgr;
    const std::string a(length, 'a');
    const std::string b(length, 'b');
    const std::string c(length, 'c');
    const Term* first = mgr.make_or(make_bool(mgr, a), make_bool(mgr, b));
    const Term* second = mgr.make_not(mgr.make_or(make_bool(mgr, c), make_bool(mgr, "d")));
    const std::string text = v2_text(mgr, mgr.make_and(first, second));
    EXPECT_TRUE(text == "(and (or " + a + " " + b + ") (not (or " + c + " d)))") << length;
  }
}

// Of each rule of spelling that depends on operator or sort, with short and with long arguments.
TEST(SmtLibDocument, LongArgumentsAreSpelledAsShortOnesAre) {
  for (const std::size_t length : {1U, 10'000U, 40'000U}) {
    TermManager mgr;
    const std::string name(length, 'i');
    const Term* i = make_int(mgr, name);
    const Term* r = make_real(mgr, "r");
    const Term* negated = mgr.make_times(mgr.make_number(-1), i);
    EXPECT_TRUE(v2_text(mgr, mgr.make_leq(negated, r)) == "(<= (to_real (* (- 1) " + name + ")) r)")
        << length;
    EXPECT_TRUE(v2_text(mgr, mgr.make_int_modular_congruence(3, negated, i)) ==
                "((_ divisible 3) (- (* (- 1) " + name + ") " + name + "))")
        << length;
  }
}

TEST(SmtLibDocument, EmptyLogicAndStatusLeaveTheirLinesOut) {
  TermManager mgr;
  const Term* formula = mgr.make_true();
  const struct {
    bool v1;
    const char* logic;
    const char* status;
    const char* text;
  } rows[] = {
      {true, "", "",
       "(benchmark unnamed\n:source { printed by Brumlin }\n\n:formula\n\ntrue\n\n)\n"},
      {true, "QF_UF", "",
       "(benchmark unnamed\n:logic QF_UF\n:source { printed by Brumlin }\n\n:formula\n\ntrue\n\n)"
       "\n"},
      {true, "", "unknown",
       "(benchmark unnamed\n:status unknown\n:source { printed by Brumlin }\n\n:formula\n\ntrue\n\n"
       ")\n"},
      {true, "QF_UF", "sat",
       "(benchmark unnamed\n:status sat\n:logic QF_UF\n:source { printed by Brumlin }\n\n:formula\n"
       "\ntrue\n\n)\n"},
      {false, "", "", "(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n"},
      {false, "QF_UF", "",
       "(set-logic QF_UF)\n(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n"},
      {false, "", "unknown",
       "(set-info :status unknown)\n(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n"},
      {false, "QF_UF", "sat",
       "(set-logic QF_UF)\n(set-info :status sat)\n(set-info :source |printed by Brumlin|)\n"
       "(assert\ntrue\n)\n"},
  };
  for (const auto& row : rows) {
    SmtLibTermPrinter printer(row.v1, &mgr, row.logic, row.status);
    EXPECT_EQ(document(printer, formula), row.text);
  }
}

TEST(SmtLibDocument, AFormulaWithoutUserSymbolsDeclaresNothing) {
  TermManager mgr;
  const Term* formula = mgr.make_leq(mgr.make_number(1), mgr.make_number(2));
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(document(printer, formula),
            "(set-info :source |printed by Brumlin|)\n(assert\n(<= 1 2)\n)\n");
}

TEST(SmtLibDocument, TheSameDocumentTwice) {
  SharedSum f;
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &f.mgr, "QF_LRA", "sat");
    const std::string first = document(printer, f.formula);
    EXPECT_EQ(document(printer, f.formula), first);
    single_term(printer, f.formula);
    EXPECT_EQ(document(printer, f.formula), first);
  }
}

TEST(SmtLibDocument, FormulasAreBoundByFletInVersion1) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  const Term* sum = mgr.make_plus(x, x);      // 3
  const Term* atom = mgr.make_leq(sum, sum);  // 4
  const Term* formula = mgr.make_and(mgr.make_or(atom, p), atom);
  SmtLibTermPrinter v1(true, &mgr, "", "");
  EXPECT_EQ(single_term(v1, formula),
            "(let (?def_3 (+ x x)) (flet ($def_4 (<= ?def_3 ?def_3)) (and (or $def_4 p) $def_4)))");
  SmtLibTermPrinter v2(false, &mgr, "", "");
  EXPECT_EQ(single_term(v2, formula),
            "(let ((.def_3 (+ x x))) (let ((.def_4 (<= .def_3 .def_3))) (and (or .def_4 p) "
            ".def_4)))");
  EXPECT_EQ(document(v2, formula),
            "(set-info :source |printed by Brumlin|)\n" +
                declarations({formula},
                             {{p, "(declare-fun p () Bool)\n"}, {x, "(declare-fun x () Int)\n"}}) +
                "(assert\n(let ((.def_3 (+ x x)))\n(let ((.def_4 (<= .def_3 .def_3)))\n"
                "(and (or .def_4 p) .def_4)\n)))\n");
}

TEST(SmtLibDocument, IntegersUnderRealsAreConvertedInVersion2) {
  TermManager mgr;
  const Term* c = make_bool(mgr, "c");
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const Symbol* f =
      mgr.declare("f", mgr.make_function_type({r->sort(), i->sort(), r->sort()}, r->sort()));
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(i->sort(), r->sort())));
  const Term* two = mgr.make_plus(i, i);
  const struct {
    const Term* term;
    const char* v1;
    const char* v2;
  } rows[] = {
      {mgr.make_plus(r, i), "(+ r i)", "(+ r (to_real i))"},
      {mgr.make_plus(i, r), "(+ i r)", "(+ (to_real i) r)"},
      {mgr.make_plus(i, i), "(+ i i)", "(+ i i)"},
      {mgr.make_plus(r, mgr.make_number(2)), "(+ r 2)", "(+ r (to_real 2))"},
      {mgr.make_plus(r, mgr.make_number(2, r->sort())), "(+ r 2)", "(+ r 2)"},
      {mgr.make_times(r, mgr.make_number(-2)), "(* r (~ 2))", "(* r (to_real (- 2)))"},
      {mgr.make_leq(i, r), "(<= i r)", "(<= (to_real i) r)"},
      {mgr.make_equal(r, i), "(= r i)", "(= r (to_real i))"},
      {mgr.make_ite(c, i, r), "(ite c i r)", "(ite c (to_real i) r)"},
      {mgr.make_floor(r), "(to_int r)", "(to_int r)"},
      {mgr.make_floor(i), "(to_int i)", "(to_int (to_real i))"},
      {mgr.make_term(f, {i, i, r}), "(f i i r)", "(f (to_real i) i r)"},
      {mgr.make_store(m, i, i), "(store m i i)", "(store m i (to_real i))"},
      {mgr.make_times(mgr.make_plus(r, two), two), "(let (?def_5 (+ i i)) (* (+ r ?def_5) ?def_5))",
       "(let ((.def_5 (+ i i))) (* (+ r (to_real .def_5)) (to_real .def_5)))"},
  };
  ASSERT_EQ(two->id, 5U);
  for (const auto& row : rows) {
    EXPECT_EQ(v1_text(mgr, row.term), row.v1);
    EXPECT_EQ(v2_text(mgr, row.term), row.v2);
  }
}

TEST(SmtLibDocument, CongruencesAreDivisibilityOfTheDifference) {
  TermManager mgr;
  const Term* a = make_int(mgr, "a");
  const Term* b = make_int(mgr, "b");
  const Term* plain = mgr.make_int_modular_congruence(3, a, b);
  EXPECT_EQ(v1_text(mgr, plain), "(divisible[3] (- a b))");
  EXPECT_EQ(v2_text(mgr, plain), "((_ divisible 3) (- a b))");
  const Term* sum = mgr.make_plus(a, b);  // 4
  ASSERT_EQ(sum->id, 4U);
  const Term* shared = mgr.make_int_modular_congruence(12, sum, sum);
  EXPECT_EQ(v1_text(mgr, shared), "(let (?def_4 (+ a b)) (divisible[12] (- ?def_4 ?def_4)))");
  EXPECT_EQ(v2_text(mgr, shared), "(let ((.def_4 (+ a b))) ((_ divisible 12) (- .def_4 .def_4)))");
}

TEST(SmtLibDocument, IndexedOperatorsInApplications) {
  TermManager mgr;
  const Term* a = testing::make_bv(mgr, "a", 8);
  const struct {
    const Term* term;
    const char* v1;
    const char* v2;
  } rows[] = {
      {mgr.make_extract(7, 4, a), "(extract[7:4] a)", "((_ extract 7 4) a)"},
      {mgr.make_zero_extend(24, a), "(zero_extend[24] a)", "((_ zero_extend 24) a)"},
      {mgr.make_sign_extend(1, a), "(sign_extend[1] a)", "((_ sign_extend 1) a)"},
      {mgr.make_rotate_left(3, a), "(rotate_left[3] a)", "((_ rotate_left 3) a)"},
      {mgr.make_rotate_right(3, a), "(rotate_right[3] a)", "((_ rotate_right 3) a)"},
      {mgr.make_bvadd(a, mgr.make_bv_number(5, 8)), "(bvadd a bv5[8])", "(bvadd a (_ bv5 8))"},
      {mgr.make_concat(a, a), "(concat a a)", "(concat a a)"},
      {mgr.make_bvcomp(a, a), "(bvcomp a a)", "(bvcomp a a)"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(v1_text(mgr, row.term), row.v1);
    EXPECT_EQ(v2_text(mgr, row.term), row.v2);
  }
}

TEST(SmtLibDocument, ApplicationsAndConstants) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* sum = mgr.make_plus(x, x);
  const std::vector<std::string> texts = {"A", "(B)"};
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &mgr, "", "");
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_term_and_children(out, sum, texts); }),
              "(+ A (B))");
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_term_and_children(out, x, {}); }),
              "x");
  }
}

TEST(SmtLibDocument, DefinitionHooksByThemselves) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  const struct {
    bool v1;
    const Term* term;
    const char* start;
    const char* end;
  } rows[] = {
      {true, p, "(flet (L ", ")"},
      {true, x, "(let (L ", ")"},
      {false, p, "(let ((L ", "))"},
      {false, x, "(let ((L ", "))"},
  };
  for (const auto& row : rows) {
    OpenPrinter printer(row.v1, &mgr, "", "");
    const auto start = [&](std::ostream& out) { printer.print_define_start(out, "L", row.term); };
    const auto end = [&](std::ostream& out) { printer.print_define_end(out, row.term); };
    EXPECT_EQ(text_of(start), row.start);
    EXPECT_EQ(printer.open_lets, 1);
    EXPECT_EQ(text_of(start), row.start);
    EXPECT_EQ(printer.open_lets, 2);
    EXPECT_EQ(text_of(end), std::string(row.end) + "\n");
    printer.use_newlines = false;
    EXPECT_EQ(text_of(end), std::string(row.end) + " ");
    EXPECT_EQ(printer.open_lets, 2);
  }
}

TEST(SmtLibDocument, FramingHooksByThemselves) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const struct {
    bool v1;
    const char* start;
    const char* section;
    const char* end;
    const char* formula;
  } rows[] = {
      {true, "(benchmark unnamed\n:status S\n:logic L\n:source { printed by Brumlin }\n",
       "\n:formula\n", "\n)\n", "\nF\n"},
      {false, "(set-logic L)\n(set-info :status S)\n(set-info :source |printed by Brumlin|)\n",
       "(assert\n", ")\n", "F\n"},
  };
  for (const auto& row : rows) {
    OpenPrinter printer(row.v1, &mgr, "L", "S");
    const auto start = [&](std::ostream& out) { printer.print_start(out); };
    const auto section = [&](std::ostream& out) { printer.print_define_section_start(out); };
    const auto section_end = [&](std::ostream& out) { printer.print_define_section_end(out); };
    const auto end = [&](std::ostream& out) { printer.print_end(out); };
    const auto formula = [&](std::ostream& out) { printer.print_formula_term(out, "F", p); };

    printer.open_lets = 5;
    EXPECT_EQ(text_of(start), row.start);
    EXPECT_EQ(printer.open_lets, 0);
    EXPECT_EQ(text_of(section), row.section);
    EXPECT_EQ(text_of(formula), row.formula);
    EXPECT_EQ(text_of(section_end), "");
    EXPECT_EQ(text_of(end), row.end);
    printer.open_lets = 3;
    EXPECT_EQ(text_of(end), std::string(")))") + row.end);
    EXPECT_EQ(printer.open_lets, 0);
    printer.open_lets = -2;
    EXPECT_EQ(text_of(end), row.end);
    EXPECT_EQ(printer.open_lets, 0);
    printer.use_newlines = false;
    EXPECT_EQ(text_of(formula), "F");

    printer.single_term = true;
    printer.open_lets = 5;
    EXPECT_EQ(text_of(start), "");
    EXPECT_EQ(printer.open_lets, 0);
    EXPECT_EQ(text_of(section), "");
    EXPECT_EQ(text_of(section_end), "");
    printer.open_lets = 2;
    EXPECT_EQ(text_of(end), "))");
    EXPECT_EQ(printer.open_lets, 0);
  }
}

TEST(SmtLibDocument, TheEmptyNameIsWrittenAsNothing) {
  // Version 2 keeps it as it is; such a document is one for check_names() to warn of.
  TermManager mgr;
  const Term* formula = mgr.make_not(make_bool(mgr, ""));
  EXPECT_EQ(v2_text(mgr, formula), "(not )");
  EXPECT_EQ(v2_text(mgr, formula->children[0]), "");
  EXPECT_EQ(v1_text(mgr, formula), "(not _)");
}

}  // namespace
}  // namespace brum
