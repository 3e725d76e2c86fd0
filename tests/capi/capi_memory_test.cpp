// The C interface while memory runs out: no exception leaves it, and every failure has its status.

#include <gtest/gtest.h>

#include <string>

#include "brum/capi/brum.h"
#include "tests/support/failing_memory.h"

namespace brum::testing {
namespace {

/// Builds a formula and prints its document; gives the status that a caller would look at.
brum_status build_and_print(brum_manager* m, brum_buffer* buffer) {
  const brum_sort* byte = brum_bv_sort(m, 8);
  const brum_term* a = brum_constant(m, "a name that no short string holds", byte);
  const brum_term* array = brum_constant(m, "m", brum_array_sort(m, byte, byte));
  const brum_term* read = brum_select(m, array, brum_bvadd(m, a, brum_bv_number(m, 7, 8)));
  const brum_term* formula = brum_and(m, brum_bvult(m, read, a), brum_bvule(m, a, read));
  brum_print_formula(m, formula, nullptr, brum_buffer_sink(buffer));
  return brum_last_error(m);
}

TEST(CInterfaceMemory, EveryFailureHasItsStatus) {
  brum_manager* whole = brum_manager_new();
  brum_buffer* expected = brum_buffer_new();
  ASSERT_EQ(build_and_print(whole, expected), BRUM_OK);
  brum_manager_free(whole);

  std::size_t failures = 0;
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    brum_manager* m = nullptr;
    brum_buffer* buffer = nullptr;
    brum_status status = BRUM_OK;
    {
      const MemoryFault fault(failing);
      m = brum_manager_new();
      buffer = brum_buffer_new();
      if (m != nullptr && buffer != nullptr) {
        status = build_and_print(m, buffer);
      }
      hit = fault.hit();
    }
    if (m == nullptr || buffer == nullptr) {
      ASSERT_TRUE(hit) << failing;
    } else if (hit) {
      ++failures;
      ASSERT_EQ(status, BRUM_ERROR_MEMORY) << failing;
      EXPECT_STREQ(brum_last_error_text(m), "out of memory");
    } else {
      ASSERT_EQ(status, BRUM_OK);
      EXPECT_EQ(brum_buffer_size(buffer), brum_buffer_size(expected));
    }
    brum_buffer_free(buffer);
    brum_manager_free(m);
  }
  EXPECT_GT(failures, 20U);
  brum_buffer_free(expected);
}

TEST(CInterfaceMemory, TextsOfErrorsNeedNoMemory) {
  brum_manager* m = brum_manager_new();
  const brum_term* x = brum_constant(m, "x", brum_int_sort(m));
  const std::size_t terms = brum_num_terms(m);
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    brum_clear_error(m);
    const brum_term* refused = x;
    {
      const MemoryFault fault(failing, true);
      refused = brum_not(m, x);
      hit = fault.hit();
    }
    ASSERT_EQ(refused, nullptr);
    ASSERT_TRUE(brum_last_error(m) == BRUM_ERROR_SORT || brum_last_error(m) == BRUM_ERROR_MEMORY);
    ASSERT_STRNE(brum_last_error_text(m), "");
  }
  EXPECT_EQ(brum_last_error(m), BRUM_ERROR_SORT);
  EXPECT_EQ(brum_num_terms(m), terms);
  brum_manager_free(m);
}

TEST(CInterfaceMemory, OptionsAndTracesGiveNullOrAStatus) {
  brum_manager* m = brum_manager_new();
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    brum_clear_error(m);
    brum_options* options = nullptr;
    brum_trace* trace = nullptr;
    brum_status set = BRUM_OK;
    {
      const MemoryFault fault(failing);
      options = brum_options_new();
      if (options != nullptr) {
        set = brum_options_set_logic(options, "a logic with quite a long name");
        trace = brum_trace_new(m, options);
      }
      hit = fault.hit();
    }
    const bool complete = options != nullptr && set == BRUM_OK && trace != nullptr;
    ASSERT_EQ(complete, !hit) << failing;
    const bool no_trace = options != nullptr && trace == nullptr;
    ASSERT_EQ(brum_last_error(m), no_trace ? BRUM_ERROR_MEMORY : BRUM_OK);
    brum_trace_free(trace);
    brum_options_free(options);
  }
  brum_manager_free(m);
}

}  // namespace
}  // namespace brum::testing
