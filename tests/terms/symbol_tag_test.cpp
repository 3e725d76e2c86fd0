#include "brum/terms/symbol_tag.h"

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>

#include "brum/terms/term_manager.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

static_assert(std::is_same_v<std::underlying_type_t<SymbolTag::tag>, std::uint32_t>);

TEST(SymbolTag, OperatorsHaveFixedTagsAndNames) {
  TermManager mgr;
  const Term* c = testing::make_bool(mgr, "c");
  const Term* i = testing::make_int(mgr, "i");
  const Term* a = testing::make_bv(mgr, "a", 8);
  const Term* b = testing::make_bv(mgr, "b", 8);
  const Term* m =
      mgr.make_term(mgr.declare("m", mgr.make_array_type(mgr.get_int_type(), mgr.get_int_type())));
  const struct {
    unsigned tag;
    const char* name;
    const Term* term;
  } rows[] = {
      {11, "=", mgr.make_equal(a, b)},
      {12, "ite", mgr.make_ite(c, a, b)},
      {13, "divisible", mgr.make_int_modular_congruence(3, i, i)},
      {14, "concat", mgr.make_concat(a, b)},
      {15, "extract", mgr.make_extract(7, 4, a)},
      {16, "bvnot", mgr.make_bvnot(a)},
      {17, "bvand", mgr.make_bvand(a, b)},
      {18, "bvor", mgr.make_bvor(a, b)},
      {19, "bvxor", mgr.make_bvxor(a, b)},
      {20, "bvult", mgr.make_bvult(a, b)},
      {21, "bvslt", mgr.make_bvslt(a, b)},
      {22, "bvule", mgr.make_bvule(a, b)},
      {23, "bvsle", mgr.make_bvsle(a, b)},
      {24, "bvcomp", mgr.make_bvcomp(a, b)},
      {25, "bvneg", mgr.make_bvneg(a)},
      {26, "bvadd", mgr.make_bvadd(a, b)},
      {27, "bvsub", mgr.make_bvsub(a, b)},
      {28, "bvmul", mgr.make_bvmul(a, b)},
      {29, "bvudiv", mgr.make_bvudiv(a, b)},
      {30, "bvsdiv", mgr.make_bvsdiv(a, b)},
      {31, "bvurem", mgr.make_bvurem(a, b)},
      {32, "bvsrem", mgr.make_bvsrem(a, b)},
      {33, "bvshl", mgr.make_bvshl(a, b)},
      {34, "bvlshr", mgr.make_bvlshr(a, b)},
      {35, "bvashr", mgr.make_bvashr(a, b)},
      {36, "rotate_left", mgr.make_rotate_left(2, a)},
      {37, "rotate_right", mgr.make_rotate_right(2, a)},
      {38, "zero_extend", mgr.make_zero_extend(2, a)},
      {39, "sign_extend", mgr.make_sign_extend(2, a)},
      {40, "select", mgr.make_select(m, i)},
      {41, "store", mgr.make_store(m, i, i)},
  };
  for (const auto& row : rows) {
    const std::optional<SymbolTag::tag> tag = mgr.get_tag(row.term->symbol);
    ASSERT_TRUE(tag.has_value()) << row.name;
    EXPECT_EQ(static_cast<unsigned>(*tag), row.tag) << row.name;
    EXPECT_STREQ(row.term->symbol->name, row.name);
    EXPECT_TRUE(mgr.is_interpreted(row.term->symbol)) << row.name;
  }
}

TEST(SymbolTag, OtherSymbolsHaveNone) {
  TermManager mgr;
  const Symbol* rows[] = {
      mgr.get_true_symbol(),
      mgr.get_false_symbol(),
      mgr.get_and_symbol(),
      mgr.get_or_symbol(),
      mgr.get_not_symbol(),
      mgr.get_iff_symbol(),
      mgr.get_int_plus_symbol(),
      mgr.get_real_plus_symbol(),
      mgr.get_int_times_symbol(),
      mgr.get_real_times_symbol(),
      mgr.get_int_leq_symbol(),
      mgr.get_real_leq_symbol(),
      mgr.get_floor_symbol(),
      mgr.make_number(3)->symbol,
      mgr.make_bv_number(3, 8)->symbol,
      mgr.declare("x", mgr.get_int_type()),
      mgr.declare_interpreted("foo", mgr.get_int_type()),
  };
  for (const Symbol* symbol : rows) {
    EXPECT_FALSE(mgr.get_tag(symbol).has_value()) << symbol->name;
  }
}

}  // namespace
}  // namespace brum
