#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

void expect_errors(const std::vector<std::pair<std::string, std::string>>& rows) {
  for (const auto& [text, message] : rows) {
    EXPECT_EQ(error_of(text), "input:" + message) << text;
  }
}

}  // namespace

TEST(ReaderErrors, WhatCannotBeHeldIsNamed) {
  expect_errors({
      {"(declare-const x Int)\n(assert (forall ((y Int)) (= x y)))",
       "2:9: error: found forall (quantifiers), expected a term without quantifiers"},
      {"(assert (exists ((y Int)) true))",
       "1:9: error: found exists (quantifiers), expected a term without quantifiers"},
      {"(assert (match x ((y true))))",
       "1:9: error: found match (datatypes), expected a term without datatypes"},
      {"\n  (declare-datatypes ((L 0)) (((nil))))",
       "2:3: error: found declare-datatypes (datatypes), expected a command that can be held"},
      {"(declare-datatype L ((nil)))",
       "1:1: error: found declare-datatype (datatypes), expected a command that can be held"},
      {"(define-fun-rec f ((x Int)) Int (f x))",
       "1:1: error: found define-fun-rec (recursive definitions), expected a command that can be "
       "held"},
      {"(define-funs-rec () ())",
       "1:1: error: found define-funs-rec (recursive definitions), expected a command that can be "
       "held"},
      {"(declare-const x String)",
       "1:18: error: found the sort String (strings), expected a sort that can be held"},
      {"(declare-const x Float32)",
       "1:18: error: found the sort Float32 (floating point), expected a sort that can be held"},
      {"(declare-const x (_ FloatingPoint 8 24))",
       "1:21: error: found the sort FloatingPoint (floating point), expected a sort that can be "
       "held"},
      {"(declare-const x (Seq Int))",
       "1:19: error: found the sort Seq (sequences), expected a sort that can be held"},
      {"(assert (= \"a\" \"b\"))",
       "1:12: error: found a string constant, expected a term that can be held"},
      {"(assert (str.prefixof x y))",
       "1:10: error: found the symbol str.prefixof (strings), expected a declared symbol"},
      {"(assert (= ((_ to_fp 8 24) RNE 1.0) x))",
       "1:16: error: found the symbol to_fp (floating point), expected an indexed operator"},
      {"(assert (= ((as const (Array Int Int)) 0) x))",
       "1:17: error: found const (arrays of one value), expected a declared function"},
  });
}

TEST(ReaderErrors, BrokenCommands) {
  expect_errors({
      {"assert", "1:1: error: found the symbol assert, expected '(' and a command"},
      {")", "1:1: error: found ')', expected '(' and a command"},
      {"(", "1:2: error: found the end of the input, expected a command"},
      {"(foo)", "1:2: error: found the symbol foo, expected a command"},
      {"(|assert| true)", "1:2: error: found the symbol |assert|, expected a command"},
      {"(check-sat true)", "1:12: error: found the symbol true, expected ')'"},
      {"(check-sat", "1:11: error: found the end of the input, expected ')'"},
      {"(set-logic)", "1:11: error: found ')', expected the name of a logic"},
      {"(set-logic QF_UF)(set-logic QF_UF)",
       "1:29: error: found the symbol QF_UF, expected one set-logic only"},
      {"(set-info status)", "1:11: error: found the symbol status, expected a keyword"},
      {"(set-info :a (b", "1:16: error: found the end of the input, expected ')'"},
      {"(declare-sort U)", "1:16: error: found ')', expected the number of a sort's parameters"},
      {"(declare-fun f Int)",
       "1:16: error: found the symbol Int, expected '(' and the sorts of "
       "arguments"},
      {"(push x)", "1:7: error: found the symbol x, expected a number of levels"},
      {"(push 1.50)", "1:7: error: found the decimal 1.50, expected a number of levels"},
      {"(push #x0F)", "1:7: error: found the constant #x0F, expected a number of levels"},
      {"(push #b01)", "1:7: error: found the constant #b01, expected a number of levels"},
      {"(push \"1\")", "1:7: error: found the string \"1\", expected a number of levels"},
      {"(push " + std::string(60, 'x') + ")",
       "1:7: error: found the symbol " + std::string(60, 'x') + ", expected a number of levels"},
      {"(push " + std::string(61, 'x') + ")",
       "1:7: error: found the symbol " + std::string(60, 'x') + "..., expected a number of levels"},
      {"(set-info :source \"two\nlines, with a \"\"quote\"\"\") x",
       "2:27: error: found the symbol x, expected '(' and a command"},
      {"(get-value (x", "1:14: error: found the end of the input, expected ')'"},
      {"(check-sat-assuming p)", "1:21: error: found the symbol p, expected '(' and literals"},
      {"(check-sat-assuming (3))", "1:22: error: found a term of sort Int, expected Bool"},
  });
}

