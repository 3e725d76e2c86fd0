#include "brum/printers/smtlib2_term_printer.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::declarations;
using testing::document;
using testing::make_bool;
using testing::make_int;
using testing::OpenPrinter;
using testing::OpenPrinter2;
using testing::single_term;
using testing::text_of;

static_assert(std::is_base_of_v<SmtLibTermPrinter, SmtLib2TermPrinter>);
static_assert(
    std::is_same_v<AnnotationMap,
                   hsh::HashMap<const Term*, std::vector<std::pair<std::string, std::string>>>>);
static_assert(std::is_same_v<decltype(OpenPrinter2::trace_definitions), DefinitionMap>);

const std::string source = "(set-info :source |printed by Brumlin|)\n";

TEST(SmtLib2TermPrinter, StartsWithItsArgumentsAndFixedFlags) {
  TermManager mgr;
  const AnnotationMap attributes;
  for (const bool define_fun : {true, false}) {
    const OpenPrinter2 printer(&mgr, "QF_LIA", "sat", define_fun, &attributes);
    EXPECT_FALSE(printer.v1_format);
    EXPECT_EQ(printer.use_define_fun, define_fun);
    EXPECT_FALSE(printer.in_api_trace);
    EXPECT_EQ(printer.assert_attribute, "");
    EXPECT_TRUE(printer.trace_definitions.empty());
    EXPECT_EQ(printer.trace_definitions.bucket_count(), 31U);
    EXPECT_EQ(printer.annotations, &attributes);
    EXPECT_FALSE(printer.single_term);
    EXPECT_TRUE(printer.use_newlines);
    EXPECT_EQ(printer.open_lets, 0);
  }
}

/// (and (<= s y) (<= y s)) with s = (+ x y), which has id 3.
struct SharedSum {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* sum = mgr.make_plus(x, y);
  const Term* below = mgr.make_leq(sum, y);
  const Term* above = mgr.make_leq(y, sum);
  const Term* formula = mgr.make_and(below, above);
  std::string declared() {
    return declarations({formula},
                        {{x, "(declare-fun x () Int)\n"}, {y, "(declare-fun y () Int)\n"}});
  }
};

TEST(SmtLib2TermPrinter, DocumentsWithDefineFun) {
  SharedSum f;
  SmtLib2TermPrinter printer(&f.mgr, "QF_LIA", "sat", true, nullptr);
  EXPECT_EQ(document(printer, f.formula), "(set-logic QF_LIA)\n(set-info :status sat)\n" + source +
                                              f.declared() +
                                              "(define-fun .def_3 () Int (+ x y))\n"
                                              "(assert (and (<= .def_3 y) (<= y .def_3)))\n");
}

TEST(SmtLib2TermPrinter, DocumentsWithLet) {
  SharedSum f;
  SmtLib2TermPrinter printer(&f.mgr, "QF_LIA", "sat", false, nullptr);
  EXPECT_EQ(document(printer, f.formula), "(set-logic QF_LIA)\n(set-info :status sat)\n" + source +
                                              f.declared() +
                                              "(assert (let ((.def_3 (+ x y)))\n"
                                              "(and (<= .def_3 y) (<= y .def_3))))\n");
}

TEST(SmtLib2TermPrinter, DocumentsWithoutDefinitions) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  for (const bool define_fun : {true, false}) {
    SmtLib2TermPrinter printer(&mgr, "", "", define_fun, nullptr);
    EXPECT_EQ(document(printer, p), source + "(declare-fun p () Bool)\n(assert p)\n");
  }
}

TEST(SmtLib2TermPrinter, ASingleTermIsAlwaysPrintedWithLet) {
  SharedSum f;
  for (const bool define_fun : {true, false}) {
    OpenPrinter2 printer(&f.mgr, "QF_LIA", "sat", define_fun, nullptr);
    EXPECT_EQ(single_term(printer, f.formula, false),
              "(let ((.def_3 (+ x y))) (and (<= .def_3 y) (<= y .def_3)))\n");
    EXPECT_EQ(single_term(printer, f.formula, true),
              "(let ((.def_3 (+ x y)))\n(and (<= .def_3 y) (<= y .def_3)))\n");
    EXPECT_EQ(single_term(printer, f.x, false), "x\n");
    EXPECT_EQ(single_term(printer, f.x, true), "x\n");
    EXPECT_FALSE(printer.single_term);
    EXPECT_TRUE(printer.use_newlines);
  }
}

TEST(SmtLib2TermPrinter, PrintTermBringsTheLineEndOfTheSingleTerm) {
  SharedSum f;
  SmtLib2TermPrinter printer(&f.mgr, "", "", true, nullptr);
  EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_term(out, f.x, false); }), "x\n");
}

/// The state that decides the hooks.
struct Mode {
  bool define_fun;
  bool single_term;
  bool in_api_trace;
  const char* attribute;
};

