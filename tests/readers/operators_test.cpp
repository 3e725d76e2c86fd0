#include <gtest/gtest.h>

#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "brum/readers/smtlib2_operators.h"
#include "tests/readers/reading.h"
#include "tests/support/allocated_bytes.h"

// Each row: a term as it is read, and the term of the store that it becomes, as version 2 writes
// it.

namespace brum::testing {

namespace {

const std::string declarations =
    "(declare-sort U 0)"
    "(declare-const p Bool)(declare-const q Bool)(declare-const r Bool)(declare-const s Bool)"
    "(declare-const i Int)(declare-const j Int)(declare-const k Int)"
    "(declare-const x Real)(declare-const y Real)(declare-const z Real)"
    "(declare-const a (_ BitVec 8))(declare-const b (_ BitVec 8))(declare-const c (_ BitVec 8))"
    "(declare-const d (_ BitVec 4))"
    "(declare-const t (Array Int Real))(declare-const t2 (Array Int Real))"
    "(declare-const u U)(declare-const v U)"
    "(declare-fun f (Int) Int)(declare-fun g (Real Real) Real)(declare-fun h (U) Bool)";

using Rows = std::vector<std::pair<std::string, std::string>>;

void expect_rows(const Rows& rows, const std::string& logic = "") {
  const std::string header = logic.empty() ? "" : "(set-logic " + logic + ")";
  for (const auto& [read, built] : rows) {
    EXPECT_EQ(assertion_text(header + declarations + "(assert " + read + ")"), built) << read;
  }
}

std::string message_of(const std::string& term) {
  const std::string message = error_of(declarations + "\n(assert " + term + ")");
  const std::string marker = "error: ";
  const std::size_t place = message.find(marker);
  return place == std::string::npos ? message : message.substr(place + marker.size());
}

}  // namespace

TEST(Operators, CoreIsRewrittenToTheConnectivesOfTheStore) {
  expect_rows({
      {"true", "true"},
      {"false", "false"},
      {"(not p)", "(not p)"},
      {"(and p)", "p"},
      {"(and p q)", "(and p q)"},
      {"(and p q r)", "(and (and p q) r)"},
      {"(and p q r s)", "(and (and p q) (and r s))"},
      {"(or p q r s p)", "(or (or (or p q) (or r s)) p)"},
      {"(=> p q)", "(or (not p) q)"},
      {"(=> p q r)", "(or (not p) (or (not q) r))"},
      {"(xor p q)", "(not (= p q))"},
      {"(xor p q r)", "(not (= (not (= p q)) r))"},
      {"(= p q)", "(= p q)"},
      {"(= p q r)", "(and (= p q) (= q r))"},
      {"(= u v)", "(= u v)"},
      {"(distinct p q)", "(not (= p q))"},
      {"(distinct u v)", "(not (= u v))"},
      {"(distinct i j k)", "(and (and (not (= i j)) (not (= i k))) (not (= j k)))"},
      {"(ite p q r)", "(and (or (not p) q) (or p r))"},
      {"(= (ite p i j) k)", "(= (ite p i j) k)"},
      {"(h (ite p u v))", "(h (ite p u v))"},
  });
}

TEST(Operators, BoolEqualityIsTheEquivalenceSymbol) {
  TermManager mgr;
  const auto assertions =
      assertions_of(mgr, "(declare-const p Bool)(declare-const q Bool)(assert (= p q))");
  ASSERT_EQ(assertions.size(), 1U);
  EXPECT_EQ(assertions[0]->symbol, mgr.get_iff_symbol());
}

TEST(Operators, IntegerArithmetic) {
  expect_rows({
      {"(= i (+ j k))", "(= i (+ j k))"},
      {"(= i (+ i j k 1))", "(= i (+ (+ i j) (+ k 1)))"},
      {"(= i (* i j k))", "(= i (* (* i j) k))"},
      {"(= i (- j))", "(= i (* (- 1) j))"},
      {"(= i (- 5))", "(= i (- 5))"},
      {"(= i (- (- 5)))", "(= i 5)"},
      {"(= i (- 0))", "(= i 0)"},
      {"(= i (- j k))", "(= i (+ j (* (- 1) k)))"},
      {"(= i (- j 3))", "(= i (+ j (- 3)))"},
      {"(= i (- 7 j 3))", "(= i (+ (+ 7 (* (- 1) j)) (- 3)))"},
      {"(<= i j)", "(<= i j)"},
      {"(<= i j k)", "(and (<= i j) (<= j k))"},
      {"(< i j)", "(not (<= j i))"},
      {"(>= i j)", "(<= j i)"},
      {"(> i j)", "(not (<= i j))"},
      {"(> i j k)", "(and (not (<= i j)) (not (<= j k)))"},
      {"(= i (abs j))", "(= i (ite (<= 0 j) j (* (- 1) j)))"},
      {"(= i (f (f 3)))", "(= i (f (f 3)))"},
  });
}

TEST(Operators, DivisionOfIntegersByNumbers) {
  expect_rows({
      {"(= i (div j 3))", "(= i (to_int (* (/ 1 3) (to_real j))))"},
      {"(= i (div j (- 3)))", "(= i (* (- 1) (to_int (* (/ 1 3) (to_real j)))))"},
      {"(= i (div j 1))", "(= i j)"},
      {"(= i (div j (- 1)))", "(= i (* (- 1) j))"},
      {"(= i (div j 2 5))",
       "(= i (to_int (* (/ 1 5) (to_real (to_int (* (/ 1 2) (to_real j)))))))"},
      {"(= i (mod j 3))", "(= i (+ j (* (- 3) (to_int (* (/ 1 3) (to_real j))))))"},
      {"(= i (mod j (- 3)))", "(= i (+ j (* (- 3) (to_int (* (/ 1 3) (to_real j))))))"},
      {"(= i (mod j 1))", "(= i 0)"},
      {"(= i (mod j (- 1)))", "(= i 0)"},
  });
}

TEST(Operators, DivisibilityIsACongruence) {
  expect_rows({
      {"((_ divisible 3) i)", "((_ divisible 3) (- i 0))"},
      {"((_ divisible 3) (- i j))", "((_ divisible 3) (- i j))"},
      {"((_ divisible 3) (- i 5))", "((_ divisible 3) (- i 5))"},
      {"((_ divisible 3) (- 7 5))", "((_ divisible 3) (- 7 5))"},
      {"((_ divisible 3) (- 5))", "((_ divisible 3) (- (- 5) 0))"},
      {"((_ divisible 3) (- i j k))", "((_ divisible 3) (- (+ (+ i (* (- 1) j)) (* (- 1) k)) 0))"},
      {"((_ divisible 3) (+ (- i j) k))", "((_ divisible 3) (- (+ (+ i (* (- 1) j)) k) 0))"},
      {"((_ divisible 18446744073709551617) (- i j))",
       "((_ divisible 18446744073709551617) (- i j))"},
  });
}

TEST(Operators, RealArithmeticInAMixedLogic) {
  expect_rows({
      {"(= x 3.0)", "(= x (to_real 3))"},
      {"(= 3.0 2.0)", "(= (to_real 3) (to_real 2))"},
      {"(= x 2.50)", "(= x (/ 5 2))"},
      {"(= x (- 2.5))", "(= x (- (/ 5 2)))"},
      {"(= x (/ 1 3))", "(= x (/ 1 3))"},
      {"(= x (/ 6 3))", "(= x (to_real 2))"},
      {"(= x (- (/ 1 3)))", "(= x (- (/ 1 3)))"},
      {"(= x (/ (- 1) 3))", "(= x (- (/ 1 3)))"},
      {"(= x (/ y 4))", "(= x (* (/ 1 4) y))"},
      {"(= x (/ y 1))", "(= x y)"},
      {"(= x (/ y 2 4.0))", "(= x (* (/ 1 4) (* (/ 1 2) y)))"},
      {"(= x (/ i 4))", "(= x (* (/ 1 4) (to_real i)))"},
      {"(= x (/ i 1))", "(= x (to_real i))"},
      {"(= x (- y))", "(= x (* (to_real (- 1)) y))"},
      {"(< x 2)", "(not (<= (to_real 2) x))"},
      {"(= (+ x i) j)", "(= (+ x (to_real i)) (to_real j))"},
      {"(= (to_real i) x)", "(= (to_real i) x)"},
      {"(= (to_real i) (to_real j))", "(= (to_real i) (to_real j))"},
      {"(= (to_real i) j)", "(= (to_real i) (to_real j))"},
      {"(<= (to_real i) (to_real j))", "(<= (to_real i) (to_real j))"},
      {"(= x (+ (to_real i) (to_real j)))", "(= x (+ (to_real i) (to_real j)))"},
      {"(= x (* (to_real i) (to_real j)))", "(= x (* (to_real i) (to_real j)))"},
      {"(= x (- (to_real i)))", "(= x (* (to_real (- 1)) (to_real i)))"},
      {"(= x (ite p (to_real i) (to_real j)))", "(= x (ite p (to_real i) (to_real j)))"},
      {"(= x (ite p i y))", "(= x (ite p (to_real i) y))"},
      {"(= x (g i y))", "(= x (g (to_real i) y))"},
      {"(= i (to_int x))", "(= i (to_int x))"},
      {"(= i (to_int (to_real j)))", "(= i (to_int (to_real j)))"},
      {"(is_int x)", "(= x (to_real (to_int x)))"},
      {"(distinct x i)", "(not (= x (to_real i)))"},
      {"(= x (abs y))", "(= x (ite (<= (to_real 0) y) y (* (to_real (- 1)) y)))"},
  });
}

TEST(Operators, NumeralsOfAPurelyRealLogicAreReal) {
  expect_rows(
      {
          {"(= x 3)", "(= x 3)"},
          {"(= x 3.0)", "(= x 3)"},
          {"(= x (- 3))", "(= x (- 3))"},
          {"(= x (/ 6 3))", "(= x 2)"},
          {"(= x (- y))", "(= x (* (- 1) y))"},
          {"(< x (- y 2))", "(not (<= (+ y (- 2)) x))"},
          {"(= 3 2)", "(= 3 2)"},
      },
      "QF_UFLRA");
  TermManager mgr;
  const auto assertions =
      assertions_of(mgr, "(set-logic QF_NRA)(declare-const x Real)(assert (= x 3))");
  ASSERT_EQ(assertions.size(), 1U);
  EXPECT_EQ(assertions[0]->children[1]->sort(), mgr.get_real_type());
}

TEST(Operators, BitVectors) {
  expect_rows({
      {"(= a #b00000101)", "(= a (_ bv5 8))"},
      {"(= a #xfF)", "(= a (_ bv255 8))"},
      {"(= a (_ bv17 8))", "(= a (_ bv17 8))"},
      {"(= a (bvnot b))", "(= a (bvnot b))"},
      {"(= a (bvneg b))", "(= a (bvneg b))"},
      {"(= a (bvand b c))", "(= a (bvand b c))"},
      {"(= a (bvand a b c b))", "(= a (bvand (bvand a b) (bvand c b)))"},
      {"(= a (bvor a b c))", "(= a (bvor (bvor a b) c))"},
      {"(= a (bvxor a b c))", "(= a (bvxor (bvxor a b) c))"},
      {"(= a (bvadd a b c))", "(= a (bvadd (bvadd a b) c))"},
      {"(= a (bvmul a b c))", "(= a (bvmul (bvmul a b) c))"},
      {"(= a (bvnand b c))", "(= a (bvnot (bvand b c)))"},
      {"(= a (bvnor b c))", "(= a (bvnot (bvor b c)))"},
      {"(= a (bvxnor b c))", "(= a (bvnot (bvxor b c)))"},
      {"(= a (bvsub b c))", "(= a (bvsub b c))"},
      {"(= a (bvudiv b c))", "(= a (bvudiv b c))"},
      {"(= a (bvurem b c))", "(= a (bvurem b c))"},
      {"(= a (bvsdiv b c))", "(= a (bvsdiv b c))"},
      {"(= a (bvsrem b c))", "(= a (bvsrem b c))"},
      {"(= a (bvshl b c))", "(= a (bvshl b c))"},
      {"(= a (bvlshr b c))", "(= a (bvlshr b c))"},
      {"(= a (bvashr b c))", "(= a (bvashr b c))"},
      {"(= #b1 (bvcomp b c))", "(= (_ bv1 1) (bvcomp b c))"},
      {"(bvult a b)", "(bvult a b)"},
      {"(bvule a b)", "(bvule a b)"},
      {"(bvugt a b)", "(bvult b a)"},
      {"(bvuge a b)", "(bvule b a)"},
      {"(bvslt a b)", "(bvslt a b)"},
      {"(bvsle a b)", "(bvsle a b)"},
      {"(bvsgt a b)", "(bvslt b a)"},
      {"(bvsge a b)", "(bvsle b a)"},
      {"(= a (concat d d))", "(= a (concat d d))"},
      {"(= (concat d a b) (concat a b d))", "(= (concat (concat d a) b) (concat (concat a b) d))"},
      {"(= d ((_ extract 6 3) a))", "(= d ((_ extract 6 3) a))"},
      {"(= a ((_ zero_extend 4) d))", "(= a ((_ zero_extend 4) d))"},
      {"(= a ((_ sign_extend 4) d))", "(= a ((_ sign_extend 4) d))"},
      {"(= a ((_ rotate_left 3) b))", "(= a ((_ rotate_left 3) b))"},
      {"(= a ((_ rotate_right 3) b))", "(= a ((_ rotate_right 3) b))"},
      {"(= d ((_ repeat 1) d))", "(= d d)"},
      {"(= a ((_ repeat 2) d))", "(= a (concat d d))"},
      {"(= ((_ repeat 3) d) ((_ zero_extend 4) a))",
       "(= (concat (concat d d) d) ((_ zero_extend 4) a))"},
  });
}

TEST(Operators, BitVectorConstantsHaveAnyWidth) {
  const std::string zeros(62, '0');
  const std::string ones(62, '1');
  expect_rows({
      {"(= #x7fffffffffffffff #x0000000000000001)", "(= (_ bv9223372036854775807 64) (_ bv1 64))"},
      {"(= #x8000000000000000 #xFFFFFFFFFFFFFFFF)",
       "(= (_ bv9223372036854775808 64) (_ bv18446744073709551615 64))"},
      {"(= #x10000000000000000 #x0000000000000000f)",
       "(= (_ bv18446744073709551616 68) (_ bv15 68))"},
      {"(= #xffffffffffffffffffffffffffffffff #x00000000000000000000000000000010)",
       "(= (_ bv340282366920938463463374607431768211455 128) (_ bv16 128))"},
      {"(= #b1" + ones + " #b1" + zeros + ")",
       "(= (_ bv9223372036854775807 63) (_ bv4611686018427387904 63))"},
      {"(= #b11" + ones + " #b10" + zeros + ")",
       "(= (_ bv18446744073709551615 64) (_ bv9223372036854775808 64))"},
      {"(= #b000" + ones + " #b100" + zeros + ")",
       "(= (_ bv4611686018427387903 65) (_ bv18446744073709551616 65))"},
  });
}

// Short and long texts, told apart to the last digit; and a logic may change what one means.
TEST(Operators, LiteralsMeanTheSameEachTime) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(set-logic QF_LIRA)"
            "(assert (= 1 1)) (assert (= 1234567 1234568)) (assert (= 12345678 12345678))"
            "(assert (= 12345678 12345679)) (assert (= 1.0 1.0)) (assert (= 1.0 0.5))"
            "(assert (= 1234567.0 1234567.0)) (assert (< 1.0 1))"
            "(reset) (set-logic QF_LRA) (assert (= 1 1.0)) (assert (= 12345678 12345678.0))"
            "(reset) (set-logic QF_BV) (assert (= #x0123456789abcdef #x0123456789abcdef))"
            "(assert (= #x12 #b00010010)) (assert (= #b1 #b1)) (assert (= #x1 #b0001))");
  std::vector<const Term*> equal;
  std::vector<const Term*> different;
  for (const Command& command : script.commands) {
    if (command.kind != Command::Kind::assertion || command.term->symbol->arity != 2) {
      continue;
    }
    const bool same = command.term->children[0] == command.term->children[1];
    (same ? equal : different).push_back(command.term);
  }
  EXPECT_EQ(equal.size(), 10U);
  EXPECT_EQ(different.size(), 3U);
}

