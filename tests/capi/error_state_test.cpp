// What the C interface keeps of an exception.

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <string>

#include "brum/capi/handles.h"
#include "brum/printers/term_printer.h"
#include "tests/support/failing_memory.h"

namespace brum::testing {
namespace {

using capi::ErrorState;

/// What is kept of the exception that `act` throws.
brum_status keep(ErrorState& errors, const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    return errors.keep_current();
  }
  return BRUM_OK;
}

TEST(ErrorState, EveryExceptionHasItsStatusAndText) {
  struct Row {
    std::function<void()> act;
    brum_status status;
    std::string text;
  };
  const Row rows[] = {
      {[] { throw capi::NullArgument("the term is null"); }, BRUM_ERROR_NULL, "the term is null"},
      {[] { throw capi::SinkFailure(); }, BRUM_ERROR_OUTPUT, "the sink took no more text"},
      {[] { throw TermManager::error("sorts differ"); }, BRUM_ERROR_SORT, "sorts differ"},
      {[] { throw TermPrinter::error("no such form"); }, BRUM_ERROR_FORM, "no such form"},
      {[] { throw capi::UnfitForm("no script"); }, BRUM_ERROR_FORM, "no script"},
      {[] { throw Exception("not a numeral"); }, BRUM_ERROR_ARGUMENT, "not a numeral"},
      {[] { throw std::bad_alloc(); }, BRUM_ERROR_MEMORY, "out of memory"},
      {[] { throw std::length_error("vector"); }, BRUM_ERROR_MEMORY, "out of memory"},
      {[] { throw std::runtime_error("odd"); }, BRUM_ERROR_INTERNAL, "odd"},
      {[] { throw 3; }, BRUM_ERROR_INTERNAL, "internal error"},
  };
  for (const Row& row : rows) {
    ErrorState errors;
    EXPECT_EQ(keep(errors, row.act), row.status) << row.text;
    EXPECT_EQ(errors.status(), row.status) << row.text;
    EXPECT_EQ(errors.text(), row.text);
    errors.clear();
    EXPECT_EQ(errors.status(), BRUM_OK);
    EXPECT_STREQ(errors.text(), "");
  }
}

TEST(ErrorState, TheFirstErrorStays) {
  ErrorState errors;
  EXPECT_EQ(keep(errors, [] { throw Exception("the first"); }), BRUM_ERROR_ARGUMENT);
  EXPECT_EQ(keep(errors, [] { throw std::bad_alloc(); }), BRUM_ERROR_MEMORY);
  EXPECT_EQ(errors.status(), BRUM_ERROR_ARGUMENT);
  EXPECT_STREQ(errors.text(), "the first");
}

TEST(ErrorState, WithoutMemoryEveryStatusHasAFixedText) {
  // A text that no short string holds, so that keeping it takes memory.
  const std::string text = "what went wrong, told at some length";
  struct Row {
    std::function<void()> act;
    brum_status status;
    std::string text;
  };
  const Row rows[] = {
      {[&] { throw capi::NullArgument(text.c_str()); }, BRUM_ERROR_NULL, "a handle is null"},
      {[&] { throw capi::SinkFailure(); }, BRUM_ERROR_OUTPUT, "the sink took no more text"},
      {[&] { throw TermManager::error(text); }, BRUM_ERROR_SORT, "the sorts do not fit"},
      {[&] { throw TermPrinter::error(text); }, BRUM_ERROR_FORM,
       "the form cannot express the term"},
      {[&] { throw Exception(text); }, BRUM_ERROR_ARGUMENT, "an argument is wrong"},
      {[&] { throw std::runtime_error(text); }, BRUM_ERROR_INTERNAL, "internal error"},
  };
  for (const Row& row : rows) {
    ErrorState errors;
    bool hit = false;
    try {
      row.act();
    } catch (...) {
      const MemoryFault fault(1, true);
      errors.keep_current();
      hit = fault.hit();
    }
    EXPECT_TRUE(hit) << row.text;
    EXPECT_EQ(errors.status(), row.status) << row.text;
    EXPECT_EQ(errors.text(), row.text);
  }
}

}  // namespace
}  // namespace brum::testing
