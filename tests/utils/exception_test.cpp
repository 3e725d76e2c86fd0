#include "brum/utils/exception.h"

#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>

#include <exception>
#include <locale>
#include <new>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <type_traits>

namespace {

using brum::Exception;
using brum::testing::MemoryFault;

static_assert(std::is_base_of_v<std::exception, Exception>);
static_assert(std::is_nothrow_copy_constructible_v<Exception>);
static_assert(std::is_nothrow_destructible_v<Exception>);

/** Sends the reports of the diagnostic hook to a string for the length of a test. */
class DiagnosticText {
 public:
  DiagnosticText() : before(Exception::set_diagnostic_stream(&out)) {}
  DiagnosticText(const DiagnosticText&) = delete;
  DiagnosticText& operator=(const DiagnosticText&) = delete;
  ~DiagnosticText() { Exception::set_diagnostic_stream(before); }

  std::string text() const { return out.str(); }

 private:
  std::ostringstream out;
  std::ostream* before;
};

/** An error class as the rest of the library derives them. */
class Derived : public Exception {
 public:
  using Exception::Exception;
};

/** A buffer that takes nothing. */
class ThrowingBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type) override { throw std::runtime_error("no"); }
  std::streamsize xsputn(const char*, std::streamsize) override { throw std::runtime_error("no"); }
};

/** Digits in groups of two, decimal comma: what a message must never show. */
class OddNumbers : public std::numpunct<char> {
 protected:
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\2"; }
};

TEST(Exception, GivesItsMessage) {
  const Exception error("abc");
  const std::exception& base = error;
  EXPECT_STREQ(error.what(), "abc");
  EXPECT_STREQ(base.what(), "abc");
}

TEST(Exception, MayHaveAnEmptyMessage) {
  EXPECT_STREQ(Exception("").what(), "");
}

TEST(Exception, TextWrittenLaterShowsInTheNextWhat) {
  Exception error("abc");
  EXPECT_STREQ(error.what(), "abc");
  error.stream() << " in line " << 12;
  EXPECT_STREQ(error.what(), "abc in line 12");
  error.stream() << '.';
  EXPECT_STREQ(error.what(), "abc in line 12.");
}

TEST(Exception, KeepsEveryByteOfTheMessage) {
  Exception error(std::string("a\0b\xff\n", 5));
  EXPECT_EQ(error.stream().str(), std::string("a\0b\xff\n", 5));
  EXPECT_STREQ(error.what(), "a");
}

TEST(Exception, KeepsTheTextOfWhatWhileItLives) {
  Exception error("abc");
  const char* const text = error.what();
  error.stream() << "def";
  EXPECT_STREQ(text, "abc");
}

TEST(Exception, WritesNumbersInTheClassicLocale) {
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new OddNumbers));
  Exception error("n = ");
  Exception copy(error);
  std::locale::global(before);
  error.stream() << 1234567;
  copy.stream() << 7654321;
  EXPECT_STREQ(error.what(), "n = 1234567");
  EXPECT_STREQ(copy.what(), "n = 7654321");
}

TEST(Exception, IsCaughtAsEachOfItsBases) {
  EXPECT_THROW(throw Derived("x"), Derived);
  EXPECT_THROW(throw Derived("x"), Exception);
  EXPECT_THROW(throw Derived("x"), std::exception);
}

TEST(Exception, CopyHoldsTheTextOfItsMomentAndGrowsOnItsOwn) {
  Exception error("abc");
  error.stream() << "def";
  Exception copy(error);
  copy.stream() << "ghi";
  error.stream() << "xyz";
  EXPECT_STREQ(copy.what(), "abcdefghi");
  EXPECT_STREQ(error.what(), "abcdefxyz");
}

TEST(Exception, TextAddedOnTheWayUpSurvivesRethrowing) {
  try {
    try {
      throw Derived("abc");
    } catch (Exception& error) {
      error.stream() << "def";
      throw;
    }
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "abcdef");
  }
}

TEST(Exception, RunsTheDiagnosticHookOncePerErrorMade) {
  const DiagnosticText diagnostics;
  try {
    throw Derived("first");
  } catch (const Exception& error) {
    EXPECT_EQ(diagnostics.text(), "first\n");
    const Exception copy(error);
    EXPECT_STREQ(copy.what(), "first");
    EXPECT_EQ(diagnostics.text(), "first\n");
    try {
      throw error;
    } catch (const Exception&) {
      EXPECT_EQ(diagnostics.text(), "first\n");
    }
  }
  const Exception second("second");
  EXPECT_EQ(diagnostics.text(), "first\nsecond\n");
}

TEST(Exception, ReportsNothingWithoutADiagnosticStream) {
  std::ostringstream out;
  std::ostream* const before = Exception::set_diagnostic_stream(&out);
  EXPECT_EQ(Exception::set_diagnostic_stream(nullptr), &out);
  const Exception error("abc");
  EXPECT_EQ(Exception::set_diagnostic_stream(before), nullptr);
  EXPECT_EQ(out.str(), "");
}

TEST(Exception, IsMadeEvenIfItsReportCannotBeWritten) {
  ThrowingBuffer buffer;
  std::ostream out(&buffer);
  out.exceptions(std::ios_base::badbit);
  std::ostream* const before = Exception::set_diagnostic_stream(&out);
  const Exception error("abc");
  Exception::set_diagnostic_stream(before);
  EXPECT_STREQ(error.what(), "abc");
  EXPECT_TRUE(out.bad());
}

TEST(Exception, WhatIsEmptyWhenTheTextCannotBeCopied) {
  const Exception error(std::string(100, 'x'));
  const char* text = nullptr;
  {
    const MemoryFault fault(1, true);
    text = error.what();
  }
  EXPECT_STREQ(text, "");
  EXPECT_EQ(error.what(), std::string(100, 'x'));
}

TEST(Exception, ConstructionWithoutMemoryThrowsBadAlloc) {
  const std::string message(5000, 'x');
  std::size_t failures = 0;
  for (bool done = false; !done;) {
    const MemoryFault fault(failures + 1);
    try {
      const Exception error(message);
      done = true;
    } catch (const std::bad_alloc&) {
      ++failures;
    }
  }
  EXPECT_GE(failures, 1U);
}

TEST(Exception, CopyMadeWithoutMemoryHasNoText) {
  const Exception error(std::string(5000, 'x'));
  {
    const MemoryFault fault(1, true);
    const Exception copy(error);
    EXPECT_STREQ(copy.what(), "");
  }
  const Exception copy(error);
  EXPECT_EQ(copy.what(), std::string(5000, 'x'));
}

}  // namespace
