#include "brum/printers/check_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib_identifiers.h"
#include "tests/support/build_kind.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using Problems = std::vector<std::pair<std::string, std::string>>;

Problems problems(const TermManager& mgr, const std::vector<const Term*>& terms, bool v1) {
  Problems found;
  for (const NameProblem& problem : check_names(mgr, terms, v1)) {
    found.emplace_back(problem.symbol->name, problem.reason);
  }
  return found;
}

/// The reasons against one constant of this name, in both versions.
std::pair<std::string, std::string> reasons(const std::string& name) {
  TermManager mgr;
  const Term* term = testing::make_int(mgr, name);
  const Problems v1 = problems(mgr, {term}, true);
  const Problems v2 = problems(mgr, {term}, false);
  return {v1.empty() ? "" : v1[0].second, v2.empty() ? "" : v2[0].second};
}

TEST(CheckNames, NamesByThemselves) {
  const std::string v1_word = "is a word of SMT-LIB 1.2";
  const std::string v2_word = "is a reserved word of SMT-LIB 2.6";
  const std::string v2_theory = "is a symbol of the theories of SMT-LIB 2.6";
  const std::string theory = "is a symbol of the theories of SMT-LIB";
  const std::string bar = "holds a bar or a backslash, which no symbol of SMT-LIB 2.6 can";
  const struct {
    const char* name;
    std::string v1;
    std::string v2;
  } rows[] = {
      {"x", "", ""},
      {"a b", "", ""},
      {"1x", "", ""},
      {".def_12", "", ""},
      {"\xC3\xA9", "", ""},
      {"", "", "is empty, which SMT-LIB 2.6 text does not show"},
      {"a|b", "", bar},
      {"x|)(exit)(|", "", bar},
      {"a\\b", "", bar},
      {"let", v1_word, v2_word},
      {"flet", v1_word, ""},
      {"implies", v1_word, ""},
      {"Array", v1_word, ""},
      {"iff", v1_word, ""},
      {"if_then_else", v1_word, ""},
      {"assert", "", v2_word},
      {"declare-fun", "", v2_word},
      {"!", "", v2_word},
      {"_", "", v2_word},
      {"true", v1_word, v2_theory},
      {"and", v1_word, v2_theory},
      {"+", "", v2_theory},
      {"=>", "", v2_theory},
      {"select", theory, theory},
      {"bvadd", theory, theory},
      {"ite", theory, theory},
      {"concat", theory, theory},
      {"bv5", "is a bit-vector numeral in SMT-LIB 1.2", ""},
      {"bv0", "is a bit-vector numeral in SMT-LIB 1.2", ""},
      {"bv90", "is a bit-vector numeral in SMT-LIB 1.2", ""},
      {"bv.5", "", ""},
      {"bv", "", ""},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(reasons(row.name).first, row.v1) << row.name;
    EXPECT_EQ(reasons(row.name).second, row.v2) << row.name;
  }
}

TEST(CheckNames, NamesThatFallTogetherInVersion1) {
  TermManager mgr;
  const Term* a = testing::make_bool(mgr, "a ");
  const Term* b = testing::make_bool(mgr, "a_h32_");
  const Term* c = testing::make_bool(mgr, "other");
  const Term* formula = mgr.make_and(a, mgr.make_and(c, b));
  EXPECT_EQ(problems(mgr, {formula}, true),
            (Problems{{"a ", "is written like 'a_h32_'"}, {"a_h32_", "is written like 'a '"}}));
  EXPECT_EQ(problems(mgr, {formula}, false), Problems{});
  // Alone each is fine, and what the terms do not mention does not count.
  EXPECT_EQ(problems(mgr, {a}, true), Problems{});
  EXPECT_EQ(problems(mgr, {b}, true), Problems{});
  EXPECT_EQ(problems(mgr, {a, b}, true).size(), 2U);
}

TEST(CheckNames, OrderIsThatOfTheTermsEachSymbolOnce) {
  TermManager mgr;
  const Term* a = testing::make_bool(mgr, "assert");
  const Term* b = testing::make_bool(mgr, "let");
  const Term* formula = mgr.make_or(b, mgr.make_and(a, b));
  const std::string word = "is a reserved word of SMT-LIB 2.6";
  EXPECT_EQ(problems(mgr, {formula}, false), (Problems{{"let", word}, {"assert", word}}));
  EXPECT_EQ(problems(mgr, {a, formula, a}, false), (Problems{{"assert", word}, {"let", word}}));
  EXPECT_EQ(problems(mgr, {}, false), Problems{});
}

TEST(CheckNames, InterpretedSymbolsAreNotChecked) {
  TermManager mgr;
  const Term* p = testing::make_bool(mgr, "p");
  EXPECT_EQ(problems(mgr, {mgr.make_and(p, mgr.make_true())}, false), Problems{});
  EXPECT_EQ(problems(mgr, {mgr.make_iff(p, mgr.make_true())}, true), Problems{});
}