void set_mode(OpenPrinter2& printer, const Mode& mode) {
  printer.single_term = mode.single_term;
  printer.in_api_trace = mode.in_api_trace;
  printer.assert_attribute = mode.attribute;
}

TEST(SmtLib2TermPrinter, HooksByThemselvesInEveryMode) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const struct {
    Mode mode;
    const char* section;
    const char* formula;
    const char* define_start;
    const char* define_end;
    const char* define_end_without_newlines;
    int open_lets_after_start;
    const char* end;  // with two open bindings
  } rows[] = {
      // A document.
      {{true, false, false, ""},
       "",
       "(assert F",
       "(define-fun L () Int ",
       ")\n",
       ")\n",
       0,
       ")))\n"},
      {{false, false, false, ""}, "(assert ", "F", "(let ((L ", "))\n", ")) ", 1, ")))\n"},
      {{true, false, false, ":named a"},
       "",
       "(assert (! F",
       "(define-fun L () Int ",
       ")\n",
       ")\n",
       0,
       ")) :named a))\n"},
      {{false, false, false, ":named a"},
       "(assert (! ",
       "F",
       "(let ((L ",
       "))\n",
       ")) ",
       1,
       ")) :named a))\n"},
      // A plain single term.
      {{true, true, false, ""}, "", "F", "(let ((L ", "))\n", ")) ", 1, "))\n"},
      {{false, true, false, ""}, "", "F", "(let ((L ", "))\n", ")) ", 1, "))\n"},
      {{false, true, false, ":named a"}, "", "F", "(let ((L ", "))\n", ")) ", 1, "))\n"},
      // A trace.
      {{true, true, true, ""}, "", "(assert F", "(define-fun L () Int ", ")\n", ")\n", 0, ")))\n"},
      {{false, true, true, ""}, "(assert ", "F", "(let ((L ", "))\n", ")) ", 1, ")))\n"},
      {{true, true, true, ":named a"},
       "",
       "(assert (! F",
       "(define-fun L () Int ",
       ")\n",
       ")\n",
       0,
       ")) :named a))\n"},
      {{false, true, true, ":named a"},
       "(assert (! ",
       "F",
       "(let ((L ",
       "))\n",
       ")) ",
       1,
       ")) :named a))\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.mode.define_fun ? "define-fun" : "let") +
                 (row.mode.single_term ? " single" : "") + (row.mode.in_api_trace ? " trace" : ""));
    OpenPrinter2 printer(&mgr, "L", "S", row.mode.define_fun, nullptr);
    set_mode(printer, row.mode);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_section_start(out); }),
              row.section);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_formula_term(out, "F", x); }),
              row.formula);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_start(out, "L", x); }),
              row.define_start);
    EXPECT_EQ(printer.open_lets, row.open_lets_after_start);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_end(out, x); }),
              row.define_end);
    printer.use_newlines = false;
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_end(out, x); }),
              row.define_end_without_newlines);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_formula_term(out, "F", x); }),
              row.formula);
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_section_end(out); }), "");
    printer.open_lets = 2;
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_end(out); }), row.end);
    EXPECT_EQ(printer.open_lets, 0);
  }
}

TEST(SmtLib2TermPrinter, EndClosesEveryOpenBinding) {
  TermManager mgr;
  OpenPrinter2 printer(&mgr, "", "", false, nullptr);
  const auto end = [&](std::ostream& out) { printer.print_end(out); };
  printer.open_lets = 3;
  EXPECT_EQ(text_of(end), "))))\n");
  EXPECT_EQ(printer.open_lets, 0);
  EXPECT_EQ(text_of(end), ")\n");
  printer.open_lets = -1;
  EXPECT_EQ(text_of(end), ")\n");
  EXPECT_EQ(printer.open_lets, 0);
  printer.single_term = true;
  printer.open_lets = 3;
  EXPECT_EQ(text_of(end), ")))\n");
  EXPECT_EQ(printer.open_lets, 0);
}

TEST(SmtLib2TermPrinter, DefinitionsTellTheSortOfTheTerm) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* rows[] = {
      make_bool(mgr, "b"),
      make_int(mgr, "i"),
      testing::make_real(mgr, "r"),
      testing::make_bv(mgr, "v", 8),
      mgr.make_term(mgr.declare("m", mgr.make_array_type(mgr.get_int_type(), a))),
      mgr.make_term(mgr.declare("u", a)),
  };
  const char* sorts[] = {"Bool", "Int", "Real", "(_ BitVec 8)", "(Array Int U0)", "U0"};
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  text_of([&](std::ostream& out) { printer.print_type_declaration(out, a); });
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_define_start(out, ".L", rows[i]); }),
              std::string("(define-fun .L () ") + sorts[i] + " ");
  }
}

