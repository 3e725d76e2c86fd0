// Documents and texts of terms through the C interface.

#include <cstdio>
#include <string>

#include "tests/capi/capi_fixture.h"

namespace brum::testing {
namespace {

/// (and (<= s 7) (not (= s 3))) with s = (+ x x), which is term 2.
class Printing : public CInterface {
 protected:
  ~Printing() override { brum_options_free(options); }

  const brum_term* x = integer("x");
  const brum_term* sum = brum_plus(m, x, x);
  const brum_term* bounded = brum_leq(m, sum, brum_number(m, 7));                   // 3, 4
  const brum_term* different = brum_not(m, brum_equal(m, sum, brum_number(m, 3)));  // 5, 6, 7
  const brum_term* formula = brum_and(m, bounded, different);
  brum_options* options = brum_options_new();
  brum_sink sink = brum_buffer_sink(buffer);

  std::string document() {
    brum_buffer_clear(buffer);
    brum_print_formula(m, formula, options, sink);
    return brum_buffer_text(buffer);
  }
};

TEST_F(Printing, ADocumentOfVersion1) {
  EXPECT_EQ(brum_options_set_form(options, BRUM_FORM_V1), BRUM_OK);
  EXPECT_EQ(brum_options_set_logic(options, "QF_LIA"), BRUM_OK);
  EXPECT_EQ(brum_options_set_status(options, "sat"), BRUM_OK);
  EXPECT_EQ(document(),
            "(benchmark unnamed\n"
            ":status sat\n"
            ":logic QF_LIA\n"
            ":source { printed by Brumlin }\n"
            ":extrafuns ((x Int))\n"
            "\n:formula\n"
            "(let (?def_2 (+ x x))\n"
            "\n(and (<= ?def_2 7) (not (= ?def_2 3)))\n"
            ")\n)\n");
}

TEST_F(Printing, ADocumentOfVersion2) {
  EXPECT_EQ(document(),
            "(set-info :source |printed by Brumlin|)\n"
            "(declare-fun x () Int)\n"
            "(assert\n"
            "(let ((.def_2 (+ x x)))\n"
            "(and (<= .def_2 7) (not (= .def_2 3)))\n"
            "))\n");
}

TEST_F(Printing, ADocumentWithDefineFunAndLabelsOfTheCallers) {
  brum_options_set_form(options, BRUM_FORM_DEFINE_FUN);
  brum_options_set_label_prefix(options, "d_");
  EXPECT_EQ(document(),
            "(set-info :source |printed by Brumlin|)\n"
            "(declare-fun x () Int)\n"
            "(define-fun d_2 () Int (+ x x))\n"
            "(assert (and (<= d_2 7) (not (= d_2 3))))\n");
}

TEST_F(Printing, PrefixesOfLabelsMayBeLong) {
  const std::string prefix(100, 'd');
  brum_options_set_label_prefix(options, prefix.c_str());
  EXPECT_EQ(document(),
            "(set-info :source |printed by Brumlin|)\n"
            "(declare-fun x () Int)\n"
            "(assert\n"
            "(let ((" +
                prefix +
                "2 (+ x x)))\n"
                "(and (<= " +
                prefix + "2 7) (not (= " + prefix +
                "2 3)))\n"
                "))\n");
}

TEST_F(Printing, TermsAreDefinedUnderTheirLabels) {
  const brum_term* terms[] = {bounded, different};
  EXPECT_EQ(brum_print_terms(m, terms, 2, options, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer),
               "(set-info :source |printed by Brumlin|)\n"
               "(declare-fun x () Int)\n"
               "(define-fun .def_2 () Int (+ x x))\n"
               "(define-fun .def_4 () Bool (<= .def_2 7))\n"
               "(define-fun .def_7 () Bool (not (= .def_2 3)))\n"
               "(assert true)\n");
  brum_buffer_clear(buffer);
  EXPECT_EQ(brum_print_label(m, different, options, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), ".def_7");
}

TEST_F(Printing, ATermWithAndWithoutLineBreaks) {
  EXPECT_EQ(brum_print_term(m, bounded, nullptr, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), "(<= (+ x x) 7)\n");
  EXPECT_EQ(text(formula), "(let ((.def_2 (+ x x))) (and (<= .def_2 7) (not (= .def_2 3))))");
}

TEST_F(Printing, AnAtomIsWrittenOutInFull) {
  EXPECT_EQ(brum_print_atom(m, brum_equal(m, sum, sum), nullptr, sink), BRUM_OK);
  EXPECT_STREQ(brum_buffer_text(buffer), "(= (+ x x) (+ x x))");
}

TEST_F(Printing, AttributesAreWrittenInTheirOrder) {
  EXPECT_EQ(brum_options_add_attribute(options, bounded, "named", "below"), BRUM_OK);
  EXPECT_EQ(brum_options_add_attribute(options, bounded, "line", "12"), BRUM_OK);
  brum_print_term(m, bounded, options, sink);
  EXPECT_STREQ(brum_buffer_text(buffer), "(! (<= (+ x x) 7) :named below :line 12)\n");
  brum_options_set_label_prefix(options, "d_");
  brum_options_set_newlines(options, 0);
  brum_buffer_clear(buffer);
  brum_print_term(m, brum_and(m, bounded, brum_not(m, bounded)), options, sink);
  EXPECT_STREQ(brum_buffer_text(buffer),
               "(let ((d_4 (! (<= (+ x x) 7) :named below :line 12))) (and d_4 (not d_4)))");
}

TEST_F(Printing, Version1RefusesAttributesPrefixesAndScripts) {
  brum_options_set_form(options, BRUM_FORM_V1);
  EXPECT_EQ(brum_print_terms(m, &bounded, 1, options, sink), BRUM_ERROR_FORM);
  EXPECT_EQ(take_error(BRUM_ERROR_FORM), "version 1.2 has no such script");
  brum_options_set_label_prefix(options, "d_");
  EXPECT_EQ(document(), "");
  EXPECT_EQ(take_error(BRUM_ERROR_FORM), "version 1.2 has labels of its own: no prefix");
  brum_options_set_label_prefix(options, "");
  brum_options_add_attribute(options, bounded, "named", "below");
  EXPECT_EQ(document(), "");
  EXPECT_EQ(take_error(BRUM_ERROR_FORM), "version 1.2 has no attributes of terms");
}

TEST_F(Printing, WhatAFormCannotExpressIsAnError) {
  const brum_sort* inner = brum_array_sort(m, int_sort(), int_sort());
  const brum_term* nested = brum_constant(m, "n", brum_array_sort(m, int_sort(), inner));
  formula = brum_equal(m, nested, nested);
  brum_options_set_form(options, BRUM_FORM_V1);
  EXPECT_EQ(brum_print_formula(m, formula, options, sink), BRUM_ERROR_FORM);
  EXPECT_NE(take_error(BRUM_ERROR_FORM), "");
}

TEST_F(Printing, UnsafeNamesAreRefusedUnlessTheCallerTakesThem) {
  formula = boolean("a|b");
  EXPECT_EQ(document(), "");
  EXPECT_EQ(take_error(BRUM_ERROR_FORM).substr(0, 15), "the name `a|b` ");
  brum_options_set_check_names(options, 0);
  EXPECT_NE(document(), "");
}

TEST_F(Printing, OnlyFormulasHaveDocuments) {
  EXPECT_EQ(brum_print_formula(m, x, nullptr, sink), BRUM_ERROR_SORT);
  EXPECT_EQ(take_error(BRUM_ERROR_SORT), "the term is no formula, its sort is Int");
  EXPECT_EQ(brum_buffer_size(buffer), 0U);
}

TEST_F(Printing, WrongOptionsChangeNothing) {
  brum_options_set_label_prefix(options, "d_");
  EXPECT_EQ(brum_options_set_form(options, static_cast<brum_form>(0)), BRUM_ERROR_ARGUMENT);
  EXPECT_EQ(brum_options_set_label_prefix(options, "a b"), BRUM_ERROR_ARGUMENT);
  EXPECT_EQ(brum_options_set_logic(options, nullptr), BRUM_ERROR_NULL);
  EXPECT_NE(document().find("(let ((d_2 (+ x x)))"), std::string::npos);
}

/// Takes `room` bytes, then refuses.
struct LimitedSink {
  size_t room;
  std::string taken;
};

extern "C" int take_within_limit(void* data, const char* bytes, size_t count) {
  auto* limited = static_cast<LimitedSink*>(data);
  if (count > limited->room) {
    return 1;
  }
  limited->room -= count;
  limited->taken.append(bytes, count);
  return 0;
}

TEST_F(Printing, ASinkThatRefusesEndsThePrinting) {
  LimitedSink limited{0, ""};
  EXPECT_EQ(brum_print_formula(m, formula, options, {take_within_limit, &limited}),
            BRUM_ERROR_OUTPUT);
  EXPECT_EQ(take_error(BRUM_ERROR_OUTPUT), "the sink took no more text");
  limited.room = 1000;
  EXPECT_EQ(brum_print_formula(m, formula, options, {take_within_limit, &limited}), BRUM_OK);
  EXPECT_EQ(limited.taken, document());
}

TEST_F(Printing, LongTextsComeInPieces) {
  const std::string name(20'000, 'n');
  const brum_term* named = integer(name.c_str());
  LimitedSink limited{100'000, ""};
  const brum_sink pieces = {take_within_limit, &limited};
  EXPECT_EQ(brum_print_term(m, brum_plus(m, named, named), nullptr, pieces), BRUM_OK);
  EXPECT_EQ(limited.taken, "(+ " + name + " " + name + ")\n");
  limited = {10'000, ""};
  EXPECT_EQ(brum_print_term(m, named, nullptr, pieces), BRUM_ERROR_OUTPUT);
  EXPECT_FALSE(limited.taken.empty());
  EXPECT_EQ(limited.taken, name.substr(0, limited.taken.size()));
  take_error(BRUM_ERROR_OUTPUT);
}

TEST_F(Printing, AFileIsWrittenTo) {
  FILE* file = std::tmpfile();
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(brum_print_term(m, bounded, nullptr, brum_file_sink(file)), BRUM_OK);
  std::rewind(file);
  char line[64] = {};
  EXPECT_NE(std::fgets(line, sizeof(line), file), nullptr);
  EXPECT_STREQ(line, "(<= (+ x x) 7)\n");
  std::fclose(file);
}

}  // namespace
}  // namespace brum::testing
