#include "brum/readers/smtlib1_reader.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "brum/utils/exception.h"
#include "tests/support/build_kind.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::make_bool;
using testing::make_bv;
using testing::make_int;
using testing::make_real;

class SmtLib1ReaderTest : public ::testing::Test {
 protected:
  void read(const std::string& text, ReaderOptions options = {}) {
    script = std::make_unique<Script>();
    std::istringstream in(text);
    SmtLib1Reader(mgr, std::move(options)).read(in, *script);
  }

  /// Reads a benchmark of one formula and gives that.
  const Term* formula(const std::string& attributes, const std::string& text) {
    read("(benchmark b " + attributes + " :formula " + text + ")");
    const Query query = script->query(1);
    EXPECT_EQ(query.assertions.size(), 1U) << text;
    return query.assertions.front();
  }

  /// The term that a text denotes, in a logic.
  const Term* value(const std::string& attributes, const std::string& text) {
    std::istringstream in(text);
    ReaderOptions options;
    options.use_signature = true;
    options.logic = attributes;
    return SmtLib1Reader(mgr, options).read_term(in);
  }

  TermManager mgr;
  std::unique_ptr<Script> script;
};

TEST_F(SmtLib1ReaderTest, AssertsAssumptionsAndTheFormulaAndAsksOnce) {
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  read(
      "; a comment\n(benchmark name.smt\n:source {by hand}\n:status unsat\n:logic QF_UF\n"
      ":extrapreds ((p) (q))\n:assumption p\n:notes \"none\"\n:formula (and p q)\n"
      ":assumption (not q)\n:odd\n)\n; the end");
  ASSERT_EQ(script->commands.size(), 4U);
  const std::vector<const Term*> expected = {p, mgr.make_and(p, q), mgr.make_not(q)};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(script->commands[i].kind, Command::Kind::assertion);
    EXPECT_EQ(script->commands[i].term, expected[i]);
  }
  EXPECT_EQ(script->commands[0].position, (TextPosition{7, 1}));
  EXPECT_EQ(script->commands[3].kind, Command::Kind::check_sat);
  EXPECT_EQ(script->commands[3].position, (TextPosition{2, 1}));
  EXPECT_EQ(script->logic, "QF_UF");
  EXPECT_EQ(script->status, "unsat");
  const Query query = script->query(1);
  EXPECT_EQ(query.status, "unsat");
  EXPECT_EQ(query.assertions, expected);
  const std::vector<std::pair<std::string, std::string>> info = {
      {"source", "\"by hand\""}, {"status", "unsat"}, {"notes", "\"none\""}, {"odd", ""}};
  EXPECT_EQ(script->info, info);
}

TEST_F(SmtLib1ReaderTest, TheStatusMayFollowTheFormula) {
  read("(benchmark b :formula true :status sat)");
  EXPECT_EQ(script->query(1).status, "sat");
}

TEST_F(SmtLib1ReaderTest, DeclaresWhatTheAttributesName) {
  read(
      "(benchmark b :extrasorts (S T) :extrasorts (V)"
      " :extrafuns ((f S T Int) (c V :key {text}) (g BitVec[8] Array[32:8]))"
      " :extrafuns ((a Array) (a1 Array1) (a2 Array2) (u U))"
      " :extrapreds ((p) (r Int Real)) :formula true)");
  const DataType* s = mgr.make_uninterpreted_type("S");
  const DataType* t = mgr.make_uninterpreted_type("T");
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  const DataType* bytes = mgr.make_array_type(mgr.make_bv_type(32), mgr.make_bv_type(8));
  const DataType* reals = mgr.make_array_type(integer, real);
  const std::vector<std::pair<std::string, const DataType*>> expected = {
      {"f", mgr.make_function_type({s, t}, integer)},
      {"c", mgr.make_uninterpreted_type("V")},
      {"g", mgr.make_function_type({mgr.make_bv_type(8)}, bytes)},
      {"a", mgr.make_array_type(integer, integer)},
      {"a1", reals},
      {"a2", mgr.make_array_type(integer, reals)},
      {"u", mgr.make_uninterpreted_type("U")},
      {"p", mgr.get_bool_type()},
      {"r", mgr.make_function_type({integer, real}, mgr.get_bool_type())},
  };
  ASSERT_EQ(script->symbols.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(script->symbols[i].first, expected[i].first);
    EXPECT_EQ(script->symbols[i].second->name_view(), expected[i].first);
    EXPECT_EQ(script->symbols[i].second->type, expected[i].second) << expected[i].first;
  }
  EXPECT_EQ(script->sorts.size(), 3U);
  EXPECT_EQ(script->sorts["S"], s);
}

