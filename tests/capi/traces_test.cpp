// Traces through the C interface.

#include "tests/capi/capi_fixture.h"

namespace brum::testing {
namespace {

class Traces : public CInterface {
 protected:
  ~Traces() override { brum_options_free(options); }

  brum_options* options = brum_options_new();
  brum_sink sink = brum_buffer_sink(buffer);
};

TEST_F(Traces, DefinitionsOutliveThePieceTheyWereMadeFor) {
  brum_options_set_form(options, BRUM_FORM_DEFINE_FUN);
  brum_options_set_logic(options, "QF_LIA");
  brum_trace* trace = brum_trace_new(m, options);
  brum_options_set_logic(options, "QF_BV");  // comes too late for the trace
  const brum_sort* node = brum_uninterpreted_sort(m, "Node");
  const brum_term* n = brum_constant(m, "n", node);
  const brum_term* x = integer("x");
  const brum_term* sum = brum_plus(m, x, x);  // 3
  const brum_term* bounded = brum_leq(m, sum, brum_number(m, 7));
  const brum_term* positive = brum_leq(m, brum_number(m, 0), sum);

  EXPECT_EQ(brum_trace_start(trace, sink), BRUM_OK);
  EXPECT_EQ(brum_trace_declare_sort(trace, node, sink), BRUM_OK);
  EXPECT_EQ(brum_trace_declare(trace, brum_term_symbol(n), sink), BRUM_OK);
  EXPECT_EQ(brum_trace_declare(trace, brum_term_symbol(x), sink), BRUM_OK);
  EXPECT_EQ(brum_trace_assert(trace, bounded, "upper bound", sink), BRUM_OK);
  EXPECT_EQ(brum_trace_assert(trace, positive, nullptr, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer),
               "(set-logic QF_LIA)\n"
               "(set-info :source |printed by Brumlin|)\n"
               "(declare-sort U0 0)\n"
               "(declare-fun n () U0)\n"
               "(declare-fun x () Int)\n"
               "(define-fun .def_3 () Int (+ x x))\n"
               "(assert (! (<= .def_3 7) :named |upper bound|))\n"
               "(assert (<= 0 .def_3))\n");
  brum_trace_free(trace);
}

TEST_F(Traces, AttributesAddedLaterAreSeen) {
  brum_trace* trace = brum_trace_new(m, options);
  const brum_term* p = boolean("p");
  brum_options_add_attribute(options, p, "line", "3");
  brum_options_free(options);
  options = nullptr;
  EXPECT_EQ(brum_trace_assert(trace, brum_not(m, p), nullptr, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), "(assert (not (! p :line 3)))\n");
  brum_trace_free(trace);
}

TEST_F(Traces, WhatDoesNotFitIsRefused) {
  brum_options_set_form(options, BRUM_FORM_V1);
  EXPECT_EQ(brum_trace_new(m, options), nullptr);
  take_error(BRUM_ERROR_FORM);

  brum_trace* trace = brum_trace_new(m, nullptr);
  EXPECT_EQ(brum_trace_declare_sort(trace, int_sort(), sink), BRUM_ERROR_SORT);
  EXPECT_EQ(take_error(BRUM_ERROR_SORT), "only uninterpreted sorts are declared, not Int");
  EXPECT_EQ(brum_trace_declare(trace, brum_term_symbol(brum_true(m)), sink), BRUM_ERROR_SORT);
  EXPECT_EQ(take_error(BRUM_ERROR_SORT), "an operator cannot be declared");
  EXPECT_EQ(brum_trace_assert(trace, integer("x"), nullptr, sink), BRUM_ERROR_SORT);
  EXPECT_EQ(take_error(BRUM_ERROR_SORT), "the term is no formula, its sort is Int");
  for (const char* name : {"", "a|b", "a\\b"}) {
    EXPECT_EQ(brum_trace_assert(trace, brum_true(m), name, sink), BRUM_ERROR_ARGUMENT);
    take_error(BRUM_ERROR_ARGUMENT);
  }
  EXPECT_EQ(brum_trace_assert(trace, nullptr, nullptr, sink), BRUM_ERROR_NULL);
  take_error(BRUM_ERROR_NULL);
  EXPECT_EQ(brum_buffer_size(buffer), 0U);

  EXPECT_EQ(brum_trace_assert(trace, brum_true(m), nullptr, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), "(assert true)\n");
  brum_trace_free(trace);
}

TEST_F(Traces, ReservedWordsAsNamesStandBetweenBars) {
  brum_trace* trace = brum_trace_new(m, options);
  EXPECT_EQ(brum_trace_assert(trace, brum_true(m), "let", sink), BRUM_OK);
  EXPECT_EQ(brum_trace_assert(trace, brum_true(m), "lets", sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer),
               "(assert (! true :named |let|))\n"
               "(assert (! true :named lets))\n");
  brum_trace_free(trace);
}

TEST_F(Traces, APieceThatIsLostEndsTheTrace) {
  const brum_sink full = {[](void*, const char*, std::size_t) { return 1; }, nullptr};
  const brum_term* p = boolean("p");
  const brum_term* shared = brum_not(m, p);
  const brum_term* formula = brum_and(m, shared, brum_iff(m, shared, p));
  for (const brum_form form : {BRUM_FORM_DEFINE_FUN, BRUM_FORM_V2}) {
    brum_options_set_form(options, form);
    brum_trace* trace = brum_trace_new(m, options);
    EXPECT_EQ(brum_trace_assert(trace, formula, nullptr, full), BRUM_ERROR_OUTPUT);
    EXPECT_EQ(take_error(BRUM_ERROR_OUTPUT), "the sink took no more text");
    EXPECT_EQ(brum_trace_assert(trace, formula, nullptr, sink), BRUM_ERROR_OUTPUT);
    EXPECT_EQ(take_error(BRUM_ERROR_OUTPUT), "an earlier piece of the trace was not written");
    EXPECT_EQ(brum_trace_start(trace, sink), BRUM_ERROR_OUTPUT);
    take_error(BRUM_ERROR_OUTPUT);
    EXPECT_EQ(brum_trace_assert(trace, integer("x"), nullptr, sink), BRUM_ERROR_SORT);
    take_error(BRUM_ERROR_SORT);
    EXPECT_EQ(brum_buffer_size(buffer), 0U);
    brum_trace_free(trace);
  }
}

}  // namespace
}  // namespace brum::testing
