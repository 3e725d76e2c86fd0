#include "brum/printers/symbol_collector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "brum/printers/term_printer.h"
#include "tests/support/build_kind.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_bv;
using testing::make_int;

struct Collected {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;

  void add(const Term* term) { TermPrinter::collect_symbols_and_types(term, symbols, types); }
  std::multiset<std::string> symbol_names() const {
    std::multiset<std::string> names;
    for (const Symbol* symbol : symbols) {
      names.insert(symbol->name);
    }
    return names;
  }
  std::multiset<std::string> type_names() const {
    std::multiset<std::string> names;
    for (const DataType* type : types) {
      names.insert(type->to_str());
    }
    return names;
  }
};

using Names = std::multiset<std::string>;

TEST(CollectSymbolsAndTypes, AllSymbolsAreCollectedInterpretedOnesToo) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* p = make_bool(mgr, "p");
  const Term* formula =
      mgr.make_and(mgr.make_leq(mgr.make_plus(x, mgr.make_number(3)), x), mgr.make_not(p));
  Collected found;
  found.add(formula);
  EXPECT_EQ(found.symbol_names(), (Names{"and", "<=", "+", "x", "3", "not", "p"}));
  EXPECT_EQ(found.type_names(), (Names{"Int", "Bool"}));
}

TEST(CollectSymbolsAndTypes, SortsOfInterpretedSymbolsBringNothing) {
  TermManager mgr;
  const Term* formula = mgr.make_equal(mgr.make_bv_number(3, 8), mgr.make_bv_number(4, 8));
  Collected found;
  found.add(formula);
  EXPECT_EQ(found.symbol_names(), (Names{"=", "3", "4"}));
  EXPECT_TRUE(found.types.empty());
}

TEST(CollectSymbolsAndTypes, SortsAreThoseOfResultsAndArguments) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* b = mgr.make_uninterpreted_type("B");
  const Symbol* f = mgr.declare("f", mgr.make_function_type({mgr.get_real_type(), a}, b));
  const Term* term = mgr.make_term(f, {mgr.make_number(1), mgr.make_term(mgr.declare("c", a))});
  Collected found;
  found.add(term);
  EXPECT_EQ(found.symbol_names(), (Names{"f", "1", "c"}));
  EXPECT_EQ(found.type_names(), (Names{"Real", "A", "B"}));  // and no function type
}

TEST(CollectSymbolsAndTypes, SortsInsideArraySortsAreCollected) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* b = mgr.make_uninterpreted_type("B");
  const DataType* inner = mgr.make_array_type(mgr.make_bv_type(8), b);
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(a, inner)));
  Collected found;
  found.add(m);
  EXPECT_EQ(found.type_names(), (Names{"(Array A (Array (_ BitVec 8) B))", "A",
                                       "(Array (_ BitVec 8) B)", "(_ BitVec 8)", "B"}));
}

TEST(CollectSymbolsAndTypes, ArraySortsOfFunctionArgumentsAreLookedInto) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* arrays = mgr.make_array_type(mgr.get_int_type(), a);
  const Symbol* f = mgr.declare("f", mgr.make_function_type({arrays}, mgr.get_bool_type()));
  const Term* m = mgr.make_term(mgr.declare("m", arrays));
  Collected found;
  found.add(mgr.make_term(
      f, {mgr.make_store(m, mgr.make_number(1), mgr.make_select(m, mgr.make_number(0)))}));
  EXPECT_EQ(found.symbol_names(), (Names{"f", "store", "m", "1", "select", "0"}));
  EXPECT_EQ(found.type_names(), (Names{"Bool", "(Array Int A)", "Int", "A"}));
}

TEST(CollectSymbolsAndTypes, WhatTheSetsHoldStays) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* v = make_bv(mgr, "v", 8);
  const Symbol* other = mgr.declare("other", mgr.get_real_type());
  Collected found;
  found.symbols.insert(other);
  found.types.insert(mgr.get_real_type());
  found.add(mgr.make_leq(x, x));
  found.add(mgr.make_bvule(v, v));
  found.add(mgr.make_leq(x, x));
  EXPECT_EQ(found.symbol_names(), (Names{"other", "<=", "x", "bvule", "v"}));
  EXPECT_EQ(found.type_names(), (Names{"Real", "Int", "(_ BitVec 8)"}));
}

TEST(CollectSymbolsAndTypes, SortsMetAgainAreInTheSetOnce) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* arrays = mgr.make_array_type(a, a);
  const Term* m = mgr.make_term(mgr.declare("m", arrays));
  const Term* n = mgr.make_term(mgr.declare("n", arrays));
  Collected found;
  found.add(mgr.make_equal(m, n));
  EXPECT_EQ(found.type_names(), (Names{"(Array A A)", "A"}));
}

