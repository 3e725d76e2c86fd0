#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "brum/printers/smtlib2_term_printer.h"
#include "brum/printers/smtlib_term_printer.h"
#include "tests/printers/open_printers.h"
#include "tests/support/build_kind.h"
#include "tests/support/formulas.h"
#include "tests/support/small_stack.h"

namespace brum {
namespace {

using testing::document;
using testing::error_of;
using testing::OpenPrinter;
using testing::text_of;

std::string declare(TermPrinter& printer, const DataType* sort) {
  return text_of([&](std::ostream& out) { printer.print_type_declaration(out, sort); });
}

std::string declare(TermPrinter& printer, const Symbol* symbol) {
  return text_of([&](std::ostream& out) { printer.print_symbol_declaration(out, symbol); });
}

TEST(SmtLibSorts, TextsByValue) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  const DataType* byte = mgr.make_bv_type(8);
  const DataType* word = mgr.make_bv_type(32);
  const struct {
    const DataType* sort;
    const char* v1;
    const char* v2;
  } rows[] = {
      {integer, "Int", "Int"},
      {real, "Real", "Real"},
      {byte, "BitVec[8]", "(_ BitVec 8)"},
      {mgr.make_bv_type(18446744073709551615U), "BitVec[18446744073709551615]",
       "(_ BitVec 18446744073709551615)"},
      {mgr.make_array_type(integer, integer), "Array", "(Array Int Int)"},
      {mgr.make_array_type(word, byte), "Array[32:8]", "(Array (_ BitVec 32) (_ BitVec 8))"},
      {mgr.make_function_type({integer, integer}, real), "Int Int Real", ""},
      {mgr.make_function_type({integer}, boolean), "Int ", ""},
      {mgr.make_function_type({byte, mgr.make_array_type(integer, integer)}, word),
       "BitVec[8] Array BitVec[32]", ""},
      {mgr.make_uninterpreted_type("A"), "", ""},  // never declared
  };
  for (const auto& row : rows) {
    for (const bool v1 : {true, false}) {
      OpenPrinter printer(v1, &mgr, "", "");
      const std::string expected = v1 ? row.v1 : row.v2;
      EXPECT_EQ(printer.to_smtlib(row.sort), expected);
      // Kept, the empty text too.
      const auto kept = printer.type_names.find(row.sort);
      ASSERT_NE(kept, printer.type_names.end()) << row.sort->to_str();
      EXPECT_EQ(kept->second, expected);
      EXPECT_EQ(printer.to_smtlib(row.sort), expected);
    }
  }
}

TEST(SmtLibSorts, NestedArraysHaveATextInVersion2) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* inner = mgr.make_array_type(integer, mgr.get_bool_type());
  const DataType* outer =
      mgr.make_array_type(inner, mgr.make_array_type(mgr.make_bv_type(4), inner));
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(printer.to_smtlib(outer),
            "(Array (Array Int Bool) (Array (_ BitVec 4) (Array Int Bool)))");
  EXPECT_EQ(printer.to_smtlib(inner), "(Array Int Bool)");
}

TEST(SmtLibSorts, ComponentsAreKeptToo) {
  TermManager mgr;
  const DataType* byte = mgr.make_bv_type(8);
  OpenPrinter v2(false, &mgr, "", "");
  v2.to_smtlib(mgr.make_array_type(byte, mgr.get_int_type()));
  EXPECT_EQ(v2.type_names[byte], "(_ BitVec 8)");
  OpenPrinter v1(true, &mgr, "", "");
  v1.to_smtlib(mgr.make_function_type({byte}, mgr.get_int_type()));
  EXPECT_EQ(v1.type_names[byte], "BitVec[8]");
}

TEST(SmtLibSorts, AKeptTextStays) {
  TermManager mgr;
  const DataType* byte = mgr.make_bv_type(8);
  OpenPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(printer.to_smtlib(byte), "(_ BitVec 8)");
  printer.type_names[byte] = "kept";
  EXPECT_EQ(printer.to_smtlib(byte), "kept");
}

