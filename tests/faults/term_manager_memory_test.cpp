// Every builder of a term manager with every allocation failing in turn.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/faults/every_failure.h"
#include "tests/support/formulas.h"

namespace brum::testing {
namespace {

/// A manager with a few terms of each kind to build on.
struct Base {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* x = make_int(mgr, "x");
  const Term* r = make_real(mgr, "r");
  const Term* v = make_bv(mgr, "v", 8);
  const DataType* array_sort = mgr.make_array_type(mgr.get_int_type(), mgr.get_real_type());
  const Term* a = mgr.make_term(mgr.declare("a", array_sort));
  const DataType* function_sort = mgr.make_function_type({mgr.get_int_type()}, mgr.get_int_type());
  const Symbol* f = mgr.declare("f", function_sort);
};

/// Something to build; the same thing, at the same address, each time.
struct Builder {
  const char* name;
  const void* (*build)(Base&);
};

const std::vector<Builder> builders = {
    {"a bit-vector sort", [](Base& b) -> const void* { return b.mgr.make_bv_type(9); }},
    {"an array sort",
     [](Base& b) -> const void* { return b.mgr.make_array_type(b.x->sort(), b.v->sort()); }},
    {"an uninterpreted sort",
     [](Base& b) -> const void* {
       return b.mgr.make_uninterpreted_type("a sort with a long name");
     }},
    {"a function sort",
     [](Base& b) -> const void* {
       return b.mgr.make_function_type({b.x->sort(), b.r->sort()}, b.p->sort());
     }},
    {"a symbol",
     [](Base& b) -> const void* {
       return b.mgr.declare("a symbol with a long name", b.x->sort());
     }},
    {"an interpreted symbol",
     [](Base& b) -> const void* {
       return b.mgr.declare_interpreted("a symbol with a long name", b.x->sort());
     }},
    {"an equality", [](Base& b) -> const void* { return b.mgr.get_equality_symbol(b.array_sort); }},
    {"an if-then-else", [](Base& b) -> const void* { return b.mgr.get_ite_symbol(b.array_sort); }},
    {"an application", [](Base& b) -> const void* { return b.mgr.make_term(b.f, {b.x}); }},
    {"true", [](Base& b) -> const void* { return b.mgr.make_true(); }},
    {"not", [](Base& b) -> const void* { return b.mgr.make_not(b.p); }},
    {"and", [](Base& b) -> const void* { return b.mgr.make_and(b.p, b.q); }},
    {"or", [](Base& b) -> const void* { return b.mgr.make_or(b.p, b.q); }},
    {"iff", [](Base& b) -> const void* { return b.mgr.make_iff(b.p, b.q); }},
    {"equal", [](Base& b) -> const void* { return b.mgr.make_equal(b.v, b.v); }},
    {"ite", [](Base& b) -> const void* { return b.mgr.make_ite(b.p, b.x, b.r); }},
    {"ite over Bool", [](Base& b) -> const void* { return b.mgr.make_ite(b.p, b.q, b.p); }},
    {"an integer", [](Base& b) -> const void* { return b.mgr.make_number(7); }},
    {"a fraction", [](Base& b) -> const void* { return b.mgr.make_number(QNumber(1, 3)); }},
    {"a large number",
     [](Base& b) -> const void* { return b.mgr.make_number(QNumber(mpz_class(1) << 100, 1)); }},
    {"a bit-vector", [](Base& b) -> const void* { return b.mgr.make_bv_number(5, 8); }},
    {"plus", [](Base& b) -> const void* { return b.mgr.make_plus(b.x, b.r); }},
    {"times", [](Base& b) -> const void* { return b.mgr.make_times(b.x, b.x); }},
    {"leq", [](Base& b) -> const void* { return b.mgr.make_leq(b.x, b.r); }},
    {"floor", [](Base& b) -> const void* { return b.mgr.make_floor(b.r); }},
    {"congruence",
     [](Base& b) -> const void* { return b.mgr.make_int_modular_congruence(5, b.x, b.x); }},
    {"bvnot", [](Base& b) -> const void* { return b.mgr.make_bvnot(b.v); }},
    {"bvadd", [](Base& b) -> const void* { return b.mgr.make_bvadd(b.v, b.v); }},
    {"bvult", [](Base& b) -> const void* { return b.mgr.make_bvult(b.v, b.v); }},
    {"bvcomp", [](Base& b) -> const void* { return b.mgr.make_bvcomp(b.v, b.v); }},
    {"concat", [](Base& b) -> const void* { return b.mgr.make_concat(b.v, b.v); }},
    {"extract", [](Base& b) -> const void* { return b.mgr.make_extract(6, 2, b.v); }},
    {"rotate", [](Base& b) -> const void* { return b.mgr.make_rotate_left(3, b.v); }},
    {"zero_extend", [](Base& b) -> const void* { return b.mgr.make_zero_extend(3, b.v); }},
    {"select", [](Base& b) -> const void* { return b.mgr.make_select(b.a, b.x); }},
    {"store", [](Base& b) -> const void* { return b.mgr.make_store(b.a, b.x, b.r); }},
};

TEST(TermManagerMemory, EveryBuilderBuildsAllOrLeavesTheTermsAsTheyWere) {
  for (const Builder& builder : builders) {
    SCOPED_TRACE(builder.name);
    for_every_allocation([&](std::size_t failing, bool lasting) {
      Base base;
      const std::size_t num_terms = base.mgr.num_terms();
      const bool hit = fails_cleanly(failing, lasting, [&] { builder.build(base); });
      if (hit) {
        EXPECT_EQ(base.mgr.num_terms(), num_terms) << failing;
        for (const Term* term : {base.p, base.q, base.x, base.r, base.v, base.a})
          EXPECT_EQ(TermManager::num_uses(term), 0U) << failing;
      }
      const void* built = builder.build(base);
      EXPECT_NE(built, nullptr);
      EXPECT_EQ(builder.build(base), built) << failing;
      return hit;
    });
  }
}

TEST(TermManagerMemory, AManagerIsMadeWholeOrNotAtAll) {
  EXPECT_GT(for_every_allocation([](std::size_t failing, bool lasting) {
              return fails_cleanly(failing, lasting, [] { const TermManager mgr; });
            }),
            20U);
}

/// Something to build many of, so that tables of the manager grow.
struct Series {
  const char* name;
  const void* (*build)(Base&, std::size_t i);
};

/// More than the 22 values at which a new table grows, fewer than the 52 at which it grows again.
constexpr std::size_t series_length = 28;

const std::vector<Series> all_series = {
    {"bit-vector sorts",
     [](Base& b, std::size_t i) -> const void* { return b.mgr.make_bv_type(10 + i); }},
    {"uninterpreted sorts",
     [](Base& b, std::size_t i) -> const void* {
       return b.mgr.make_uninterpreted_type("S" + std::to_string(i));
     }},
    {"array sorts",
     [](Base& b, std::size_t /*i*/) -> const void* {
       const DataType*& sort = b.array_sort;
       return sort = b.mgr.make_array_type(sort, b.x->sort());
     }},
    {"function sorts",
     [](Base& b, std::size_t i) -> const void* {
       const std::vector<const DataType*> arguments(i + 3, b.x->sort());
       return b.mgr.make_function_type(arguments, b.x->sort());
     }},
    {"symbols",
     [](Base& b, std::size_t i) -> const void* {
       return b.mgr.declare("c" + std::to_string(i), b.x->sort());
     }},
    {"interpreted symbols",
     [](Base& b, std::size_t i) -> const void* {
       return b.mgr.declare_interpreted("c" + std::to_string(i), b.x->sort());
     }},
    {"numbers",
     [](Base& b, std::size_t i) -> const void* {
       return b.mgr.make_number(static_cast<std::int64_t>(i))->symbol;
     }},
    {"congruences",
     [](Base& b, std::size_t i) -> const void* {
       return b.mgr.make_int_modular_congruence(static_cast<std::int64_t>(i + 1), b.x, b.x);
     }},
    {"extensions",
     [](Base& b, std::size_t i) -> const void* { return b.mgr.make_zero_extend(i + 1, b.v); }},
};

/// Goes on with the series behind what is built of it already.
void build_series(const Series& series, Base& base, std::vector<const void*>& built) {
  for (std::size_t i = built.size(); i < series_length; ++i)
    built.push_back(series.build(base, i));
}

TEST(TermManagerMemory, WhatWasBuiltStaysWhenATableCannotGrow) {
  for (const Series& series : all_series) {
    SCOPED_TRACE(series.name);
    for_every_allocation([&](std::size_t failing, bool lasting) {
      Base base;
      const DataType* array_sort = base.array_sort;
      std::vector<const void*> built;
      built.reserve(series_length);
      const std::size_t num_terms = base.mgr.num_terms();
      const bool hit = fails_cleanly(failing, lasting, [&] { build_series(series, base, built); });
      EXPECT_GE(base.mgr.num_terms(), num_terms);
      build_series(series, base, built);
      base.array_sort = array_sort;
      std::vector<const void*> built_again;
      build_series(series, base, built_again);
      EXPECT_EQ(built_again, built) << failing;
      return hit;
    });
  }
}

TEST(TermManagerMemory, NumbersKeepTheirValuesWhenATableCannotGrow) {
  for_every_allocation([&](std::size_t failing, bool lasting) {
    Base base;
    const auto number = [&](std::int64_t i) { return base.mgr.make_number(i); };
    const Term* first = number(1);
    const bool hit = fails_cleanly(failing, lasting, [&] {
      for (std::int64_t i = 2; i < 28; ++i)
        number(i);
    });
    const QNumber* value = base.mgr.get_number(first->symbol);
    EXPECT_TRUE(value != nullptr && *value == QNumber(1)) << failing;
    return hit;
  });
}

}  // namespace
}  // namespace brum::testing
