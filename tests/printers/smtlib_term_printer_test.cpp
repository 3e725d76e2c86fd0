#include "brum/printers/smtlib_term_printer.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "tests/printers/open_printers.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::OpenPrinter;

static_assert(std::is_base_of_v<TermPrinter, SmtLibTermPrinter>);
static_assert(std::is_same_v<decltype(OpenPrinter::open_lets), std::int32_t>);
static_assert(std::is_same_v<decltype(OpenPrinter::sort_counter), std::int32_t>);
static_assert(
    std::is_same_v<decltype(OpenPrinter::symbol_names), hsh::HashMap<const Symbol*, std::string>>);
static_assert(
    std::is_same_v<decltype(OpenPrinter::tag_names), hsh::HashMap<SymbolTag::tag, std::string>>);
static_assert(
    std::is_same_v<decltype(OpenPrinter::type_names), hsh::HashMap<const DataType*, std::string>>);

TEST(SmtLibTermPrinter, StartsWithItsArgumentsAndFixedFlags) {
  TermManager mgr;
  for (const bool v1 : {true, false}) {
    const OpenPrinter printer(v1, &mgr, "QF_LRA", "sat");
    EXPECT_EQ(printer.v1_format, v1);
    EXPECT_EQ(printer.mgr, &mgr);
    EXPECT_EQ(printer.logic, "QF_LRA");
    EXPECT_EQ(printer.status, "sat");
    EXPECT_EQ(printer.open_lets, 0);
    EXPECT_EQ(printer.sort_counter, 0);
    EXPECT_FALSE(printer.single_term);
    EXPECT_TRUE(printer.use_newlines);
  }
}

TEST(SmtLibTermPrinter, WritesApplicationsOfAnyNumberOfArguments) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const auto function = [&](const std::string& name, std::size_t arguments) {
    return mgr.declare(
        name, mgr.make_function_type(std::vector<const DataType*>(arguments, integer), integer));
  };
  const Term* a = testing::make_int(mgr, "a");
  const Term* b = testing::make_int(mgr, "b");
  const Term* three = mgr.make_term(function("f3", 3), {a, b, a});
  const Term* four = mgr.make_term(function("f4", 4), {a, three, b, a});
  const Term* five = mgr.make_term(function("f5", 5), {a, b, four, a, b});
  const Term* six = mgr.make_term(function("f6", 6), {five, a, b, a, b, a});
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &mgr, "", "");
    EXPECT_EQ(testing::single_term(printer, six),
              "(f6 (f5 a b (f4 a (f3 a b a) b a) a b) a b a b a)");
  }
}

TEST(SmtLibTermPrinter, CopiesItsTextArguments) {
  TermManager mgr;
  std::string logic = "QF_BV";
  std::string status = "unsat";
  OpenPrinter printer(false, &mgr, logic, status);
  logic = "changed";
  status = "changed";
  EXPECT_EQ(testing::document(printer, mgr.make_true()),
            "(set-logic QF_BV)\n(set-info :status unsat)\n"
            "(set-info :source |printed by Brumlin|)\n(assert\ntrue\n)\n");
}

TEST(SmtLibTermPrinter, KnowsTheBuiltInSorts) {
  TermManager mgr;
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    EXPECT_EQ(printer.type_names.size(), v1 ? 2U : 3U);
    EXPECT_EQ(printer.to_smtlib(mgr.get_real_type()), "Real");
    EXPECT_EQ(printer.to_smtlib(mgr.get_int_type()), "Int");
    const auto boolean = printer.type_names.find(mgr.get_bool_type());
    EXPECT_EQ(boolean == printer.type_names.end(), v1);
    if (!v1) {
      EXPECT_EQ(printer.to_smtlib(mgr.get_bool_type()), "Bool");
    }
  }
}

TEST(SmtLibTermPrinter, KnowsTheDistinguishedSymbols) {
  TermManager mgr;
  const struct {
    const Symbol* symbol;
    const char* v1;
    const char* v2;
  } rows[] = {
      {mgr.get_true_symbol(), "true", "true"},      {mgr.get_false_symbol(), "false", "false"},
      {mgr.get_and_symbol(), "and", "and"},         {mgr.get_or_symbol(), "or", "or"},
      {mgr.get_not_symbol(), "not", "not"},         {mgr.get_iff_symbol(), "iff", "="},
      {mgr.get_int_plus_symbol(), "+", "+"},        {mgr.get_real_plus_symbol(), "+", "+"},
      {mgr.get_int_times_symbol(), "*", "*"},       {mgr.get_real_times_symbol(), "*", "*"},
      {mgr.get_int_leq_symbol(), "<=", "<="},       {mgr.get_real_leq_symbol(), "<=", "<="},
      {mgr.get_floor_symbol(), "to_int", "to_int"},
  };
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    EXPECT_EQ(printer.symbol_names.size(), std::size(rows));
    for (const auto& row : rows) {
      const auto found = printer.symbol_names.find(row.symbol);
      ASSERT_NE(found, printer.symbol_names.end()) << row.v2;
      EXPECT_EQ(found->second, v1 ? row.v1 : row.v2);
      EXPECT_EQ(printer.to_smtlib(row.symbol), v1 ? row.v1 : row.v2);
    }
  }
}

TEST(SmtLibTermPrinter, KnowsTheOperatorsWithoutIndices) {
  const std::map<unsigned, std::string> expected = {
      {11, "="},     {12, "ite"},    {14, "concat"}, {16, "bvnot"},  {17, "bvand"},
      {18, "bvor"},  {19, "bvxor"},  {20, "bvult"},  {21, "bvslt"},  {22, "bvule"},
      {23, "bvsle"}, {24, "bvcomp"}, {25, "bvneg"},  {26, "bvadd"},  {27, "bvsub"},
      {28, "bvmul"}, {29, "bvudiv"}, {30, "bvsdiv"}, {31, "bvurem"}, {32, "bvsrem"},
      {33, "bvshl"}, {34, "bvlshr"}, {35, "bvashr"}, {40, "select"}, {41, "store"},
  };
  TermManager mgr;
  for (const bool v1 : {true, false}) {
    const OpenPrinter printer(v1, &mgr, "", "");
    std::map<unsigned, std::string> found;
    for (const auto& [tag, name] : printer.tag_names) {
      found[static_cast<unsigned>(tag)] = name;
    }
    EXPECT_EQ(found, expected);
  }
}

TEST(SmtLibTermPrinter, EquivalenceAndEqualityDifferInVersion1) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  const Term* x = testing::make_int(mgr, "x");
  const Term* formula = mgr.make_iff(p, mgr.make_equal(x, x));
  EXPECT_EQ(testing::v1_text(mgr, formula), "(iff p (= x x))");
  EXPECT_EQ(testing::v2_text(mgr, formula), "(= p (= x x))");
}

TEST(SmtLibTermPrinter, PrintersOfOneManagerAreIndependent) {
  TermManager mgr;
  const DataType* sort = mgr.make_uninterpreted_type("A");
  SmtLibTermPrinter first(false, &mgr, "", "");
  SmtLibTermPrinter second(false, &mgr, "", "");
  testing::text_of([&](std::ostream& out) { first.print_type_declaration(out, sort); });
  EXPECT_EQ(first.to_smtlib(sort), "U0");
  EXPECT_EQ(second.to_smtlib(sort), "");
}

}  // namespace
}  // namespace brum
