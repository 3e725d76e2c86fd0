// Sorts, symbols and terms through the C interface.

#include <cstdint>
#include <vector>

#include "tests/capi/capi_fixture.h"

namespace brum::testing {
namespace {

TEST_F(CInterface, SortsAreKeptOnceAndTellWhatTheyAre) {
  const brum_sort* byte = brum_bv_sort(m, 8);
  const brum_sort* memory = brum_array_sort(m, byte, brum_real_sort(m));
  const brum_sort* node = brum_uninterpreted_sort(m, "Node");
  const brum_sort* arguments[] = {node, int_sort()};
  const brum_sort* function = brum_function_sort(m, arguments, 2, memory);

  EXPECT_EQ(brum_bv_sort(m, 8), byte);
  EXPECT_EQ(brum_sort_get_kind(bool_sort()), BRUM_SORT_BOOL);
  EXPECT_EQ(brum_sort_get_kind(int_sort()), BRUM_SORT_INT);
  EXPECT_EQ(brum_sort_get_kind(brum_real_sort(m)), BRUM_SORT_REAL);
  EXPECT_EQ(brum_sort_get_kind(byte), BRUM_SORT_BIT_VECTOR);
  EXPECT_EQ(brum_sort_width(byte), 8U);
  EXPECT_EQ(brum_sort_get_kind(memory), BRUM_SORT_ARRAY);
  EXPECT_EQ(brum_sort_component(memory, 0), byte);
  EXPECT_EQ(brum_sort_component(memory, 1), brum_real_sort(m));
  EXPECT_EQ(brum_sort_component(memory, 2), nullptr);
  EXPECT_EQ(brum_sort_get_kind(node), BRUM_SORT_UNINTERPRETED);
  EXPECT_EQ(brum_sort_get_kind(function), BRUM_SORT_FUNCTION);
  EXPECT_EQ(brum_sort_num_components(function), 3U);
  EXPECT_EQ(brum_sort_text(function, buffer), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), "(-> Node Int (Array (_ BitVec 8) Real))");
}

TEST_F(CInterface, SymbolsTellWhatTheyAre) {
  const brum_sort* arguments[] = {int_sort()};
  const brum_sort* type = brum_function_sort(m, arguments, 1, bool_sort());
  const brum_symbol* f = brum_declare(m, "f", type);
  EXPECT_EQ(brum_declare(m, "f", type), f);
  EXPECT_STREQ(brum_symbol_name(f), "f");
  EXPECT_EQ(brum_symbol_arity(f), 1U);
  EXPECT_EQ(brum_symbol_sort(f), type);
  EXPECT_EQ(brum_symbol_is_interpreted(f), 0);
  EXPECT_EQ(brum_symbol_is_interpreted(brum_term_symbol(brum_true(m))), 1);
  EXPECT_EQ(brum_declare(m, "f", int_sort()), nullptr);
  take_error(BRUM_ERROR_SORT);
  EXPECT_EQ(brum_constant(m, "g", type), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_SORT), "constant: the sort is a function type");
}

TEST_F(CInterface, TermsAreKeptOnceAndTellWhatTheyAre) {
  const brum_term* x = integer("x");
  const brum_term* sum = brum_plus(m, x, brum_number(m, 2));
  EXPECT_EQ(brum_plus(m, x, brum_number(m, 2)), sum);
  EXPECT_EQ(brum_term_id(x), 1U);
  EXPECT_EQ(brum_term_id(sum), 3U);
  EXPECT_EQ(brum_num_terms(m), 3U);
  EXPECT_EQ(brum_term_sort(sum), int_sort());
  EXPECT_EQ(brum_term_num_arguments(sum), 2U);
  EXPECT_EQ(brum_term_argument(sum, 0), x);
  EXPECT_EQ(brum_term_argument(sum, 2), nullptr);
  EXPECT_EQ(brum_symbol_arity(brum_term_symbol(sum)), 2U);
}

TEST_F(CInterface, EveryBooleanAndArithmeticBuilderGivesItsOperator) {
  const brum_term* p = boolean("p");
  const brum_term* q = boolean("q");
  const brum_term* x = integer("x");
  const brum_term* r = brum_constant(m, "r", brum_real_sort(m));
  EXPECT_EQ(text(brum_true(m)), "true");
  EXPECT_EQ(text(brum_false(m)), "false");
  EXPECT_EQ(text(brum_not(m, p)), "(not p)");
  EXPECT_EQ(text(brum_and(m, p, q)), "(and p q)");
  EXPECT_EQ(text(brum_or(m, p, q)), "(or p q)");
  EXPECT_EQ(text(brum_iff(m, p, q)), "(= p q)");
  EXPECT_EQ(brum_equal(m, p, q), brum_iff(m, p, q));
  EXPECT_EQ(text(brum_equal(m, x, brum_number(m, 3))), "(= x 3)");
  EXPECT_EQ(text(brum_ite(m, p, x, brum_number(m, 3))), "(ite p x 3)");
  EXPECT_EQ(text(brum_plus(m, x, x)), "(+ x x)");
  EXPECT_EQ(text(brum_times(m, brum_number(m, -2), x)), "(* (- 2) x)");
  EXPECT_EQ(text(brum_leq(m, x, brum_number(m, 3))), "(<= x 3)");
  EXPECT_EQ(text(brum_floor(m, r)), "(to_int r)");
  EXPECT_EQ(brum_term_sort(brum_number_of_sort(m, "4", brum_real_sort(m))), brum_real_sort(m));
}

