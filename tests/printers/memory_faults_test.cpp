// Printing while memory runs out: the printer and its maps stay right.

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <sstream>
#include <string>

#include "tests/printers/open_printers.h"
#include "tests/support/counting_stream.h"
#include "tests/support/failing_memory.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

using testing::CountingStream;
using testing::make_bv;
using testing::MemoryFault;
using testing::OpenPrinter;
using testing::OpenPrinter2;

/// A formula with long names, indexed operators and numerals, so that texts do not fit into strings
/// themselves.
struct Formula {
  TermManager mgr;
  const DataType* sort = mgr.make_uninterpreted_type("A");
  const Term* v = make_bv(mgr, "a name that is longer than a string holds by itself", 100'000);
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(sort, v->sort())));
  const Term* low = mgr.make_extract(99'999, 50'000, v);
  const Term* wide = mgr.make_zero_extend(50'000, low);
  const Term* same = mgr.make_equal(wide, wide);
  const Term* formula = mgr.make_and(same, mgr.make_equal(m, m));
};

TEST(MemoryFaults, ADocumentAfterOneThatWasCutShortIsWhole) {
  Formula f;
  for (const bool v1 : {true, false}) {
    const auto print = [&](TermPrinter& printer) {
      return testing::single_term(printer, f.formula);
    };
    OpenPrinter reference(v1, &f.mgr, "QF_AUFBV", "sat");
    const std::string expected = print(reference);
    bool hit = true;
    std::size_t failures = 0;
    for (std::size_t failing = 1; hit; ++failing) {
      OpenPrinter printer(v1, &f.mgr, "QF_AUFBV", "sat");
      bool threw = false;
      {
        CountingStream out;
        const MemoryFault fault(failing);
        try {
          printer.print_single_term(out, f.formula, false);
        } catch (const std::bad_alloc&) {
          threw = true;
        }
        hit = fault.hit();
      }
      ASSERT_EQ(threw, hit) << failing;
      failures += hit ? 1U : 0U;
      EXPECT_FALSE(printer.single_term);
      EXPECT_TRUE(printer.use_newlines);
      ASSERT_EQ(print(printer), expected) << failing;
    }
    EXPECT_GT(failures, 20U);
  }
}

TEST(MemoryFaults, DeclarationsAfterOnesThatWereCutShortAreWhole) {
  Formula f;
  const auto declare = [&](TermPrinter& printer, std::ostream& out) {
    printer.print_type_declaration(out, f.sort);
    printer.print_symbol_declaration(out, f.v->symbol);
    printer.print_symbol_declaration(out, f.m->symbol);
  };
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    OpenPrinter printer(false, &f.mgr, "", "");
    bool threw = false;
    {
      CountingStream out;
      const MemoryFault fault(failing);
      try {
        declare(printer, out);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      hit = fault.hit();
    }
    ASSERT_EQ(threw, hit) << failing;
    std::ostringstream out;
    declare(printer, out);
    const std::string name = "U" + std::to_string(printer.sort_counter - 1);
    EXPECT_EQ(out.str(), "(declare-sort " + name +
                             " 0)\n(declare-fun |a name that is longer than a string holds by "
                             "itself| () (_ BitVec 100000))\n(declare-fun m () (Array " +
                             name + " (_ BitVec 100000)))\n")
        << failing;
  }
}

TEST(MemoryFaults, TraceDefinitionsHoldNoWrongText) {
  Formula f;
  std::map<std::uint64_t, std::string> right;
  {
    OpenPrinter2 reference(&f.mgr, "", "", true, nullptr);
    CountingStream out;
    reference.apitracer_print_term(out, f.formula, "");
    for (const auto& [term, text] : reference.trace_definitions) {
      right[term->id] = text;
    }
  }
  bool hit = true;
  std::size_t failures = 0;
  for (std::size_t failing = 1; hit; ++failing) {
    OpenPrinter2 printer(&f.mgr, "", "", true, nullptr);
    {
      CountingStream out;
      const MemoryFault fault(failing);
      try {
        printer.apitracer_print_term(out, f.formula, ":named a name of some length");
      } catch (const std::bad_alloc&) {
        ++failures;
      }
      hit = fault.hit();
    }
    for (const auto& [term, text] : printer.trace_definitions) {
      EXPECT_EQ(text, right[term->id]) << "allocation " << failing << ", term " << term->id;
    }
    EXPECT_FALSE(printer.in_api_trace);
    EXPECT_EQ(printer.assert_attribute, "");
    CountingStream out;
    printer.apitracer_print_term(out, f.formula, "");
    EXPECT_EQ(printer.trace_definitions[f.formula], right[f.formula->id]);
    EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
  }
  EXPECT_GT(failures, 20U);
}

TEST(MemoryFaults, APrinterIsMadeWholeOrNotAtAll) {
  TermManager mgr;
  const std::string logic = "a logic whose name is longer than a string holds by itself";
  bool hit = true;
  std::size_t failures = 0;
  for (std::size_t failing = 1; hit; ++failing) {
    bool threw = false;
    {
      const MemoryFault fault(failing);
      try {
        const SmtLib2TermPrinter printer(&mgr, logic, logic, true, nullptr);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      hit = fault.hit();
    }
    ASSERT_EQ(threw, hit) << failing;
    failures += hit ? 1U : 0U;
  }
  EXPECT_GT(failures, 5U);
}

}  // namespace
}  // namespace brum
