#include <gtest/gtest.h>

#include <string>

#include "brum/terms/term_manager.h"
#include "tests/terms/term_checks.h"

namespace brum {
namespace {

using testing::expect_refused;

TEST(TermManagerSorts, SameArgumentsGiveTheSameSort) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* real = mgr.get_real_type();
  EXPECT_EQ(mgr.make_bv_type(8), mgr.make_bv_type(8));
  EXPECT_NE(mgr.make_bv_type(8), mgr.make_bv_type(9));
  EXPECT_EQ(mgr.make_uninterpreted_type("A"), mgr.make_uninterpreted_type("A"));
  EXPECT_NE(mgr.make_uninterpreted_type("A"), mgr.make_uninterpreted_type("B"));
  EXPECT_NE(mgr.make_uninterpreted_type("Int"), integer);
  EXPECT_EQ(mgr.make_array_type(integer, real), mgr.make_array_type(integer, real));
  EXPECT_NE(mgr.make_array_type(integer, real), mgr.make_array_type(real, integer));
  EXPECT_EQ(mgr.make_function_type({integer, real}, real),
            mgr.make_function_type({integer, real}, real));
  EXPECT_NE(mgr.make_function_type({integer}, real), mgr.make_function_type({real}, integer));
  EXPECT_NE(mgr.make_function_type({integer}, real), mgr.make_array_type(integer, real));
}

TEST(TermManagerSorts, WrongArgumentsThrow) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* function = mgr.make_function_type({integer}, integer);
  expect_refused(
      mgr,
      {
          {[&] { mgr.make_bv_type(0); }, "BitVec: a width of 0 bits, expected at least 1"},
          {[&] { mgr.make_array_type(function, integer); },
           "Array: (-> Int Int) is a function type, expected a sort of terms"},
          {[&] { mgr.make_array_type(integer, function); },
           "Array: (-> Int Int) is a function type, expected a sort of terms"},
          {[&] { mgr.make_array_type(nullptr, integer); }, "Array: a sort is null"},
          {[&] { mgr.make_array_type(integer, nullptr); }, "Array: a sort is null"},
          {[&] { mgr.make_function_type({}, integer); },
           "function type: no argument, expected at least one"},
          {[&] { mgr.make_function_type({function}, integer); },
           "function type: (-> Int Int) is a function type, expected a sort of terms"},
          {[&] { mgr.make_function_type({integer}, function); },
           "function type: (-> Int Int) is a function type, expected a sort of terms"},
          {[&] {
             mgr.make_function_type({integer, nullptr}, integer);
           },
           "function type: a sort is null"},
          {[&] { mgr.make_function_type({integer}, nullptr); }, "function type: a sort is null"},
          {[&] { mgr.make_uninterpreted_type(std::string("a\0b", 3)); },
           "sort: the name holds a NUL byte"},
      });
}

TEST(TermManagerDeclarations, SymbolsCarryNameArityAndSort) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const DataType* predicate = mgr.make_function_type({integer, integer}, mgr.get_bool_type());
  const Symbol* x = mgr.declare("x", integer);
  EXPECT_STREQ(x->name, "x");
  EXPECT_EQ(x->arity, 0U);
  EXPECT_EQ(x->type, integer);
  EXPECT_EQ(x->get_output_type(), integer);
  EXPECT_FALSE(mgr.is_interpreted(x));
  const Symbol* less = mgr.declare("less", predicate);
  EXPECT_STREQ(less->name, "less");
  EXPECT_EQ(less->arity, 2U);
  EXPECT_EQ(less->type, predicate);
  EXPECT_EQ(less->get_output_type(), mgr.get_bool_type());
}

TEST(TermManagerDeclarations, ASecondDeclarationUnderTheSameSortGivesTheSameSymbol) {
  TermManager mgr;
  const Symbol* x = mgr.declare("x", mgr.get_int_type());
  EXPECT_EQ(mgr.declare("x", mgr.get_int_type()), x);
  EXPECT_EQ(mgr.get_signature()->get_symbol("x"), x);
}

TEST(TermManagerDeclarations, WrongDeclarationsThrow) {
  TermManager mgr;
  const DataType* integer = mgr.get_int_type();
  const Symbol* x = mgr.declare("x", integer);
  mgr.declare_interpreted("foo", integer);
  expect_refused(mgr, {
                          {[&] { mgr.declare("x", mgr.get_real_type()); },
                           "declare: 'x' is declared with sort Int already, not Real"},
                          {[&] { mgr.declare("x", mgr.make_function_type({integer}, integer)); },
                           "declare: 'x' is declared with sort Int already, not (-> Int Int)"},
                          {[&] { mgr.declare_interpreted("foo", mgr.get_bool_type()); },
                           "declare: 'foo' is declared with sort Int already, not Bool"},
                          {[&] { mgr.declare(std::string("a\0", 2), integer); },
                           "declare: the name holds a NUL byte"},
                          {[&] { mgr.declare(std::string("\0", 1), integer); },
                           "declare: the name holds a NUL byte"},
                          {[&] { mgr.declare_interpreted(std::string("a\0b", 3), integer); },
                           "declare: the name holds a NUL byte"},
                          {[&] { mgr.declare("y", nullptr); }, "declare: the sort of 'y' is null"},
                      });
  EXPECT_EQ(mgr.get_signature()->get_symbol("x"), x);
  EXPECT_EQ(mgr.get_signature()->get_symbol("y"), nullptr);
  EXPECT_EQ(mgr.get_signature()->get_symbol("a"), nullptr);
}

