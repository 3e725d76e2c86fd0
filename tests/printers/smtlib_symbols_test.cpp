#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib_term_printer.h"
#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::error_of;
using testing::make_bool;
using testing::make_bv;
using testing::make_int;
using testing::OpenPrinter;

struct Spelling {
  const Term* term;
  const char* v1;
  const char* v2;
};

/// Checks the names of the heads, and how many of them the printer keeps.
void expect_spellings(TermManager& mgr, const std::vector<Spelling>& rows, bool kept) {
  for (const bool v1 : {true, false}) {
    for (const Spelling& row : rows) {
      OpenPrinter printer(v1, &mgr, "", "");
      const std::size_t names_before = printer.symbol_names.size();
      const std::string expected = v1 ? row.v1 : row.v2;
      EXPECT_EQ(printer.to_smtlib(row.term->symbol), expected);
      EXPECT_EQ(printer.symbol_names.size(), names_before + (kept ? 1 : 0)) << expected;
      EXPECT_EQ(printer.to_smtlib(row.term->symbol), expected);
      EXPECT_EQ(printer.symbol_names.size(), names_before + (kept ? 1 : 0)) << expected;
    }
  }
}

TEST(SmtLibSymbols, EqualityAndIfThenElseAreKept) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  const Term* r = testing::make_real(mgr, "r");
  const Term* v = make_bv(mgr, "v", 8);
  const Term* u = mgr.make_term(mgr.declare("u", mgr.make_uninterpreted_type("U")));
  expect_spellings(mgr,
                   {
                       {mgr.make_equal(x, x), "=", "="},
                       {mgr.make_equal(r, x), "=", "="},
                       {mgr.make_equal(v, v), "=", "="},
                       {mgr.make_equal(u, u), "=", "="},
                       {mgr.make_ite(p, x, x), "ite", "ite"},
                       {mgr.make_ite(p, v, v), "ite", "ite"},
                       {mgr.make_ite(p, u, u), "ite", "ite"},
                   },
                   true);
}

// A subclass may put texts of its own into the maps, also for what was spelt before.
TEST(SmtLibSymbols, TheMapsAreAskedFirst) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* v = make_bv(mgr, "v", 8);
  const Symbol* plus = mgr.make_plus(x, x)->symbol;
  const Symbol* bvnot = mgr.make_bvnot(v)->symbol;
  const Symbol* extension = mgr.make_zero_extend(1234567, v)->symbol;
  const DataType* type = mgr.make_function_type({mgr.get_int_type()}, mgr.get_int_type());
  const Symbol* f = mgr.declare("f", type);
  const std::string longer(200, 'l');
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    EXPECT_EQ(printer.to_smtlib(plus), "+");
    EXPECT_EQ(printer.to_smtlib(bvnot), "bvnot");
    EXPECT_EQ(printer.to_smtlib(extension),
              v1 ? "zero_extend[1234567]" : "(_ zero_extend 1234567)");
    EXPECT_EQ(printer.to_smtlib(f), "f");
    printer.symbol_names[plus] = "ADD";
    printer.tag_names[SymbolTag::bv_not] = "NOTNOT";
    printer.symbol_names[extension] = longer;
    EXPECT_EQ(printer.to_smtlib(plus), "ADD");
    EXPECT_EQ(printer.to_smtlib(bvnot), "NOTNOT");
    EXPECT_EQ(printer.to_smtlib(extension), longer);
    EXPECT_EQ(printer.to_smtlib(f), "f");
    printer.symbol_names[f] = "my_f";
    EXPECT_EQ(printer.to_smtlib(f), "my_f");
    EXPECT_EQ(printer.to_smtlib(plus), "ADD");
    // As many names as before, in other nodes.
    std::vector<std::pair<const Symbol*, std::string>> names;
    for (const auto& [symbol, name] : printer.symbol_names) {
      names.emplace_back(symbol, name);
    }
    printer.symbol_names.clear(false);
    for (const auto& [symbol, name] : names) {
      printer.symbol_names[symbol] = name;
    }
    EXPECT_EQ(printer.to_smtlib(f), "my_f");
    EXPECT_EQ(printer.to_smtlib(plus), "ADD");
    EXPECT_EQ(printer.to_smtlib(extension), longer);
    printer.symbol_names.clear(false);
    EXPECT_EQ(printer.to_smtlib(f), "f");
    EXPECT_EQ(printer.to_smtlib(extension),
              v1 ? "zero_extend[1234567]" : "(_ zero_extend 1234567)");
  }
}

