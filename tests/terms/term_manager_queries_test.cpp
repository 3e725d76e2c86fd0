#include <gtest/gtest.h>

#include <vector>

#include "brum/terms/term_manager.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

TEST(TermManagerQueries, BitVectorSortsTellTheirWidth) {
  TermManager mgr;
  std::size_t width = 77;
  EXPECT_TRUE(mgr.is_bv_type(mgr.make_bv_type(32), &width));
  EXPECT_EQ(width, 32U);
  EXPECT_TRUE(mgr.is_bv_type(mgr.make_bv_type(32), nullptr));
  width = 77;
  const DataType* others[] = {
      mgr.get_bool_type(),
      mgr.get_int_type(),
      mgr.get_real_type(),
      mgr.make_uninterpreted_type("A"),
      mgr.make_array_type(mgr.make_bv_type(8), mgr.make_bv_type(8)),
      mgr.make_function_type({mgr.make_bv_type(8)}, mgr.make_bv_type(8)),
  };
  for (const DataType* sort : others) {
    EXPECT_FALSE(mgr.is_bv_type(sort, &width));
    EXPECT_EQ(width, 77U);
  }
}

TEST(TermManagerQueries, ArraySortsTellIndexAndElement) {
  TermManager mgr;
  const DataType* sort = mgr.make_array_type(mgr.get_int_type(), mgr.get_real_type());
  const DataType* index = nullptr;
  const DataType* element = nullptr;
  EXPECT_TRUE(mgr.is_array_type(sort, &index, &element));
  EXPECT_EQ(index, mgr.get_int_type());
  EXPECT_EQ(element, mgr.get_real_type());
  index = element = nullptr;
  EXPECT_TRUE(mgr.is_array_type(sort, &index, nullptr));
  EXPECT_EQ(index, mgr.get_int_type());
  EXPECT_TRUE(mgr.is_array_type(sort, nullptr, &element));
  EXPECT_EQ(element, mgr.get_real_type());
  EXPECT_TRUE(mgr.is_array_type(sort, nullptr, nullptr));
  index = nullptr;
  EXPECT_FALSE(mgr.is_array_type(mgr.get_int_type(), &index, nullptr));
  EXPECT_FALSE(mgr.is_array_type(mgr.make_function_type({sort}, sort), &index, nullptr));
  EXPECT_EQ(index, nullptr);
}

TEST(TermManagerQueries, FunctionTypesTellArgumentsAndResult) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* boolean = mgr.get_bool_type();
  const DataType* type = mgr.make_function_type({integer, boolean, integer}, mgr.get_real_type());
  std::vector<const DataType*> arguments{boolean};  // what is there is replaced
  const DataType* result = nullptr;
  EXPECT_TRUE(mgr.is_function_type(type, &arguments, &result));
  EXPECT_EQ(arguments, (std::vector<const DataType*>{integer, boolean, integer}));
  EXPECT_EQ(result, mgr.get_real_type());
  EXPECT_TRUE(mgr.is_function_type(type, nullptr, nullptr));
  EXPECT_TRUE(mgr.is_function_type(type, &arguments, nullptr));
  EXPECT_TRUE(mgr.is_function_type(type, nullptr, &result));
  arguments = {boolean};
  EXPECT_FALSE(mgr.is_function_type(mgr.make_array_type(integer, integer), &arguments, &result));
  EXPECT_EQ(arguments, (std::vector<const DataType*>{boolean}));
}

TEST(TermManagerQueries, UninterpretedSorts) {
  TermManager mgr;
  EXPECT_TRUE(mgr.is_uninterpreted_type(mgr.make_uninterpreted_type("Int")));
  EXPECT_FALSE(mgr.is_uninterpreted_type(mgr.get_int_type()));
  EXPECT_FALSE(mgr.is_uninterpreted_type(mgr.get_bool_type()));
  EXPECT_FALSE(mgr.is_uninterpreted_type(mgr.make_bv_type(3)));
}

TEST(TermManagerQueries, IfThenElseTellsItsSort) {
  TermManager mgr;
  const Term* c = testing::make_bool(mgr, "c");
  const Term* r = testing::make_real(mgr, "r");
  const Term* i = testing::make_int(mgr, "i");
  const DataType* sort = nullptr;
  EXPECT_TRUE(mgr.is_term_ite(mgr.make_ite(c, r, i)->symbol, &sort));
  EXPECT_EQ(sort, mgr.get_real_type());
  EXPECT_TRUE(mgr.is_term_ite(mgr.make_ite(c, i, i)->symbol, nullptr));
  sort = nullptr;
  EXPECT_FALSE(mgr.is_term_ite(mgr.make_equal(i, i)->symbol, &sort));
  EXPECT_FALSE(mgr.is_term_ite(mgr.get_and_symbol(), &sort));
  const DataType* type =
      mgr.make_function_type({mgr.get_bool_type(), r->sort(), r->sort()}, r->sort());
  EXPECT_FALSE(mgr.is_term_ite(mgr.declare("ite", type), &sort));
  EXPECT_EQ(sort, nullptr);
}