TEST_F(SmtLib1ReaderTest, ArraysOfALogicOfNothingElseHaveSortsOfTheirOwn) {
  read("(benchmark b :logic QF_AX :extrafuns ((a Array) (i Index) (e Element)) :formula true)");
  const DataType* index = mgr.make_uninterpreted_type("Index");
  const DataType* element = mgr.make_uninterpreted_type("Element");
  EXPECT_EQ(script->symbols[0].second->type, mgr.make_array_type(index, element));
  EXPECT_EQ(script->symbols[1].second->type, index);
  EXPECT_EQ(script->symbols[2].second->type, element);
}

TEST_F(SmtLib1ReaderTest, TheSortsOfArraysMayBeDeclared) {
  hsh::HashMap<std::string, const DataType*> sorts;
  sorts["Index"] = mgr.make_uninterpreted_type("place");
  ReaderOptions options;
  options.sorts = &sorts;
  read("(benchmark b :logic QF_AX :extrasorts (Index) :extrafuns ((a Array)) :formula true)",
       options);
  EXPECT_EQ(script->symbols[0].second->type,
            mgr.make_array_type(mgr.make_uninterpreted_type("place"),
                                mgr.make_uninterpreted_type("Element")));
}

TEST_F(SmtLib1ReaderTest, BoolIsASortOfArguments) {
  read("(benchmark b :extrafuns ((f Bool Int)) :formula (= (f true) 1))");
  EXPECT_EQ(script->symbols[0].second->type,
            mgr.make_function_type({mgr.get_bool_type()}, mgr.get_int_type()));
}

TEST_F(SmtLib1ReaderTest, SortsMayBeGivenByName) {
  hsh::HashMap<std::string, const DataType*> sorts;
  sorts["U0"] = mgr.make_uninterpreted_type("cat or dog");
  ReaderOptions options;
  options.sorts = &sorts;
  read("(benchmark b :extrasorts (U0 U1) :extrafuns ((x U0) (y U1)) :formula true)", options);
  EXPECT_EQ(script->symbols[0].second->type, mgr.make_uninterpreted_type("cat or dog"));
  EXPECT_EQ(script->symbols[1].second->type, mgr.make_uninterpreted_type("U1"));
}

TEST_F(SmtLib1ReaderTest, LogicsLoseTheirIndex) {
  read("(benchmark b :logic QF_UFBV[32] :formula true)");
  EXPECT_EQ(script->logic, "QF_UFBV");
}

TEST_F(SmtLib1ReaderTest, ReadsConnectives) {
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* r = make_bool(mgr, "r");
  const std::vector<std::pair<std::string, const Term*>> rows = {
      {"true", mgr.make_true()},
      {"false", mgr.make_false()},
      {"p", p},
      {"(not p)", mgr.make_not(p)},
      {"(and p q)", mgr.make_and(p, q)},
      {"(and p)", p},
      {"(or p q r)", mgr.make_or(mgr.make_or(p, q), r)},
      {"(implies p q)", mgr.make_or(mgr.make_not(p), q)},
      {"(iff p q)", mgr.make_iff(p, q)},
      {"(= p q)", mgr.make_iff(p, q)},
      {"(xor p q)", mgr.make_not(mgr.make_iff(p, q))},
      {"(if_then_else p q r)", mgr.make_ite(p, q, r)},
      {"(flet ($f (and p q)) (or $f $f))", mgr.make_or(mgr.make_and(p, q), mgr.make_and(p, q))},
      {"(flet ($f p) (flet ($f (not $f)) $f))", mgr.make_not(p)},
      {"(and (flet ($f p) $f) (flet ($f q) $f))", mgr.make_and(p, q)},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(formula(":extrapreds ((p) (q) (r))", text), expected) << text;
  }
}

