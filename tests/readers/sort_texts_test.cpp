#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "brum/readers/smtlib1_reader.h"
#include "tests/readers/reading.h"

namespace brum::testing {

namespace {

constexpr int depth = 60;

/// A sort of 2^60 components when it is written out.
const DataType* make_shared_sort(TermManager& mgr) {
  const DataType* sort = mgr.get_int_type();
  for (int i = 0; i < depth; ++i)
    sort = mgr.make_array_type(sort, sort);
  return sort;
}

/// Defines that sort as S60 and declares `a` of it, in one line.
std::string declarations() {
  std::string text = "(define-sort S0 () Int)";
  for (int i = 1; i <= depth; ++i) {
    const std::string below = "S" + std::to_string(i - 1);
    text += "(define-sort S" + std::to_string(i) + " () (Array " + below + ' ' + below + "))";
  }
  return text + "(declare-const a S60)";
}

}  // namespace

TEST(SortTexts, ErrorsShowABoundedPartOfASharedSort) {
  TermManager mgr;
  const DataType* const shared = make_shared_sort(mgr);
  const std::string sort = shared->to_short_str();
  const std::string item = shared->get_component(0)->to_short_str();
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"(assert a)", "2:9: error: found a term of sort " + sort + ", expected Bool"},
      {"(assert (not a))", "2:9: error: found " + sort + " as argument 1 of not, expected Bool"},
      {"(assert (= a 1))", "2:9: error: found Int as argument 2 of =, expected " + sort},
      {"(assert (= 1 a))", "2:9: error: found " + sort + " as argument 2 of =, expected Int"},
      {"(assert (distinct a 1))",
       "2:9: error: found Int as argument 2 of distinct, expected " + sort},
      {"(assert (<= a 1))",
       "2:9: error: found " + sort + " as argument 1 of <=, expected Int or Real"},
      {"(assert (div a 1))", "2:9: error: found " + sort + " as argument 1 of div, expected Int"},
      {"(assert (bvult a #b1))",
       "2:9: error: found " + sort + " as argument 1 of bvult, expected a bit-vector"},
      {"(assert (ite a a a))",
       "2:9: error: found " + sort + " as argument 1 of ite, expected Bool"},
      {"(assert (ite true a 1))", "2:9: error: found Int as argument 3 of ite, expected " + sort},
      {"(assert (ite true 1 a))",
       "2:9: error: found " + sort + " as argument 3 of ite, expected Int"},
      {"(assert (select a 1))", "2:9: error: found Int as argument 2 of select, expected " + item},
      {"(assert (store a a a))",
       "2:9: error: found " + sort + " as argument 2 of store, expected " + item},
      {"(declare-fun f (S60) Bool)(assert (f 1))",
       "2:35: error: found Int as argument 1 of f, expected " + sort},
      {"(declare-fun f (Int) Bool)(assert (f a))",
       "2:35: error: found " + sort + " as argument 1 of f, expected Int"},
      {"(define-fun f ((x S60)) Bool true)(assert (f 1))",
       "2:43: error: found Int as argument 1 of f, expected " + sort},
      {"(define-fun f ((x Int)) Bool true)(assert (f a))",
       "2:43: error: found " + sort + " as argument 1 of f, expected Int"},
      {"(define-fun f () Int a)", "2:22: error: found a term of sort " + sort + ", expected Int"},
      {"(define-fun f () S60 1)", "2:22: error: found a term of sort Int, expected " + sort},
      {"(assert (as a Int))", "2:13: error: found a term of sort " + sort + ", expected Int"},
      {"(assert ((as not S60) true))",
       "2:14: error: found not as " + sort + ", expected a function with this result"},
  };
  for (const auto& [text, message] : rows)
    EXPECT_EQ(error_of(declarations() + '\n' + text), "input:" + message) << text;
}

TEST(SortTexts, ErrorsOfBenchmarksShowABoundedPartOfASharedSort) {
  TermManager mgr;
  hsh::HashMap<std::string, const DataType*> sorts;
  sorts["S"] = make_shared_sort(mgr);
  const std::string sort = sorts["S"]->to_short_str();
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"(not a)", "found " + sort + " as argument 1 of not, expected Bool"},
      {"(flet ($x a) $x)", "found a term of sort " + sort + " for $x, expected Bool"},
      {"a", "found a term of sort " + sort + ", expected a formula"},
  };
  for (const auto& [text, message] : rows) {
    std::istringstream in("(benchmark b :extrasorts (S) :extrafuns ((a S))\n:formula " + text +
                          ')');
    ReaderOptions options;
    options.sorts = &sorts;
    Script script;
    std::string found = "no error";
    try {
      SmtLib1Reader(mgr, options).read(in, script);
    } catch (const ReadError& error) {
      found = error.what();
    }
    EXPECT_NE(found.find(message), std::string::npos) << text;
  }
}

}  // namespace brum::testing
