// Scripts that name several terms.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/symbol_collector.h"
#include "tests/printers/open_printers.h"
#include "tests/support/build_kind.h"
#include "tests/support/counting_stream.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::declarations;
using testing::make_bool;
using testing::make_int;
using testing::OpenPrinter2;
using testing::text_of;

const std::string source = "(set-info :source |printed by Brumlin|)\n";

std::string script(SmtLib2TermPrinter& printer, const std::vector<const Term*>& terms) {
  return text_of([&](std::ostream& out) { printer.print_terms(out, terms); });
}

std::string script_with_define_fun(TermManager& mgr, const std::vector<const Term*>& terms) {
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  return script(printer, terms);
}

std::string script_with_let(TermManager& mgr, const std::vector<const Term*>& terms) {
  SmtLib2TermPrinter printer(&mgr, "", "", false, nullptr);
  return script(printer, terms);
}

/// Negations written out.
std::string negations(std::size_t count, const std::string& inner) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "(not ";
  }
  return text + inner + std::string(count, ')');
}

TEST(PrintTerms, NoTermsGiveTheHeaderAndTrue) {
  TermManager mgr;
  EXPECT_EQ(script_with_define_fun(mgr, {}), source + "(assert true)\n");
  EXPECT_EQ(script_with_let(mgr, {}), source + "(assert true)\n");
  SmtLib2TermPrinter printer(&mgr, "QF_LIA", "sat", true, nullptr);
  EXPECT_EQ(script(printer, {}),
            "(set-logic QF_LIA)\n(set-info :status sat)\n" + source + "(assert true)\n");
}

TEST(PrintTerms, ASharedSubtermIsDefinedOnceBeforeTheFirstTerm) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  const Term* y = make_int(mgr, "y");
  const Term* sum = mgr.make_plus(x, y);      // 3
  const Term* first = mgr.make_leq(sum, x);   // 4
  const Term* second = mgr.make_leq(x, sum);  // 5
  const std::string declared =
      source + declarations({first, second},
                            {{x, "(declare-fun x () Int)\n"}, {y, "(declare-fun y () Int)\n"}});
  EXPECT_EQ(script_with_define_fun(mgr, {first, second}),
            declared +
                "(define-fun .def_3 () Int (+ x y))\n"
                "(define-fun .def_4 () Bool (<= .def_3 x))\n"
                "(define-fun .def_5 () Bool (<= x .def_3))\n"
                "(assert true)\n");
  EXPECT_EQ(script_with_let(mgr, {first, second}), declared +
                                                       "(assert (let ((.def_3 (+ x y)))\n"
                                                       "(let ((.def_4 (<= .def_3 x)))\n"
                                                       "(let ((.def_5 (<= x .def_3)))\n"
                                                       "true))))\n");
  EXPECT_EQ(script_with_define_fun(mgr, {second, first}),
            source +
                declarations({second, first},
                             {{x, "(declare-fun x () Int)\n"}, {y, "(declare-fun y () Int)\n"}}) +
                "(define-fun .def_3 () Int (+ x y))\n"
                "(define-fun .def_5 () Bool (<= x .def_3))\n"
                "(define-fun .def_4 () Bool (<= .def_3 x))\n"
                "(assert true)\n");
}

TEST(PrintTerms, AnUnsharedTermIsDefinedUnderItsLabel) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* term = mgr.make_not(mgr.make_not(p));
  EXPECT_EQ(script_with_define_fun(mgr, {term}),
            source +
                "(declare-fun p () Bool)\n(define-fun .def_3 () Bool (not (not p)))\n"
                "(assert true)\n");
  EXPECT_EQ(script_with_let(mgr, {term}),
            source + "(declare-fun p () Bool)\n(assert (let ((.def_3 (not (not p))))\ntrue))\n");
}

TEST(PrintTerms, ATermInsideAnotherIsDefinedOnce) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);        // 2
  const Term* outer = mgr.make_or(inner, p);  // 3
  const std::string expected = source +
                               "(declare-fun p () Bool)\n"
                               "(define-fun .def_2 () Bool (not p))\n"
                               "(define-fun .def_3 () Bool (or .def_2 p))\n"
                               "(assert true)\n";
  EXPECT_EQ(script_with_define_fun(mgr, {inner, outer}), expected);
  EXPECT_EQ(script_with_define_fun(mgr, {outer, inner}), expected);
}

TEST(PrintTerms, ACompoundTermListedTwiceIsDefinedOnce) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* term = mgr.make_not(p);
  EXPECT_EQ(
      script_with_define_fun(mgr, {term, term, term}),
      source + "(declare-fun p () Bool)\n(define-fun .def_2 () Bool (not p))\n(assert true)\n");
  EXPECT_EQ(script_with_let(mgr, {term, term}),
            source + "(declare-fun p () Bool)\n(assert (let ((.def_2 (not p)))\ntrue))\n");
}