TEST(CollectSymbolsAndTypes, NamesOfTheUsersThatLookInterpretedAreTheUsers) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const Symbol* plus = mgr.declare("+", mgr.make_function_type({integer, integer}, integer));
  const Term* x = make_int(mgr, "x");
  Collected found;
  found.add(mgr.make_plus(mgr.make_term(plus, {x, x}), x));
  EXPECT_EQ(found.symbol_names(), (Names{"+", "+", "x"}));
}

TEST(CollectSymbolsAndTypes, TheSetGrowsAtTheFirstLookUpAfterAnAddition) {
  // The order of declarations follows the set's buckets. 31 of them are left at a look-up that
  // meets 22 values, also one for an operator that was met before.
  TermManager mgr;
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  SymbolCollector collector(symbols, types);
  collector.add_symbol(mgr.get_and_symbol());
  for (int i = 0; i < 21; ++i) {
    collector.add_symbol(mgr.declare("p" + std::to_string(i), mgr.get_bool_type()));
  }
  EXPECT_EQ(symbols.size(), 22U);
  EXPECT_EQ(symbols.bucket_count(), 31U);
  collector.add_symbol(mgr.get_and_symbol());
  EXPECT_EQ(symbols.size(), 22U);
  EXPECT_GT(symbols.bucket_count(), 31U);
}

// Symbols for a large set wait for one another, and come into it as if they did not.
TEST(CollectSymbolsAndTypes, ALargeSetIsFilledInTheOrderOfTheWalk) {
  TermManager mgr;
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const Symbol*> expected;
  hsh::HashSet<const DataType*> types;
  SymbolCollector collector(symbols, types);
  const Symbol* const op = mgr.get_and_symbol();
  std::size_t growths = 0;
  std::vector<const Symbol*> names;
  for (std::size_t i = 0; i < 30'000; ++i) {
    names.push_back(mgr.declare("p" + std::to_string(i), mgr.get_bool_type()));
    const Symbol* const again = names[i * i % names.size()];
    for (const Symbol* symbol : {names.back(), op, again}) {
      const std::size_t buckets = expected.bucket_count();
      expected.insert(symbol);
      collector.add_symbol(symbol);
      if (symbol == op && expected.bucket_count() != buckets) {
        collector.end_term();
        EXPECT_EQ(symbols.size(), i + 2);
        EXPECT_EQ(symbols.bucket_count(), expected.bucket_count());
        ++growths;
      }
    }
  }
  collector.end_term();
  EXPECT_GT(growths, 8U);
  EXPECT_TRUE(std::ranges::equal(symbols, expected));
  EXPECT_EQ(types.size(), 1U);
}

TEST(CollectSymbolsAndTypes, TheSetOfSortsGrowsAtTheFirstLookUpAfterAnAddition) {
  TermManager mgr;
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> types;
  SymbolCollector collector(symbols, types);
  const DataType* sort = nullptr;
  for (int i = 0; i < 22; ++i) {
    sort = mgr.make_uninterpreted_type("S" + std::to_string(i));
    collector.add_symbol(mgr.declare("x" + std::to_string(i), sort));
  }
  EXPECT_EQ(types.size(), 22U);
  EXPECT_EQ(types.bucket_count(), 31U);
  collector.add_symbol(mgr.declare("y", sort));
  EXPECT_EQ(types.size(), 22U);
  EXPECT_EQ(types.bucket_count(), 73U);
}

TEST(CollectSymbolsAndTypes, ArraySortsThatTheSetHeldBeforeAreLookedInto) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* inner = mgr.make_array_type(mgr.get_int_type(), a);
  const DataType* outer = mgr.make_array_type(inner, inner);
  Collected found;
  found.types.insert(outer);
  found.types.insert(inner);
  found.add(mgr.make_term(mgr.declare("m", outer)));
  EXPECT_EQ(found.type_names(),
            (Names{"(Array (Array Int A) (Array Int A))", "(Array Int A)", "Int", "A"}));
}

TEST(CollectSymbolsAndTypes, DeepTermsAndSortsNeedNoStack) {
  const std::size_t depth = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const DataType* sort = mgr.make_uninterpreted_type("A");
    for (std::size_t i = 0; i < depth / 10; ++i) {
      sort = mgr.make_array_type(mgr.get_int_type(), sort);
    }
    const Term* m = mgr.make_term(mgr.declare("m", sort));
    const Term* formula = testing::make_negations(mgr, mgr.make_equal(m, m), depth);
    Collected found;
    found.add(formula);
    EXPECT_EQ(found.symbol_names(), (Names{"not", "=", "m"}));
    EXPECT_EQ(found.types.size(), depth / 10 + 2);
  });
}

TEST(CollectSymbolsAndTypes, SharedSubtermsAreVisitedOnce) {
  // A ladder of 10,000 has 2^10000 paths.
  TermManager mgr;
  Collected found;
  found.add(testing::make_ladder(mgr, 10'000));
  EXPECT_EQ(found.symbol_names(), (Names{"+", "x"}));
  EXPECT_EQ(found.type_names(), (Names{"Int"}));
}

}  // namespace
}  // namespace brum
