#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

std::vector<std::string> assertion_texts(const std::string& text) {
  TermManager mgr;
  Script script;
  read_into(script, mgr, text);
  std::vector<std::string> texts;
  for (const Command& command : script.commands) {
    if (command.kind == Command::Kind::assertion) {
      texts.push_back(text_of(mgr, command.term));
    }
  }
  return texts;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST(Scopes, LetBindsAllItsVariablesAtOnce) {
  EXPECT_EQ(assertion_text("(declare-const x Int)(declare-const y Int)"
                           "(assert (let ((x y) (y x)) (<= x y)))"),
            "(<= y x)");
}

TEST(Scopes, LetCoversOuterNamesAndUncoversThem) {
  EXPECT_EQ(assertion_text("(declare-const x Int)"
                           "(assert (and (let ((x 1)) (and (<= x 0) (let ((x (+ x 2))) (<= x 3)) "
                           "(<= x 4))) (<= x 5)))"),
            "(and (and (and (<= 1 0) (<= (+ 1 2) 3)) (<= 1 4)) (<= x 5))");
}

TEST(Scopes, LetMayCoverOperators) {
  EXPECT_EQ(assertion_text("(declare-const p Bool)(assert (let ((+ p)) (and + +)))"), "(and p p)");
}

TEST(Scopes, QuotedAndPlainSymbolsAreTheSame) {
  EXPECT_EQ(assertion_text("(declare-const |x| Int)(declare-const |a b| Int)"
                           "(assert (let ((|y| x)) (|<=| y |a b|)))"),
            "(<= x |a b|)");
}

TEST(Scopes, QuotedReservedWordsAreNames) {
  TermManager mgr;
  EXPECT_EQ(assertions_of(mgr, "(declare-const |let| Bool)(assert |let|)").size(), 1U);
  EXPECT_NE(mgr.get_signature()->get_symbol("let"), nullptr);
}

TEST(Scopes, DeclarationsEndWithTheirLevel) {
  EXPECT_EQ(error_of("(push 1)\n(declare-const p Bool)\n(pop 1)\n(assert p)"),
            "input:4:9: error: found the symbol p, expected a declared symbol");
  EXPECT_EQ(error_of("(push 1)\n(declare-sort U 0)\n(pop 1)\n(declare-const u U)"),
            "input:4:18: error: found the sort U, expected a declared sort");
  EXPECT_EQ(error_of("(push 1)\n(define-fun p () Bool true)\n(pop 1)\n(assert p)"),
            "input:4:9: error: found the symbol p, expected a declared symbol");
  EXPECT_EQ(error_of("(push 1)\n(assert (! true :named p))\n(pop 1)\n(assert p)"),
            "input:4:9: error: found the symbol p, expected a declared symbol");
}

TEST(Scopes, GlobalDeclarationsOutliveLevels) {
  EXPECT_EQ(assertion_texts("(set-option :global-declarations true)(push 1)(declare-const p Bool)"
                            "(declare-sort U 0)(define-fun q () Bool (not p))(pop 1)"
                            "(assert q)(reset-assertions)(declare-const u U)(assert p)"),
            (Texts{"(not p)", "p"}));
  EXPECT_EQ(error_of("(set-option :global-declarations true)(declare-const p Bool)(reset)\n"
                     "(assert p)"),
            "input:2:9: error: found the symbol p, expected a declared symbol");
  EXPECT_EQ(error_of("(set-option :global-declarations true)(declare-sort U 0)(reset)\n"
                     "(declare-const u U)"),
            "input:2:18: error: found the sort U, expected a declared sort");
}

TEST(Scopes, APopOfNoLevelsChangesNothing) {
  EXPECT_EQ(assertion_texts("(push 0)(pop 0)(push 1)(declare-const p Bool)(pop 0)(assert p)"),
            Texts{"p"});
}

TEST(Scopes, QualifiedSymbolsHaveTheSortTheySay) {
  const std::string declarations =
      "(declare-fun f (Int) Int)(define-fun g ((a Int)) Int (+ a 1))(declare-const x Int)"
      "(declare-fun const (Int) Int)\n";
  EXPECT_EQ(assertion_text(declarations + "(assert (= ((as f Int) 1) (as x Int)))"), "(= (f 1) x)");
  EXPECT_EQ(assertion_text(declarations + "(assert (= ((as g Int) x) x))"), "(= (+ x 1) x)");
  EXPECT_EQ(assertion_text(declarations + "(assert (= ((as const Int) 1) x))"), "(= (const 1) x)");
  EXPECT_EQ(error_of(declarations + "(assert ((as f Bool) 1))"),
            "input:2:14: error: found f as Bool, expected a function with this result");
  EXPECT_EQ(error_of(declarations + "(assert ((as g Bool) 1))"),
            "input:2:14: error: found g as Bool, expected a function with this result");
  EXPECT_EQ(error_of(declarations + "(assert ((as not Bool) true))"),
            "input:2:14: error: found not as Bool, expected a function with this result");
  EXPECT_EQ(error_of(declarations + "(assert (as x Bool))"),
            "input:2:13: error: found a term of sort Int, expected Bool");
}

TEST(Scopes, ANameMayComeBackUnderAnotherSort) {
  TermManager mgr;
  Script script;
  read_into(script, mgr,
            "(push 1)(declare-const x Int)(assert (= x 1))(pop 1)"
            "(push 1)(declare-const x Bool)(assert x)(pop 1)"
            "(push 1)(declare-const x Int)(assert (= x 2))(pop 1)"
            "(push 1)(declare-const x Bool)(assert (not x))(pop 1)");
  std::vector<std::string> texts;
  for (const Command& command : script.commands) {
    if (command.kind == Command::Kind::assertion) {
      texts.push_back(text_of(mgr, command.term));
    }
  }
  EXPECT_EQ(texts, (Texts{"(= x 1)", "x.2", "(= x 2)", "(not x.2)"}));
  ASSERT_EQ(script.symbols.size(), 4U);
  EXPECT_EQ(script.symbols[1].first, "x");
  EXPECT_STREQ(script.symbols[1].second->name, "x.2");
}

TEST(Scopes, ARenamedSymbolIsNobodyElses) {
  EXPECT_EQ(assertion_texts("(push 1)(declare-const x Int)(pop 1)"
                            "(declare-const x Bool)(declare-const x.2 Bool)(assert (= x x.2))"),
            Texts{"(= x.2 x.2.2)"});
}

TEST(Scopes, RefuseNamesThatAreTaken) {
  EXPECT_EQ(error_of("(declare-const p Bool)\n(declare-fun p (Int) Bool)"),
            "input:2:1: error: found p, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-const p Bool)\n(push 1)\n(define-fun p () Bool true)"),
            "input:3:1: error: found p, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-const |and| Bool)"),
            "input:1:1: error: found and, which is an operator of a theory, expected a new name");
  EXPECT_EQ(error_of("(declare-const p Bool)(assert (! p :named p))"),
            "input:1:43: error: found p, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-sort U 0)\n(define-sort U () Int)"),
            "input:2:1: error: found the sort U, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-sort Int 0)"),
            "input:1:1: error: found the sort Int, which is declared already, expected a new name");
  EXPECT_EQ(error_of("(declare-const let Bool)"),
            "input:1:16: error: found the reserved word let, expected a new name");
  EXPECT_EQ(error_of("(declare-const assert Bool)"),
            "input:1:16: error: found the reserved word assert, expected a new name");
  EXPECT_EQ(error_of("(assert (let ((x true) (y false) (x true)) x))"),
            "input:1:35: error: found the variable x twice in a let, expected another one");
}