TEST(SmtLibSorts, Version1RefusesWhatItCannotExpress) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  const DataType* word = mgr.make_bv_type(32);
  const DataType* sort = mgr.make_uninterpreted_type("Node");
  const char* no_bool = "SMT-LIB v1 format doesn't have an explicit Bool type";
  const struct {
    const DataType* sort;
    const char* message;
  } rows[] = {
      {boolean, no_bool},
      {mgr.make_function_type({boolean}, integer), no_bool},
      {mgr.make_function_type({integer, boolean}, boolean), no_bool},
      {mgr.make_array_type(integer, real), "unsupported index type for Array: Int"},
      {mgr.make_array_type(real, integer), "unsupported index type for Array: Real"},
      {mgr.make_array_type(integer, word), "unsupported index type for Array: Int"},
      {mgr.make_array_type(boolean, word), "unsupported index type for Array: Bool"},
      {mgr.make_array_type(sort, word), "unsupported index type for Array: Node"},
      {mgr.make_array_type(mgr.make_array_type(integer, integer), word),
       "unsupported index type for Array: (Array Int Int)"},
      // This message names the index sort as well.
      {mgr.make_array_type(word, integer), "unsupported element type for Array: (_ BitVec 32)"},
      {mgr.make_array_type(word, boolean), "unsupported element type for Array: (_ BitVec 32)"},
      {mgr.make_array_type(word, mgr.make_array_type(word, word)),
       "unsupported element type for Array: (_ BitVec 32)"},
      {mgr.make_function_type({mgr.make_array_type(word, integer)}, integer),
       "unsupported element type for Array: (_ BitVec 32)"},
  };
  for (const auto& row : rows) {
    OpenPrinter printer(true, &mgr, "", "");
    for (int times = 0; times < 2; ++times) {
      EXPECT_EQ(error_of([&] { printer.to_smtlib(row.sort); }), row.message);
      EXPECT_EQ(printer.type_names.find(row.sort), printer.type_names.end());
    }
  }
}

TEST(SmtLibSorts, DeclarationsInventNamesInTheOrderOfTheCalls) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* b = mgr.make_uninterpreted_type("U0");
  const DataType* c = mgr.make_uninterpreted_type("x y");
  OpenPrinter v1(true, &mgr, "", "");
  EXPECT_EQ(declare(v1, b), ":extrasorts (U0)\n");
  EXPECT_EQ(declare(v1, a), ":extrasorts (U1)\n");
  EXPECT_EQ(declare(v1, c), ":extrasorts (U2)\n");
  EXPECT_EQ(v1.to_smtlib(a), "U1");
  EXPECT_EQ(v1.to_smtlib(b), "U0");
  EXPECT_EQ(v1.to_smtlib(c), "U2");
  EXPECT_EQ(v1.sort_counter, 3);
  OpenPrinter v2(false, &mgr, "", "");
  EXPECT_EQ(declare(v2, b), "(declare-sort U0 0)\n");
  EXPECT_EQ(declare(v2, a), "(declare-sort U1 0)\n");
  EXPECT_EQ(declare(v2, c), "(declare-sort U2 0)\n");
  EXPECT_EQ(v2.to_smtlib(a), "U1");
  EXPECT_EQ(v2.sort_counter, 3);
}

TEST(SmtLibSorts, ASortDeclaredAgainGetsANewName) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(declare(printer, a), "(declare-sort U0 0)\n");
  EXPECT_EQ(declare(printer, a), "(declare-sort U1 0)\n");
  EXPECT_EQ(printer.to_smtlib(a), "U1");
}

TEST(SmtLibSorts, BuiltInSortsNeedNoDeclaration) {
  TermManager mgr;
  const DataType* rows[] = {
      mgr.get_bool_type(),
      mgr.get_int_type(),
      mgr.get_real_type(),
      mgr.make_bv_type(8),
      mgr.make_array_type(mgr.get_int_type(), mgr.make_uninterpreted_type("A")),
  };
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    for (const DataType* sort : rows) {
      EXPECT_EQ(declare(printer, sort), "");
    }
    EXPECT_EQ(printer.sort_counter, 0);
  }
}

