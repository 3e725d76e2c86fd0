// What printing takes it gives back: the definition map of a document goes at once, whatever texts
// it holds.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "brum/printers/definition_rule.h"
#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "brum/utils/memory_stream.h"
#include "tests/support/allocated_bytes.h"
#include "tests/support/formulas.h"

namespace brum {
namespace {

constexpr std::size_t text_bytes = 1'000;

/// A formula of constants with long names, with a shared term, and written in one long line.
const Term* make_long_formula(TermManager& mgr) {
  const Term* x = testing::make_int(mgr, std::string(text_bytes, 'x'));
  const Term* y = testing::make_int(mgr, std::string(text_bytes, 'y'));
  const Term* sum = mgr.make_plus(x, y);
  return mgr.make_leq(mgr.make_plus(sum, x), mgr.make_plus(sum, y));
}

template <class Print>
void expect_no_memory_left(const Print& print) {
  const auto print_often = [&] {
    for (int i = 0; i < 5'000; ++i) {
      MemoryStream out;
      print(out);
      ASSERT_GT(out.text().size(), 2 * text_bytes);
    }
  };
  print_often();
  const std::size_t before = testing::allocated_bytes();
  print_often();
  EXPECT_LT(testing::allocated_bytes(), before + 1'000 * text_bytes);
}

TEST(PrinterMemoryUse, OfOneFormulaIsGivenBack) {
  TermManager mgr;
  const Term* formula = make_long_formula(mgr);
  for (const bool v1 : {true, false}) {
    expect_no_memory_left([&](std::ostream& out) {
      SmtLibTermPrinter(v1, &mgr, "", "").print_formula(out, formula);
    });
  }
}

TEST(PrinterMemoryUse, OfAConstantIsGivenBack) {
  TermManager mgr;
  const Term* constant = testing::make_bool(mgr, std::string(2 * text_bytes, 'p'));
  expect_no_memory_left([&](std::ostream& out) {
    SmtLibTermPrinter(false, &mgr, "", "").print_formula(out, constant);
  });
}

TEST(PrinterMemoryUse, OfSeveralTermsIsGivenBack) {
  TermManager mgr;
  const Term* formula = make_long_formula(mgr);
  const std::vector<const Term*> terms{formula->children[0], formula, formula->children[1],
                                       formula->children[0]->children[1]};
  expect_no_memory_left([&](std::ostream& out) {
    SmtLib2TermPrinter(&mgr, "", "", true, nullptr).print_terms(out, terms);
  });
}

/// Notes what is allocated when the formula is written.
class MeasuringPrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::SmtLibTermPrinter;

  void print_formula_term(std::ostream& /*out*/, const std::string& /*text*/,
                          const Term* /*term*/) override {
    allocated = testing::allocated_bytes();
  }

  std::size_t allocated = 0;
};

// A few shared terms, each among hundreds of the store that the document does not hold.
TEST(PrinterMemoryUse, ADocumentPaysForItsOwnTerms) {
  constexpr std::int64_t count = 2'500;
  constexpr int others = 300;
  constexpr std::size_t most_bytes = std::size_t{5} << 20U;
  TermManager mgr;
  const Term* variable = testing::make_int(mgr, "x");
  const Term* other = variable;
  const Term* formula = mgr.make_true();
  for (std::int64_t i = 0; i < count; ++i) {
    const Term* shared = mgr.make_plus(variable, mgr.make_number(i));
    formula = mgr.make_and(formula, mgr.make_leq(shared, shared));
    for (int k = 0; k < others; ++k) {
      other = mgr.make_plus(other, variable);
    }
  }
  MemoryStream out;
  MeasuringPrinter printer(false, &mgr, "", "");
  const std::size_t before = testing::allocated_bytes();
  printer.print_formula(out, formula);
  EXPECT_LT(printer.allocated, before + most_bytes);
}

// A conjunction nested to the right, so that all its left sides wait for the innermost. Each is
// written in long texts at first, and then has a name.
TEST(PrinterMemoryUse, AShortTextKeepsNoLongOnesMemory) {
  constexpr std::size_t count = 1'000;
  TermManager mgr;
  const Term* variable = testing::make_int(mgr, std::string(5 * text_bytes, 'x'));
  const Term* formula = mgr.make_true();
  for (std::size_t i = 0; i < count; ++i) {
    const Term* nest = mgr.make_leq(variable, mgr.make_number(static_cast<std::int64_t>(i)));
    for (std::size_t level = 0; level < DefinitionRule::inline_levels + 1; ++level) {
      nest = mgr.make_not(nest);
    }
    formula = mgr.make_and(nest, formula);
  }
  MemoryStream out;
  MeasuringPrinter printer(false, &mgr, "", "");
  const std::size_t before = testing::allocated_bytes();
  printer.print_formula(out, formula);
  EXPECT_LT(printer.allocated, before + out.text().size() * 2 + 2 * count * text_bytes);
}

// The same nest with sides that are written inline: the innermost texts are long, and go as their
// places do.
TEST(PrinterMemoryUse, PlacesThatAreLeftKeepNoLongTextsMemory) {
  constexpr std::size_t count = 20'000;
  TermManager mgr;
  const Term* variable = testing::make_int(mgr, std::string(text_bytes / 10, 'x'));
  const Term* formula = mgr.make_true();
  for (std::size_t i = 0; i < count; ++i) {
    const Term* side = mgr.make_leq(variable, mgr.make_number(static_cast<std::int64_t>(i)));
    formula = mgr.make_and(mgr.make_not(side), formula);
  }
  MemoryStream out;
  MeasuringPrinter printer(false, &mgr, "", "");
  const std::size_t before = testing::allocated_bytes();
  printer.print_formula(out, formula);
  EXPECT_LT(printer.allocated, before + out.text().size() * 2 + count * text_bytes);
}

/// Notes how much memory the arguments' texts of the last application have.
class ArgumentsMeasuringPrinter : public SmtLibTermPrinter {
 public:
  using SmtLibTermPrinter::SmtLibTermPrinter;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    SmtLibTermPrinter::print_term_and_children(out, term, children);
    if (children.size() > 2) {
      capacity = 0;
      for (const std::string& text : children) {
        capacity += text.capacity();
      }
    }
  }

