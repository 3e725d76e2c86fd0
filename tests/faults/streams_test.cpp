// Streams that fail or throw after every number of bytes.

#include <gtest/gtest.h>

#include <ios>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "tests/faults/documents.h"
#include "tests/faults/texts.h"
#include "tests/support/limited_stream.h"

namespace brum::testing {
namespace {

template <class Printer>
std::string print_whole(const EntryPoint<Printer>& entry, Printer& printer, const WideFormula& f) {
  LimitedStream out;
  entry.print(printer, out, f);
  return std::string(out.text());
}

/// How a stream tells that it takes no more.
enum class Failure {
  refused,  // the buffer refuses, the stream sets badbit
  thrown,   // the buffer throws, the stream sets badbit
  passed,   // the buffer throws, the stream lets the exception pass
};

constexpr Failure all_failures[] = {Failure::refused, Failure::thrown, Failure::passed};

/// The buffer takes exactly the first bytes of the right text, the printer is idle afterwards and
/// prints the right text to the next stream.
template <class Printer>
void fail_after_every_byte(const EntryPoint<Printer>& entry) {
  SCOPED_TRACE(entry.name);
  WideFormula f(WideFormula::few_widths);
  const auto printer = entry.make(f);
  const auto first = entry.make(f);
  const std::string expected = print_whole(entry, *first, f);
  for (std::size_t limit = 0; limit < expected.size(); ++limit) {
    for (const Failure failure : all_failures) {
      const auto fresh = entry.leaves_traces ? entry.make(f) : nullptr;
      Printer& used = entry.leaves_traces ? *fresh : *printer;
      const bool throws = failure != Failure::refused;
      LimitedStream out(limit,
                        throws ? LimitedBuffer::Beyond::raise : LimitedBuffer::Beyond::refuse);
      if (failure == Failure::passed)
        out.exceptions(std::ios_base::badbit);
      bool thrown = false;
      try {
        entry.print(used, out, f);
      } catch (const StreamFault&) {
        thrown = true;
      }
      ASSERT_EQ(thrown, failure == Failure::passed) << limit;
      ASSERT_TRUE(out.bad()) << limit;
      ASSERT_EQ(out.text(), std::string_view(expected).substr(0, limit)) << limit;
      ASSERT_TRUE(used.is_idle()) << limit;
    }
    if (!entry.leaves_traces) {
      ASSERT_EQ(print_whole(entry, *printer, f), expected) << limit;
    }
  }
}

TEST(Streams, ThatFailLeaveTheOlderPrinterInOrder) {
  for (const auto& entry : plain_entry_points())
    fail_after_every_byte(entry);
}

TEST(Streams, ThatFailLeaveTheScriptPrinterInOrder) {
  for (const auto& entry : script_entry_points())
    fail_after_every_byte(entry);
}

TEST(Streams, NumbersGoToStreamsThatFail) {
  const QNumber number = QNumber::from_string("-123456789012345678901234567891/2");
  const std::string text = "-123456789012345678901234567891/2";
  for (std::size_t limit = 0; limit <= text.size(); ++limit) {
    LimitedStream out(limit);
    out << number;
    EXPECT_EQ(out.text(), text.substr(0, limit));
    EXPECT_EQ(out.bad(), limit < text.size());
  }
}

/// Gives a text up to a number of bytes and then throws, as a device that has vanished.
class VanishingBuffer : public std::streambuf {
 public:
  VanishingBuffer(std::string_view text, std::size_t limit) : text_(text.substr(0, limit)) {
    setg(text_.data(), text_.data(), text_.data() + text_.size());
  }

 private:
  int_type underflow() override { throw StreamFault(); }
  std::streamsize xsgetn(char* target, std::streamsize count) override {
    const std::streamsize ready = std::min<std::streamsize>(count, egptr() - gptr());
    std::copy_n(gptr(), ready, target);
    gbump(static_cast<int>(ready));
    if (ready < count)
      throw StreamFault();
    return ready;
  }

  std::string text_;
};

template <class Reader>
void vanish_after_every_byte(const std::string& text) {
  for (std::size_t limit = 0; limit <= text.size(); ++limit) {
    for (const bool pass : {false, true}) {
      TermManager mgr;
      Script script;
      VanishingBuffer buffer(text, limit);
      std::istream in(&buffer);
      if (pass)
        in.exceptions(std::ios_base::badbit);
      std::string told;
      try {
        Reader(mgr).read(in, script);
      } catch (const Exception& error) {
        told = error.what();
      } catch (const StreamFault&) {
        told = "passed";
      }
      ASSERT_EQ(told, pass ? "passed" : "cannot read input") << limit;
    }
  }
}

// Whatever was read, the text may not pass for a whole one.
TEST(Streams, ThatVanishAreNoEndOfAText) {
  vanish_after_every_byte<SmtLib2Reader>("(declare-const x Int)\n(assert (= x |y|))\n");
  vanish_after_every_byte<SmtLib1Reader>("(benchmark b :formula (and true { } \"a\"");
}

/// A text that is cut off is refused, or is a script of fewer commands.
TEST(Streams, ATextCutAnywhereIsReadOrRefused) {
  for (const std::string_view text : {script_text, bit_vector_text}) {
    std::size_t read = 0;
    for (std::size_t length = 0; length <= text.size(); ++length) {
      TermManager mgr;
      Script script;
      std::istringstream in{std::string(text.substr(0, length))};
      try {
        SmtLib2Reader(mgr).read(in, script);
        ++read;
      } catch (const ReadError& error) {
        EXPECT_EQ(error.file(), "input");
      }
    }
    EXPECT_GT(read, 5U);
  }
  const std::string_view text = benchmark_text;
  const std::size_t whole = text.rfind(')') + 1;
  for (std::size_t length = 0; length <= text.size(); ++length) {
    TermManager mgr;
    Script script;
    std::istringstream in{std::string(text.substr(0, length))};
    bool refused = false;
    try {
      SmtLib1Reader(mgr).read(in, script);
    } catch (const ReadError&) {
      refused = true;
    }
    EXPECT_EQ(refused, length < whole) << length;
  }
}

}  // namespace
}  // namespace brum::testing
