// Every entry point of the printers with every allocation failing in turn.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "brum/printers/check_names.h"
#include "tests/faults/documents.h"
#include "tests/faults/every_failure.h"
#include "tests/support/limited_stream.h"

namespace brum::testing {
namespace {

template <class Printer>
std::string print_whole(const EntryPoint<Printer>& entry, Printer& printer, const WideFormula& f) {
  LimitedStream out;
  entry.print(printer, out, f);
  return std::string(out.text());
}

std::size_t num_differences(const std::vector<std::size_t>& a, const std::vector<std::size_t>& b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    count += a[i] == b[i] ? 0U : 1U;
  return count;
}

/// Fails each allocation of one entry point. What was written is the beginning of the right text,
/// the store is as it was, and the printer then prints the right text.
template <class Printer>
void fail_every_allocation(const EntryPoint<Printer>& entry) {
  SCOPED_TRACE(entry.name);
  WideFormula f;
  const std::size_t num_terms = f.mgr.num_terms();
  const auto reference = entry.make(f);
  const std::string expected = print_whole(entry, *reference, f);
  EXPECT_EQ(num_differences(reference->buckets(), entry.make(f)->buckets()), entry.growths);
  const std::size_t allocations = for_every_allocation([&](std::size_t failing, bool lasting) {
    const auto printer = entry.make(f);
    LimitedStream out;
    const bool hit = fails_cleanly(failing, lasting, [&] { entry.print(*printer, out, f); });
    EXPECT_EQ(f.mgr.num_terms(), num_terms);
    EXPECT_EQ(out.text(), expected.substr(0, out.text().size())) << failing;
    EXPECT_TRUE(printer->is_idle()) << failing;
    if (!hit) {
      EXPECT_EQ(out.text(), expected);
      return false;
    }
    std::string again = print_whole(entry, *printer, f);
    if (entry.leaves_traces) {
      // Brackets that were left open are closed, definitions already made are not made again.
      EXPECT_NE(again.find(":named a-name-of-some-length)"), std::string::npos) << failing;
      return true;
    }
    EXPECT_EQ(again, expected) << failing;
    return true;
  });
  EXPECT_GT(allocations, 10U);
}

TEST(PrinterMemory, EveryEntryPointOfTheOlderPrinterSurvivesEveryFailure) {
  for (const auto& entry : plain_entry_points())
    fail_every_allocation(entry);
}

TEST(PrinterMemory, EveryEntryPointOfTheScriptPrinterSurvivesEveryFailure) {
  for (const auto& entry : script_entry_points())
    fail_every_allocation(entry);
}

TEST(PrinterMemory, ATraceByLetIsRightAgainAfterThePieceThatClosesTheBrackets) {
  WideFormula f(WideFormula::few_widths);
  const auto print = [&f](SmtLib2TermPrinter& printer) {
    LimitedStream out;
    printer.apitracer_print_term(out, f.formula, "");
    return std::string(out.text());
  };
  SmtLib2TermPrinter reference(&f.mgr, "", "", false, nullptr);
  const std::string expected = print(reference);
  for_every_allocation([&](std::size_t failing, bool lasting) {
    TablePrinter printer(&f.mgr, "", "", false, nullptr);
    LimitedStream out;
    const bool hit =
        fails_cleanly(failing, lasting, [&] { printer.apitracer_print_term(out, f.formula, ""); });
    print(printer);
    EXPECT_EQ(print(printer), expected) << failing;
    return hit;
  });
}

TEST(PrinterMemory, SpellingsAreMadeWholeOrNotAtAll) {
  WideFormula f;
  const DataType* function = f.mgr.make_function_type(
      {f.mgr.make_bv_type(100'000'000), f.mgr.make_bv_type(3)}, f.mgr.make_bv_type(4));
  const Symbol* congruence =
      f.mgr.make_int_modular_congruence(7, make_int(f.mgr, "i"), make_int(f.mgr, "i"))->symbol;
  const QNumber value = QNumber::from_string("-123456789012345678901234567891/2");
  for (const bool v1 : {true, false}) {
    const auto spell = [&](SmtLibTermPrinter& printer) {
      return printer.to_smtlib(function) + printer.to_smtlib(congruence) +
             printer.to_smtlib(value) + printer.to_smtlib("a name that is (not) a symbol \xC3\xA9");
    };
    SmtLibTermPrinter reference(v1, &f.mgr, "", "");
    const std::string expected = spell(reference);
    EXPECT_GT(for_every_allocation([&](std::size_t failing, bool lasting) {
                SmtLibTermPrinter printer(v1, &f.mgr, "", "");
                const bool hit = fails_cleanly(failing, lasting, [&] { spell(printer); });
                EXPECT_EQ(spell(printer), expected) << failing;
                return hit;
              }),
              5U);
  }
}

TEST(PrinterMemory, ARefusalWithoutMemoryIsARefusalOrMemoryThatEnded) {
  TermManager mgr;
  const DataType* sort =
      mgr.make_array_type(mgr.make_uninterpreted_type("a sort of some length"), mgr.get_int_type());
  const Term* formula =
      mgr.make_equal(mgr.make_term(mgr.declare("a", sort)), mgr.make_term(mgr.declare("b", sort)));
  const std::string message = "unsupported index type for Array: a sort of some length";
  std::string told;
  told.reserve(200);
  const auto print = [&](SmtLibTermPrinter& printer, std::ostream& out) {
    told = "printed";
    try {
      printer.print_formula(out, formula);
    } catch (const TermPrinter::error& error) {
      told = error.what();
    } catch (const std::bad_alloc&) {
      told = "no memory";
    }
  };
  std::size_t without_memory = 0;
  bool hit = true;
  for (std::size_t failing = 1; hit; ++failing) {
    SmtLibTermPrinter printer(true, &mgr, "", "");
    LimitedStream out;
    {
      const MemoryFault fault(failing);
      print(printer, out);
      hit = fault.hit();
    }
    // An exception finds a place even where there is no memory for it; its text may not.
    EXPECT_TRUE(told == message || told == "no memory" || told.empty()) << failing << ": " << told;
    without_memory += told == message ? 0U : 1U;
    print(printer, out);
    EXPECT_EQ(told, message) << failing;
  }
  EXPECT_GT(without_memory, 5U);
}

TEST(PrinterMemory, CollectingAddsToTheSetsOrThrows) {
  WideFormula f;
  for_every_allocation([&](std::size_t failing, bool lasting) {
    hsh::HashSet<const Symbol*> symbols;
    hsh::HashSet<const DataType*> types;
    const bool hit = fails_cleanly(failing, lasting, [&] {
      TermPrinter::collect_symbols_and_types(f.formula, symbols, types);
    });
    if (symbols.bucket_count() != 0 && types.bucket_count() != 0) {
      TermPrinter::collect_symbols_and_types(f.formula, symbols, types);
      EXPECT_EQ(types.size(), 24U);
      EXPECT_EQ(symbols.size(), 85U);
    }
    return hit;
  });
}

TEST(PrinterMemory, NamesAreCheckedOrMemoryEnds) {
  TermManager mgr;
  const Term* formula = mgr.make_true();
  for (const char* name : {"let", "a|b", "", "x", "a name of more than fifteen bytes\\"})
    formula = mgr.make_and(formula, make_bool(mgr, name));
  EXPECT_GT(for_every_allocation([&](std::size_t failing, bool lasting) {
              std::size_t problems = 0;
              const bool hit = fails_cleanly(
                  failing, lasting, [&] { problems = check_names(mgr, {formula}, false).size(); });
              EXPECT_EQ(problems, hit ? 0U : 4U);
              return hit;
            }),
            4U);
}

}  // namespace
}  // namespace brum::testing
