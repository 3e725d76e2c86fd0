// How the C interface tells of errors.

#include "tests/capi/capi_fixture.h"

namespace brum::testing {
namespace {

TEST_F(CInterface, ANewManagerHasNoError) {
  EXPECT_EQ(brum_last_error(m), BRUM_OK);
  EXPECT_STREQ(brum_last_error_text(m), "");
  EXPECT_EQ(brum_num_terms(m), 0U);
}

TEST_F(CInterface, AnIllSortedCallGivesNullAndKeepsItsText) {
  EXPECT_EQ(brum_not(m, integer("x")), nullptr);
  EXPECT_EQ(brum_last_error(m), BRUM_ERROR_SORT);
  EXPECT_NE(std::string(brum_last_error_text(m)).find("Bool"), std::string::npos);
  EXPECT_EQ(brum_num_terms(m), 1U);
  brum_clear_error(m);
  EXPECT_EQ(brum_last_error(m), BRUM_OK);
  EXPECT_STREQ(brum_last_error_text(m), "");
}

TEST_F(CInterface, TheFirstErrorOfNestedCallsIsKept) {
  const brum_term* p = boolean("p");
  EXPECT_EQ(brum_and(m, p, brum_leq(m, p, brum_number(m, 1))), nullptr);
  EXPECT_NE(take_error(BRUM_ERROR_SORT), "the term is null");
}

TEST_F(CInterface, AnEarlierErrorHindersNoLaterCall) {
  EXPECT_EQ(brum_bv_sort(m, 0), nullptr);
  EXPECT_NE(brum_and(m, boolean("p"), boolean("q")), nullptr);
  take_error(BRUM_ERROR_SORT);
}

TEST_F(CInterface, NullArgumentsOfBuildersAreErrors) {
  const brum_term* p = boolean("p");
  const brum_term* none = nullptr;
  EXPECT_EQ(brum_not(m, nullptr), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the term is null");
  EXPECT_EQ(brum_array_sort(m, nullptr, int_sort()), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the sort is null");
  EXPECT_EQ(brum_declare(m, nullptr, int_sort()), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the text is null");
  EXPECT_EQ(brum_declare(m, "x", nullptr), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the sort is null");
  EXPECT_EQ(brum_apply(m, nullptr, nullptr, 0), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the symbol is null");
  EXPECT_EQ(brum_apply(m, brum_term_symbol(p), nullptr, 1), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the array is null");
  EXPECT_EQ(brum_apply(m, brum_term_symbol(p), &none, 1), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the term is null");
  EXPECT_EQ(brum_number_text(m, nullptr), nullptr);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the text is null");
}

TEST_F(CInterface, NullArgumentsOfPrintingAreErrors) {
  const brum_term* p = boolean("p");
  const brum_sink sink = brum_buffer_sink(buffer);
  EXPECT_EQ(brum_print_formula(m, nullptr, nullptr, sink), BRUM_ERROR_NULL);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the term is null");
  EXPECT_EQ(brum_print_formula(m, p, nullptr, {nullptr, nullptr}), BRUM_ERROR_NULL);
  EXPECT_EQ(take_error(BRUM_ERROR_NULL), "the sink has no function");
  EXPECT_EQ(brum_print_formula(m, p, nullptr, brum_file_sink(nullptr)), BRUM_ERROR_NULL);
  take_error(BRUM_ERROR_NULL);
  EXPECT_EQ(brum_print_terms(m, nullptr, 1, nullptr, sink), BRUM_ERROR_NULL);
  take_error(BRUM_ERROR_NULL);
  EXPECT_EQ(brum_options_set_logic(nullptr, "QF_UF"), BRUM_ERROR_NULL);
  EXPECT_EQ(brum_sort_text(nullptr, buffer), BRUM_ERROR_NULL);
  EXPECT_EQ(brum_sort_text(int_sort(), nullptr), BRUM_ERROR_NULL);
  EXPECT_EQ(brum_trace_start(nullptr, sink), BRUM_ERROR_NULL);
}

TEST_F(CInterface, ANullManagerGivesNullAndAStatus) {
  const brum_term* p = boolean("p");
  EXPECT_EQ(brum_true(nullptr), nullptr);
  EXPECT_EQ(brum_and(nullptr, p, p), nullptr);
  EXPECT_EQ(brum_int_sort(nullptr), nullptr);
  EXPECT_EQ(brum_trace_new(nullptr, nullptr), nullptr);
  EXPECT_EQ(brum_print_term(nullptr, p, nullptr, brum_buffer_sink(buffer)), BRUM_ERROR_NULL);
  EXPECT_EQ(brum_last_error(nullptr), BRUM_ERROR_NULL);
  EXPECT_STREQ(brum_last_error_text(nullptr), "the manager is null");
  EXPECT_EQ(brum_num_terms(nullptr), 0U);
}

TEST_F(CInterface, NullMayBeFreedAndLookedAt) {
  brum_manager_free(nullptr);
  brum_buffer_free(nullptr);
  brum_options_free(nullptr);
  brum_trace_free(nullptr);
  brum_clear_error(nullptr);
  brum_buffer_clear(nullptr);
  EXPECT_STREQ(brum_buffer_text(nullptr), "");
  EXPECT_EQ(brum_buffer_size(nullptr), 0U);
  EXPECT_EQ(brum_term_id(nullptr), 0U);
  EXPECT_EQ(brum_term_symbol(nullptr), nullptr);
  EXPECT_EQ(brum_term_sort(nullptr), nullptr);
  EXPECT_EQ(brum_term_num_arguments(nullptr), 0U);
  EXPECT_EQ(brum_term_argument(nullptr, 0), nullptr);
  EXPECT_EQ(brum_sort_get_kind(nullptr), BRUM_SORT_NONE);
  EXPECT_EQ(brum_sort_width(nullptr), 0U);
  EXPECT_EQ(brum_sort_component(nullptr, 0), nullptr);
  EXPECT_STREQ(brum_symbol_name(nullptr), "");
  EXPECT_EQ(brum_symbol_arity(nullptr), 0U);
  EXPECT_EQ(brum_symbol_sort(nullptr), nullptr);
  EXPECT_EQ(brum_symbol_is_interpreted(nullptr), 0);
}

TEST_F(CInterface, WrongNumbersAreErrors) {
  for (const char* wrong : {"", "x", "1.", "--1", "1/0", " 1"}) {
    EXPECT_EQ(brum_number_text(m, wrong), nullptr) << wrong;
    EXPECT_NE(take_error(BRUM_ERROR_ARGUMENT), "") << wrong;
  }
  EXPECT_EQ(brum_number_of_sort(m, "1/2", int_sort()), nullptr);
  take_error(BRUM_ERROR_SORT);
  EXPECT_EQ(brum_bv_number(m, 4, 2), nullptr);
  take_error(BRUM_ERROR_SORT);
}

}  // namespace
}  // namespace brum::testing
