// What is written before an error, and what a printer is good for after it.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::document;
using testing::error_of;
using testing::make_bool;
using testing::make_int;
using testing::OpenPrinter;
using testing::OpenPrinter2;
using testing::single_term;

const char* const foo_message = "can't print interpreted symbol fooin SMT-LIB format";

/// (and (<= s s) foo), where s is (+ x x) with id 2 and foo cannot be printed.
struct Unprintable {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* sum = mgr.make_plus(x, x);
  const Term* atom = mgr.make_leq(sum, sum);
  const Term* foo = mgr.make_term(mgr.declare_interpreted("foo", mgr.get_bool_type()));
  const Term* formula = mgr.make_and(atom, foo);
};

TEST(PrinterErrors, WhatWasWrittenStays) {
  Unprintable f;
  const struct {
    bool v1;
    const char* written;
    const char* next;
  } rows[] = {
      {true,
       "(benchmark unnamed\n:source { printed by Brumlin }\n:extrafuns ((x Int))\n\n:formula\n"
       "(let (?def_2 (+ x x))\n",
       "(benchmark unnamed\n:source { printed by Brumlin }\n:extrafuns ((x Int))\n\n:formula\n"
       "(let (?def_2 (+ x x))\n\n(<= ?def_2 ?def_2)\n)\n)\n"},
      {false,
       "(set-info :source |printed by Brumlin|)\n(declare-fun x () Int)\n(assert\n"
       "(let ((.def_2 (+ x x)))\n",
       "(set-info :source |printed by Brumlin|)\n(declare-fun x () Int)\n(assert\n"
       "(let ((.def_2 (+ x x)))\n(<= .def_2 .def_2)\n))\n"},
  };
  for (const auto& row : rows) {
    OpenPrinter printer(row.v1, &f.mgr, "", "");
    for (int times = 0; times < 2; ++times) {
      std::ostringstream out;
      EXPECT_EQ(error_of([&] { printer.print_formula(out, f.formula); }), foo_message);
      EXPECT_EQ(out.str(), row.written);
      EXPECT_EQ(printer.open_lets, 1);
      EXPECT_FALSE(printer.single_term);
      EXPECT_TRUE(printer.use_newlines);
      EXPECT_EQ(document(printer, f.atom), row.next);
      EXPECT_EQ(printer.open_lets, 0);
    }
  }
}

TEST(PrinterErrors, SingleTermsPutTheirFlagsBack) {
  Unprintable f;
  for (const bool newlines : {true, false}) {
    OpenPrinter printer(false, &f.mgr, "", "");
    std::ostringstream out;
    EXPECT_EQ(error_of([&] { printer.print_single_term(out, f.formula, newlines); }), foo_message);
    EXPECT_EQ(out.str(), std::string("(let ((.def_2 (+ x x)))") + (newlines ? "\n" : " "));
    EXPECT_FALSE(printer.single_term);
    EXPECT_TRUE(printer.use_newlines);
    EXPECT_EQ(single_term(printer, f.atom), "(let ((.def_2 (+ x x))) (<= .def_2 .def_2))");
  }
}

TEST(PrinterErrors, ATermThatCannotBePrintedAtAll) {
  Unprintable f;
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &f.mgr, "", "");
    std::ostringstream out;
    EXPECT_EQ(error_of([&] { printer.print_single_term(out, f.foo, false); }), foo_message);
    EXPECT_EQ(out.str(), "");
  }
}

TEST(PrinterErrors, NumeralsOfAnotherManagerAreRefused) {
  TermManager mgr;
  TermManager other;
  const Term* three = other.make_number(3);
  for (const bool v1_format : {true, false}) {
    OpenPrinter printer(v1_format, &mgr, "", "");
    std::ostringstream out;
    EXPECT_EQ(error_of([&] { printer.print_single_term(out, three, false); }),
              "can't print interpreted symbol 3in SMT-LIB format");
    EXPECT_EQ(out.str(), "");
  }
}

TEST(PrinterErrors, RefusedDeclarationsEndTheDocument) {
  TermManager mgr;
  const DataType* arrays = mgr.make_array_type(mgr.get_int_type(), mgr.get_real_type());
  const Term* m = mgr.make_term(mgr.declare("m", arrays));
  const Term* formula = mgr.make_equal(m, m);
  OpenPrinter printer(true, &mgr, "QF_AX", "");
  std::ostringstream out;
  EXPECT_EQ(error_of([&] { printer.print_formula(out, formula); }),
            "unsupported index type for Array: Int");
  EXPECT_EQ(out.str(),
            "(benchmark unnamed\n:logic QF_AX\n:source { printed by Brumlin }\n:extrafuns ((m");
  EXPECT_EQ(single_term(printer, formula), "(= m m)");
  const Symbol* f =
      mgr.declare("f", mgr.make_function_type({mgr.get_bool_type()}, mgr.get_bool_type()));
  std::ostringstream second;
  EXPECT_EQ(error_of([&] { printer.print_formula(second, mgr.make_term(f, {mgr.make_true()})); }),
            "SMT-LIB v1 format doesn't have an explicit Bool type");
  EXPECT_EQ(second.str(),
            "(benchmark unnamed\n:logic QF_AX\n:source { printed by Brumlin }\n:extrapreds ((f");
}