TEST_F(SmtLib1ReaderTest, ReadsArithmetic) {
  const Term* i = make_int(mgr, "i");
  const Term* j = make_int(mgr, "j");
  const Term* x = make_real(mgr, "x");
  const auto number = [&](std::int64_t n) { return mgr.make_number(n); };
  const Term* minus_j = mgr.make_times(number(-1), j);
  const std::vector<std::pair<std::string, const Term*>> rows = {
      {"0", number(0)},
      {"(~ 3)", number(-3)},
      {"(- 3)", number(-3)},
      {"1.5", mgr.make_number(QNumber(3, 2))},
      {"(/ 1 3)", mgr.make_number(QNumber(1, 3))},
      {"(~ (/ 1 3))", mgr.make_number(QNumber(-1, 3))},
      {"(/ (~ 1) 3)", mgr.make_number(QNumber(-1, 3))},
      {"(~ j)", minus_j},
      {"(- i j)", mgr.make_plus(i, minus_j)},
      {"(+ i 1)", mgr.make_plus(i, number(1))},
      {"(* 2 i)", mgr.make_times(number(2), i)},
      {"(+ x i)", mgr.make_plus(x, i)},
      {"(<= i j)", mgr.make_leq(i, j)},
      {"(< i j)", mgr.make_not(mgr.make_leq(j, i))},
      {"(>= x i)", mgr.make_leq(i, x)},
      {"(> i j)", mgr.make_not(mgr.make_leq(i, j))},
      {"(= x i)", mgr.make_equal(x, i)},
      {"(distinct i j)", mgr.make_not(mgr.make_equal(i, j))},
      {"(ite (<= i j) i j)", mgr.make_ite(mgr.make_leq(i, j), i, j)},
      {"(ite true x i)", mgr.make_ite(mgr.make_true(), x, i)},
      {"(let (?x (+ i j)) (+ ?x ?x))", mgr.make_plus(mgr.make_plus(i, j), mgr.make_plus(i, j))},
      {"(to_int x)", mgr.make_floor(x)},
      {"(divisible[3] (- i j))", mgr.make_int_modular_congruence(3, i, j)},
      {"(divisible[3] (- i 5))", mgr.make_int_modular_congruence(3, i, number(5))},
      {"(divisible[3] (- i j :a))", mgr.make_int_modular_congruence(3, i, j)},
      {"(divisible[3] i)", mgr.make_int_modular_congruence(3, i, number(0))},
      {"(i :key {text})", i},
      {"(7 :key)", number(7)},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(value("AUFLIRA", text), expected) << text;
  }
}

TEST_F(SmtLib1ReaderTest, NumeralsAreRealInRealLogics) {
  const Term* x = make_real(mgr, "x");
  const Term* three = mgr.make_number(3, mgr.get_real_type());
  EXPECT_EQ(value("QF_LRA", "(+ x 3)"), mgr.make_plus(x, three));
  EXPECT_EQ(value("QF_LRA", "(+ x 3.0)"), mgr.make_plus(x, three));
  EXPECT_EQ(value("QF_LIA", "3"), mgr.make_number(3));
}

