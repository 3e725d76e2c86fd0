#include <gtest/gtest.h>

#include "brum/terms/term_manager.h"
#include "tests/support/formulas.h"
#include "tests/terms/term_checks.h"

namespace brum {
namespace {

using testing::expect_refused;
using testing::expect_term;
using testing::ExpectedTerm;
using testing::make_bool;
using testing::make_int;
using testing::make_real;

TEST(TermManagerArithmetic, NumeralsAreIntWhenIntegralElseReal) {
  TermManager mgr;
  const ExpectedTerm rows[] = {
      {mgr.make_number(0), "0", "Int", {}},
      {mgr.make_number(-3), "-3", "Int", {}},
      {mgr.make_number(QNumber(6, 3)), "2", "Int", {}},
      {mgr.make_number(QNumber(1, 2)), "1/2", "Real", {}},
      {mgr.make_number(QNumber(-7, 4)), "-7/4", "Real", {}},
      {mgr.make_number(2, mgr.get_real_type()), "2", "Real", {}},
      {mgr.make_number(2, mgr.get_int_type()), "2", "Int", {}},
      {mgr.make_number(QNumber::from_string("123456789012345678901234567890")),
       "123456789012345678901234567890",
       "Int",
       {}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManagerArithmetic, OperatorsAreIntegralOnlyOverIntegers) {
  TermManager mgr;
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const ExpectedTerm rows[] = {
      {mgr.make_plus(i, i), "+", "Int", {i, i}},   {mgr.make_plus(i, r), "+", "Real", {i, r}},
      {mgr.make_plus(r, i), "+", "Real", {r, i}},  {mgr.make_plus(r, r), "+", "Real", {r, r}},
      {mgr.make_times(i, i), "*", "Int", {i, i}},  {mgr.make_times(i, r), "*", "Real", {i, r}},
      {mgr.make_times(r, i), "*", "Real", {r, i}}, {mgr.make_times(r, r), "*", "Real", {r, r}},
      {mgr.make_leq(i, i), "<=", "Bool", {i, i}},  {mgr.make_leq(i, r), "<=", "Bool", {i, r}},
      {mgr.make_leq(r, i), "<=", "Bool", {r, i}},  {mgr.make_leq(r, r), "<=", "Bool", {r, r}},
      {mgr.make_floor(r), "to_int", "Int", {r}},   {mgr.make_floor(i), "to_int", "Int", {i}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
  const struct {
    const Term* term;
    const Symbol* symbol;
    const char* type;
  } symbols[] = {
      {mgr.make_plus(i, i), mgr.get_int_plus_symbol(), "(-> Int Int Int)"},
      {mgr.make_plus(i, r), mgr.get_real_plus_symbol(), "(-> Real Real Real)"},
      {mgr.make_times(i, i), mgr.get_int_times_symbol(), "(-> Int Int Int)"},
      {mgr.make_times(r, i), mgr.get_real_times_symbol(), "(-> Real Real Real)"},
      {mgr.make_leq(i, i), mgr.get_int_leq_symbol(), "(-> Int Int Bool)"},
      {mgr.make_leq(i, r), mgr.get_real_leq_symbol(), "(-> Real Real Bool)"},
      {mgr.make_floor(r), mgr.get_floor_symbol(), "(-> Real Int)"},
  };
  for (const auto& row : symbols) {
    EXPECT_EQ(row.term->symbol, row.symbol);
    EXPECT_EQ(row.symbol->type->to_str(), row.type);
  }
}

TEST(TermManagerArithmetic, CongruencesHoldTheirModulus) {
  TermManager mgr;
  const Term* i = make_int(mgr, "i");
  const Term* j = make_int(mgr, "j");
  const QNumber large = QNumber::from_string("100000000000000000000");
  for (const QNumber& modulus : {QNumber(1), QNumber(3), large}) {
    const Term* term = mgr.make_int_modular_congruence(modulus, i, j);
    expect_term({term, "divisible", "Bool", {i, j}});
    EXPECT_EQ(term->symbol->type->to_str(), "(-> Int Int Bool)");
    QNumber found;
    EXPECT_TRUE(mgr.is_int_modular_congruence(term->symbol, &found));
    EXPECT_EQ(found, modulus);
  }
}

TEST(TermManagerArithmetic, IllSortedCallsThrowAndChangeNothing) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const DataType* byte = mgr.make_bv_type(8);
  expect_refused(
      mgr,
      {
          {[&] { mgr.make_plus(i, p); }, "+: an argument has sort Bool, expected Int or Real"},
          {[&] { mgr.make_plus(p, i); }, "+: an argument has sort Bool, expected Int or Real"},
          {[&] { mgr.make_plus(nullptr, i); }, "+: an argument is null, expected a term"},
          {[&] { mgr.make_times(r, p); }, "*: an argument has sort Bool, expected Int or Real"},
          {[&] { mgr.make_times(i, nullptr); }, "*: an argument is null, expected a term"},
          {[&] { mgr.make_leq(p, p); }, "<=: an argument has sort Bool, expected Int or Real"},
          {[&] { mgr.make_leq(r, nullptr); }, "<=: an argument is null, expected a term"},
          {[&] { mgr.make_floor(p); }, "to_int: an argument has sort Bool, expected Int or Real"},
          {[&] { mgr.make_floor(nullptr); }, "to_int: an argument is null, expected a term"},
          {[&] { mgr.make_number(QNumber(1, 2), mgr.get_int_type()); },
           "number: 1/2 is not integral, expected an integer for sort Int"},
          {[&] { mgr.make_number(1, mgr.get_bool_type()); },
           "number: the sort is Bool, expected Int or Real"},
          {[&] { mgr.make_number(1, byte); },
           "number: the sort is (_ BitVec 8), expected Int or Real"},
          {[&] { mgr.make_number(1, nullptr); }, "number: the sort is null, expected Int or Real"},
          {[&] { mgr.make_int_modular_congruence(0, i, i); },
           "divisible: the modulus is 0, expected a positive integer"},
          {[&] { mgr.make_int_modular_congruence(-3, i, i); },
           "divisible: the modulus is -3, expected a positive integer"},
          {[&] { mgr.make_int_modular_congruence(QNumber(3, 2), i, i); },
           "divisible: the modulus is 3/2, expected a positive integer"},
          {[&] { mgr.make_int_modular_congruence(3, r, i); },
           "divisible: an argument has sort Real, expected Int"},
          {[&] { mgr.make_int_modular_congruence(3, i, r); },
           "divisible: an argument has sort Real, expected Int"},
          {[&] { mgr.make_int_modular_congruence(3, i, nullptr); },
           "divisible: an argument is null, expected a term"},
      });
}

}  // namespace
}  // namespace brum