TEST(SmtLibSorts, SymbolDeclarationsByValue) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  const DataType* word = mgr.make_bv_type(32);
  const DataType* byte = mgr.make_bv_type(8);
  const DataType* sort = mgr.make_uninterpreted_type("A");
  const struct {
    const char* name;
    const DataType* type;
    const char* v1;
    const char* v2;
  } rows[] = {
      {"c", integer, ":extrafuns ((c Int))\n", "(declare-fun c () Int)\n"},
      {"b", boolean, ":extrapreds ((b))\n", "(declare-fun b () Bool)\n"},
      {"f", mgr.make_function_type({integer, integer}, real), ":extrafuns ((f Int Int Real))\n",
       "(declare-fun f (Int Int) Real)\n"},
      {"p", mgr.make_function_type({integer}, boolean), ":extrapreds ((p Int ))\n",
       "(declare-fun p (Int) Bool)\n"},
      {"q", mgr.make_function_type({integer, real}, boolean), ":extrapreds ((q Int Real ))\n",
       "(declare-fun q (Int Real) Bool)\n"},
      {"x", word, ":extrafuns ((x BitVec[32]))\n", "(declare-fun x () (_ BitVec 32))\n"},
      {"a", mgr.make_array_type(word, byte), ":extrafuns ((a Array[32:8]))\n",
       "(declare-fun a () (Array (_ BitVec 32) (_ BitVec 8)))\n"},
      {"m", mgr.make_array_type(integer, integer), ":extrafuns ((m Array))\n",
       "(declare-fun m () (Array Int Int))\n"},
      {"s", sort, ":extrafuns ((s U0))\n", "(declare-fun s () U0)\n"},
      {"g", mgr.make_function_type({sort, integer}, sort), ":extrafuns ((g U0 Int U0))\n",
       "(declare-fun g (U0 Int) U0)\n"},
      {"1 x", integer, ":extrafuns ((_1_h32_x Int))\n", "(declare-fun |1 x| () Int)\n"},
      {"", boolean, ":extrapreds ((_))\n", "(declare-fun  () Bool)\n"},
  };
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &mgr, "", "");
    declare(printer, sort);
    for (const auto& row : rows) {
      EXPECT_EQ(declare(printer, mgr.declare(row.name, row.type)), v1 ? row.v1 : row.v2);
    }
  }
}

TEST(SmtLibSorts, Version2DeclaresWhatVersion1Refuses) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(declare(printer, mgr.declare("f", mgr.make_function_type({boolean}, integer))),
            "(declare-fun f (Bool) Int)\n");
  EXPECT_EQ(declare(printer, mgr.declare("m", mgr.make_array_type(integer, boolean))),
            "(declare-fun m () (Array Int Bool))\n");
}

TEST(SmtLibSorts, InterpretedSymbolsAreNeverDeclared) {
  TermManager mgr;
  const Symbol* rows[] = {
      mgr.get_and_symbol(),
      mgr.get_true_symbol(),
      mgr.get_int_plus_symbol(),
      mgr.make_number(3)->symbol,
      mgr.declare_interpreted("foo", mgr.get_int_type()),
  };
  for (const bool v1 : {true, false}) {
    SmtLibTermPrinter printer(v1, &mgr, "", "");
    for (const Symbol* symbol : rows) {
      EXPECT_EQ(declare(printer, symbol), "");
    }
  }
}

TEST(SmtLibSorts, NothingIsDeclaredForASingleTerm) {
  TermManager mgr;
  const DataType* sort = mgr.make_uninterpreted_type("A");
  const Symbol* s = mgr.declare("s", sort);
  for (const bool v1 : {true, false}) {
    OpenPrinter printer(v1, &mgr, "", "");
    printer.single_term = true;
    EXPECT_EQ(declare(printer, sort), "");
    EXPECT_EQ(declare(printer, s), "");
    EXPECT_EQ(printer.sort_counter, 0);
    printer.single_term = false;
    EXPECT_EQ(testing::single_term(printer, mgr.make_term(s)), "s");
    EXPECT_EQ(printer.sort_counter, 0);
  }
}

TEST(SmtLibSorts, ARefusedDeclarationLeavesTheOpeningAndTheName) {
  TermManager mgr;
  const DataType* boolean = mgr.get_bool_type();
  const DataType* integer = mgr.get_int_type();
  const struct {
    const char* name;
    const DataType* type;
    const char* written;
    const char* message;
  } rows[] = {
      {"f", mgr.make_function_type({boolean}, integer), ":extrafuns ((f",
       "SMT-LIB v1 format doesn't have an explicit Bool type"},
      {"p", mgr.make_function_type({integer, boolean}, boolean), ":extrapreds ((p",
       "SMT-LIB v1 format doesn't have an explicit Bool type"},
      {"m", mgr.make_array_type(integer, mgr.get_real_type()), ":extrafuns ((m",
       "unsupported index type for Array: Int"},
      {"n", mgr.make_array_type(mgr.make_bv_type(32), integer), ":extrafuns ((n",
       "unsupported element type for Array: (_ BitVec 32)"},
  };
  for (const auto& row : rows) {
    SmtLibTermPrinter printer(true, &mgr, "", "");
    std::ostringstream out;
    const Symbol* symbol = mgr.declare(row.name, row.type);
    EXPECT_EQ(error_of([&] { printer.print_symbol_declaration(out, symbol); }), row.message);
    EXPECT_EQ(out.str(), row.written);
  }
}

// Sort names go on from document to document, and every text with a renamed sort in it follows.

