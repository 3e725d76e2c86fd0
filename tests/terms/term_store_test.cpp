#include "brum/terms/term_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "brum/terms/term_manager.h"
#include "brum/terms/term_walk.h"
#include "tests/support/allocated_bytes.h"
#include "tests/support/build_kind.h"
#include "tests/support/failing_memory.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_int;
using testing::MemoryFault;

/// A store that is nobody's, with sorts and symbols of its own; it takes those of managers too.
struct StoreOfTheTests {
  Arena arena;
  SortTable sorts{arena};
  SymbolFactory factory{arena, sorts};
  TermStore store{sorts};
};

// A term holds its number, its symbol and its arguments, in this order and nothing between.
static_assert(sizeof(Term) == 16);

// Declarations come in an order that follows the addresses of symbols and sorts, and so these
// sizes: another one is another order, which users see.
static_assert(sizeof(Symbol) == 40);
static_assert(sizeof(NumberSymbol) == 56);
static_assert(sizeof(DataType) == 40);

TEST(Term, ArgumentsFollowTheSymbol) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* sum = mgr.make_plus(x, y);
  const auto* words = reinterpret_cast<const std::byte*>(sum);
  EXPECT_EQ(reinterpret_cast<const std::byte*>(&sum->id), words);
  EXPECT_EQ(reinterpret_cast<const std::byte*>(&sum->symbol), words + 8);
  EXPECT_EQ(reinterpret_cast<const std::byte*>(&sum->children[0]), words + 16);
  EXPECT_EQ(reinterpret_cast<const std::byte*>(&sum->children[1]), words + 24);
}

TEST(Term, HashIsTheId) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* not_p = mgr.make_not(p);
  EXPECT_EQ(hsh::hash<const Term*>()(p), 1U);
  EXPECT_EQ(hsh::hash<const Term*>()(not_p), 2U);
}

TEST(TermStore, IdsAreDenseFromOneInTheOrderOfMaking) {
  TermManager mgr;
  EXPECT_EQ(mgr.num_terms(), 0U);
  std::vector<const Term*> terms;
  terms.push_back(make_int(mgr, "x"));
  terms.push_back(mgr.make_number(3));
  terms.push_back(mgr.make_plus(terms[0], terms[1]));
  mgr.make_plus(terms[0], terms[1]);  // not made again
  terms.push_back(mgr.make_leq(terms[2], terms[0]));
  terms.push_back(mgr.make_true());
  EXPECT_EQ(mgr.num_terms(), 5U);
  for (std::size_t i = 0; i < terms.size(); ++i) {
    EXPECT_EQ(terms[i]->id, i + 1);
  }
  for (std::size_t i = 6; i <= 1000; ++i) {
    EXPECT_EQ(mgr.make_number(static_cast<std::int64_t>(i))->id, i);
  }
  EXPECT_EQ(mgr.num_terms(), 1000U);
  EXPECT_EQ(mgr.make_leq(terms[2], terms[0])->id, 4U);
}

TEST(TermStore, UsesAreArgumentPositionsOfAllTerms) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  EXPECT_EQ(mgr.num_uses(p), 0U);
  const Term* pp = mgr.make_and(p, p);
  EXPECT_EQ(mgr.num_uses(p), 2U);
  mgr.make_and(p, p);  // no new term, no new use
  EXPECT_EQ(mgr.num_uses(p), 2U);
  const Term* pq = mgr.make_or(p, q);
  EXPECT_EQ(mgr.num_uses(p), 3U);
  EXPECT_EQ(mgr.num_uses(q), 1U);
  EXPECT_EQ(mgr.num_uses(pq), 0U);
  mgr.make_and(pp, mgr.make_not(pq));
  EXPECT_EQ(mgr.num_uses(pp), 1U);
  EXPECT_EQ(mgr.num_uses(pq), 1U);
  EXPECT_EQ(mgr.num_uses(p), 3U);
  const Symbol* f = mgr.declare(
      "f", mgr.make_function_type({p->sort(), p->sort(), p->sort()}, mgr.get_int_type()));
  mgr.make_term(f, {q, p, q});
  EXPECT_EQ(mgr.num_uses(q), 3U);
  EXPECT_EQ(mgr.num_uses(p), 4U);
}