TEST_F(CInterface, NumbersAreOfAnySize) {
  EXPECT_EQ(text(brum_number(m, INT64_MIN)), "(- 9223372036854775808)");
  EXPECT_EQ(text(brum_number(m, INT64_MAX)), "9223372036854775807");
  EXPECT_EQ(text(brum_number_text(m, "123456789012345678901234567890")),
            "123456789012345678901234567890");
  EXPECT_EQ(brum_term_sort(brum_number_text(m, "3/4")), brum_real_sort(m));
  EXPECT_EQ(brum_number_text(m, "0.75"), brum_number_text(m, "6/8"));
  EXPECT_EQ(brum_bv_number(m, UINT64_MAX, 64), brum_bv_number_text(m, "18446744073709551615", 64));
}

TEST_F(CInterface, CongruencesTakeTheModulusAsText) {
  const brum_term* x = integer("x");
  const brum_term* y = integer("y");
  EXPECT_EQ(text(brum_congruent(m, "5", x, y)), "((_ divisible 5) (- x y))");
  EXPECT_EQ(brum_congruent(m, "0", x, y), nullptr);
  take_error(BRUM_ERROR_SORT);
}

TEST_F(CInterface, ArraysAndFunctions) {
  const brum_term* a = brum_constant(m, "a", brum_array_sort(m, int_sort(), int_sort()));
  const brum_term* i = integer("i");
  EXPECT_EQ(text(brum_select(m, a, i)), "(select a i)");
  EXPECT_EQ(text(brum_store(m, a, i, i)), "(store a i i)");
  const brum_sort* sorts[] = {int_sort(), int_sort()};
  const brum_symbol* f = brum_declare(m, "f", brum_function_sort(m, sorts, 2, bool_sort()));
  const brum_term* arguments[] = {i, brum_number(m, 0)};
  EXPECT_EQ(text(brum_apply(m, f, arguments, 2)), "(f i 0)");
  EXPECT_EQ(brum_apply(m, f, arguments, 1), nullptr);
  take_error(BRUM_ERROR_SORT);
  EXPECT_EQ(brum_apply(m, brum_term_symbol(i), nullptr, 0), i);
}

TEST_F(CInterface, EveryBitVectorBuilderGivesItsOperator) {
  const brum_term* a = brum_constant(m, "a", brum_bv_sort(m, 8));
  const brum_term* b = brum_constant(m, "b", brum_bv_sort(m, 8));
  struct Row {
    const brum_term* (*build)(brum_manager*, const brum_term*, const brum_term*) noexcept;
    const char* text;
  };
  const std::vector<Row> rows = {
      {brum_bvand, "(bvand a b)"},   {brum_bvor, "(bvor a b)"},     {brum_bvxor, "(bvxor a b)"},
      {brum_bvadd, "(bvadd a b)"},   {brum_bvsub, "(bvsub a b)"},   {brum_bvmul, "(bvmul a b)"},
      {brum_bvudiv, "(bvudiv a b)"}, {brum_bvsdiv, "(bvsdiv a b)"}, {brum_bvurem, "(bvurem a b)"},
      {brum_bvsrem, "(bvsrem a b)"}, {brum_bvshl, "(bvshl a b)"},   {brum_bvlshr, "(bvlshr a b)"},
      {brum_bvashr, "(bvashr a b)"}, {brum_bvult, "(bvult a b)"},   {brum_bvslt, "(bvslt a b)"},
      {brum_bvule, "(bvule a b)"},   {brum_bvsle, "(bvsle a b)"},   {brum_bvcomp, "(bvcomp a b)"},
      {brum_concat, "(concat a b)"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(text(row.build(m, a, b)), row.text);
    EXPECT_EQ(row.build(m, a, nullptr), nullptr) << row.text;
    take_error(BRUM_ERROR_NULL);
  }
  EXPECT_EQ(text(brum_bvnot(m, a)), "(bvnot a)");
  EXPECT_EQ(text(brum_bvneg(m, a)), "(bvneg a)");
  EXPECT_EQ(text(brum_extract(m, 6, 2, a)), "((_ extract 6 2) a)");
  EXPECT_EQ(text(brum_rotate_left(m, 3, a)), "((_ rotate_left 3) a)");
  EXPECT_EQ(text(brum_rotate_right(m, 3, a)), "((_ rotate_right 3) a)");
  EXPECT_EQ(text(brum_zero_extend(m, 4, a)), "((_ zero_extend 4) a)");
  EXPECT_EQ(text(brum_sign_extend(m, 4, a)), "((_ sign_extend 4) a)");
  EXPECT_EQ(brum_extract(m, 8, 0, a), nullptr);
  take_error(BRUM_ERROR_SORT);
}

}  // namespace
}  // namespace brum::testing