TEST(TermManagerDeclarations, NamesMayHoldAnyByteButNul) {
  TermManager mgr;
  std::string every_byte;
  for (int code = 1; code < 256; ++code) {
    every_byte += static_cast<char>(code);
  }
  for (const std::string& name :
       {std::string(), every_byte, std::string("a b"), std::string("|")}) {
    const Symbol* symbol = mgr.declare(name, mgr.get_int_type());
    EXPECT_EQ(symbol->name, name);
    EXPECT_EQ(symbol->name_view(), name);
    EXPECT_EQ(mgr.get_signature()->get_symbol(name.c_str()), symbol);
  }
}

TEST(TermManagerDeclarations, InterpretedSymbolsStandInNobodysWay) {
  TermManager mgr;
  const DataType* type =
      mgr.make_function_type({mgr.get_int_type(), mgr.get_int_type()}, mgr.get_int_type());
  for (const char* name : {"+", "and", "true", "=", "ite", "bvadd", "select", "to_int", "7"}) {
    EXPECT_EQ(mgr.get_signature()->get_symbol(name), nullptr) << name;
    const Symbol* symbol = mgr.declare(name, type);
    EXPECT_FALSE(mgr.is_interpreted(symbol)) << name;
    EXPECT_EQ(mgr.get_signature()->get_symbol(name), symbol) << name;
  }
  EXPECT_NE(mgr.declare("+", type), mgr.get_int_plus_symbol());
  EXPECT_NE(mgr.make_number(7)->symbol, mgr.get_signature()->get_symbol("7"));
}

TEST(TermManagerDeclarations, UntaggedInterpretedSymbolsAreApartFromTheUsers) {
  TermManager mgr;
  const Symbol* foo = mgr.declare_interpreted("foo", mgr.get_int_type());
  EXPECT_STREQ(foo->name, "foo");
  EXPECT_TRUE(mgr.is_interpreted(foo));
  EXPECT_FALSE(mgr.get_tag(foo).has_value());
  EXPECT_EQ(mgr.get_number(foo), nullptr);
  EXPECT_EQ(mgr.get_signature()->get_symbol("foo"), nullptr);
  EXPECT_EQ(mgr.declare_interpreted("foo", mgr.get_int_type()), foo);
  const Symbol* users = mgr.declare("foo", mgr.get_bool_type());
  EXPECT_NE(users, foo);
  EXPECT_FALSE(mgr.is_interpreted(users));
}

TEST(TermManagerDeclarations, TheSignatureKnowsExactNamesOnly) {
  TermManager mgr;
  const Symbol* x = mgr.declare(".def_12", mgr.get_int_type());
  EXPECT_EQ(mgr.get_signature()->get_symbol(".def_12"), x);
  for (const char* name : {"", ".def_1", ".def_12_", "def_12", ".DEF_12", "|.def_12|"}) {
    EXPECT_EQ(mgr.get_signature()->get_symbol(name), nullptr) << name;
  }
}

TEST(TermManagerDeclarations, EqualityAndIfThenElseSymbolsAreThoseOfTheBuilders) {
  TermManager mgr;
  const DataType* node = mgr.make_uninterpreted_type("Node");
  const Term* n = mgr.make_term(mgr.declare("n", node));
  EXPECT_EQ(mgr.get_equality_symbol(node), mgr.make_equal(n, n)->symbol);
  EXPECT_EQ(mgr.get_ite_symbol(node), mgr.make_ite(mgr.make_true(), n, n)->symbol);
  const DataType* function = mgr.make_function_type({node}, node);
  expect_refused(mgr, {
                          {[&] { mgr.get_equality_symbol(mgr.get_bool_type()); },
                           "=: there is no such symbol over Bool"},
                          {[&] { mgr.get_ite_symbol(mgr.get_bool_type()); },
                           "ite: there is no such symbol over Bool"},
                          {[&] { mgr.get_equality_symbol(function); },
                           "=: (-> Node Node) is a function type, expected a sort of terms"},
                          {[&] { mgr.get_ite_symbol(nullptr); }, "ite: a sort is null"},
                      });
}

}  // namespace
}  // namespace brum