TEST(CheckNames, EveryWordOfTheLanguagesIsKnown) {
  for (const char* word : {"!",
                           "_",
                           "as",
                           "BINARY",
                           "DECIMAL",
                           "exists",
                           "forall",
                           "HEXADECIMAL",
                           "let",
                           "match",
                           "NUMERAL",
                           "par",
                           "STRING",
                           "assert",
                           "check-sat",
                           "check-sat-assuming",
                           "declare-const",
                           "declare-datatype",
                           "declare-datatypes",
                           "declare-fun",
                           "declare-sort",
                           "define-const",
                           "define-fun",
                           "define-fun-rec",
                           "define-funs-rec",
                           "define-sort",
                           "echo",
                           "exit",
                           "get-assertions",
                           "get-assignment",
                           "get-info",
                           "get-model",
                           "get-option",
                           "get-proof",
                           "get-unsat-assumptions",
                           "get-unsat-core",
                           "get-value",
                           "pop",
                           "push",
                           "reset",
                           "reset-assertions",
                           "set-info",
                           "set-logic",
                           "set-option"}) {
    EXPECT_EQ(reasons(word).second, "is a reserved word of SMT-LIB 2.6") << word;
    EXPECT_TRUE(is_reserved_word(word)) << word;
  }
  for (const char* word :
       {"true",    "false",   "not",     "=>",      "and",     "or",      "xor",     "=",
        "-",       "+",       "*",       "/",       "div",     "mod",     "abs",     "<=",
        "<",       ">=",      ">",       "to_real", "to_int",  "is_int",  "repeat",  "bvnand",
        "bvnor",   "bvxnor",  "bvsmod",  "bvuge",   "bvugt",   "bvsge",   "bvsgt",   "bvnego",
        "bvuaddo", "bvsaddo", "bvumulo", "bvsmulo", "bvusubo", "bvssubo", "bvsdivo", "distinct"}) {
    EXPECT_THAT(reasons(word).second,
                ::testing::StartsWith("is a symbol of the theories of SMT-LIB"))
        << word;
    EXPECT_FALSE(is_reserved_word(word)) << word;
  }
  for (const char* word :
       {"benchmark", "true",         "false",  "not",    "and",    "or",     "xor",      "implies",
        "iff",       "if_then_else", "let",    "flet",   "forall", "exists", "distinct", "Int",
        "Real",      "Array",        "BitVec", "repeat", "bvnand", "bvnor",  "bvxnor",   "bvsmod",
        "bvuge",     "bvugt",        "bvsge",  "bvsgt",  "bvgeq",  "bvgt",   "bvleq",    "bvlt",
        "bvsgeq",    "bvsleq",       "bvslt",  "bit0",   "bit1",   "to_int", "to_real",  "is_int",
        "theory",    "logic",        "sat",    "unsat",  "unknown"}) {
    EXPECT_THAT(reasons(word).first, ::testing::AnyOf("is a word of SMT-LIB 1.2",
                                                      "is a symbol of the theories of SMT-LIB"))
        << word;
  }
}

TEST(CheckNames, ReservedWords) {
  EXPECT_TRUE(is_reserved_word("let"));
  EXPECT_TRUE(is_reserved_word("check-sat"));
  EXPECT_FALSE(is_reserved_word("LET"));
  EXPECT_FALSE(is_reserved_word(""));
  EXPECT_FALSE(is_reserved_word("and"));
}

TEST(CheckNames, DeepTermsNeedNoStack) {
  const std::size_t depth = testing::large_size(200'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* formula = testing::make_negations(mgr, testing::make_bool(mgr, "let"), depth);
    EXPECT_EQ(problems(mgr, {formula}, true).size(), 1U);
  });
}

TEST(CheckNames, SharedTermsAreLookedAtOnce) {
  TermManager mgr;
  const Term* formula = testing::make_bool(mgr, "let");
  for (int level = 0; level < 200; ++level) {
    formula = mgr.make_iff(formula, mgr.make_not(formula));
  }
  EXPECT_EQ(problems(mgr, {formula}, true).size(), 1U);
}

TEST(CheckNames, AreLookedAtWithoutTerms) {
  TermManager mgr;
  const Symbol* good = mgr.declare("x", mgr.get_int_type());
  const Symbol* word = mgr.declare("let", mgr.get_int_type());
  const Symbol* first = mgr.declare("a b", mgr.get_int_type());
  const Symbol* same_in_v1 = mgr.declare(v1_identifier("a b"), mgr.get_int_type());
  EXPECT_TRUE(check_names({good}, true).empty());
  EXPECT_TRUE(check_names({good, first, same_in_v1}, false).empty());
  const auto of_v2 = check_names({good, word, first}, false);
  ASSERT_EQ(of_v2.size(), 1U);
  EXPECT_EQ(of_v2[0].symbol, word);
  EXPECT_EQ(of_v2[0].reason, "is a reserved word of SMT-LIB 2.6");
  const auto of_v1 = check_names({same_in_v1, good, first}, true);
  ASSERT_EQ(of_v1.size(), 2U);
  EXPECT_EQ(of_v1[0].symbol, same_in_v1);
  EXPECT_EQ(of_v1[0].reason, "is written like 'a b'");
  EXPECT_EQ(of_v1[1].symbol, first);
}

}  // namespace
}  // namespace brum