TEST(SmtLibSymbols, BothMapsMayGrowBetweenTwoLookUps) {
  TermManager mgr;
  const Symbol* bvnot = mgr.make_bvnot(make_bv(mgr, "v", 8))->symbol;
  OpenPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(printer.to_smtlib(bvnot), "bvnot");
  printer.symbol_names[bvnot] = "MY_NOT";
  printer.tag_names[SymbolTag::bv_extract] = "unused";
  EXPECT_EQ(printer.to_smtlib(bvnot), "MY_NOT");
}

TEST(SmtLibSymbols, TheVersionIsThatOfTheMoment) {
  TermManager mgr;
  const DataType* type = mgr.make_function_type({mgr.get_int_type()}, mgr.get_int_type());
  const Symbol* f = mgr.declare("f~g", type);  // simple in version 2 only
  const Symbol* number = mgr.make_number(-3)->symbol;
  OpenPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(printer.to_smtlib(f), "f~g");
  EXPECT_EQ(printer.to_smtlib(number), "(- 3)");
  printer.v1_format = true;
  EXPECT_EQ(printer.to_smtlib(f), printer.to_smtlib(std::string("f~g")));
  EXPECT_NE(printer.to_smtlib(f), "f~g");
  EXPECT_EQ(printer.to_smtlib(number), "(- 3)");  // once worked out it stays
}

TEST(SmtLibSymbols, NamesOfTheOperatorTableAreNotKept) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 8);
  const Term* x = make_int(mgr, "x");
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(x->sort(), x->sort())));
  expect_spellings(
      mgr,
      {
          {mgr.make_concat(a, a), "concat", "concat"}, {mgr.make_bvnot(a), "bvnot", "bvnot"},
          {mgr.make_bvand(a, a), "bvand", "bvand"},    {mgr.make_bvor(a, a), "bvor", "bvor"},
          {mgr.make_bvxor(a, a), "bvxor", "bvxor"},    {mgr.make_bvult(a, a), "bvult", "bvult"},
          {mgr.make_bvslt(a, a), "bvslt", "bvslt"},    {mgr.make_bvule(a, a), "bvule", "bvule"},
          {mgr.make_bvsle(a, a), "bvsle", "bvsle"},    {mgr.make_bvcomp(a, a), "bvcomp", "bvcomp"},
          {mgr.make_bvneg(a), "bvneg", "bvneg"},       {mgr.make_bvadd(a, a), "bvadd", "bvadd"},
          {mgr.make_bvsub(a, a), "bvsub", "bvsub"},    {mgr.make_bvmul(a, a), "bvmul", "bvmul"},
          {mgr.make_bvudiv(a, a), "bvudiv", "bvudiv"}, {mgr.make_bvsdiv(a, a), "bvsdiv", "bvsdiv"},
          {mgr.make_bvurem(a, a), "bvurem", "bvurem"}, {mgr.make_bvsrem(a, a), "bvsrem", "bvsrem"},
          {mgr.make_bvshl(a, a), "bvshl", "bvshl"},    {mgr.make_bvlshr(a, a), "bvlshr", "bvlshr"},
          {mgr.make_bvashr(a, a), "bvashr", "bvashr"}, {mgr.make_select(m, x), "select", "select"},
          {mgr.make_store(m, x, x), "store", "store"},
      },
      false);
}

TEST(SmtLibSymbols, IndexedOperatorsCarryTheirNumbers) {
  TermManager mgr;
  const Term* a = make_bv(mgr, "a", 32);
  const Term* x = make_int(mgr, "x");
  const QNumber large = QNumber::from_string("123456789012345678901234567890");
  expect_spellings(
      mgr,
      {
          {mgr.make_int_modular_congruence(3, x, x), "divisible[3]", "(_ divisible 3)"},
          {mgr.make_int_modular_congruence(1, x, x), "divisible[1]", "(_ divisible 1)"},
          {mgr.make_int_modular_congruence(large, x, x),
           "divisible[123456789012345678901234567890]",
           "(_ divisible 123456789012345678901234567890)"},
          {mgr.make_extract(7, 4, a), "extract[7:4]", "(_ extract 7 4)"},
          {mgr.make_extract(31, 0, a), "extract[31:0]", "(_ extract 31 0)"},
          {mgr.make_extract(10, 10, a), "extract[10:10]", "(_ extract 10 10)"},
          {mgr.make_rotate_left(5, a), "rotate_left[5]", "(_ rotate_left 5)"},
          {mgr.make_rotate_right(40, a), "rotate_right[40]", "(_ rotate_right 40)"},
          {mgr.make_zero_extend(24, a), "zero_extend[24]", "(_ zero_extend 24)"},
          {mgr.make_sign_extend(0, a), "sign_extend[0]", "(_ sign_extend 0)"},
          {mgr.make_rotate_left(18446744073709551615U, a), "rotate_left[18446744073709551615]",
           "(_ rotate_left 18446744073709551615)"},
      },
      true);
}

