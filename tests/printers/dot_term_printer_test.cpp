#include "brum/printers/dot_term_printer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/build_kind.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

// Drawings of formulas in the language of Graphviz.

namespace brum {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

const std::string head =
    "digraph formula {\n"
    "  graph [ordering=out];\n"
    "  node [fontname=\"Helvetica\", style=filled, fillcolor=white];\n"
    "  edge [arrowsize=0.7];\n";

bool is_box(const std::string& line) {
  return line.ends_with(" shape=box];");
}

/// Sorts the lines that write constants: their order is that of a hash table.
std::string with_sorted_boxes(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  const auto first = std::find_if(lines.begin(), lines.end(), is_box);
  std::sort(first, std::find_if_not(first, lines.end(), is_box));
  std::string sorted;
  for (const std::string& line : lines) {
    sorted += line + "\n";
  }
  return sorted;
}

std::string drawing(TermManager& mgr, const Term* formula) {
  std::ostringstream out;
  DotTermPrinter(&mgr).print_formula(out, formula);
  return with_sorted_boxes(out.str());
}

std::string drawing(TermManager& mgr, const Term* formula, std::size_t most_nodes) {
  std::ostringstream out;
  DotTermPrinter(&mgr).print_graph(out, formula, most_nodes);
  return with_sorted_boxes(out.str());
}

/// (and (<= s z) (<= z s)) with s = (+ x y): x, y, s, z, the two inequalities and the conjunction
/// have the ids 1 to 7.
const Term* make_two_bounds(TermManager& mgr) {
  const Term* x = testing::make_real(mgr, "x");
  const Term* y = testing::make_real(mgr, "y");
  const Term* s = mgr.make_plus(x, y);
  const Term* z = testing::make_real(mgr, "z");
  const Term* below = mgr.make_leq(s, z);
  return mgr.make_and(below, mgr.make_leq(z, s));
}

const std::string boxes_of_two_bounds =
    "  n1 [label=\"x\", shape=box];\n"
    "  n2 [label=\"y\", shape=box];\n"
    "  n4 [label=\"z\", shape=box];\n";

const std::string nodes_of_two_bounds =
    "  n3 [label=\"+\"];\n"
    "  n3 -> n1;\n"
    "  n3 -> n2;\n"
    "  n5 [label=\"<=\"];\n"
    "  n5 -> n3;\n"
    "  n5 -> n4;\n"
    "  n6 [label=\"<=\"];\n"
    "  n6 -> n4;\n"
    "  n6 -> n3;\n"
    "  n7 [label=\"and\"];\n"
    "  n7 -> n5;\n"
    "  n7 -> n6;\n"
    "  n7 [penwidth=2];\n"
    "  n3 [label=\"+\\n.def_3\", fillcolor=gold];\n";

}  // namespace

TEST(DotTermPrinter, DrawsEachTermOnceAndMarksWhatIsShared) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  EXPECT_EQ(drawing(mgr, formula), head + boxes_of_two_bounds + nodes_of_two_bounds + "}\n");
}

TEST(DotTermPrinter, ASingleTermHasNoGraphAroundIt) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  for (const bool flag : {false, true}) {
    std::ostringstream out;
    DotTermPrinter(&mgr).print_term(out, formula, flag);
    EXPECT_EQ(with_sorted_boxes(out.str()), boxes_of_two_bounds + nodes_of_two_bounds);
  }
}

TEST(DotTermPrinter, AConstantIsABox) {
  TermManager mgr;
  EXPECT_EQ(drawing(mgr, testing::make_bool(mgr, "p")),
            head + "  n1 [label=\"p\", shape=box];\n  n1 [penwidth=2];\n}\n");
}

TEST(DotTermPrinter, AnArgumentThatStandsTwiceHasTwoEdges) {
  TermManager mgr;
  const Term* x = testing::make_int(mgr, "x");
  const Term* doubled = mgr.make_plus(x, x);
  EXPECT_EQ(drawing(mgr, mgr.make_leq(doubled, doubled)),
            head +
                "  n1 [label=\"x\", shape=box];\n"
                "  n2 [label=\"+\"];\n  n2 -> n1;\n  n2 -> n1;\n"
                "  n3 [label=\"<=\"];\n  n3 -> n2;\n  n3 -> n2;\n"
                "  n3 [penwidth=2];\n"
                "  n2 [label=\"+\\n.def_2\", fillcolor=gold];\n}\n");
}

TEST(DotTermPrinter, SharingIsThatOfTheFormulaNotOfTheStore) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  const Term* below = formula->children[0];
  EXPECT_THAT(drawing(mgr, below), Not(HasSubstr("gold")));
}

TEST(DotTermPrinter, OnePrinterDrawsSeveralFormulas) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  DotTermPrinter printer(&mgr);
  std::ostringstream first;
  printer.print_formula(first, formula);
  std::ostringstream part;
  printer.print_graph(part, formula, 1);
  std::ostringstream second;
  printer.print_formula(second, formula);
  EXPECT_EQ(first.str(), second.str());
  EXPECT_NE(first.str(), part.str());
}