TEST(TermStore, RefusedTermsUseNothing) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* x = make_int(mgr, "x");
  EXPECT_THROW(mgr.make_and(p, x), TermManager::error);
  EXPECT_THROW(mgr.make_ite(p, p, x), TermManager::error);
  EXPECT_EQ(mgr.num_uses(p), 0U);
  EXPECT_EQ(mgr.num_uses(x), 0U);
}

TEST(TermStore, LargeStoresFindEveryTermAgain) {
  TermManager mgr;
  const std::size_t size = testing::large_size(200'000);
  const Term* root = testing::make_random_dag(mgr, size, 1);
  const std::size_t made = mgr.num_terms();
  EXPECT_EQ(made, size + 3);
  EXPECT_EQ(root->id, made);
  std::vector<bool> seen(made + 1);
  TermWalk().run(
      root, [&](const Term* term) { return !seen[term->id]; },
      [&](const Term* term) {
        seen[term->id] = true;
        const std::vector<const Term*> arguments(term->arguments().begin(),
                                                 term->arguments().end());
        ASSERT_EQ(mgr.make_term(term->symbol, arguments), term);
      });
  EXPECT_EQ(mgr.num_terms(), made);
}

// Forgetting may empty chunks that later terms do not fill, between others.
TEST(TermStore, FindsEveryTermAgainAfterForgettingMany) {
  TermManager mgr;
  const DataType* sort = mgr.get_int_type();
  const Symbol* constant = mgr.declare("c", sort);
  const Symbol* f = mgr.declare("f", mgr.make_function_type({sort, sort}, sort));
  const Symbol* g = mgr.declare("g", mgr.make_function_type({sort, sort}, sort));
  StoreOfTheTests owner;
  TermStore& store = owner.store;
  std::vector<const Term*> kept{store.apply(constant, {})};
  const auto extend = [&](const Symbol* symbol, int count) {
    for (int i = 0; i < count; ++i) {
      const std::array arguments{kept.back(), kept[kept.size() / 2]};
      kept.push_back(store.apply(symbol, arguments));
    }
  };
  extend(f, 100);
  for (const std::size_t left : {std::size_t{40}, std::size_t{90}, std::size_t{2'000}}) {
    extend(f, 20'000);
    kept.resize(left);
    store.roll_back(left);
    ASSERT_EQ(store.size(), left);
    extend(g, 5'000);
    ASSERT_EQ(store.size(), kept.size());
  }
  for (std::size_t i = 1; i < kept.size(); ++i) {
    ASSERT_EQ(kept[i]->id, i + 1);
    const std::array arguments{kept[i]->children[0], kept[i]->children[1]};
    ASSERT_EQ(store.apply(kept[i]->symbol, arguments), kept[i]);
  }
  EXPECT_EQ(store.size(), kept.size());
}

// Against a map from symbol and arguments to terms, as terms come, come again and are forgotten.
TEST(TermStore, AgreesWithAMap) {
  TermManager mgr;
  const DataType* const sort = mgr.get_int_type();
  const Symbol* const constant = mgr.declare("c", sort);
  const std::vector functions{
      mgr.declare("f", mgr.make_function_type({sort}, sort)),
      mgr.declare("g", mgr.make_function_type({sort, sort}, sort)),
      mgr.declare("h", mgr.make_function_type({sort, sort, sort}, sort)),
  };
  using Application = std::pair<const Symbol*, std::vector<const Term*>>;
  std::mt19937 random(7);  // NOLINT(cert-msc*): the same sequence in every run
  const auto below = [&](std::size_t bound) { return random() % bound; };
  for (int round = 0; round < 20; ++round) {
    StoreOfTheTests owner;
    TermStore& store = owner.store;
    std::vector<const Symbol*> symbols = functions;
    for (int i = 0; i < 20; ++i) {
      symbols.push_back(i < 10 ? owner.factory.make_user_symbol("c", owner.sorts.integer())
                               : mgr.declare("c" + std::to_string(i), sort));
    }
    std::vector<const Term*> terms{store.apply(constant, {})};
    std::vector<Application> applications{{constant, {}}};
    std::map<Application, const Term*> known{{applications[0], terms[0]}};
    std::vector<std::size_t> uses{0};
    for (int step = 0; step < 3'000; ++step) {
      if (below(500) == 0) {
        const std::size_t left = 1 + below(terms.size());
        for (std::size_t i = left; i < terms.size(); ++i) {
          known.erase(applications[i]);
          for (const Term* argument : applications[i].second) {
            --uses[argument->id - 1];
          }
        }
        store.roll_back(left);
        terms.resize(left);
        applications.resize(left);
        uses.resize(left);
      }
      // Few of the oldest terms, so that much is made twice, or any.
      const std::size_t range =
          below(2) == 0 ? terms.size() : std::min<std::size_t>(terms.size(), 9);
      Application application{symbols[below(symbols.size())], {}};
      for (std::uint64_t i = 0; i < application.first->arity; ++i) {
        application.second.push_back(terms[below(range)]);
      }
      const Term* const term = store.apply(application.first, application.second);
      const auto [place, is_new] = known.try_emplace(application, term);
      ASSERT_EQ(term, place->second);
      if (is_new) {
        terms.push_back(term);
        uses.push_back(0);
        for (const Term* argument : application.second) {
          ++uses[argument->id - 1];
        }
        applications.push_back(std::move(application));
      }
      ASSERT_EQ(term->id <= terms.size() ? terms[term->id - 1] : nullptr, term);
      ASSERT_EQ(store.size(), terms.size());
    }
    for (std::size_t i = 0; i < terms.size(); ++i) {
      ASSERT_EQ(TermStore::uses(terms[i]), uses[i]);
    }
  }
}

TEST(TermStore, WideTermsAreKeptWhole) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const std::size_t arity = 500'000;  // more than the largest usual chunk holds
  const std::vector<const DataType*> sorts(arity, mgr.get_bool_type());
  const Symbol* f = mgr.declare("f", mgr.make_function_type(sorts, mgr.get_bool_type()));
  std::vector<const Term*> arguments(arity, p);
  arguments.back() = q;
  const Term* wide = mgr.make_term(f, arguments);
  EXPECT_EQ(wide->children[0], p);
  EXPECT_EQ(wide->children[arity - 1], q);
  EXPECT_EQ(mgr.make_term(f, arguments), wide);
  EXPECT_EQ(mgr.num_uses(p), arity - 1);
  EXPECT_EQ(mgr.make_not(wide)->id, 4U);
}

TEST(TermStore, DeepFormulasAreMadeAndDestroyedOnASmallStack) {
  const std::size_t size = testing::large_size(1'000'000);
  testing::run_on_small_stack([&] {
    auto mgr = std::make_unique<TermManager>();
    const Term* formula = testing::make_negations(*mgr, make_bool(*mgr, "p"), size);
    EXPECT_EQ(formula->id, size + 1);
    testing::make_left_chain(*mgr, size / 10);
    testing::make_ladder(*mgr, size / 10);
    mgr.reset();
  });
}

/// The bytes that a store takes for each of `size` sums, which `make_sums` builds.
double bytes_per_sum(std::size_t size, const std::function<void(TermManager&)>& make_sums) {
  auto mgr = std::make_unique<TermManager>();
  const std::size_t before = testing::allocated_bytes();
  make_sums(*mgr);
  EXPECT_GE(mgr->num_terms(), size);
  return static_cast<double>(testing::allocated_bytes() - before) / static_cast<double>(size);
}

TEST(TermStore, ASumOverTheLastOneIsNotInTheTable) {
  constexpr std::size_t num_sums = 1'000'000;
  const double bytes = bytes_per_sum(num_sums, [](TermManager& mgr) {
    const Term* const x = make_int(mgr, "x");
    const Term* sum = x;
    for (std::size_t i = 0; i < num_sums; ++i) {
      sum = mgr.make_plus(sum, x);
    }
  });
  EXPECT_LT(bytes, 43);  // the last chunk is not full
  EXPECT_GT(bytes, 39);  // else nothing was measured
}

// Of a first user in another chunk than its youngest argument no note says where it lies, nor of
// one that is too far away in a chunk that was made for a wide term.
TEST(TermStore, FindsTermsFarFromTheirArguments) {
  TermManager mgr;
  const DataType* const sort = mgr.get_int_type();
  const Symbol* const f = mgr.declare("f", mgr.make_function_type({sort}, sort));
  const Symbol* const g = mgr.declare("g", mgr.make_function_type({sort}, sort));
  const Symbol* const h = mgr.declare("h", mgr.make_function_type({sort, sort}, sort));
  constexpr std::size_t wide_arity = 1'000'000;
  const Symbol* const wide = mgr.declare(
      "wide", mgr.make_function_type(std::vector<const DataType*>(wide_arity, sort), sort));
  for (const bool with_wide_chunk : {false, true}) {
    StoreOfTheTests owner;
    TermStore& store = owner.store;
    const auto apply = [&](const Symbol* symbol, const Term* argument) {
      return store.apply(symbol, std::array{argument});
    };
    const Term* const x = store.apply(mgr.declare("x", sort), {});
    if (with_wide_chunk) {
      store.apply(wide, std::vector<const Term*>(wide_arity, x));
      store.roll_back(1);
    }
    const Term* const y = store.apply(mgr.declare("y", sort), {});
    const Term* last = store.apply(mgr.declare("z", sort), {});
    while (store.size() < 130'000) {  // of 40 bytes
      last = store.apply(h, std::array{last, x});
    }
    const std::size_t size = store.size();
    const Term* const f_y = apply(f, y);
    const Term* const g_y = apply(g, y);
    EXPECT_EQ(apply(f, y), f_y);
    EXPECT_EQ(apply(g, y), g_y);
    EXPECT_EQ(store.size(), size + 2);
    store.roll_back(size + 1);
    EXPECT_EQ(apply(f, y), f_y);
    EXPECT_EQ(apply(g, y), g_y);
    EXPECT_EQ(TermStore::uses(y), 2U);
    store.roll_back(size);
    EXPECT_EQ(apply(g, y)->id, size + 1);
    EXPECT_EQ(apply(g, y)->symbol, g);
    EXPECT_EQ(apply(f, y)->id, size + 2);
    EXPECT_EQ(store.size(), size + 2);
    EXPECT_EQ(store.apply(h, std::array{last, x})->id, size + 3);
    EXPECT_EQ(TermStore::uses(y), 2U);
  }
}

// A term that is not noticed to be another manager's leads that manager to nothing of this one.
TEST(TermStore, AManagerOutlivesWhatAnotherMadeOfItsTerms) {
  TermManager owner;
  const Term* const x = make_int(owner, "x");
  const Term* const y = make_int(owner, "y");
  {
    TermManager other;
    make_int(other, "u");
    make_int(other, "v");
    make_int(other, "w");
    other.make_plus(x, y);
    other.make_leq(x, y);
  }
  const Term* const sum = owner.make_plus(x, y);
  EXPECT_EQ(sum->id, 3U);
  EXPECT_EQ(owner.make_plus(x, y), sum);
  EXPECT_EQ(owner.make_leq(x, y)->id, 4U);
}

TEST(TermStore, AConstantIsAnotherTermInEachManager) {
  TermManager owner;
  const Term* const x = make_int(owner, "x");
  const Term* const three = owner.make_number(3);
  {
    TermManager other;
    const Term* const p = make_bool(other, "p");
    const Term* const other_three = other.make_term(three->symbol, {});
    const Term* const other_x = other.make_term(x->symbol, {});
    EXPECT_EQ(other_three->id, 2U);
    EXPECT_EQ(other_x->id, 3U);
    EXPECT_EQ(other.make_term(three->symbol, {}), other_three);
    EXPECT_EQ(other.make_term(x->symbol, {}), other_x);
    EXPECT_EQ(other.make_term(p->symbol, {}), p);
    const Symbol* const mixed = owner.declare("mixed", other.get_int_type());
    const Term* const in_owner = owner.make_term(mixed, {});
    const Term* const in_other = other.make_term(mixed, {});
    EXPECT_EQ(in_owner->id, 3U);
    EXPECT_EQ(in_other->id, 4U);
    EXPECT_EQ(owner.make_term(mixed, {}), in_owner);
    EXPECT_EQ(other.make_term(mixed, {}), in_other);
  }
  EXPECT_EQ(owner.make_term(x->symbol, {}), x);
  EXPECT_EQ(owner.make_term(three->symbol, {}), three);
  EXPECT_EQ(owner.make_number(3), three);
}

// The next manager may get the place of the one that has gone, and its sorts their places.
TEST(TermStore, NoManagerLeavesATermToTheNext) {
  TermManager owner;
  std::optional<TermManager> other(std::in_place);
  const Symbol* const symbol = owner.declare("x", other->get_int_type());
  const Term* const x = other->make_term(symbol, {});
  EXPECT_EQ(other->make_term(symbol, {}), x);
  EXPECT_EQ(x->id, 1U);
  other.emplace();
  make_bool(*other, "p");
  EXPECT_EQ(other->make_term(owner.declare("y", owner.get_int_type()), {})->id, 2U);
  EXPECT_EQ(other->make_term(symbol, {})->id, 3U);
}

TEST(TermStore, TermsOfALargerManagerAreRefused) {
  TermManager small;
  TermManager large;
  const Term* const x = make_int(small, "x");
  const Term* const foreign = large.make_plus(make_int(large, "x"), make_int(large, "y"));
  try {
    small.make_plus(x, foreign);
    FAIL() << "no error";
  } catch (const TermManager::error& error) {
    EXPECT_STREQ(error.what(), "+: an argument is a term of another manager, expected one of this");
  }
  EXPECT_EQ(small.num_terms(), 1U);
  EXPECT_EQ(small.num_uses(x), 0U);
}

TEST(TermStore, ASumOverMuchUsedTermsTakesAtMostSeventyBytes) {
  // At the second size the table, at most three quarters full, has just doubled.
  for (const std::size_t size : {std::size_t{1'000'000}, std::size_t{789'000}}) {
    const double bytes = bytes_per_sum(size, [size](TermManager& mgr) {
      std::vector<const Term*> variables;
      for (int i = 0; i < 1000; ++i) {
        variables.push_back(make_int(mgr, "x" + std::to_string(i)));
      }
      for (std::size_t i = 0; i < size; ++i) {
        mgr.make_plus(variables[i / 1000], variables[i % 1000]);
      }
    });
    EXPECT_LT(bytes, 70);
    EXPECT_GT(bytes, 50);  // else they are not in the table
  }
}

TEST(TermStore, TermsOutliveGrowthInPlace) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  std::vector<const Term*> terms{x};
  for (int i = 0; i < 100'000; ++i) {
    terms.push_back(mgr.make_plus(terms.back(), x));
  }
  for (std::size_t i = 1; i < terms.size(); ++i) {
    ASSERT_EQ(mgr.make_plus(terms[i - 1], x), terms[i]);
  }
}

// Every allocation of `build` fails once; what is made afterwards must be as if it never had.
void expect_unharmed_by_memory_faults(const std::function<const Term*(TermManager&)>& build) {
  for (std::size_t failing = 1;; ++failing) {
    TermManager mgr;
    const Term* p = make_bool(mgr, "p");
    const Term* q = make_bool(mgr, "q");
    const Term* x = make_int(mgr, "x");
    const std::size_t terms_before = mgr.num_terms();
    bool threw = false;
    bool hit = false;
    {
      const MemoryFault fault(failing);
      try {
        build(mgr);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      hit = fault.hit();
    }
    EXPECT_EQ(threw, hit);
    if (threw) {
      EXPECT_EQ(mgr.num_terms(), terms_before) << "failing allocation " << failing;
      EXPECT_EQ(mgr.num_uses(p), 0U);
      EXPECT_EQ(mgr.num_uses(q), 0U);
      EXPECT_EQ(mgr.num_uses(x), 0U);
    }
    const Term* term = build(mgr);
    EXPECT_EQ(build(mgr), term);
    EXPECT_EQ(term->id, mgr.num_terms());
    if (!hit) {
      EXPECT_GT(failing, 1U) << "nothing was allocated";
      return;
    }
  }
}

TEST(TermStore, ABuilderWithoutMemoryLeavesTheTermsOfBefore) {
  const std::function<const Term*(TermManager&)> builders[] = {
      [](TermManager& mgr) { return mgr.make_number(QNumber(1, 3)); },
      [](TermManager& mgr) { return mgr.make_bv_number(3, 8); },
      [](TermManager& mgr) {
        const Term* x = make_int(mgr, "x");
        return mgr.make_int_modular_congruence(3, x, x);
      },
      [](TermManager& mgr) {
        const Term* x = make_int(mgr, "x");
        return mgr.make_equal(x, x);
      },
      [](TermManager& mgr) {
        const Term* x = make_int(mgr, "x");
        return mgr.make_ite(make_bool(mgr, "p"), x, x);
      },
  };
  for (const auto& build : builders) {
    expect_unharmed_by_memory_faults(build);
  }
}

/// Every allocation of an if-then-else over Bool fails once, in a store of `filler` terms. Its
/// arguments have users before or not: its terms are looked for in the unique table, or are not.
void expect_if_then_else_whole_or_not_at_all(std::size_t filler, bool arguments_have_users) {
  for (std::size_t failing = 1;; ++failing) {
    TermManager mgr;
    const Term* c = make_bool(mgr, "c");
    const Term* a = make_bool(mgr, "a");
    const Term* b = make_bool(mgr, "b");
    if (arguments_have_users) {
      mgr.make_and(a, a);
      mgr.make_and(b, b);
      mgr.make_and(c, c);
    }
    while (mgr.num_terms() < filler) {
      mgr.make_number(static_cast<std::int64_t>(mgr.num_terms()));
    }
    const std::size_t uses_before = mgr.num_uses(c);
    bool threw = false;
    bool hit = false;
    {
      const MemoryFault fault(failing);
      try {
        mgr.make_ite(c, a, b);
      } catch (const std::bad_alloc&) {
        threw = true;
      }
      hit = fault.hit();
    }
    ASSERT_EQ(threw, hit);
    if (!hit) {
      return;
    }
    EXPECT_EQ(mgr.num_terms(), filler);
    EXPECT_EQ(mgr.num_uses(c), uses_before);
    EXPECT_EQ(mgr.num_uses(a), uses_before);
    EXPECT_EQ(mgr.num_uses(b), uses_before);
    const Term* term = mgr.make_ite(c, a, b);
    EXPECT_EQ(term->id, filler + 4);
    EXPECT_EQ(term->children[0]->children[0], mgr.make_not(c));
    EXPECT_EQ(mgr.num_uses(c), uses_before + 2);
  }
}

TEST(TermStore, ABooleanIfThenElseIsMadeWholeOrNotAtAll) {
  // So many that for some numbers one of its four terms makes the list of first users, a chunk or
  // the unique table grow.
  for (std::size_t filler = 40; filler < 200; ++filler) {
    expect_if_then_else_whole_or_not_at_all(filler, false);
    expect_if_then_else_whole_or_not_at_all(filler, true);
  }
}

}  // namespace
}  // namespace brum