TEST(SmtLibSorts, NumberingGoesOnOverDocuments) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* c = mgr.make_term(mgr.declare("c", a));
  const Term* formula = mgr.make_equal(c, c);
  SmtLibTermPrinter v1(true, &mgr, "", "");
  SmtLibTermPrinter v2(false, &mgr, "", "");
  for (const std::string name : {"U0", "U1", "U2"}) {
    EXPECT_EQ(document(v1, formula),
              "(benchmark unnamed\n:source { printed by Brumlin }\n:extrasorts (" + name +
                  ")\n:extrafuns ((c " + name + "))\n\n:formula\n\n(= c c)\n\n)\n");
    EXPECT_EQ(document(v2, formula), "(set-info :source |printed by Brumlin|)\n(declare-sort " +
                                         name + " 0)\n(declare-fun c () " + name +
                                         ")\n(assert\n(= c c)\n)\n");
  }
}

TEST(SmtLibSorts, TextsOfSortsMadeOfARenamedSortFollow) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* arrays = mgr.make_array_type(mgr.get_int_type(), a);
  const DataType* nested = mgr.make_array_type(a, arrays);
  const Symbol* f = mgr.declare("f", mgr.make_function_type({a, nested}, arrays));
  SmtLibTermPrinter printer(false, &mgr, "", "");
  declare(printer, a);
  EXPECT_EQ(printer.to_smtlib(nested), "(Array U0 (Array Int U0))");
  EXPECT_EQ(declare(printer, f), "(declare-fun f (U0 (Array U0 (Array Int U0))) (Array Int U0))\n");
  declare(printer, a);
  EXPECT_EQ(printer.to_smtlib(arrays), "(Array Int U1)");
  EXPECT_EQ(declare(printer, f), "(declare-fun f (U1 (Array U1 (Array Int U1))) (Array Int U1))\n");
  EXPECT_EQ(printer.to_smtlib(nested), "(Array U1 (Array Int U1))");
}

TEST(SmtLibSorts, TextsOfFunctionTypesFollowInVersion1) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* b = mgr.make_uninterpreted_type("B");
  const Symbol* f = mgr.declare("f", mgr.make_function_type({a, b, mgr.get_int_type()}, a));
  const Symbol* p = mgr.declare("p", mgr.make_function_type({b}, mgr.get_bool_type()));
  SmtLibTermPrinter printer(true, &mgr, "", "");
  declare(printer, a);
  declare(printer, b);
  EXPECT_EQ(declare(printer, f), ":extrafuns ((f U0 U1 Int U0))\n");
  EXPECT_EQ(declare(printer, p), ":extrapreds ((p U1 ))\n");
  declare(printer, b);
  EXPECT_EQ(declare(printer, f), ":extrafuns ((f U0 U2 Int U0))\n");
  EXPECT_EQ(declare(printer, p), ":extrapreds ((p U2 ))\n");
  declare(printer, a);
  EXPECT_EQ(declare(printer, f), ":extrafuns ((f U3 U2 Int U3))\n");
}

TEST(SmtLibSorts, ATextAskedForTooEarlyIsPutRight) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* arrays = mgr.make_array_type(a, mgr.get_int_type());
  SmtLibTermPrinter v2(false, &mgr, "", "");
  EXPECT_EQ(v2.to_smtlib(arrays), "(Array  Int)");
  EXPECT_EQ(v2.to_smtlib(a), "");
  EXPECT_EQ(declare(v2, a), "(declare-sort U0 0)\n");
  EXPECT_EQ(v2.to_smtlib(a), "U0");
  EXPECT_EQ(v2.to_smtlib(arrays), "(Array U0 Int)");
  SmtLibTermPrinter v1(true, &mgr, "", "");
  const DataType* function = mgr.make_function_type({a}, a);
  EXPECT_EQ(v1.to_smtlib(function), " ");
  declare(v1, a);
  EXPECT_EQ(v1.to_smtlib(function), "U0 U0");
}

TEST(SmtLibSorts, SecondDocumentWithArraysIsWhole) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(mgr.get_int_type(), a)));
  const Term* formula = mgr.make_equal(m, m);
  SmtLibTermPrinter printer(false, &mgr, "", "");
  EXPECT_EQ(document(printer, formula),
            "(set-info :source |printed by Brumlin|)\n(declare-sort U0 0)\n"
            "(declare-fun m () (Array Int U0))\n(assert\n(= m m)\n)\n");
  EXPECT_EQ(document(printer, formula),
            "(set-info :source |printed by Brumlin|)\n(declare-sort U1 0)\n"
            "(declare-fun m () (Array Int U1))\n(assert\n(= m m)\n)\n");
}