TEST(SmtLib2TermPrinter, InheritedHooksAreThoseOfVersion2) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Symbol* c = mgr.declare("c", a);
  SmtLib2TermPrinter printer(&mgr, "QF_UF", "unsat", true, nullptr);
  EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_start(out); }),
            "(set-logic QF_UF)\n(set-info :status unsat)\n" + source);
  EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_type_declaration(out, a); }),
            "(declare-sort U0 0)\n");
  EXPECT_EQ(text_of([&](std::ostream& out) { printer.print_symbol_declaration(out, c); }),
            "(declare-fun c () U0)\n");
  std::string label;
  printer.get_define_label(mgr.make_term(c), label);
  EXPECT_EQ(label, ".def_1");
}

// Attributes around terms.

TEST(SmtLib2TermPrinter, TermsWithoutAnEntryArePrintedAsTheyAre) {
  TermManager mgr;
  const Term* x = make_bool(mgr, "x");
  const Term* y = make_bool(mgr, "y");
  const Term* both = mgr.make_and(x, y);
  AnnotationMap empty;
  AnnotationMap of_another;
  of_another[x] = {{"named", "a1"}};
  OpenPrinter plain(false, &mgr, "", "");
  const auto expected = text_of([&](std::ostream& out) {
    plain.print_term_and_children(out, both, {"x", "y"});
  });
  EXPECT_EQ(expected, "(and x y)");
  for (const AnnotationMap* attributes :
       {static_cast<const AnnotationMap*>(nullptr), static_cast<const AnnotationMap*>(&empty),
        static_cast<const AnnotationMap*>(&of_another)}) {
    SmtLib2TermPrinter printer(&mgr, "", "", true, attributes);
    EXPECT_EQ(text_of([&](std::ostream& out) {
                printer.print_term_and_children(out, both, {"x", "y"});
              }),
              expected);
  }
}

TEST(SmtLib2TermPrinter, AttributesStandAroundTheTerm) {
  TermManager mgr;
  const Term* x = make_bool(mgr, "x");
  const Term* y = make_bool(mgr, "y");
  const Term* both = mgr.make_and(x, y);
  const struct {
    std::vector<std::pair<std::string, std::string>> attributes;
    const char* text;
  } rows[] = {
      {{{"named", "a1"}, {"weight", "2"}}, "(! (and x y) :named a1 :weight 2)"},
      {{{"weight", "2"}, {"named", "a1"}}, "(! (and x y) :weight 2 :named a1)"},
      {{{"pattern", "((f x) (g y))"}}, "(! (and x y) :pattern ((f x) (g y)))"},
      {{{"note", ""}}, "(! (and x y) :note )"},
      {{}, "(! (and x y))"},
  };
  for (const auto& row : rows) {
    AnnotationMap attributes;
    attributes[both] = row.attributes;
    SmtLib2TermPrinter printer(&mgr, "", "", true, &attributes);
    EXPECT_EQ(text_of([&](std::ostream& out) {
                printer.print_term_and_children(out, both, {"x", "y"});
              }),
              row.text);
  }
}

TEST(SmtLib2TermPrinter, AttributesInDocuments) {
  TermManager mgr;
  const Term* x = make_bool(mgr, "x");
  const Term* not_x = mgr.make_not(x);  // 2
  const Term* formula = mgr.make_or(not_x, mgr.make_and(not_x, x));
  AnnotationMap attributes;
  attributes[x] = {{"c", "1"}};
  attributes[not_x] = {{"named", "n"}};
  attributes[formula] = {{"named", "f"}};
  const std::string declared = source + "(declare-fun x () Bool)\n";
  SmtLib2TermPrinter commands(&mgr, "", "", true, &attributes);
  EXPECT_EQ(document(commands, formula),
            declared +
                "(define-fun .def_2 () Bool (! (not (! x :c 1)) :named n))\n"
                "(assert (! (or .def_2 (and .def_2 (! x :c 1))) :named f))\n");
  SmtLib2TermPrinter bindings(&mgr, "", "", false, &attributes);
  EXPECT_EQ(document(bindings, formula),
            declared +
                "(assert (let ((.def_2 (! (not (! x :c 1)) :named n)))\n"
                "(! (or .def_2 (and .def_2 (! x :c 1))) :named f)))\n");
}

TEST(SmtLib2TermPrinter, AttributesAddedLaterAreSeen) {
  TermManager mgr;
  const Term* x = make_bool(mgr, "x");
  AnnotationMap attributes;
  SmtLib2TermPrinter printer(&mgr, "", "", false, &attributes);
  EXPECT_EQ(single_term(printer, x), "x\n");
  attributes[x] = {{"named", "n"}};
  EXPECT_EQ(single_term(printer, x), "(! x :named n)\n");
}

TEST(SmtLib2TermPrinter, ConversionsStandAroundAttributes) {
  TermManager mgr;
  const Term* i = make_int(mgr, "i");
  const Term* r = testing::make_real(mgr, "r");
  AnnotationMap attributes;
  attributes[i] = {{"named", "n"}};
  SmtLib2TermPrinter printer(&mgr, "", "", false, &attributes);
  EXPECT_EQ(single_term(printer, mgr.make_plus(r, i)), "(+ r (to_real (! i :named n)))\n");
}

}  // namespace
}  // namespace brum