TEST(PrintTerms, AConstantListedTwiceIsDefinedTwice) {
  TermManager mgr;
  const Term* x = make_int(mgr, "x");
  EXPECT_EQ(script_with_define_fun(mgr, {x, x}),
            source +
                "(declare-fun x () Int)\n(define-fun .def_1 () Int x)\n"
                "(define-fun .def_1 () Int x)\n(assert true)\n");
  EXPECT_EQ(
      script_with_let(mgr, {x, x}),
      source + "(declare-fun x () Int)\n(assert (let ((.def_1 x))\n(let ((.def_1 x))\ntrue)))\n");
}

TEST(PrintTerms, OtherTermsOfTheStoreDoNotShow) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);
  const Term* term = mgr.make_or(inner, p);
  mgr.make_and(inner, inner);
  EXPECT_EQ(script_with_define_fun(mgr, {term}),
            source +
                "(declare-fun p () Bool)\n(define-fun .def_3 () Bool (or (not p) p))\n"
                "(assert true)\n");
}

TEST(PrintTerms, SortsAreDeclaredBeforeSymbols) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* p = make_bool(mgr, "p");
  const Term* c = mgr.make_term(mgr.declare("c", a));
  const Term* same = mgr.make_equal(c, c);  // 3
  EXPECT_EQ(script_with_define_fun(mgr, {p, same}),
            source + "(declare-sort U0 0)\n" +
                declarations({p, same},
                             {{p, "(declare-fun p () Bool)\n"}, {c, "(declare-fun c () U0)\n"}}) +
                "(define-fun .def_1 () Bool p)\n(define-fun .def_3 () Bool (= c c))\n"
                "(assert true)\n");
}

/// Gives the declarations in the order of a set into which each term was collected by itself.
std::string declarations_term_by_term(TermManager& mgr, const std::vector<const Term*>& terms) {
  hsh::HashSet<const Symbol*> symbols;
  hsh::HashSet<const DataType*> sorts;
  for (const Term* term : terms) {
    TermPrinter::collect_symbols_and_types(term, symbols, sorts);
  }
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  return text_of([&](std::ostream& out) {
    for (const Symbol* symbol : symbols) {
      printer.print_symbol_declaration(out, symbol);
    }
  });
}

// A term that brings no symbol still asks for some, and makes a full set grow.
TEST(PrintTerms, DeclarationsStandAsIfEachTermWereWalkedOverByItself) {
  bool differs = false;
  for (std::size_t count = 15; count < 60; ++count) {
    SCOPED_TRACE(count);
    TermManager mgr;
    std::vector<const Term*> names;
    for (std::size_t i = 0; i < count; ++i) {
      names.push_back(make_bool(mgr, "p" + std::to_string(i)));
    }
    const Term* all = names[0];
    for (std::size_t i = 1; i < count; ++i) {
      all = mgr.make_and(all, names[i]);
    }
    const Term* last = names.back();
    const Term* late = mgr.make_or(make_bool(mgr, "q"), names[0]);  // what is new comes first
    const Term* early = mgr.make_or(names[0], make_bool(mgr, "r"));
    const std::vector<std::vector<const Term*>> lists = {
        {all}, {all, all}, {all, last}, {all, late}, {all, early}, {all, late, early}, {last, all}};
    for (const std::vector<const Term*>& list : lists) {
      const std::string text = script_with_define_fun(mgr, list);
      EXPECT_TRUE(text.starts_with(source + declarations_term_by_term(mgr, list) + "(define-fun"));
      hsh::HashSet<const Symbol*> once;
      hsh::HashSet<const DataType*> sorts;
      SymbolCollector collector(once, sorts);
      for (const Term* term : list) {
        collector.add_term(term);
      }
      differs = differs || once.is_full();
    }
  }
  EXPECT_TRUE(differs) << "no set was full at the end of a walk";
}

// The last term is walked over once more, each subterm once.
TEST(PrintTerms, AFullSetOfSymbolsCostsNoMoreForSharedSubterms) {
  TermManager mgr;
  const Term* shared = make_bool(mgr, "p0");
  for (int i = 1; i < 21; ++i) {
    shared = mgr.make_and(shared, make_bool(mgr, "p" + std::to_string(i)));
  }
  for (int i = 0; i < 60; ++i) {
    shared = mgr.make_and(shared, shared);
  }
  const std::vector<const Term*> list = {shared, shared};  // 22 symbols, `and` included
  EXPECT_TRUE(script_with_define_fun(mgr, list).starts_with(
      source + declarations_term_by_term(mgr, list) + "(define-fun"));
}