TEST_F(SmtLib1ReaderTest, ReadsBitVectors) {
  const Term* x = make_bv(mgr, "x", 8);
  const Term* y = make_bv(mgr, "y", 8);
  const std::vector<std::pair<std::string, const Term*>> rows = {
      {"bv5[8]", mgr.make_bv_number(5, 8)},
      {"bv7", mgr.make_bv_number(7, 32)},
      {"bvbin0101", mgr.make_bv_number(5, 4)},
      {"bvhex0aF", mgr.make_bv_number(175, 12)},
      {"bit0", mgr.make_bv_number(0, 1)},
      {"bit1", mgr.make_bv_number(1, 1)},
      {"(bv5[8] :key)", mgr.make_bv_number(5, 8)},
      {"(concat x bit1)", mgr.make_concat(x, mgr.make_bv_number(1, 1))},
      {"(extract[7:4] x)", mgr.make_extract(7, 4, x)},
      {"(bvnot x)", mgr.make_bvnot(x)},
      {"(bvneg x)", mgr.make_bvneg(x)},
      {"(bvand x y)", mgr.make_bvand(x, y)},
      {"(bvor x y)", mgr.make_bvor(x, y)},
      {"(bvxor x y)", mgr.make_bvxor(x, y)},
      {"(bvnand x y)", mgr.make_bvnot(mgr.make_bvand(x, y))},
      {"(bvnor x y)", mgr.make_bvnot(mgr.make_bvor(x, y))},
      {"(bvxnor x y)", mgr.make_bvnot(mgr.make_bvxor(x, y))},
      {"(bvcomp x y)", mgr.make_bvcomp(x, y)},
      {"(bvadd x y)", mgr.make_bvadd(x, y)},
      {"(bvsub x y)", mgr.make_bvsub(x, y)},
      {"(bvmul x y)", mgr.make_bvmul(x, y)},
      {"(bvudiv x y)", mgr.make_bvudiv(x, y)},
      {"(bvsdiv x y)", mgr.make_bvsdiv(x, y)},
      {"(bvurem x y)", mgr.make_bvurem(x, y)},
      {"(bvsrem x y)", mgr.make_bvsrem(x, y)},
      {"(bvshl x y)", mgr.make_bvshl(x, y)},
      {"(bvlshr x y)", mgr.make_bvlshr(x, y)},
      {"(bvashr x y)", mgr.make_bvashr(x, y)},
      {"(repeat[2] x)", mgr.make_concat(x, x)},
      {"(zero_extend[3] x)", mgr.make_zero_extend(3, x)},
      {"(sign_extend[3] x)", mgr.make_sign_extend(3, x)},
      {"(rotate_left[3] x)", mgr.make_rotate_left(3, x)},
      {"(rotate_right[3] x)", mgr.make_rotate_right(3, x)},
      {"(bvult x y)", mgr.make_bvult(x, y)},
      {"(bvule x y)", mgr.make_bvule(x, y)},
      {"(bvugt x y)", mgr.make_bvult(y, x)},
      {"(bvuge x y)", mgr.make_bvule(y, x)},
      {"(bvslt x y)", mgr.make_bvslt(x, y)},
      {"(bvsle x y)", mgr.make_bvsle(x, y)},
      {"(bvsgt x y)", mgr.make_bvslt(y, x)},
      {"(bvsge x y)", mgr.make_bvsle(y, x)},
      {"(bvlt x y)", mgr.make_bvult(x, y)},
      {"(bvleq x y)", mgr.make_bvule(x, y)},
      {"(bvgt x y)", mgr.make_bvult(y, x)},
      {"(bvgeq x y)", mgr.make_bvule(y, x)},
      {"(bvsleq x y)", mgr.make_bvsle(x, y)},
      {"(bvsgeq x y)", mgr.make_bvsle(y, x)},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(value("QF_BV", text), expected) << text;
  }
}

TEST_F(SmtLib1ReaderTest, ReadsArrays) {
  const DataType* sort = mgr.make_array_type(mgr.make_bv_type(32), mgr.make_bv_type(8));
  const Term* a = mgr.make_term(mgr.declare("a", sort));
  const Term* i = make_bv(mgr, "i", 32);
  const Term* e = make_bv(mgr, "e", 8);
  EXPECT_EQ(value("QF_AUFBV", "(select (store a i e) i)"),
            mgr.make_select(mgr.make_store(a, i, e), i));
}

TEST_F(SmtLib1ReaderTest, ConditionsOfDivisionJoinTheAssertion) {
  const Term* divided = formula(":extrafuns ((x Real) (y Real))", "(= (/ x y) 2)");
  ASSERT_EQ(script->introduced.size(), 2U);
  EXPECT_EQ(script->introduced[1].operation, "/");
  EXPECT_EQ(divided->symbol, mgr.get_and_symbol());
}

TEST_F(SmtLib1ReaderTest, AnnotationsGoToTheHandler) {
  const Term* p = make_bool(mgr, "p");
  const Term* q = make_bool(mgr, "q");
  const Term* both = mgr.make_and(p, q);
  const Term* read = formula(":extrapreds ((p) (q))",
                             "(not (flet ($f (and p (q :a {1} :b) :c {x \"y\"})) $f :d) :e {})");
  EXPECT_EQ(read, mgr.make_not(both));
  using Attributes = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(script->annotations.size(), 3U);
  EXPECT_EQ(script->annotations[q], (Attributes{{"a", "\"1\""}, {"b", ""}}));
  EXPECT_EQ(script->annotations[both], (Attributes{{"c", "\"x \"\"y\"\"\""}, {"d", ""}}));
  EXPECT_EQ(script->annotations[read], (Attributes{{"e", "\"\""}}));
}

TEST_F(SmtLib1ReaderTest, AnnotatedPartsOfNumbersAreTerms) {
  EXPECT_EQ(value("", "(~ 3 :a)"), mgr.make_number(-3));
  EXPECT_EQ(value("", "(~ (~ 3 :a))"), mgr.make_number(3));
  EXPECT_EQ(value("", "(~ (3 :a))"), mgr.make_number(-3));
}

