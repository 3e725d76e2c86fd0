// FixedSizeBitVectors, what QF_BV adds to it, and the overflow predicates of SMT-LIB 2.7.

#include <optional>
#include <string>

#include "brum/readers/smtlib2_operators.h"
#include "brum/readers/term_builder.h"

namespace brum {

namespace {

using Builder = TermBuilder&;
using Argument = const Term*;
using BinaryBuilder = const Term* (TermManager::*)(const Term*, const Term*);
using ExtendBuilder = const Term* (TermManager::*)(std::size_t, const Term*);

/// Applies a builder of the manager to both arguments.
template <BinaryBuilder build>
const Term* plain(Builder b, Argument x, Argument y, bool /*real*/) {
  return (b.manager().*build)(x, y);
}

template <BinaryBuilder build>
const Term* swapped(Builder b, Argument x, Argument y, bool /*real*/) {
  return (b.manager().*build)(y, x);
}

template <BinaryBuilder build>
const Term* complemented(Builder b, Argument x, Argument y, bool /*real*/) {
  return b.manager().make_bvnot((b.manager().*build)(x, y));
}

std::size_t width_of(const Term* term) {
  return term->sort()->width();
}

const Term* sign_bit(TermManager& manager, const Term* x) {
  return manager.make_extract(width_of(x) - 1, width_of(x) - 1, x);
}

/// A number of more bits is made by an operator instead of a numeral, so that its text stays short.
constexpr std::size_t most_bits_of_numeral = 4096;

/// 2^(width - 1), the smallest signed number.
const Term* smallest_signed(TermManager& manager, std::size_t width) {
  if (width > most_bits_of_numeral) {
    return manager.make_concat(manager.make_bv_number(1, 1), manager.make_bv_number(0, width - 1));
  }
  mpz_class value = 1;
  value <<= width - 1;
  return manager.make_bv_number(QNumber(value, 1), width);
}

/// All bits set, -1 as a signed number.
const Term* minus_one(TermManager& manager, std::size_t width) {
  if (width > most_bits_of_numeral) {
    return manager.make_bvnot(manager.make_bv_number(0, width));
  }
  mpz_class value = 1;
  value <<= width;
  value -= 1;
  return manager.make_bv_number(QNumber(value, 1), width);
}

/// The remainder of signed division with the sign of the divisor: that with the sign of the
/// dividend, plus the divisor where it is not 0 and the signs differ. With divisor 0 both are x.
const Term* signed_modulo(Builder b, Argument x, Argument y, bool /*real*/) {
  TermManager& manager = b.manager();
  const Term* remainder = manager.make_bvsrem(x, y);
  const Term* is_zero =
      manager.make_equal(remainder, manager.make_bv_number(QNumber(0), width_of(x)));
  const Term* same_sign = manager.make_equal(sign_bit(manager, x), sign_bit(manager, y));
  return manager.make_ite(manager.make_or(is_zero, same_sign), remainder,
                          manager.make_bvadd(remainder, y));
}

/// Whether an operation overflows: its result, extended, is not the result of the operation on
/// arguments that are extended by enough bits to hold every result.
const Term* differs_when_extended(TermManager& manager, BinaryBuilder build, ExtendBuilder extend,
                                  std::size_t bits, const Term* x, const Term* y) {
  const Term* exact = (manager.*build)((manager.*extend)(bits, x), (manager.*extend)(bits, y));
  const Term* wrapped = (manager.*extend)(bits, (manager.*build)(x, y));
  return manager.make_not(manager.make_equal(exact, wrapped));
}

template <BinaryBuilder build, ExtendBuilder extend>
const Term* overflows_one_bit(Builder b, Argument x, Argument y, bool /*real*/) {
  return differs_when_extended(b.manager(), build, extend, 1, x, y);
}

template <ExtendBuilder extend>
const Term* product_overflows(Builder b, Argument x, Argument y, bool /*real*/) {
  return differs_when_extended(b.manager(), &TermManager::make_bvmul, extend, width_of(x), x, y);
}

const Term* negation_overflows(Builder b, Argument x, Argument /*none*/, bool /*real*/) {
  return b.manager().make_equal(x, smallest_signed(b.manager(), width_of(x)));
}

const Term* signed_quotient_overflows(Builder b, Argument x, Argument y, bool real) {
  const Term* divisor_is_minus_one = b.manager().make_equal(y, minus_one(b.manager(), width_of(y)));
  return b.manager().make_and(negation_overflows(b, x, nullptr, real), divisor_is_minus_one);
}

/// Gives an index as a number of bits. Larger ones would not fit in any memory.
std::size_t bits(const char* name, const QNumber& index) {
  constexpr std::uint64_t largest = 0xFFFFFFFF;
  const std::optional<std::uint64_t> value = index.to_uint64();
  if (!value || *value > largest) {
    throw TermManager::error("found " + index.to_str() + " as an index of " + name +
                             ", expected at most 4294967295");
  }
  return static_cast<std::size_t>(*value);
}

Value extract(Builder b, const Application& application) {
  const std::size_t high = bits("extract", application.indices[0]);
  const std::size_t low = bits("extract", application.indices[1]);
  const Term* x = application.arguments[0].term;
  if (high >= width_of(x) || low > high) {
    throw TermManager::error("found the indices " + std::to_string(high) + " and " +
                             std::to_string(low) + " of extract, expected " +
                             std::to_string(width_of(x)) + " > first >= second");
  }
  return {b.manager().make_extract(high, low, x), false};
}

Value rotate_left(Builder b, const Application& application) {
  const std::size_t n = bits("rotate_left", application.indices[0]);
  return {b.manager().make_rotate_left(n, application.arguments[0].term), false};
}

Value rotate_right(Builder b, const Application& application) {
  const std::size_t n = bits("rotate_right", application.indices[0]);
  return {b.manager().make_rotate_right(n, application.arguments[0].term), false};
}

Value zero_extend(Builder b, const Application& application) {
  const std::size_t n = bits("zero_extend", application.indices[0]);
  return {b.manager().make_zero_extend(n, application.arguments[0].term), false};
}

Value sign_extend(Builder b, const Application& application) {
  const std::size_t n = bits("sign_extend", application.indices[0]);
  return {b.manager().make_sign_extend(n, application.arguments[0].term), false};
}

/// Concatenates n copies, by doubling: about 2 * log2 n terms.
Value repeat(Builder b, const Application& application) {
  std::size_t n = bits("repeat", application.indices[0]);
  if (n == 0)
    throw TermManager::error("found 0 as the index of repeat, expected at least 1");
  const Term* copies = application.arguments[0].term;  // a power of two of them
  const Term* result = nullptr;
  while (true) {
    if (n % 2 == 1)
      result = result == nullptr ? copies : b.manager().make_concat(copies, result);
    n /= 2;
    if (n == 0)
      return {result, false};
    copies = b.manager().make_concat(copies, copies);
  }
}

constexpr Operands one_width = Operands::same_width;

constexpr Operator binary(std::string_view name, Operator::Step step,
                          Theory theory = Theory::bit_vectors) {
  return {
      .name = name, .theory = theory, .shape = Shape::binary, .operands = one_width, .step = step};
}

constexpr Operator associative(std::string_view name, Operator::Step step) {
  return {.name = name,
          .theory = Theory::bit_vectors,
          .shape = Shape::associative,
          .operands = one_width,
          .step = step};
}

constexpr Operator indexed(std::string_view name, Operator::Whole whole, std::uint8_t indices = 1) {
  return {.name = name,
          .theory = Theory::bit_vectors,
          .operands = one_width,
          .whole = whole,
          .num_indices = indices};
}

using M = TermManager;

const Operator bit_vector_table[] = {
    {.name = "concat",
     .theory = Theory::bit_vectors,
     .shape = Shape::left,
     .operands = Operands::bit_vectors,
     .step = plain<&M::make_concat>},
    {.name = "bvnot",
     .theory = Theory::bit_vectors,
     .shape = Shape::unary,
     .operands = one_width,
     .step = [](Builder b, Argument x, Argument, bool) { return b.manager().make_bvnot(x); }},
    {.name = "bvneg",
     .theory = Theory::bit_vectors,
     .shape = Shape::unary,
     .operands = one_width,
     .step = [](Builder b, Argument x, Argument, bool) { return b.manager().make_bvneg(x); }},
    associative("bvand", plain<&M::make_bvand>),
    associative("bvor", plain<&M::make_bvor>),
    associative("bvxor", plain<&M::make_bvxor>),
    associative("bvadd", plain<&M::make_bvadd>),
    associative("bvmul", plain<&M::make_bvmul>),
    binary("bvnand", complemented<&M::make_bvand>),
    binary("bvnor", complemented<&M::make_bvor>),
    {.name = "bvxnor",
     .theory = Theory::bit_vectors,
     .shape = Shape::left,
     .operands = one_width,
     .step = complemented<&M::make_bvxor>},
    binary("bvcomp", plain<&M::make_bvcomp>),
    binary("bvsub", plain<&M::make_bvsub>),
    binary("bvudiv", plain<&M::make_bvudiv>),
    binary("bvurem", plain<&M::make_bvurem>),
    binary("bvsdiv", plain<&M::make_bvsdiv>),
    binary("bvsrem", plain<&M::make_bvsrem>),
    binary("bvsmod", signed_modulo),
    binary("bvshl", plain<&M::make_bvshl>),
    binary("bvlshr", plain<&M::make_bvlshr>),
    binary("bvashr", plain<&M::make_bvashr>),
    binary("bvult", plain<&M::make_bvult>),
    binary("bvule", plain<&M::make_bvule>),
    binary("bvugt", swapped<&M::make_bvult>),
    binary("bvuge", swapped<&M::make_bvule>),
    binary("bvslt", plain<&M::make_bvslt>),
    binary("bvsle", plain<&M::make_bvsle>),
    binary("bvsgt", swapped<&M::make_bvslt>),
    binary("bvsge", swapped<&M::make_bvsle>),
    indexed("extract", extract, 2),
    indexed("rotate_left", rotate_left),
    indexed("rotate_right", rotate_right),
    indexed("zero_extend", zero_extend),
    indexed("sign_extend", sign_extend),
    indexed("repeat", repeat),
    {.name = "bvnego",
     .theory = Theory::later,
     .shape = Shape::unary,
     .operands = one_width,
     .step = negation_overflows},
    binary("bvuaddo", overflows_one_bit<&M::make_bvadd, &M::make_zero_extend>, Theory::later),
    binary("bvsaddo", overflows_one_bit<&M::make_bvadd, &M::make_sign_extend>, Theory::later),
    binary("bvumulo", product_overflows<&M::make_zero_extend>, Theory::later),
    binary("bvsmulo", product_overflows<&M::make_sign_extend>, Theory::later),
    binary("bvusubo", plain<&M::make_bvult>, Theory::later),
    binary("bvssubo", overflows_one_bit<&M::make_bvsub, &M::make_sign_extend>, Theory::later),
    binary("bvsdivo", signed_quotient_overflows, Theory::later),
};

}  // namespace

std::span<const Operator> bit_vector_operators() {
  return bit_vector_table;
}

}  // namespace brum
