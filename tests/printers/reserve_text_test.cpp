#include "brum/printers/reserve_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ios>
#include <limits>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/utils/memory_stream.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

constexpr bool strings_move = sizeof(std::string) != sizeof(char*);

// Of lengths inside the string itself, below and above what a stream begins with.
const std::size_t lengths[] = {0, 1, 15, 16, 511, 512, 513, 5'000};

TEST(ReserveText, TextGoesOnWhereItEnded) {
  for (const std::size_t length : lengths) {
    const std::string begin(length, 'a');
    std::ostringstream out;
    out << begin;
    reserve_text(out, 10'000);
    EXPECT_EQ(out.str(), begin);
    EXPECT_EQ(out.tellp(), std::streampos(static_cast<std::streamoff>(length)));
    out << "bcd";
    EXPECT_EQ(out.str(), begin + "bcd");
    EXPECT_TRUE(out.good());
  }
}

TEST(ReserveText, WhatIsReservedNeedsNoOtherMemory) {
  if (!strings_move) {
    GTEST_SKIP() << "streams copy strings of one pointer";
  }
  for (const std::size_t length : {0U, 1U, 15U}) {
    std::ostringstream out;
    out << std::string(length, 'a');
    reserve_text(out, 10'000);
    const char* const place = out.view().data();
    for (int i = 0; i < 1'000; ++i) {
      out << "0123456789";
    }
    EXPECT_EQ(out.view().data(), place) << length;
    EXPECT_EQ(out.view().size(), length + 10'000U);
  }
}

// Nobody can tell the stream's own memory from an array of somebody's there.
TEST(ReserveText, ALongerTextStaysWhereItIs) {
  for (const std::size_t length : {16U, 512U, 5'000U}) {
    std::ostringstream out;
    out << std::string(length, 'a');
    const char* const place = out.view().data();
    reserve_text(out, 10'000);
    EXPECT_EQ(out.view().data(), place) << length;
  }
}

TEST(ReserveText, ATextInAnArrayStaysThere) {
  struct {
    std::array<char, 100> below{};
    std::optional<std::stringbuf> buffer;
    std::array<char, 100> above{};
  } memory;
  for (std::array<char, 100>* const array : {&memory.below, &memory.above}) {
    for (const std::size_t length : {0U, 50U, 99U, 100U}) {
      std::stringbuf& buffer = memory.buffer.emplace(std::ios_base::out);
      buffer.pubsetbuf(array->data(), static_cast<std::streamsize>(array->size()));
      std::ostream out(&buffer);
      const std::string begin(length, 'a');
      out << begin;
      reserve_text(out, 10'000);
      EXPECT_EQ(buffer.view().data(), array->data());
      const std::string end = length < array->size() ? "b" : "";
      out << end;
      EXPECT_EQ(std::string_view(array->data(), length + end.size()), begin + end);
      out << std::string(1'000, 'c');
      EXPECT_EQ(buffer.str(), begin + end + std::string(1'000, 'c'));
      EXPECT_TRUE(out.good());
    }
  }
}

TEST(ReserveText, ATextToBeReadStaysWhereItIs) {
  std::istringstream in("short");
  const char* const place = in.view().data();
  std::ostream out(in.rdbuf());
  reserve_text(out, 10'000);
  EXPECT_EQ(in.view().data(), place);
  EXPECT_EQ(in.view(), "short");
}

TEST(ReserveText, AStreamThatStandsElsewhereStaysThere) {
  std::ostringstream out;
  out << "abcdef";
  out.seekp(2);
  reserve_text(out, 10'000);
  EXPECT_EQ(out.tellp(), std::streampos(2));
  out << "XY";
  EXPECT_EQ(out.str(), "abXYef");
}

TEST(ReserveText, WhatIsReadStaysWhereItIs) {
  std::stringstream both;
  both << "abc";
  EXPECT_EQ(both.get(), 'a');
  reserve_text(both, 10'000);
  both << "def";
  EXPECT_EQ(both.get(), 'b');
  EXPECT_EQ(both.get(), 'c');
  EXPECT_EQ(both.get(), 'd');
  EXPECT_EQ(both.tellp(), std::streampos(6));
}

TEST(ReserveText, StreamsThatAppendAppend) {
  for (const auto mode : {std::ios_base::ate, std::ios_base::app}) {
    std::ostringstream out("begin ", mode);
    reserve_text(out, 10'000);
    out << "end";
    EXPECT_EQ(out.str(), "begin end");
  }
}

TEST(ReserveText, AStreamThatWritesOverItsTextDoesSo) {
  std::ostringstream out("begin");
  reserve_text(out, 10'000);
  out << "end";
  EXPECT_EQ(out.str(), "endin");
}

TEST(ReserveText, OtherStreamsAreLeftAlone) {
  std::ostream none(nullptr);
  reserve_text(none, 100);
  EXPECT_EQ(none.rdbuf(), nullptr);

  MemoryStream memory;
  memory << "text";
  reserve_text(memory, 10'000);
  EXPECT_EQ(memory.text(), "text");

  /// Might have a meaning of its own for what is moved away.
  class OwnBuffer : public std::stringbuf {};
  OwnBuffer own;
  std::ostream to_own(&own);
  to_own << "text";
  const char* const place = own.view().data();
  reserve_text(to_own, 10'000);
  EXPECT_EQ(own.view().data(), place);
  EXPECT_EQ(own.view(), "text");
}

TEST(ReserveText, TooMuchIsNotReserved) {
  std::ostringstream out;
  out << "short";
  const char* const place = out.view().data();
  reserve_text(out, std::numeric_limits<std::size_t>::max() / 2);
  EXPECT_EQ(out.view().data(), place);
  out << '.';
  EXPECT_EQ(out.str(), "short.");
}

/// Notes where the text lies after the declarations and at the end.
class PlaceNotingPrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::SmtLibTermPrinter;
  const char* begin = nullptr;
  const char* end = nullptr;

  void print_define_section_start(std::ostream& out) override {
    SmtLibTermPrinter::print_define_section_start(out);
    begin = static_cast<std::ostringstream&>(out).view().data();
  }
  void print_end(std::ostream& out) override {
    SmtLibTermPrinter::print_end(out);
    end = static_cast<std::ostringstream&>(out).view().data();
  }
};

TEST(ReserveText, ADocumentTakesItsMemoryAtOnce) {
  if (!strings_move) {
    GTEST_SKIP() << "streams copy strings of one pointer";
  }
  for (const bool v1 : {true, false}) {
    TermManager mgr;
    const Term* const sum = testing::make_ladder(mgr, 1'000);
    PlaceNotingPrinter printer(v1, &mgr, "", "");
    std::ostringstream out;
    printer.print_formula(out, mgr.make_equal(sum, sum));
    EXPECT_EQ(printer.begin, printer.end);
    EXPECT_GT(out.view().size(), 10'000U);
  }
}

}  // namespace
}  // namespace brum