  std::size_t capacity = 0;
};

// Two applications of one function: the second's texts come where the first's were.
TEST(PrinterMemoryUse, ShortArgumentsKeepNoLongOnesMemory) {
  constexpr std::size_t count = 1'000;
  TermManager mgr;
  const DataType* const boolean = mgr.get_bool_type();
  const Symbol* const f =
      mgr.declare("f", mgr.make_function_type(std::vector(count, boolean), boolean));
  const auto apply_to_names = [&](char letter, std::size_t bytes) {
    std::vector<const Term*> arguments;
    for (std::size_t i = 0; i < count; ++i) {
      const std::string name = std::to_string(i) + std::string(bytes, letter);
      arguments.push_back(mgr.make_not(testing::make_bool(mgr, "n" + name)));
    }
    return mgr.make_term(f, arguments);
  };
  const Term* const wide = apply_to_names('x', text_bytes);
  const Term* const narrow = apply_to_names('y', 1);
  ArgumentsMeasuringPrinter printer(false, &mgr, "", "");
  MemoryStream out;
  printer.print_formula(out, wide);
  EXPECT_GT(printer.capacity, count * text_bytes);
  printer.print_formula(out, mgr.make_and(wide, narrow));
  EXPECT_LT(printer.capacity, count * text_bytes / 2);
}

/// Writes of every negation only that it is one.
class AbridgingPrinter : public MeasuringPrinter {
 public:
  using MeasuringPrinter::MeasuringPrinter;

  void print_term_and_children(std::ostream& out, const Term* term,
                               const std::vector<std::string>& children) override {
    if (term->symbol == mgr->get_not_symbol()) {
      out << "(not ...)";
    } else {
      MeasuringPrinter::print_term_and_children(out, term, children);
    }
  }
};

TEST(PrinterMemoryUse, AnAbridgedTextKeepsNoMemoryOfTheWholeOne) {
  constexpr std::size_t count = 2'000;
  TermManager mgr;
  const Term* variable = testing::make_int(mgr, std::string(20 * text_bytes, 'x'));
  const Term* formula = mgr.make_true();
  for (std::size_t i = 0; i < count; ++i) {
    const Term* side = mgr.make_leq(variable, mgr.make_number(static_cast<std::int64_t>(i)));
    formula = mgr.make_and(mgr.make_not(side), formula);
  }
  MemoryStream out;
  AbridgingPrinter printer(false, &mgr, "", "");
  const std::size_t before = testing::allocated_bytes();
  printer.print_formula(out, formula);
  EXPECT_LT(printer.allocated, before + out.text().size() * 2 + count * text_bytes);
}

}  // namespace
}  // namespace brum
