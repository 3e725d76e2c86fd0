#ifndef BRUM_TESTS_CAPI_CAPI_FIXTURE_H
#define BRUM_TESTS_CAPI_CAPI_FIXTURE_H

#include <gtest/gtest.h>

#include <string>

#include "brum/capi/brum.h"

namespace brum::testing {

/// A manager and a buffer of the C interface for each test. A test ends without an error pending.
class CInterface : public ::testing::Test {
 protected:
  ~CInterface() override {
    EXPECT_EQ(brum_last_error(m), BRUM_OK) << brum_last_error_text(m);
    brum_buffer_free(buffer);
    brum_manager_free(m);
  }

  const brum_sort* bool_sort() { return brum_bool_sort(m); }
  const brum_sort* int_sort() { return brum_int_sort(m); }
  const brum_term* integer(const char* name) { return brum_constant(m, name, int_sort()); }
  const brum_term* boolean(const char* name) { return brum_constant(m, name, bool_sort()); }

  /// The text of a term on one line; empty, with an error pending, when it cannot be printed.
  std::string text(const brum_term* term) {
    brum_options* options = brum_options_new();
    brum_options_set_newlines(options, 0);
    brum_buffer_clear(buffer);
    brum_print_term(m, term, options, brum_buffer_sink(buffer));
    brum_options_free(options);
    return brum_buffer_text(buffer);
  }

  /// Expects that an error of this status is pending, and gives its text after clearing it.
  std::string take_error(brum_status status) {
    EXPECT_EQ(brum_last_error(m), status);
    const std::string text = brum_last_error_text(m);
    brum_clear_error(m);
    return text;
  }

  brum_manager* m = brum_manager_new();
  brum_buffer* buffer = brum_buffer_new();
};

}  // namespace brum::testing

#endif  // BRUM_TESTS_CAPI_CAPI_FIXTURE_H
