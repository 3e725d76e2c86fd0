#include "brum/terms/term_manager.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "tests/support/formulas.h"
#include "tests/terms/term_checks.h"

namespace brum {
namespace {

using testing::expect_refused;
using testing::expect_term;
using testing::ExpectedTerm;
using testing::make_bool;
using testing::make_bv;
using testing::make_int;
using testing::make_real;

static_assert(!std::is_copy_constructible_v<TermManager>);
static_assert(!std::is_copy_assignable_v<TermManager>);
static_assert(std::is_base_of_v<Exception, TermManager::error>);

TEST(TermManager, BooleanBuildersGiveWhatTheyAreAskedFor) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const ExpectedTerm rows[] = {
      {mgr.make_true(), "true", "Bool", {}},         {mgr.make_false(), "false", "Bool", {}},
      {mgr.make_not(p), "not", "Bool", {p}},         {mgr.make_and(p, q), "and", "Bool", {p, q}},
      {mgr.make_or(q, p), "or", "Bool", {q, p}},     {mgr.make_iff(p, q), "iff", "Bool", {p, q}},
      {mgr.make_equal(p, q), "iff", "Bool", {p, q}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
  EXPECT_EQ(mgr.make_true()->symbol, mgr.get_true_symbol());
  EXPECT_EQ(mgr.make_false()->symbol, mgr.get_false_symbol());
  EXPECT_EQ(mgr.make_not(p)->symbol, mgr.get_not_symbol());
  EXPECT_EQ(mgr.make_and(p, q)->symbol, mgr.get_and_symbol());
  EXPECT_EQ(mgr.make_or(p, q)->symbol, mgr.get_or_symbol());
  EXPECT_EQ(mgr.make_iff(p, q)->symbol, mgr.get_iff_symbol());
}

TEST(TermManager, NothingIsSimplified) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* yes = mgr.make_true();
  const Term* x = make_int(mgr, "x");
  const Term* one = mgr.make_number(1);
  const Term* not_p = mgr.make_not(p);
  const Term* both = mgr.make_and(p, q);
  const ExpectedTerm rows[] = {
      {mgr.make_not(not_p), "not", "Bool", {not_p}},
      {mgr.make_not(yes), "not", "Bool", {yes}},
      {mgr.make_and(p, p), "and", "Bool", {p, p}},
      {mgr.make_and(yes, p), "and", "Bool", {yes, p}},
      {mgr.make_and(q, p), "and", "Bool", {q, p}},
      {mgr.make_and(both, p), "and", "Bool", {both, p}},
      {mgr.make_or(p, not_p), "or", "Bool", {p, not_p}},
      {mgr.make_iff(p, p), "iff", "Bool", {p, p}},
      {mgr.make_equal(x, x), "=", "Bool", {x, x}},
      {mgr.make_plus(one, one), "+", "Int", {one, one}},
      {mgr.make_times(one, x), "*", "Int", {one, x}},
      {mgr.make_leq(x, x), "<=", "Bool", {x, x}},
      {mgr.make_ite(yes, x, one), "ite", "Int", {yes, x, one}},
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
  EXPECT_NE(mgr.make_and(p, q), mgr.make_and(q, p));
}

TEST(TermManager, EqualityIsOverTheSortOfItsArguments) {
  TermManager mgr;
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const Term* v = make_bv(mgr, "v", 4);
  const Term* u = mgr.make_term(mgr.declare("u", mgr.make_uninterpreted_type("U")));
  const struct {
    const Term* a;
    const Term* b;
    const DataType* sort;
  } rows[] = {
      {i, i, mgr.get_int_type()},  {r, r, mgr.get_real_type()}, {i, r, mgr.get_real_type()},
      {r, i, mgr.get_real_type()}, {v, v, v->sort()},           {u, u, u->sort()},
  };
  for (const auto& row : rows) {
    const Term* term = mgr.make_equal(row.a, row.b);
    expect_term({term, "=", "Bool", {row.a, row.b}});
    EXPECT_EQ(term->symbol->type->get_component(1), row.sort);
    EXPECT_EQ(term->symbol->type->get_component(2), row.sort);
    EXPECT_TRUE(mgr.is_equality(term->symbol));
  }
  EXPECT_EQ(mgr.make_equal(i, r)->symbol, mgr.make_equal(r, r)->symbol);
  EXPECT_NE(mgr.make_equal(i, i)->symbol, mgr.make_equal(r, r)->symbol);
  EXPECT_FALSE(mgr.is_equality(mgr.get_iff_symbol()));
}

TEST(TermManager, IfThenElseIsOverTheSortOfItsBranches) {
  TermManager mgr;
  const Term* c = make_bool(mgr, "c");
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const Term* v = make_bv(mgr, "v", 4);
  const struct {
    const Term* a;
    const Term* b;
    const char* sort;
  } rows[] = {
      {i, i, "Int"}, {r, r, "Real"}, {i, r, "Real"}, {r, i, "Real"}, {v, v, "(_ BitVec 4)"},
  };
  for (const auto& row : rows) {
    const Term* term = mgr.make_ite(c, row.a, row.b);
    expect_term({term, "ite", row.sort, {c, row.a, row.b}});
    EXPECT_EQ(term->symbol->type->get_component(1), mgr.get_bool_type());
    EXPECT_EQ(term->symbol->type->get_component(2)->to_str(), row.sort);
    EXPECT_EQ(term->symbol->type->get_component(3)->to_str(), row.sort);
  }
}

TEST(TermManager, IfThenElseOfBooleansIsMadeOfConnectives) {
  TermManager mgr;
  const Term* c = make_bool(mgr, "c");
  const Term* a = make_bool(mgr, "a");
  const Term* b = make_bool(mgr, "b");
  const Term* term = mgr.make_ite(c, a, b);
  EXPECT_EQ(mgr.num_terms(), 7U);  // c, a, b, and four connectives
  const Term* not_c = mgr.make_not(c);
  const Term* when_true = mgr.make_or(not_c, a);
  const Term* when_false = mgr.make_or(c, b);
  expect_term({term, "and", "Bool", {when_true, when_false}});
  EXPECT_EQ(mgr.num_terms(), 7U);
}

TEST(TermManager, ArrayBuildersGiveElementsAndArrays) {
  TermManager mgr;
  const DataType* sort = mgr.make_array_type(mgr.get_int_type(), mgr.get_real_type());
  const Term* m = mgr.make_term(mgr.declare("m", sort));
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const ExpectedTerm rows[] = {
      {mgr.make_select(m, i), "select", "Real", {m, i}},
      {mgr.make_store(m, i, r), "store", "(Array Int Real)", {m, i, r}},
      {mgr.make_store(m, i, i), "store", "(Array Int Real)", {m, i, i}},  // an Int for a Real
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
  EXPECT_EQ(mgr.make_select(m, i)->symbol->type->to_str(), "(-> (Array Int Real) Int Real)");
  EXPECT_EQ(mgr.make_store(m, i, r)->symbol->type->to_str(),
            "(-> (Array Int Real) Int Real (Array Int Real))");
}

TEST(TermManager, ApplicationsOfUserSymbols) {
  TermManager mgr;
  const DataType* node = mgr.make_uninterpreted_type("Node");
  const Term* n = mgr.make_term(mgr.declare("n", node));
  const Term* i = make_int(mgr, "i");
  const Symbol* f = mgr.declare("f", mgr.make_function_type({node, mgr.get_real_type()}, node));
  const ExpectedTerm rows[] = {
      {n, "n", "Node", {}}, {mgr.make_term(f, {n, i}), "f", "Node", {n, i}},  // an Int for a Real
  };
  for (const ExpectedTerm& row : rows) {
    expect_term(row);
  }
}

TEST(TermManager, IllSortedCallsThrowAndChangeNothing) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* i = make_int(mgr, "i");
  const Term* r = make_real(mgr, "r");
  const Term* v4 = make_bv(mgr, "v4", 4);
  const DataType* sort = mgr.make_array_type(mgr.get_int_type(), mgr.get_int_type());
  const Term* m = mgr.make_term(mgr.declare("m", sort));
  const Symbol* f = mgr.declare(
      "f", mgr.make_function_type({mgr.get_int_type(), mgr.get_bool_type()}, mgr.get_int_type()));
  expect_refused(
      mgr,
      {
          {[&] { mgr.make_not(i); }, "not: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_not(nullptr); }, "not: an argument is null, expected a term"},
          {[&] { mgr.make_and(p, i); }, "and: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_and(r, p); }, "and: an argument has sort Real, expected Bool"},
          {[&] { mgr.make_and(p, nullptr); }, "and: an argument is null, expected a term"},
          {[&] { mgr.make_or(v4, p); }, "or: an argument has sort (_ BitVec 4), expected Bool"},
          {[&] { mgr.make_iff(m, p); }, "iff: an argument has sort (Array Int Int), expected Bool"},
          {[&] { mgr.make_iff(p, i); }, "iff: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_equal(p, i); }, "=: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_equal(i, p); }, "=: an argument has sort Bool, expected Int"},
          {[&] { mgr.make_equal(v4, r); }, "=: an argument has sort Real, expected (_ BitVec 4)"},
          {[&] { mgr.make_equal(nullptr, p); }, "=: an argument is null, expected a term"},
          {[&] { mgr.make_equal(p, nullptr); }, "=: an argument is null, expected a term"},
          {[&] { mgr.make_ite(i, i, i); }, "ite: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_ite(p, i, p); }, "ite: an argument has sort Bool, expected Int"},
          {[&] { mgr.make_ite(p, p, i); }, "ite: an argument has sort Int, expected Bool"},
          {[&] { mgr.make_ite(nullptr, p, p); }, "ite: an argument is null, expected a term"},
          {[&] { mgr.make_ite(p, nullptr, p); }, "ite: an argument is null, expected a term"},
          {[&] { mgr.make_ite(p, p, nullptr); }, "ite: an argument is null, expected a term"},
          {[&] { mgr.make_select(i, i); }, "select: an argument has sort Int, expected an array"},
          {[&] { mgr.make_select(m, p); }, "select: an argument has sort Bool, expected Int"},
          {[&] { mgr.make_select(m, r); }, "select: an argument has sort Real, expected Int"},
          {[&] { mgr.make_select(nullptr, i); }, "select: an argument is null, expected a term"},
          {[&] { mgr.make_select(m, nullptr); }, "select: an argument is null, expected a term"},
          {[&] { mgr.make_store(p, i, i); }, "store: an argument has sort Bool, expected an array"},
          {[&] { mgr.make_store(m, p, i); }, "store: an argument has sort Bool, expected Int"},
          {[&] { mgr.make_store(m, i, p); }, "store: an argument has sort Bool, expected Int"},
          {[&] { mgr.make_store(m, i, nullptr); }, "store: an argument is null, expected a term"},
          {[&] { mgr.make_term(nullptr); }, "term: the symbol is null"},
          {[&] { mgr.make_term(f); }, "f: 0 arguments, expected 2"},
          {[&] { mgr.make_term(f, {i}); }, "f: 1 arguments, expected 2"},
          {[&] {
             mgr.make_term(f, {i, p, p});
           },
           "f: 3 arguments, expected 2"},
          {[&] {
             mgr.make_term(f, {i, i});
           },
           "f: an argument has sort Int, expected Bool"},
          {[&] {
             mgr.make_term(f, {r, p});
           },
           "f: an argument has sort Real, expected Int"},
          {[&] {
             mgr.make_term(f, {i, nullptr});
           },
           "f: an argument is null, expected a term"},
          {[&] { mgr.make_term(i->symbol, {i}); }, "i: 1 arguments, expected 0"},
      });
}

TEST(TermManager, EqualArgumentsShareOneTerm) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  EXPECT_EQ(make_bool(mgr, "p"), p);
  EXPECT_EQ(mgr.make_and(p, q), mgr.make_and(p, q));
  EXPECT_EQ(mgr.make_term(mgr.get_and_symbol(), {p, q}), mgr.make_and(p, q));
  EXPECT_EQ(mgr.make_number(QNumber(2, 4)), mgr.make_number(QNumber(1, 2)));
  EXPECT_EQ(mgr.make_number(7), mgr.make_number(QNumber::from_string("7")));
  EXPECT_NE(mgr.make_number(7), mgr.make_number(7, mgr.get_real_type()));
  EXPECT_NE(mgr.make_bv_number(7, 8), mgr.make_bv_number(7, 9));
  EXPECT_EQ(mgr.make_bv_number(7, 8), mgr.make_bv_number(7, 8));
  const Term* v = make_bv(mgr, "v", 8);
  EXPECT_EQ(mgr.make_extract(3, 1, v), mgr.make_extract(3, 1, v));
  EXPECT_NE(mgr.make_extract(3, 1, v), mgr.make_extract(3, 2, v));
  EXPECT_NE(mgr.make_rotate_left(1, v), mgr.make_rotate_right(1, v));
  const Term* i = make_int(mgr, "i");
  EXPECT_EQ(mgr.make_int_modular_congruence(3, i, i), mgr.make_int_modular_congruence(3, i, i));
  EXPECT_NE(mgr.make_int_modular_congruence(3, i, i), mgr.make_int_modular_congruence(4, i, i));
}

TEST(TermManager, ManagersAreIndependent) {
  TermManager first;
  TermManager second;
  const Term* p = make_bool(first, "p");
  EXPECT_EQ(second.num_terms(), 0U);
  EXPECT_EQ(second.get_signature()->get_symbol("p"), nullptr);
  EXPECT_NE(make_bool(second, "p"), p);
  EXPECT_NE(first.get_int_type(), second.get_int_type());
}

}  // namespace
}  // namespace brum
