#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "brum/readers/smtlib1_reader.h"

namespace brum {
namespace {

std::string message(const std::string& text) {
  TermManager mgr;
  Script script;
  std::istringstream in(text);
  ReaderOptions options;
  options.file_name = "f";
  try {
    SmtLib1Reader(mgr, options).read(in, script);
  } catch (const ReadError& error) {
    return error.what();
  }
  return "no error";
}

using Rows = std::vector<std::pair<std::string, std::string>>;

TEST(SmtLib1Errors, OfBenchmarks) {
  const Rows rows = {
      {"", "f:1:1: error: found the end of the input, expected '(benchmark'"},
      {"benchmark", "f:1:1: error: found the symbol benchmark, expected '(benchmark'"},
      {"(theory T)", "f:1:2: error: found the symbol theory, expected benchmark"},
      {"(benchmark :logic",
       "f:1:12: error: found the keyword :logic, expected the name of a benchmark"},
      {"(benchmark b", "f:1:13: error: found the end of the input, expected an attribute or ')'"},
      {"(benchmark b x)", "f:1:14: error: found the symbol x, expected an attribute or ')'"},
      {"(benchmark b) x", "f:1:15: error: found the symbol x, expected the end of the input"},
      {"(benchmark b :formula)", "f:1:22: error: found ')', expected a term"},
      {"(benchmark b\n:formula true\n :formula true)",
       "f:3:2: error: found the keyword :formula, expected one :formula only"},
      {"(benchmark b :logic QF_UF :logic QF_UF)",
       "f:1:34: error: found the symbol QF_UF, expected one :logic only"},
      {"(benchmark b :logic {x})",
       "f:1:21: error: found the string {x}, expected the name of a logic"},
      {"(benchmark b :status)", "f:1:21: error: found ')', expected sat, unsat or unknown"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(message(text), expected) << text;
  }
}

TEST(SmtLib1Errors, OfDeclarations) {
  const Rows rows = {
      {":extrasorts x", "f:1:26: error: found the symbol x, expected '(' and names of sorts"},
      {":extrasorts (A A)",
       "f:1:14: error: found the sort A, which is declared already, expected a new name"},
      {":extrasorts (Real)",
       "f:1:14: error: found the sort Real, which is declared already, expected a new name"},
      {":extrasorts ((A))", "f:1:27: error: found '(', expected the name of a sort or ')'"},
      {":extrafuns (x Int)",
       "f:1:26: error: found the symbol x, expected '(' and a declaration, or ')'"},
      {":extrafuns ((x S))", "f:1:29: error: found the sort S, expected a declared sort"},
      {":extrafuns ((x))", "f:1:28: error: found ')', expected a sort"},
      {":extrafuns ((x 3))", "f:1:29: error: found the numeral 3, expected a sort or ')'"},
      {":extrafuns ((x Int) (x Int))",
       "f:1:35: error: found x, which is declared already, expected a new name"},
      {":extrafuns ((?x Int))", "f:1:27: error: found the symbol ?x, expected a new name"},
      {":extrapreds ((flet))", "f:1:28: error: found the symbol flet, expected a new name"},
      {":extrapreds ((forall))", "f:1:28: error: found the symbol forall, expected a new name"},
      {":logic QF_LIA :extrafuns ((+ Int Int))",
       "f:1:41: error: found +, which is an operator of a theory, expected a new name"},
      {":logic QF_UF :extrapreds ((and))",
       "f:1:41: error: found and, which is an operator of a theory, expected a new name"},
      {":extrafuns ((select Int Int))",
       "f:1:27: error: found select, which is an operator of a theory, expected a new name"},
      {":extrafuns ((x BitVec))", "f:1:29: error: found the sort BitVec, expected a declared sort"},
      {":extrafuns ((x BitVec[0]))",
       "f:1:29: error: found no width of a bit-vector, expected one from 1 to 4294967295"},
      {":extrafuns ((x BitVec[8:8]))",
       "f:1:29: error: found the sort BitVec[8:8], expected a declared sort"},
      {":extrafuns ((x Array[8]))",
       "f:1:29: error: found no width of a bit-vector, expected one from 1 to 4294967295"},
      {":extrafuns ((x Array[8:8:8]))",
       "f:1:29: error: found the sort Array[8:8:8], expected a declared sort"},
      {":extrafuns ((x BitVec[99999999999999999999]))",
       "f:1:29: error: found no width of a bit-vector, expected one from 1 to 4294967295"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(message("(benchmark b " + text + ")"), expected) << text;
  }
}

TEST(SmtLib1Errors, OfTerms) {
  const Rows rows = {
      {"(forall (?x Int) (= ?x 1))",
       "f:1:23: error: found forall (quantifiers), expected a formula without quantifiers"},
      {"(exists (?x Int) (= ?x 1))",
       "f:1:23: error: found exists (quantifiers), expected a formula without quantifiers"},
      {"3", "f:1:23: error: found a term of sort Int, expected a formula"},
      {"x", "f:1:23: error: found the symbol x, expected a declared symbol"},
      {"(x 1)", "f:1:24: error: found the symbol x, expected a declared symbol"},
      {"(=> true true)", "f:1:24: error: found the symbol =>, expected a declared symbol"},
      {"$f", "f:1:23: error: found the variable $f, expected one of a let or flet around it"},
      {"(and (flet ($f true) $f) $f)",
       "f:1:48: error: found the variable $f, expected one of a let or flet around it"},
      {"(flet ($f $f) $f)",
       "f:1:33: error: found the variable $f, expected one of a let or flet around it"},
      {"(true)", "f:1:28: error: found ')', expected an attribute"},
      {"(true true :a)", "f:1:23: error: found 2 terms in brackets, expected 1"},
      {"(not true false)", "f:1:23: error: found 2 arguments of not, expected 1"},
      {"(iff 1 2)", "f:1:23: error: found Int as argument 1 of iff, expected Bool"},
      {"(= (~ 1 2) 3)", "f:1:26: error: found 2 arguments of ~, expected 1"},
      {"(and ((and) true))",
       "f:1:29: error: found '(', expected an operator, a function, let or flet"},
      {"(let ($x true) true)",
       "f:1:29: error: found the symbol $x, expected a variable such as ?x"},
      {"(flet (?x true) true)",
       "f:1:30: error: found the symbol ?x, expected a variable such as $f"},
      {"(let (?x true) true)",
       "f:1:23: error: found a term of sort Bool for ?x, expected no formula"},
      {"(flet ($x 1) true)", "f:1:23: error: found a term of sort Int for $x, expected Bool"},
      {"(let (?x 1 2) true)", "f:1:23: error: found 2 terms in brackets, expected 1"},
      {"(let (?x) true)", "f:1:23: error: found 0 terms in brackets, expected 1"},
      {"(let (?x 1))", "f:1:23: error: found 0 terms in brackets, expected 1"},
      {"(let ((?x 1)) true)", "f:1:29: error: found '(', expected a variable such as ?x"},
      {"(let (?x 1 :a) true)", "f:1:34: error: found the keyword :a, expected a term or ')'"},
      {":a", "f:1:23: error: found the keyword :a, expected a term"},
      {"(and true :a {x} true)", "f:1:40: error: found the symbol true, expected ')'"},
      {"(and true", "f:1:32: error: found the end of the input, expected a term or ')'"},
      {"(= bv300[8] bv1[8])",
       "f:1:26: error: bit-vector: the value 300 does not fit in 8 bits, expected 0 <= value < "
       "2^width"},
      {"(= bv1[8:8] bv1[8])", "f:1:26: error: found 2 indices of a bit-vector, expected its width"},
      {"(= (extract bv1[8]) bv1[8])",
       "f:1:27: error: found extract without indices, expected extract[index]"},
      {"(= (extract[1] bv1[8]) bv1[8])", "f:1:27: error: found 1 index of extract, expected 2"},
      {"(= extract[3:0] bv1[8])",
       "f:1:26: error: found the symbol extract[3:0], expected a declared symbol"},
      {"(= bvbin01[2] bv1[2])",
       "f:1:26: error: found the symbol bvbin01[2], expected a declared symbol"},
      {"(= bvbin02 bv1[2])", "f:1:26: error: found the symbol bvbin02, expected a declared symbol"},
      {"(= bvhex0g bv1[8])", "f:1:26: error: found the symbol bvhex0g, expected a declared symbol"},
      {"(= (x[3] 1) 1)", "f:1:27: error: found the symbol x[3], expected a declared symbol"},
      {"(= and bv1[8])", "f:1:26: error: found and without arguments, expected a term"},
      {"(= \"x\" 1)", "f:1:26: error: found the string \"x\", expected a term or ')'"},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(message("(benchmark b :formula " + text + (text == "(and true" ? "" : ")")), expected)
        << text;
  }
}

}  // namespace
}  // namespace brum