TEST(Scopes, RefusePopOfMoreLevelsThanThereAre) {
  EXPECT_EQ(error_of("(push 2)(pop 1)\n (pop 2)"),
            "input:2:2: error: found pop of 2 levels, expected at most 1");
  EXPECT_EQ(error_of("(push 1000001)"),
            "input:1:7: error: found the numeral 1000001, expected at most 1000000 levels");
}

TEST(Scopes, PushAndPopWithoutANumberMeanOne) {
  EXPECT_EQ(error_of("(push)(pop)\n(pop)"),
            "input:2:1: error: found pop of 1 level, expected at most 0");
}

TEST(Scopes, DefinedSortsAreExpanded) {
  TermManager mgr;
  const auto assertions = assertions_of(mgr,
                                        "(define-sort Byte () (_ BitVec 8))"
                                        "(define-sort Map (K V) (Array K (Array Byte V)))"
                                        "(define-sort Twice (A) (Map A A))"
                                        "(declare-const m (Twice Int))"
                                        "(declare-const n (Array Int (Array (_ BitVec 8) Int)))"
                                        "(assert (= m n))");
  ASSERT_EQ(assertions.size(), 1U);
  EXPECT_EQ(assertions[0]->children[0]->sort()->to_str(), "(Array Int (Array (_ BitVec 8) Int))");
}