TEST(PrinterErrors, ErrorsAreOfTheFamilyAndCanBeCopiedAndAddedTo) {
  Unprintable f;
  OpenPrinter printer(false, &f.mgr, "", "");
  std::string seen;
  try {
    try {
      printer.to_smtlib(f.foo->symbol);
    } catch (Exception& error) {
      error.stream() << ", line " << 12;
      throw;
    }
  } catch (const TermPrinter::error& error) {
    const TermPrinter::error copy = error;
    seen = copy.what();
  }
  EXPECT_EQ(seen, std::string(foo_message) + ", line 12");
}

/// Throws something that is no error of the library's from one hook.
class ThrowingPrinter : public OpenPrinter2 {
 public:
  using OpenPrinter2::OpenPrinter2;
  std::string throws_in;

  void print_start(std::ostream& out) override {
    check("start");
    OpenPrinter2::print_start(out);
  }
  void print_define_section_start(std::ostream& out) override {
    check("section");
    OpenPrinter2::print_define_section_start(out);
  }
  void print_define_start(std::ostream& out, const std::string& label, const Term* term) override {
    check("define start");
    OpenPrinter2::print_define_start(out, label, term);
  }
  void print_define_end(std::ostream& out, const Term* term) override {
    check("define end");
    OpenPrinter2::print_define_end(out, term);
  }
  void get_define_label(const Term* term, std::string& label) override {
    check("label");
    OpenPrinter2::get_define_label(term, label);
  }
  void print_formula_term(std::ostream& out, const std::string& text, const Term* term) override {
    check("formula");
    OpenPrinter2::print_formula_term(out, text, term);
  }
  void print_end(std::ostream& out) override {
    check("end");
    OpenPrinter2::print_end(out);
  }

 private:
  void check(const char* hook) const {
    if (throws_in == hook) {
      throw 12;
    }
  }
};

TEST(PrinterErrors, FlagsAreBackWhateverAHookThrows) {
  Unprintable f;
  for (const char* hook : {"start", "label", "define start", "define end", "formula", "end"}) {
    ThrowingPrinter printer(&f.mgr, "", "", true, nullptr);
    printer.throws_in = hook;
    std::ostringstream out;
    EXPECT_THROW(printer.print_single_term(out, f.atom, false), int) << hook;
    EXPECT_FALSE(printer.single_term) << hook;
    EXPECT_TRUE(printer.use_newlines) << hook;
    printer.throws_in = "";
    EXPECT_EQ(single_term(printer, f.atom), "(let ((.def_2 (+ x x))) (<= .def_2 .def_2))\n");
  }
  for (const char* hook : {"section", "label", "define start", "define end", "formula", "end"}) {
    ThrowingPrinter printer(&f.mgr, "", "", true, nullptr);
    printer.throws_in = hook;
    std::ostringstream out;
    EXPECT_THROW(printer.apitracer_print_term(out, f.atom, ":named a"), int) << hook;
    EXPECT_FALSE(printer.single_term) << hook;
    EXPECT_FALSE(printer.in_api_trace) << hook;
    EXPECT_EQ(printer.assert_attribute, "") << hook;
    EXPECT_EQ(printer.open_lets, 0) << hook;
  }
}

TEST(PrinterErrors, ADefinitionThatWasBegunStays) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);
  class NoCompounds : public OpenPrinter2 {
   public:
    using OpenPrinter2::OpenPrinter2;
    void print_term_and_children(std::ostream& out, const Term* term,
                                 const std::vector<std::string>& children) override {
      if (term->symbol->arity != 0) {
        throw error("no text");
      }
      OpenPrinter2::print_term_and_children(out, term, children);
    }
  };
  NoCompounds printer(&mgr, "", "", true, nullptr);
  std::ostringstream out;
  EXPECT_EQ(error_of([&] { printer.apitracer_print_term(out, mgr.make_and(inner, inner), ""); }),
            "no text");
  EXPECT_EQ(out.str(), "(define-fun .def_2 () Bool ");
}

}  // namespace
}  // namespace brum