TEST(TermManagerQueries, CongruencesTellTheirModulus) {
  TermManager mgr;
  const Term* i = testing::make_int(mgr, "i");
  const Symbol* symbol = mgr.make_int_modular_congruence(12, i, i)->symbol;
  QNumber modulus;
  EXPECT_TRUE(mgr.is_int_modular_congruence(symbol, &modulus));
  EXPECT_EQ(modulus, 12);
  EXPECT_TRUE(mgr.is_int_modular_congruence(symbol, nullptr));
  modulus = 5;
  EXPECT_FALSE(mgr.is_int_modular_congruence(mgr.get_int_leq_symbol(), &modulus));
  EXPECT_FALSE(mgr.is_int_modular_congruence(i->symbol, &modulus));
  EXPECT_EQ(modulus, 5);
}

TEST(TermManagerQueries, ExtractionsTellTheirBits) {
  TermManager mgr;
  const Term* v = testing::make_bv(mgr, "v", 32);
  const Symbol* symbol = mgr.make_extract(7, 4, v)->symbol;
  std::size_t msb = 0;
  std::size_t lsb = 0;
  std::size_t width = 0;
  EXPECT_TRUE(mgr.is_bv_extract(symbol, &msb, &lsb, &width));
  EXPECT_EQ(msb, 7U);
  EXPECT_EQ(lsb, 4U);
  EXPECT_EQ(width, 32U);
  EXPECT_TRUE(mgr.is_bv_extract(symbol, nullptr, nullptr, nullptr));
  msb = 0;
  EXPECT_TRUE(mgr.is_bv_extract(symbol, &msb, nullptr, nullptr));
  EXPECT_EQ(msb, 7U);
  lsb = 0;
  EXPECT_TRUE(mgr.is_bv_extract(symbol, nullptr, &lsb, nullptr));
  EXPECT_EQ(lsb, 4U);
  msb = lsb = width = 99;
  EXPECT_FALSE(mgr.is_bv_extract(mgr.make_rotate_left(3, v)->symbol, &msb, &lsb, &width));
  EXPECT_FALSE(mgr.is_bv_extract(v->symbol, &msb, &lsb, &width));
  EXPECT_EQ(msb, 99U);
  EXPECT_EQ(lsb, 99U);
  EXPECT_EQ(width, 99U);
}

TEST(TermManagerQueries, RotationsAndExtensionsTellTheirAmount) {
  TermManager mgr;
  const Term* v = testing::make_bv(mgr, "v", 32);
  using Query = bool (TermManager::*)(const Symbol*, std::size_t*, std::size_t*) const;
  const struct {
    Query query;
    const Symbol* symbol;
    std::size_t amount;
  } rows[] = {
      {&TermManager::is_bv_rotate_left, mgr.make_rotate_left(3, v)->symbol, 3},
      {&TermManager::is_bv_rotate_right, mgr.make_rotate_right(40, v)->symbol, 40},
      {&TermManager::is_bv_zero_extend, mgr.make_zero_extend(24, v)->symbol, 24},
      {&TermManager::is_bv_sign_extend, mgr.make_sign_extend(0, v)->symbol, 0},
  };
  for (const auto& asked : rows) {
    for (const auto& row : rows) {
      std::size_t amount = 99;
      std::size_t width = 99;
      const bool same = asked.query == row.query;
      EXPECT_EQ((mgr.*asked.query)(row.symbol, &amount, &width), same);
      EXPECT_EQ(amount, same ? row.amount : 99U);
      EXPECT_EQ(width, same ? 32U : 99U);
      EXPECT_EQ((mgr.*asked.query)(row.symbol, nullptr, nullptr), same);
    }
  }
}

TEST(TermManagerQueries, NumeralsTellTheirValue) {
  TermManager mgr;
  const struct {
    const Term* term;
    QNumber value;
  } rows[] = {
      {mgr.make_number(-3), -3},
      {mgr.make_number(QNumber(1, 2)), QNumber(1, 2)},
      {mgr.make_number(4, mgr.get_real_type()), 4},
      {mgr.make_bv_number(5, 8), 5},
  };
  for (const auto& row : rows) {
    const QNumber* value = mgr.get_number(row.term->symbol);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(*value, row.value);
    EXPECT_TRUE(mgr.is_interpreted(row.term->symbol));
  }
  const Term* i = testing::make_int(mgr, "1");
  EXPECT_EQ(mgr.get_number(i->symbol), nullptr);
  EXPECT_EQ(mgr.get_number(mgr.get_true_symbol()), nullptr);
  EXPECT_EQ(mgr.get_number(mgr.make_int_modular_congruence(3, i, i)->symbol), nullptr);
}

}  // namespace
}  // namespace brum