TEST(SmtLibSorts, DefinitionsOfTheSecondScriptUseTheNewNames) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(mgr.get_int_type(), a)));
  const Term* read = mgr.make_select(m, mgr.make_number(0));
  const Term* stored = mgr.make_store(m, mgr.make_number(1), read);
  ASSERT_EQ(stored->id, 5U);
  const Term* formula = mgr.make_equal(stored, stored);
  SmtLib2TermPrinter printer(&mgr, "", "", true, nullptr);
  for (const char* name : {"U0", "U1"}) {
    const std::string sort = name;
    EXPECT_EQ(document(printer, formula),
              "(set-info :source |printed by Brumlin|)\n(declare-sort " + sort +
                  " 0)\n(declare-fun m () (Array Int " + sort +
                  "))\n(define-fun .def_5 () (Array Int " + sort +
                  ") (store m 1 (select m 0)))\n(assert (= .def_5 .def_5))\n");
  }
}

TEST(SmtLibSorts, EveryUninterpretedSortIsDeclaredOnceBeforeItsUse) {
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  const DataType* b = mgr.make_uninterpreted_type("B");
  const DataType* c = mgr.make_uninterpreted_type("C");
  const Symbol* f = mgr.declare("f", mgr.make_function_type({a, mgr.make_array_type(b, c)}, a));
  const Term* x = mgr.make_term(mgr.declare("x", a));
  const Term* m = mgr.make_term(mgr.declare("m", mgr.make_array_type(b, c)));
  const Term* formula = mgr.make_equal(mgr.make_term(f, {x, m}), x);
  SmtLibTermPrinter printer(false, &mgr, "", "");
  const std::string text = document(printer, formula);
  const std::string start =
      "(set-info :source |printed by Brumlin|)\n"
      "(declare-sort U0 0)\n(declare-sort U1 0)\n(declare-sort U2 0)\n(declare-fun ";
  EXPECT_EQ(text.substr(0, start.size()), start);
  EXPECT_EQ(text.find("(declare-sort", start.size()), std::string::npos);
  for (const DataType* sort : {a, b, c}) {
    const std::string name = printer.to_smtlib(sort);
    EXPECT_TRUE(name == "U0" || name == "U1" || name == "U2") << name;
  }
}

TEST(SmtLibSorts, DeepArraySortsNeedNoStackAndLinearSpace) {
  const std::size_t depth = testing::large_size(200'000);
  testing::run_on_small_stack([&] {
    TermManager mgr;
    const DataType* a = mgr.make_uninterpreted_type("A");
    const DataType* sort = a;
    for (std::size_t i = 0; i < depth; ++i) {
      sort = i % 2 == 0 ? mgr.make_array_type(mgr.get_int_type(), sort)
                        : mgr.make_array_type(sort, mgr.get_int_type());
    }
    OpenPrinter printer(false, &mgr, "", "");
    for (const char* name : {"U0", "U1"}) {
      testing::text_of([&](std::ostream& out) { printer.print_type_declaration(out, a); });
      const std::string text = printer.to_smtlib(sort);
      EXPECT_EQ(text.size(), 2 + depth * 12);  // "(Array Int )" around each
      EXPECT_NE(text.find(name), std::string::npos);
    }
    std::size_t kept_bytes = 0;
    for (const auto& [kept, text] : printer.type_names) {
      kept_bytes += text.size();
    }
    EXPECT_LT(kept_bytes, depth * 100);
    // In version 1 the refusal needs none either.
    SmtLibTermPrinter v1(true, &mgr, "", "");
    EXPECT_EQ(error_of([&] { v1.to_smtlib(sort); }).substr(0, 46),
              "unsupported index type for Array: (Array Int (");
  });
}

TEST(SmtLibSorts, ManyFunctionsOverOneSortFollowInOnePass) {
  // Each document renames the sort; the texts of all functions over it are put right.
  TermManager mgr;
  const DataType* a = mgr.make_uninterpreted_type("A");
  std::vector<const Symbol*> functions;
  std::vector<const DataType*> arguments;
  for (int i = 0; i < 60; ++i) {
    arguments.push_back(a);
    functions.push_back(mgr.declare("f" + std::to_string(i), mgr.make_function_type(arguments, a)));
  }
  SmtLibTermPrinter printer(true, &mgr, "", "");
  for (int round = 0; round < 3; ++round) {
    declare(printer, a);
    const std::string name = "U" + std::to_string(round);
    std::string expected = name;
    for (const Symbol* f : functions) {
      expected += " " + name;
      EXPECT_EQ(printer.to_smtlib(f->type), expected);
    }
  }
}

}  // namespace
}  // namespace brum
