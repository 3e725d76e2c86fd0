// The readers with every allocation failing in turn.

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/readers/smtlib1_reader.h"
#include "brum/readers/smtlib2_reader.h"
#include "tests/faults/every_failure.h"
#include "tests/faults/texts.h"

namespace brum::testing {
namespace {

/// What is in force behind a text, one line for each assertion.
std::string summary(TermManager& mgr, const Script& script) {
  SmtLibTermPrinter printer(false, &mgr, "", "");
  std::ostringstream out;
  for (const Command& command : script.commands) {
    out << static_cast<int>(command.kind) << ' ' << command.name << ' ';
    if (command.term != nullptr)
      printer.print_single_term(out, command.term, false);
    out << '\n';
  }
  return out.str();
}

/// Reads a text with each allocation failing. That is told by std::bad_alloc; afterwards the same
/// manager and the same reader read the text as if nothing had happened.
template <class Reader>
void fail_every_allocation(const char* text) {
  std::string expected;
  {
    TermManager mgr;
    std::istringstream in(text);
    Script script;
    Reader(mgr).read(in, script);
    expected = summary(mgr, script);
  }
  EXPECT_GT(for_every_allocation([&](std::size_t failing, bool lasting) {
              TermManager mgr;
              Reader reader(mgr);
              std::istringstream in(text);
              bool hit = false;
              {
                Script script;
                hit = fails_cleanly(failing, lasting, [&] { reader.read(in, script); });
              }
              std::istringstream again(text);
              Script script;
              reader.read(again, script);
              EXPECT_EQ(summary(mgr, script), expected) << failing;
              return hit;
            }),
            50U);
}

TEST(ReaderMemory, AScriptIsReadAfterEveryFailure) {
  fail_every_allocation<SmtLib2Reader>(script_text);
}

TEST(ReaderMemory, AScriptOfBitVectorsIsReadAfterEveryFailure) {
  fail_every_allocation<SmtLib2Reader>(bit_vector_text);
}

TEST(ReaderMemory, ABenchmarkIsReadAfterEveryFailure) {
  fail_every_allocation<SmtLib1Reader>(benchmark_text);
}

// Symbols that stand for the results of partial operators are numbered, and a number that was given
// is not given again; so the text differs.
TEST(ReaderMemory, PartialOperatorsAreReadAfterEveryFailure) {
  const std::string text =
      "(declare-const a-constant-with-a-long-name Int)"
      "(assert (= (div 7 a-constant-with-a-long-name) (mod a-constant-with-a-long-name 3)))";
  for_every_allocation([&](std::size_t failing, bool lasting) {
    TermManager mgr;
    SmtLib2Reader reader(mgr);
    std::istringstream in(text);
    Script script;
    const bool hit = fails_cleanly(failing, lasting, [&] { reader.read(in, script); });
    std::istringstream again(text);
    Script whole;
    reader.read(again, whole);
    EXPECT_EQ(whole.at_end().assertions.size(), 1U) << failing;
    EXPECT_EQ(whole.introduced.size(), 2U) << failing;
    return hit;
  });
}

TEST(ReaderMemory, AnErrorWithoutMemoryIsAnErrorOrMemoryThatEnded) {
  const std::string text =
      "(declare-const x Int)\n(assert (and x an-unknown-symbol-of-some-length))";
  std::string told;
  told.reserve(200);
  const auto read = [&told](TermManager& mgr, std::istream& in, Script& script) {
    told = "read";
    try {
      SmtLib2Reader(mgr).read(in, script);
    } catch (const ReadError& error) {
      told = error.what();
    } catch (const std::bad_alloc&) {
      told = "no memory";
    }
  };
  const std::string message =
      "input:2:16: error: found the symbol an-unknown-symbol-of-some-length, expected a declared "
      "symbol";
  std::size_t without_memory = 0;
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    TermManager mgr;
    std::istringstream in(text);
    Script script;
    {
      const MemoryFault fault(failing);
      read(mgr, in, script);
      hit = fault.hit();
    }
    EXPECT_TRUE(told == message || told == "no memory" || told.empty()) << failing << ": " << told;
    without_memory += told == message ? 0U : 1U;
    std::istringstream again(text);
    Script whole;
    read(mgr, again, whole);
    EXPECT_EQ(told, message) << failing;
  }
  EXPECT_GT(without_memory, 20U);
}

/// The answers to what is in force need memory too.
TEST(ReaderMemory, QueriesAreAnsweredOrMemoryEnds) {
  TermManager mgr;
  std::istringstream in(script_text);
  Script script;
  SmtLib2Reader(mgr).read(in, script);
  EXPECT_GT(for_every_allocation([&](std::size_t failing, bool lasting) {
              return fails_cleanly(failing, lasting, [&] {
                const Query query = script.query(1);
                const Query end = script.at_end();
                EXPECT_EQ(query.assertions.size(), 2U);
                EXPECT_EQ(end.assertions.size(), 1U);
              });
            }),
            3U);
}

}  // namespace
}  // namespace brum::testing