TEST(PrintTerms, ALongTextIsDefinedBeforeItIsCopied) {
  // k negations around a name of n letters have 6 k + n bytes: 4096 for 682 and 4.
  TermManager mgr;
  const Term* four = make_bool(mgr, "pppp");                       // 1
  const Term* at_limit = testing::make_negations(mgr, four, 682);  // 683
  const Term* above = mgr.make_not(at_limit);                      // 684
  const Term* twice_above = mgr.make_not(above);                   // 685
  const std::string declared = source + "(declare-fun pppp () Bool)\n";
  EXPECT_EQ(
      script_with_define_fun(mgr, {at_limit}),
      declared + "(define-fun .def_683 () Bool " + negations(682, "pppp") + ")\n(assert true)\n");
  // Within the limit a subterm stays inline; the longer term itself gets its definition once.
  EXPECT_EQ(
      script_with_define_fun(mgr, {above}),
      declared + "(define-fun .def_684 () Bool " + negations(683, "pppp") + ")\n(assert true)\n");
  EXPECT_EQ(script_with_define_fun(mgr, {twice_above}),
            declared + "(define-fun .def_684 () Bool " + negations(683, "pppp") +
                ")\n(define-fun .def_685 () Bool (not .def_684))\n(assert true)\n");
  EXPECT_EQ(script_with_let(mgr, {twice_above}),
            declared + "(assert (let ((.def_684 " + negations(683, "pppp") +
                "))\n(let ((.def_685 (not .def_684)))\ntrue)))\n");
}

TEST(PrintTerms, LabelsKeepClearOfUserSymbols) {
  TermManager mgr;
  const Term* p = make_bool(mgr, ".def_2");
  const Term* term = mgr.make_not(p);
  EXPECT_EQ(script_with_define_fun(mgr, {term, term}),
            source +
                "(declare-fun .def_2 () Bool)\n(define-fun .def_2_ () Bool (not .def_2))\n"
                "(assert true)\n");
}

TEST(PrintTerms, AttributesStandInTheDefinitions) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* term = mgr.make_not(p);
  AnnotationMap attributes;
  attributes[term] = {{"named", "n"}};
  SmtLib2TermPrinter printer(&mgr, "", "", true, &attributes);
  EXPECT_EQ(script(printer, {term}),
            source +
                "(declare-fun p () Bool)\n(define-fun .def_2 () Bool (! (not p) :named n))\n"
                "(assert true)\n");
}

TEST(PrintTerms, NothingCarriesOverToTheNextScript) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);
  const Term* outer = mgr.make_and(inner, inner);
  for (const bool define_fun : {true, false}) {
    OpenPrinter2 printer(&mgr, "", "", define_fun, nullptr);
    const std::string first = script(printer, {inner, outer});
    EXPECT_EQ(script(printer, {inner, outer}), first);
    EXPECT_EQ(printer.open_lets, 0);
    EXPECT_TRUE(printer.trace_definitions.empty());
  }
}

TEST(PrintTerms, AnExceptionLeavesAPrinterThatWorks) {
  TermManager mgr;
  const Term* p = make_bool(mgr, "p");
  const Term* inner = mgr.make_not(p);
  const Term* outer = mgr.make_and(inner, inner);  // 3
  const Term* foo = mgr.make_term(mgr.declare_interpreted("foo", p->sort()));
  OpenPrinter2 printer(&mgr, "", "", false, nullptr);
  std::ostringstream out;
  EXPECT_EQ(testing::error_of([&] {
              printer.print_terms(out, {outer, foo});
            }),
            "can't print interpreted symbol fooin SMT-LIB format");
  EXPECT_EQ(out.str(), source +
                           "(declare-fun p () Bool)\n(assert (let ((.def_2 (not p)))\n"
                           "(let ((.def_3 (and .def_2 .def_2)))\n");
  EXPECT_EQ(printer.open_lets, 2);
  EXPECT_EQ(script(printer, {inner}),
            source + "(declare-fun p () Bool)\n(assert (let ((.def_2 (not p)))\ntrue))\n");
  EXPECT_EQ(printer.open_lets, 0);
}

TEST(PrintTerms, TextIsLinearInTheTermsOfTheList) {
  // Each term of the list holds the one before twice.
  std::size_t bytes[2];
  const std::size_t sizes[2] = {testing::large_size(10'000), testing::large_size(100'000)};
  for (int i = 0; i < 2; ++i) {
    testing::run_on_small_stack([&] {
      TermManager mgr;
      std::vector<const Term*> terms = {make_int(mgr, "x")};
      while (terms.size() < sizes[i]) {
        terms.push_back(mgr.make_plus(terms.back(), terms.back()));
      }
      SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
      testing::CountingStream out;
      printer.print_terms(out, terms);
      EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
      bytes[i] = out.counts.bytes;
    });
  }
  EXPECT_LT(bytes[1], bytes[0] * 12);  // labels have one digit more
}

TEST(PrintTerms, DeepListedTermsNeedNoStack) {
  const std::size_t depth = testing::large_size(200'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const Term* term = testing::make_negations(mgr, make_bool(mgr, "p"), depth);
    SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
    testing::CountingStream out;
    printer.print_terms(out, {term});
    EXPECT_EQ(out.counts.open_brackets, out.counts.close_brackets);
    EXPECT_LT(out.counts.bytes, depth * 7);  // 6 bytes a negation and few definitions
  });
}

}  // namespace
}  // namespace brum