TEST(ReaderErrors, BrokenTerms) {
  expect_errors({
      {"(assert)", "1:8: error: found ')', expected a term"},
      {"(assert", "1:8: error: found the end of the input, expected a term"},
      {"(assert (let ((y true)) )", "1:25: error: found ')', expected a term"},
      {"(assert (let ((y (let ((z )", "1:27: error: found ')', expected a term"},
      {"(assert (! )", "1:12: error: found ')', expected a term"},
      {"(assert (and true", "1:18: error: found the end of the input, expected a term or ')'"},
      {"(assert ())", "1:10: error: found ')', expected an operator, a function, let, ! or _"},
      {"(assert (3 4))",
       "1:10: error: found the numeral 3, expected an operator, a function, let, ! or _"},
      {"(assert (= 1 (as 3 Int)))", "1:18: error: found the numeral 3, expected a symbol"},
      {"(assert (= 1 ((as 3 Int) 1)))", "1:19: error: found the numeral 3, expected a function"},
      {"(assert ((true)))", "1:11: error: found the symbol true, expected _ or as"},
      {"(assert (and :x))", "1:14: error: found the keyword :x, expected a term or ')'"},
      {"(assert let)", "1:9: error: found the reserved word let, expected a term"},
      {"(assert (let ((let true)) true))",
       "1:16: error: found the reserved word let, expected a variable"},
      {"(assert (let ((|let| true)) let))",
       "1:29: error: found the reserved word let, expected a term"},
      {"(declare-fun f (Int) Int)(assert (= f 1))",
       "1:37: error: found f without arguments, expected a term"},
      {"(assert (true true))",
       "1:10: error: found true, which takes no arguments, expected a function"},
      {"(assert ((_ divisible 3)))", "1:9: error: found 0 arguments of divisible, expected 1"},
      {"(assert (distinct true))", "1:9: error: found 1 argument of distinct, expected at least 2"},
      {"(assert (assert true))",
       "1:10: error: found the reserved word assert, expected an "
       "operator, a function, let, ! or _"},
      {"(assert nowhere)", "1:9: error: found the symbol nowhere, expected a declared symbol"},
      {"(assert (nowhere))", "1:10: error: found the symbol nowhere, expected a declared symbol"},
      {"(assert and)", "1:9: error: found and without arguments, expected a term"},
      {"(assert (let x x))", "1:14: error: found the symbol x, expected '('"},
      {"(assert (let () true))", "1:15: error: found ')', expected '('"},
      {"(assert (let ((x true) y) x))", "1:24: error: found the symbol y, expected '(' or ')'"},
      {"(assert (let ((x)) x))", "1:17: error: found ')', expected a term"},
      {"(assert (let ((x true false)) x))", "1:23: error: found the symbol false, expected ')'"},
      {"(assert (let ((3 true)) x))", "1:16: error: found the numeral 3, expected a variable"},
      {"(assert (let ((x true)) x x))", "1:27: error: found the symbol x, expected ')'"},
      {"(assert (let ((x true)) x)\n(check-sat)", "2:1: error: found '(', expected ')'"},
      {"(assert (!))", "1:11: error: found ')', expected a term"},
      {"(assert (! true))", "1:16: error: found ')', expected an attribute"},
      {"(assert (! true named))",
       "1:17: error: found the symbol named, expected an attribute or ')'"},
      {"(assert (! true :named 3))", "1:24: error: found the numeral 3, expected a name"},
      {"(assert (! true :named))", "1:23: error: found ')', expected a name"},
      {"(assert (_ bv3))", "1:12: error: found 0 indices of a bit-vector, expected its width"},
      {"(assert (= (_ bv1 4294967296) (_ bv1 1)))",
       "1:15: error: found a bit-vector of too many bits, expected at most 4294967295"},
      {"(assert (= (_ bv1 18446744073709551616) (_ bv1 1)))",
       "1:15: error: found a bit-vector of too many bits, expected at most 4294967295"},
      {"(assert (= (_ bv2 1) (_ bv1 1)))",
       "1:15: error: bit-vector: the value 2 does not fit in 1 bits, expected 0 <= value < "
       "2^width"},
      {"(assert true) |",
       "1:15: error: found the end of the input, expected the closing bar of a "
       "quoted symbol"},
  });
}

TEST(ReaderErrors, TellTheirPartsApart) {
  TermManager mgr;
  ReaderOptions options;
  options.file_name = "dir/a.smt2";
  Script script;
  try {
    read_into(script, mgr, "\n\n  (foo)", options);
    FAIL() << "no error";
  } catch (const ReadError& error) {
    EXPECT_EQ(error.file(), "dir/a.smt2");
    EXPECT_EQ(error.position(), (TextPosition{3, 4}));
    EXPECT_EQ(error.message(), "found the symbol foo, expected a command");
    EXPECT_STREQ(error.what(), "dir/a.smt2:3:4: error: found the symbol foo, expected a command");
  }
}

TEST(ReaderErrors, CommandsThatAskForOutputAreSkipped) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(echo \"(unbalanced\")(get-model)(get-value ((f x) (- 1)))(get-info :version)"
            "(get-option :x)(get-proof)(get-assertions)(get-assignment)(get-unsat-core)"
            "(get-unsat-assumptions)(check-sat)");
  EXPECT_EQ(script.commands.size(), 1U);
}

}  // namespace brum::testing