TEST(Scopes, ATowerOfDefinedSortsStaysSmall) {
  std::string text = "(define-sort S0 (A) (Array A A))";
  for (int i = 1; i <= 64; ++i) {
    const std::string below = "(S" + std::to_string(i - 1) + " A)";
    text += "(define-sort S" + std::to_string(i) + " (A) (Array " + below + " " + below + "))";
  }
  text += "(declare-const x (S64 Int))(declare-const y (S64 Int))(assert (= x y))";
  TermManager mgr;
  const auto assertions = assertions_of(mgr, text);
  ASSERT_EQ(assertions.size(), 1U);
  const DataType* sort = assertions[0]->children[0]->sort();
  for (int i = 0; i <= 64; ++i) {
    ASSERT_EQ(sort->kind(), DataType::Kind::array);
    EXPECT_EQ(sort->get_component(0), sort->get_component(1));
    sort = sort->get_component(1);
  }
  EXPECT_EQ(sort, mgr.get_int_type());
}

TEST(Scopes, SortsMayBeGivenByTheCaller) {
  TermManager mgr;
  const DataType* given = mgr.make_uninterpreted_type("my sort");
  hsh::HashMap<std::string, const DataType*> sorts;
  sorts["U0"] = given;
  ReaderOptions options;
  options.sorts = &sorts;
  Script script;
  read_into(script, mgr, "(declare-sort U0 0)(declare-sort V 0)(declare-const x U0)", options);
  EXPECT_EQ(script.sorts["U0"], given);
  EXPECT_EQ(script.sorts["V"], mgr.make_uninterpreted_type("V"));
  ASSERT_EQ(script.symbols.size(), 1U);
  EXPECT_EQ(script.symbols[0].second->type, given);
}

TEST(Scopes, UserSortsMayHaveNamesOfTheoriesThatAreNotHeld) {
  EXPECT_EQ(assertion_text("(declare-sort Set 0)(declare-const s Set)(declare-const t Set)"
                           "(assert (= s t))"),
            "(= s t)");
}

TEST(Scopes, RefuseWrongSortTexts) {
  EXPECT_EQ(error_of("(declare-const x Foo)"),
            "input:1:18: error: found the sort Foo, expected a declared sort");
  EXPECT_EQ(error_of("(declare-const x Array)"),
            "input:1:18: error: found Array alone, expected it with its parameters");
  EXPECT_EQ(error_of("(declare-const x (Array Int))"),
            "input:1:18: error: found 1 sort as parameters, expected 2");
  EXPECT_EQ(error_of("(declare-const x (Array Int Int Int))"),
            "input:1:18: error: found 3 sorts as parameters, expected 2");
  EXPECT_EQ(error_of("(declare-const x (BitVec 8))"),
            "input:1:19: error: found the symbol BitVec, expected (_ BitVec width)");
  EXPECT_EQ(error_of("(declare-const x (_ BitVec 4294967296))"),
            "input:1:28: error: found the numeral 4294967296, expected a width from 1 to "
            "4294967295");
  EXPECT_EQ(error_of("(declare-const x (Int))"),
            "input:1:18: error: found a sort without parameters in brackets, expected its name "
            "alone");
  EXPECT_EQ(error_of("(declare-const x (_ BitVec 0))"),
            "input:1:28: error: found the numeral 0, expected a width from 1 to 4294967295");
  EXPECT_EQ(error_of("(declare-const x (_ Foo 3))"),
            "input:1:21: error: found the symbol Foo, expected BitVec");
  EXPECT_EQ(error_of("(declare-const x 3)"),
            "input:1:18: error: found the numeral 3, expected a sort");
  EXPECT_EQ(error_of("(declare-const x"),
            "input:1:17: error: found the end of the input, expected a sort");
}

}  // namespace brum::testing