TEST_F(SmtLib1ReaderTest, NamesOfVersion2AreFree) {
  const Term* read = formula(
      ":extrapreds ((assert) (as Int) (match) (push)) :extrafuns ((par Int) (div Int Int) (_ Int))",
      "(and (and assert push) (and match (as (div _))))");
  const Term* underscore = make_int(mgr, "_");
  const Symbol* div =
      mgr.declare("div", mgr.make_function_type({mgr.get_int_type()}, mgr.get_int_type()));
  const Symbol* as =
      mgr.declare("as", mgr.make_function_type({mgr.get_int_type()}, mgr.get_bool_type()));
  EXPECT_EQ(read,
            mgr.make_and(mgr.make_and(make_bool(mgr, "assert"), make_bool(mgr, "push")),
                         mgr.make_and(make_bool(mgr, "match"),
                                      mgr.make_term(as, {mgr.make_term(div, {underscore})}))));
}

TEST_F(SmtLib1ReaderTest, NamesOfOtherLogicsTheoriesAreFree) {
  const Term* read = formula(":logic QF_UF :extrafuns ((+ U U U) (extract U) (select U U U))",
                             "(= extract (select extract (+ extract extract)))");
  const DataType* u = mgr.make_uninterpreted_type("U");
  const Symbol* plus = mgr.declare("+", mgr.make_function_type({u, u}, u));
  const Symbol* select = mgr.declare("select", mgr.make_function_type({u, u}, u));
  const Term* extract = mgr.make_term(mgr.declare("extract", u));
  EXPECT_EQ(read, mgr.make_equal(
                      extract,
                      mgr.make_term(select, {extract, mgr.make_term(plus, {extract, extract})})));
}

TEST_F(SmtLib1ReaderTest, EachTextBeginsAnew) {
  std::istringstream first("(benchmark a :extrapreds ((p)) :formula p)");
  std::istringstream second("(benchmark b :formula p)");
  SmtLib1Reader reader(mgr);
  Script read;
  reader.read(first, read);
  EXPECT_THROW(reader.read(second, read), ReadError);
}

TEST_F(SmtLib1ReaderTest, DeepTextsNeedNoStack) {
  const std::size_t depth = testing::large_size(1000000);
  testing::run_on_small_stack([&] {
    std::string text = "(benchmark b :extrapreds ((p)) :formula ";
    const std::string end(depth, ')');
    const auto repeated = [&](const std::string& opening, const std::string& inner) {
      std::string nest = text;
      for (std::size_t i = 0; i < depth; ++i)
        nest += opening;
      return nest + inner + end + ")";
    };
    read(repeated("(not ", "p"));
    EXPECT_EQ(script->query(1).assertions[0],
              testing::make_negations(mgr, make_bool(mgr, "p"), depth));
    read(repeated("(flet ($f p) ", "$f"));
    EXPECT_EQ(script->query(1).assertions[0], make_bool(mgr, "p"));
    read(repeated("(let (?x 1) ", "p"));
    EXPECT_EQ(script->query(1).assertions[0], make_bool(mgr, "p"));
    EXPECT_THROW(read(repeated("(", "p")), ReadError);
    EXPECT_THROW(read(text + std::string(depth, '{')), ReadError);

    // Each variable is the value of the next: (flet ($f (flet ($f ... p) $f)) $f).
    std::string inner = text;
    for (std::size_t i = 0; i < depth; ++i)
      inner += "(flet ($f ";
    inner += "p";
    for (std::size_t i = 0; i < depth; ++i)
      inner += ") (not $f))";
    read(inner + ")");
    EXPECT_EQ(script->query(1).assertions[0],
              testing::make_negations(mgr, make_bool(mgr, "p"), depth));
  });
}

TEST_F(SmtLib1ReaderTest, ReadsOneTermWithTheManagersNames) {
  const Term* x = make_int(mgr, "x");
  const Symbol* f =
      mgr.declare("f", mgr.make_function_type({mgr.get_int_type()}, mgr.get_int_type()));
  EXPECT_EQ(value("", "(let (?def_3 (f x)) (+ ?def_3 x))"),
            mgr.make_plus(mgr.make_term(f, {x}), x));
  EXPECT_THROW(value("", "y"), ReadError);
  EXPECT_THROW(value("", "x x"), ReadError);
}

}  // namespace
}  // namespace brum