TEST(SmtLibSymbols, NumeralsAreKept) {
  TermManager mgr;
  expect_spellings(mgr,
                   {
                       {mgr.make_number(0), "0", "0"},
                       {mgr.make_number(-3), "(~ 3)", "(- 3)"},
                       {mgr.make_number(QNumber(1, 2)), "(/ 1 2)", "(/ 1 2)"},
                       {mgr.make_number(QNumber(-1, 2)), "(~ (/ 1 2))", "(- (/ 1 2))"},
                       {mgr.make_number(7, mgr.get_real_type()), "7", "7"},
                       {mgr.make_bv_number(5, 8), "bv5[8]", "(_ bv5 8)"},
                       {mgr.make_bv_number(0, 1), "bv0[1]", "(_ bv0 1)"},
                       {mgr.make_bv_number(QNumber::from_string("18446744073709551616"), 65),
                        "bv18446744073709551616[65]", "(_ bv18446744073709551616 65)"},
                   },
                   true);
}

TEST(SmtLibSymbols, UserNamesAreQuotedAndNotKept) {
  TermManager mgr;
  expect_spellings(mgr,
                   {
                       {make_int(mgr, "x"), "x", "x"},
                       {make_int(mgr, "1x"), "_1x", "|1x|"},
                       {make_int(mgr, "a b"), "a_h32_b", "|a b|"},
                       {make_int(mgr, ""), "_", ""},
                   },
                   false);
}

TEST(SmtLibSymbols, UserSymbolsWithNamesOfOperatorsAreTheUsers) {
  TermManager mgr;
  expect_spellings(mgr,
                   {
                       {make_int(mgr, "+"), "__h43_", "+"},
                       {make_int(mgr, "and"), "and", "and"},
                       {make_int(mgr, "bvadd"), "bvadd", "bvadd"},
                       {make_int(mgr, "7"), "_7", "|7|"},
                   },
                   false);
}

TEST(SmtLibSymbols, AKeptNameStays) {
  TermManager mgr;
  const Symbol* three = mgr.make_number(3)->symbol;
  OpenPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(printer.to_smtlib(three), "3");
  printer.symbol_names[three] = "kept";
  EXPECT_EQ(printer.to_smtlib(three), "kept");
  // An entry for a user symbol would be used as well, though the printer makes none.
  const Symbol* x = mgr.declare("x", mgr.get_int_type());
  printer.symbol_names[x] = "renamed";
  EXPECT_EQ(printer.to_smtlib(x), "renamed");
}

TEST(SmtLibSymbols, UnknownInterpretedSymbolsThrow) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const Symbol* rows[] = {
      mgr.declare_interpreted("foo", integer),
      mgr.declare_interpreted("a b", mgr.make_function_type({integer}, integer)),
      mgr.declare_interpreted("", integer),
      mgr.declare_interpreted("zero", mgr.make_bv_type(8)),
      mgr.declare_interpreted("3", mgr.make_bv_type(8)),
  };
  const char* messages[] = {
      "can't print interpreted symbol fooin SMT-LIB format",
      "can't print interpreted symbol a bin SMT-LIB format",
      "can't print interpreted symbol in SMT-LIB format",
      "can't print interpreted symbol zeroin SMT-LIB format",
      "can't print interpreted symbol 3in SMT-LIB format",
  };
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    const std::size_t names_before = printer.symbol_names.size();
    for (std::size_t i = 0; i < std::size(rows); ++i) {
      EXPECT_EQ(error_of([&] { printer.to_smtlib(rows[i]); }), messages[i]);
    }
    EXPECT_EQ(printer.symbol_names.size(), names_before);
  }
}

TEST(SmtLibSymbols, NamesInQuotesDoNotStandForEachOther) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* unary = mgr.make_function_type({integer}, integer);
  const Symbol* f = mgr.declare("f 1", unary);
  const Symbol* g = mgr.declare("g 1", unary);
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(printer.to_smtlib(f), v1 ? "f_h32_1" : "|f 1|");
      EXPECT_EQ(printer.to_smtlib(g), v1 ? "g_h32_1" : "|g 1|");
    }
  }
}

TEST(SmtLibSymbols, IsInterpretedAsksTheManager) {
  TermManager mgr;
  const SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_TRUE(printer.is_interpreted(mgr.get_and_symbol()));
  EXPECT_TRUE(printer.is_interpreted(mgr.make_number(3)->symbol));
  EXPECT_TRUE(printer.is_interpreted(mgr.declare_interpreted("foo", mgr.get_int_type())));
  EXPECT_FALSE(printer.is_interpreted(mgr.declare("and", mgr.get_bool_type())));
}

}  // namespace
}  // namespace brum