// A text that is remembered goes with the logic that gave it its meaning.
TEST(Operators, RememberedLiteralsTakeNoMemoryForGood) {
  const std::string digits(20'000, '9');
  std::string text;
  for (int i = 0; i < 300; ++i) {
    text += "(reset)(assert (= " + digits + " 1))";
  }
  std::istringstream in(text);
  TermManager mgr;
  ScriptHandler handler;
  const std::size_t before = testing::allocated_bytes();
  SmtLib2Reader reader(mgr);
  reader.read(in, handler);
  EXPECT_LT(testing::allocated_bytes() - before, 3'000'000U);
}

TEST(Operators, SignedModuloTakesTheSignOfTheDivisor) {
  // The shared remainder keeps this from being a row; the parts are looked at one by one.
  TermManager mgr;
  const auto assertions = assertions_of(mgr, declarations + "(assert (= a (bvsmod b c)))");
  ASSERT_EQ(assertions.size(), 1U);
  const Term* modulo = assertions[0]->children[1];
  EXPECT_EQ(text_of(mgr, modulo->children[0]),
            "(or (= (bvsrem b c) (_ bv0 8)) (= ((_ extract 7 7) b) ((_ extract 7 7) c)))");
  EXPECT_EQ(text_of(mgr, modulo->children[1]), "(bvsrem b c)");
  EXPECT_EQ(text_of(mgr, modulo->children[2]), "(bvadd (bvsrem b c) c)");
}

// As numerals the numbers of these would have 30 million digits.
TEST(Operators, OverflowPredicatesOfManyBitsStayShort) {
  const auto text = [](const std::string& width, const std::string& formula) {
    TermManager mgr;
    const auto assertions =
        assertions_of(mgr, "(declare-fun w () (_ BitVec " + width + "))(assert (" + formula + "))");
    return text_of(mgr, assertions.front());
  };
  EXPECT_EQ(text("100000000", "bvnego w"), "(= w (concat (_ bv1 1) (_ bv0 99999999)))");
  EXPECT_EQ(text("100000000", "bvsdivo w w"),
            "(and (= w (concat (_ bv1 1) (_ bv0 99999999))) (= w (bvnot (_ bv0 100000000))))");
  EXPECT_EQ(text("4097", "bvnego w"), "(= w (concat (_ bv1 1) (_ bv0 4096)))");
  EXPECT_EQ(text("4097", "bvsdivo w w"),
            "(and (= w (concat (_ bv1 1) (_ bv0 4096))) (= w (bvnot (_ bv0 4097))))");
  const QNumber smallest = QNumber(mpz_class(1) << 4095U, 1);
  EXPECT_EQ(text("4096", "bvnego w"), "(= w (_ bv" + smallest.to_str() + " 4096))");
  EXPECT_EQ(text("4096", "bvsdivo w w"), "(and (= w (_ bv" + smallest.to_str() +
                                             " 4096)) (= w (_ bv" +
                                             (smallest + smallest - 1).to_str() + " 4096)))");
}

TEST(Operators, OverflowPredicates) {
  expect_rows({
      {"(bvnego d)", "(= d (_ bv8 4))"},
      {"(bvusubo a b)", "(bvult a b)"},
      {"(bvsdivo d d)", "(and (= d (_ bv8 4)) (= d (_ bv15 4)))"},
      {"(bvuaddo a b)",
       "(not (= (bvadd ((_ zero_extend 1) a) ((_ zero_extend 1) b)) "
       "((_ zero_extend 1) (bvadd a b))))"},
      {"(bvsaddo a b)",
       "(not (= (bvadd ((_ sign_extend 1) a) ((_ sign_extend 1) b)) "
       "((_ sign_extend 1) (bvadd a b))))"},
      {"(bvssubo a b)",
       "(not (= (bvsub ((_ sign_extend 1) a) ((_ sign_extend 1) b)) "
       "((_ sign_extend 1) (bvsub a b))))"},
      {"(bvumulo a b)",
       "(not (= (bvmul ((_ zero_extend 8) a) ((_ zero_extend 8) b)) "
       "((_ zero_extend 8) (bvmul a b))))"},
      {"(bvsmulo a b)",
       "(not (= (bvmul ((_ sign_extend 8) a) ((_ sign_extend 8) b)) "
       "((_ sign_extend 8) (bvmul a b))))"},
  });
}

TEST(Operators, Arrays) {
  expect_rows({
      {"(= x (select t i))", "(= x (select t i))"},
      {"(= t (store t i x))", "(= t (store t i x))"},
      {"(= t (store t2 i j))", "(= t (store t2 i (to_real j)))"},
      {"(= t (store t2 i 1.0))", "(= t (store t2 i (to_real 1)))"},
      {"(= t t2)", "(= t t2)"},
  });
}

TEST(Operators, QualifiedIdentifiers) {
  expect_rows({
      {"(as p Bool)", "p"},
      {"(= u (as v U))", "(= u v)"},
      {"((as h Bool) u)", "(h u)"},
  });
}

TEST(Operators, RefuseWrongNumbersOfArguments) {
  const Rows rows{
      {"(not p q)", "found 2 arguments of not, expected 1"},
      {"(and)", "found 0 arguments of and, expected at least 1"},
      {"(xor p)", "found 1 argument of xor, expected at least 2"},
      {"(= p)", "found 1 argument of =, expected at least 2"},
      {"(ite p q)", "found 2 arguments of ite, expected 3"},
      {"(< i)", "found 1 argument of <, expected at least 2"},
      {"(= i (mod i j k))", "found 3 arguments of mod, expected 2"},
      {"(= i (-))", "found 0 arguments of -, expected at least 1"},
      {"(= x (/ x))", "found 1 argument of /, expected at least 2"},
      {"((_ divisible 3) i j)", "found 2 arguments of divisible, expected 1"},
      {"(bvult a)", "found 1 argument of bvult, expected 2"},
      {"(= x (select t))", "found 1 argument of select, expected 2"},
      {"(h u v)", "found 2 arguments of h, expected 1"},
      {"(h)", "found 0 arguments of h, expected 1"},
      {"(= x (g x))", "found 1 argument of g, expected 2"},
      {"(true)", "found true, which takes no arguments, expected a function"},
      {"(p)", "found p, which takes no arguments, expected a function"},
  };
  for (const auto& [term, message] : rows) {
    EXPECT_EQ(message_of(term), message) << term;
  }
}

TEST(Operators, RefuseWrongSorts) {
  const Rows rows{
      {"(not i)", "found Int as argument 1 of not, expected Bool"},
      {"(and p q i)", "found Int as argument 3 of and, expected Bool"},
      {"(= p i)", "found Int as argument 2 of =, expected Bool"},
      {"(= u i)", "found Int as argument 2 of =, expected U"},
      {"(= i j p)", "found Bool as argument 3 of =, expected Int"},
      {"(ite i p q)", "found Int as argument 1 of ite, expected Bool"},
      {"(ite p q i)", "found Int as argument 3 of ite, expected Bool"},
      {"(= i (+ i p))", "found Bool as argument 2 of +, expected Int or Real"},
      {"(= i (div i x))", "found Real as argument 2 of div, expected Int"},
      {"(= i (mod (to_real i) 3))", "found Real as argument 1 of mod, expected Int"},
      {"((_ divisible 3) x)", "found Real as argument 1 of divisible, expected Int"},
      {"(= a (bvadd a d))", "found (_ BitVec 4) as argument 2 of bvadd, expected (_ BitVec 8)"},
      {"(= i (- #b01))", "found (_ BitVec 2) as argument 1 of -, expected Int or Real"},
      {"(= x (/ #x0f 2))", "found (_ BitVec 8) as argument 1 of /, expected Int or Real"},
      {"(= a (bvnot i))", "found Int as argument 1 of bvnot, expected a bit-vector"},
      {"(= a (concat a i))", "found Int as argument 2 of concat, expected a bit-vector"},
      {"(= x (select a i))", "found (_ BitVec 8) as argument 1 of select, expected an array"},
      {"(= x (select t x))", "found Real as argument 2 of select, expected Int"},
      {"(= t (store t i p))", "found Bool as argument 3 of store, expected Real"},
      {"(= i (f (to_real i)))", "found Real as argument 1 of f, expected Int"},
      {"(h i)", "found Int as argument 1 of h, expected U"},
      {"i", "found a term of sort Int, expected Bool"},
      {"(as i Bool)", "found a term of sort Int, expected Bool"},
      {"((as h U) u)", "found h as U, expected a function with this result"},
  };
  for (const auto& [term, message] : rows) {
    EXPECT_EQ(message_of(term), message) << term;
  }
}

TEST(Operators, RefuseWrongIndices) {
  const Rows rows{
      {"(= d ((_ extract 8 5) a))",
       "found the indices 8 and 5 of extract, expected 8 > first >= second"},
      {"(= d ((_ extract 3 5) a))",
       "found the indices 3 and 5 of extract, expected 8 > first >= second"},
      {"(= d ((_ extract 3) a))", "found 1 index of extract, expected 2"},
      {"(= d ((_ extract 3 2 1) a))", "found 3 indices of extract, expected 2"},
      {"(= d (extract a))", "found extract without indices, expected ((_ extract index) argument)"},
      {"(= d ((_ bvnot 3) a))", "found the symbol bvnot, expected an indexed operator"},
      {"(= a ((_ repeat 0) a))", "found 0 as the index of repeat, expected at least 1"},
      {"(= a ((_ zero_extend 4294967296) a))",
       "found 4294967296 as an index of zero_extend, expected at most 4294967295"},
      {"((_ divisible 0) i)", "found 0 as the index of divisible, expected a positive numeral"},
      {"((_ divisible x) i)", "found the symbol x, expected an index or ')'"},
      {"(= a (_ bv256 8))",
       "bit-vector: the value 256 does not fit in 8 bits, expected 0 <= value < 2^width"},
      {"(= a (_ bv1 8 8))", "found 2 indices of a bit-vector, expected its width"},
      {"(= a (_ bvx 8))", "found the symbol bvx, expected bv and a numeral"},
      {"(= a (_ bv 8))", "found the symbol bv, expected bv and a numeral"},
      {"(= a (_ vb8 8))", "found the symbol vb8, expected bv and a numeral"},
      {"(= a (_ 8 8))", "found the numeral 8, expected bv and a numeral"},
      {"(= a (_ bv1 4294967296))",
       "found a bit-vector of too many bits, expected at most 4294967295"},
  };
  for (const auto& [term, message] : rows) {
    EXPECT_EQ(message_of(term), message) << term;
  }
}

TEST(Operators, TellToWhichTheoryAnUnknownNameBelongs) {
  const Rows rows{
      {"fp.add", "floating point"},
      {"to_fp_unsigned", "floating point"},
      {"RNE", "floating point"},
      {"RTZ", "floating point"},
      {"roundTowardZero", "floating point"},
      {"str.++", "strings"},
      {"re.all", "strings"},
      {"seq.unit", "sequences"},
      {"set.union", "sets"},
      {"bag.count", "bags"},
      {"ff.add", "finite fields"},
      {"lambda", "functions as terms"},
  };
  for (const auto& [name, theory] : rows) {
    const std::string message =
        "found the symbol " + name + " (" + theory + "), expected a declared symbol";
    EXPECT_EQ(message_of("(= i " + name + ")"), message);
    EXPECT_EQ(message_of("(= i (" + name + " i))"), message);
  }
  EXPECT_EQ(message_of("(= i rounded)"),
            "found the symbol rounded (floating point), expected a declared symbol");
  EXPECT_EQ(message_of("(= i setting)"), "found the symbol setting, expected a declared symbol");
}

// What is a whole term before its last bracket ends, or without one, ends a binding too.
TEST(Operators, ValuesOfLetsMayBeSpelledInAnyWay) {
  expect_rows({
      {"(let ((n (- 3))) (= i n))", "(= i (- 3))"},
      {"(let ((n (/ 1 2))) (= x n))", "(= x (/ 1 2))"},
      {"(let ((n 3)) (= i n))", "(= i 3)"},
      {"(let ((n (_ bv3 8))) (= a n))", "(= a (_ bv3 8))"},
      {"(let ((n #x03)) (= a n))", "(= a (_ bv3 8))"},
      {"(let ((n (as v U))) (= u n))", "(= u v)"},
  });
}

TEST(Operators, NoTwoHaveOneName) {
  hsh::HashSet<std::string_view> names;
  for (const Operator& op : smtlib2_operators()) {
    EXPECT_TRUE(names.insert(op.name).second) << op.name;
  }
  EXPECT_EQ(names.size(), 12U + 15U + 43U);
}

}  // namespace brum::testing
