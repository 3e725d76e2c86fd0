#include "brum/terms/data_type.h"

#include <gtest/gtest.h>

#include <string>

#include "brum/terms/term_manager.h"
#include "tests/support/build_kind.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using Kind = DataType::Kind;

TEST(DataType, TextIsThatOfTheSort) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  const DataType* byte = mgr.make_bv_type(8);
  const DataType* node = mgr.make_uninterpreted_type("Node");
  const struct {
    const DataType* sort;
    const char* text;
  } rows[] = {
      {boolean, "Bool"},
      {integer, "Int"},
      {real, "Real"},
      {byte, "(_ BitVec 8)"},
      {mgr.make_bv_type(1), "(_ BitVec 1)"},
      {mgr.make_bv_type(18446744073709551615U), "(_ BitVec 18446744073709551615)"},
      {node, "Node"},
      {mgr.make_uninterpreted_type(""), ""},
      {mgr.make_uninterpreted_type("a b|"), "a b|"},
      {mgr.make_array_type(integer, integer), "(Array Int Int)"},
      {mgr.make_array_type(byte, mgr.make_array_type(node, boolean)),
       "(Array (_ BitVec 8) (Array Node Bool))"},
      {mgr.make_array_type(mgr.make_array_type(integer, real), node),
       "(Array (Array Int Real) Node)"},
      {mgr.make_function_type({integer}, boolean), "(-> Int Bool)"},
      {mgr.make_function_type({integer, integer}, boolean), "(-> Int Int Bool)"},
      {mgr.make_function_type({mgr.make_array_type(integer, real), node, byte}, real),
       "(-> (Array Int Real) Node (_ BitVec 8) Real)"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.sort->to_str(), row.text);
  }
}

TEST(DataType, ComponentsOfAFunctionTypeBeginWithTheResult) {
  TermManager mgr;
  const DataType* type = mgr.make_function_type(
      {mgr.get_int_type(), mgr.get_bool_type(), mgr.get_int_type()}, mgr.get_real_type());
  EXPECT_EQ(type->kind(), Kind::function);
  ASSERT_EQ(type->num_components(), 4U);
  EXPECT_EQ(type->get_component(0), mgr.get_real_type());
  EXPECT_EQ(type->get_component(1), mgr.get_int_type());
  EXPECT_EQ(type->get_component(2), mgr.get_bool_type());
  EXPECT_EQ(type->get_component(3), mgr.get_int_type());
}

TEST(DataType, ComponentsOfAnArraySortAreIndexAndElement) {
  TermManager mgr;
  const DataType* type = mgr.make_array_type(mgr.get_int_type(), mgr.get_real_type());
  EXPECT_EQ(type->kind(), Kind::array);
  ASSERT_EQ(type->num_components(), 2U);
  EXPECT_EQ(type->get_component(0), mgr.get_int_type());
  EXPECT_EQ(type->get_component(1), mgr.get_real_type());
}

TEST(DataType, SimpleSortsHaveNoComponents) {
  TermManager mgr;
  const struct {
    const DataType* sort;
    Kind kind;
    std::size_t width;
  } rows[] = {
      {mgr.get_bool_type(), Kind::boolean, 0},
      {mgr.get_int_type(), Kind::integer, 0},
      {mgr.get_real_type(), Kind::real, 0},
      {mgr.make_bv_type(12), Kind::bit_vector, 12},
      {mgr.make_uninterpreted_type("Int"), Kind::uninterpreted, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.sort->kind(), row.kind);
    EXPECT_EQ(row.sort->width(), row.width);
    EXPECT_EQ(row.sort->num_components(), 0U);
  }
}

TEST(DataType, TextOfADeepSortNeedsNoStack) {
  const std::size_t depth = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const DataType* sort = mgr.get_int_type();
    for (std::size_t i = 0; i < depth; ++i) {
      sort = i % 2 == 0 ? mgr.make_array_type(sort, mgr.get_bool_type())
                        : mgr.make_array_type(mgr.get_real_type(), sort);
    }
    // "(Array Int Bool)", then around it in turn "(Array Real " ")" and "(Array " " Bool)".
    const std::string text = sort->to_str();
    EXPECT_EQ(text.size(), 3 + depth / 2 * 13 + depth / 2 * 13);
    EXPECT_EQ(text.substr(0, 31), "(Array Real (Array (Array Real ");
    EXPECT_EQ(text.substr(text.size() - 13), "Bool)) Bool))");
  });
}

TEST(DataType, ShortTextIsTheTextOfAReasonableSort) {
  TermManager mgr;
  const DataType* sort = mgr.make_array_type(mgr.make_bv_type(8), mgr.get_int_type());
  EXPECT_EQ(sort->to_short_str(), "(Array (_ BitVec 8) Int)");
}

TEST(DataType, ShortTextOfAnExponentialSortIsCut) {
  TermManager mgr;
  const DataType* sort = mgr.get_int_type();
  for (int i = 0; i < 60; ++i)
    sort = mgr.make_array_type(sort, sort);
  const std::string text = sort->to_short_str();
  EXPECT_EQ(text.substr(0, 14), "(Array (Array ");
  EXPECT_EQ(text.substr(text.size() - 4), " ...");
  EXPECT_GT(text.size(), 65536U);
  // What is begun when the limit is met: one more "Int" and brackets for each level.
  EXPECT_LT(text.size(), 65536U + 3 + 60 + 8 * 60 + 4);
}

}  // namespace
}  // namespace brum
