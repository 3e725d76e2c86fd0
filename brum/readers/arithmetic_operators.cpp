// Ints, Reals and Reals_Ints.

#include <string>

#include "brum/readers/smtlib2_operators.h"
#include "brum/readers/term_builder.h"

namespace brum {

namespace {

Value subtract(TermBuilder& builder, const Application& application) {
  const auto arguments = application.arguments;
  if (arguments.size() == 1) {
    const Value a = arguments[0];
    const Term* negated = builder.negate(a.term, application.real);
    return builder.as_sort(negated, builder.sort_of(a));
  }
  const Term* result = arguments[0].term;
  for (const Value argument : arguments.subspan(1)) {
    result = builder.minus(result, argument.term, application.real);
  }
  return {result, false};
}

Value divide(TermBuilder& builder, const Application& application) {
  const auto arguments = application.arguments;
  Value result = arguments[0];
  for (const Value argument : arguments.subspan(1)) {
    result = builder.partial_operators().divide(result, argument);
  }
  return result;
}

const Term* divide_integers(TermBuilder& builder, const Term* a, const Term* b, bool /*real*/) {
  return builder.partial_operators().divide_integers(a, b);
}

const Term* remainder(TermBuilder& builder, const Term* a, const Term* b, bool /*real*/) {
  return builder.partial_operators().remainder(a, b);
}

const Term* absolute_value(TermBuilder& builder, const Term* a, const Term* /*none*/, bool real) {
  const Term* is_positive = builder.leq(builder.number(QNumber(0), real), a, real);
  builder.need(&LogicFeatures::beyond_difference);
  return builder.ite(is_positive, a, builder.negate(a, real), real);
}

Value to_real(TermBuilder& builder, const Application& application) {
  return builder.as_sort(application.arguments[0].term, builder.manager().get_real_type());
}

const Term* is_integer(TermBuilder& builder, const Term* a, const Term* /*none*/, bool /*real*/) {
  return builder.equal(a, builder.manager().make_floor(a), true);
}

/// Of one argument: n divides it. Of two, which stand for their difference: they are congruent.
Value divisible(TermBuilder& builder, const Application& application) {
  const QNumber& modulus = application.indices[0];
  if (modulus.sign() == 0) {
    throw TermManager::error("found 0 as the index of divisible, expected a positive numeral");
  }
  const auto arguments = application.arguments;
  const Term* a = arguments[0].term;
  const Term* b = arguments.size() == 2 ? arguments[1].term : builder.number(QNumber(0), false);
  return {builder.manager().make_int_modular_congruence(modulus, a, b), false};
}

using Builder = TermBuilder&;
using Argument = const Term*;

constexpr Theory numbers = Theory::numbers;
constexpr Theory both = Theory::integers_and_reals;

// clang-format off
const Operator arithmetic_table[] = {
    {.name = "+", .theory = numbers, .shape = Shape::associative, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.plus(x, y, real); }},
    {.name = "*", .theory = numbers, .shape = Shape::associative, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.times(x, y, real); }},
    {.name = "-", .theory = numbers, .operands = Operands::numbers, .whole = subtract,
     .max_arguments = 0, .role = Operator::Role::minus},
    {.name = "/", .theory = Theory::reals, .operands = Operands::numbers, .whole = divide,
     .min_arguments = 2, .max_arguments = 0, .role = Operator::Role::division},
    {.name = "div", .theory = Theory::integers, .shape = Shape::left,
     .operands = Operands::integers, .step = divide_integers},
    {.name = "mod", .theory = Theory::integers, .shape = Shape::binary,
     .operands = Operands::integers, .step = remainder},
    {.name = "abs", .theory = Theory::integers, .shape = Shape::unary,
     .operands = Operands::numbers, .step = absolute_value},
    {.name = "<=", .theory = numbers, .shape = Shape::chain, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.leq(x, y, real); }},
    {.name = "<", .theory = numbers, .shape = Shape::chain, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.less(x, y, real); }},
    {.name = ">=", .theory = numbers, .shape = Shape::chain, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.leq(y, x, real); }},
    {.name = ">", .theory = numbers, .shape = Shape::chain, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument y, bool real) { return b.less(y, x, real); }},
    {.name = "to_real", .theory = both, .operands = Operands::numbers, .whole = to_real},
    {.name = "to_int", .theory = both, .shape = Shape::unary, .operands = Operands::numbers,
     .step = [](Builder b, Argument x, Argument, bool) { return b.manager().make_floor(x); }},
    {.name = "is_int", .theory = both, .shape = Shape::unary, .operands = Operands::numbers,
     .step = is_integer},
    {.name = "divisible", .theory = Theory::integers, .operands = Operands::integers,
     .whole = divisible, .num_indices = 1, .max_arguments = 2, .role = Operator::Role::divisible},
};
// clang-format on

}  // namespace

std::span<const Operator> arithmetic_operators() {
  return arithmetic_table;
}

}  // namespace brum