TEST(DotTermPrinter, SpellsSymbolsAsSmtLibDoes) {
  TermManager mgr;
  const Term* word = testing::make_bv(mgr, "input word", 8);
  const Term* low = mgr.make_extract(3, 0, word);
  const Term* formula = mgr.make_equal(low, mgr.make_bv_number(QNumber(5), 4));
  const std::string text = drawing(mgr, formula);
  EXPECT_THAT(text, HasSubstr("[label=\"|input word|\", shape=box];"));
  EXPECT_THAT(text, HasSubstr("[label=\"(_ extract 3 0)\"];"));
  EXPECT_THAT(text, HasSubstr("[label=\"(_ bv5 4)\", shape=box];"));
  EXPECT_THAT(text, HasSubstr("[label=\"=\"];"));
}

TEST(DotTermPrinter, NamesCannotEndALabel) {
  TermManager mgr;
  const std::pair<const char*, const char*> rows[] = {
      {"a\"b", "|a\\\"b|"},
      {"a\\", "|a\\\\|"},
      {"a&lt;", "|a&amp;lt;|"},
      {"a\nb", "|a\\nb|"},
  };
  for (const auto& [name, label] : rows) {
    EXPECT_THAT(drawing(mgr, testing::make_bool(mgr, name)),
                HasSubstr(std::string("[label=\"") + label + "\", shape=box];"));
  }
}

TEST(DotTermPrinter, LongLabelsAreCutBetweenCharacters) {
  TermManager mgr;
  EXPECT_THAT(drawing(mgr, testing::make_bool(mgr, std::string(40, 'a'))),
              HasSubstr("\"" + std::string(40, 'a') + "\""));
  EXPECT_THAT(drawing(mgr, testing::make_bool(mgr, std::string(41, 'a'))),
              HasSubstr("\"" + std::string(40, 'a') + "...\""));
  // The bar before the name and 38 letters make 39 bytes; the next character has two.
  EXPECT_THAT(drawing(mgr, testing::make_bool(mgr, std::string(38, 'a') + "\u00e9\u00e9")),
              HasSubstr("\"|" + std::string(38, 'a') + "...\""));
  // Bytes that only continue characters.
  EXPECT_THAT(drawing(mgr, testing::make_bool(mgr, std::string(41, '\x80'))), HasSubstr("\"...\""));
}

TEST(DotTermPrinter, TheNodesNearestTheFormulaAreDrawn) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  EXPECT_EQ(drawing(mgr, formula, 3), head +
                                          "  n5 [label=\"<=\"];\n"
                                          "  more5 [label=\"...\", shape=plaintext];\n"
                                          "  n5 -> more5 [style=dashed];\n"
                                          "  n6 [label=\"<=\"];\n"
                                          "  more6 [label=\"...\", shape=plaintext];\n"
                                          "  n6 -> more6 [style=dashed];\n"
                                          "  n7 [label=\"and\"];\n"
                                          "  n7 -> n5;\n"
                                          "  n7 -> n6;\n"
                                          "  n7 [penwidth=2];\n}\n");
  EXPECT_EQ(drawing(mgr, formula, 4), head +
                                          "  n3 [label=\"+\"];\n"
                                          "  more3 [label=\"...\", shape=plaintext];\n"
                                          "  n3 -> more3 [style=dashed];\n"
                                          "  n5 [label=\"<=\"];\n"
                                          "  n5 -> n3;\n"
                                          "  more5 [label=\"...\", shape=plaintext];\n"
                                          "  n5 -> more5 [style=dashed];\n"
                                          "  n6 [label=\"<=\"];\n"
                                          "  n6 -> n3;\n"
                                          "  more6 [label=\"...\", shape=plaintext];\n"
                                          "  n6 -> more6 [style=dashed];\n"
                                          "  n7 [label=\"and\"];\n"
                                          "  n7 -> n5;\n"
                                          "  n7 -> n6;\n"
                                          "  n7 [penwidth=2];\n"
                                          "  n3 [label=\"+\\n.def_3\", fillcolor=gold];\n}\n");
}

TEST(DotTermPrinter, ALimitThatIsNotReachedLeavesNothingOut) {
  TermManager mgr;
  const Term* formula = make_two_bounds(mgr);
  EXPECT_EQ(drawing(mgr, formula, 7), drawing(mgr, formula));
  EXPECT_EQ(drawing(mgr, formula, 1), head +
                                          "  n7 [label=\"and\"];\n"
                                          "  more7 [label=\"...\", shape=plaintext];\n"
                                          "  n7 -> more7 [style=dashed];\n"
                                          "  n7 [penwidth=2];\n}\n");
}

TEST(DotTermPrinter, RefusesASymbolThatSmtLibDoesNotKnow) {
  TermManager mgr;
  const Symbol* symbol = mgr.declare_interpreted("mystery", mgr.get_bool_type());
  DotTermPrinter printer(&mgr);
  std::ostringstream out;
  try {
    printer.print_formula(out, mgr.make_term(symbol));
    FAIL() << "printed";
  } catch (const TermPrinter::error& problem) {
    EXPECT_STREQ(problem.what(), "can't print interpreted symbol mysteryin SMT-LIB format");
  }
}

TEST(DotTermPrinter, DeepFormulasCostNoStackAndLinearText) {
  testing::run_on_small_stack([] {
    const std::size_t size = testing::large_size(1'000'000);
    TermManager mgr;
    const Term* chain = testing::make_left_chain(mgr, size);
    DotTermPrinter printer(&mgr);
    testing::CountingStream out;
    printer.print_formula(out, chain);
    // A node and two edges for each conjunction, with numbers of at most 7 digits.
    EXPECT_LT(out.counts.bytes, size * 80);
    EXPECT_GT(out.counts.bytes, size * 30);
  });
}

}  // namespace brum
