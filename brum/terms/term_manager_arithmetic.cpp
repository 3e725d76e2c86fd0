#include "brum/terms/sort_checks.h"
#include "brum/terms/term_manager.h"

// The builders of numerals and of arithmetic over the integers and the reals.

namespace brum {

const Term* TermManager::make_number(const QNumber& v) {
  return make_number(v, v.is_integer() ? get_int_type() : get_real_type());
}

const Term* TermManager::make_number(const QNumber& v, const DataType* type) {
  if (type == nullptr || !is_number(type)) {
    throw error("number: the sort is " + (type == nullptr ? "null" : type->to_short_str()) +
                ", expected Int or Real");
  }
  if (type == get_int_type() && !v.is_integer()) {
    throw error("number: " + v.to_str() + " is not integral, expected an integer for sort Int");
  }
  return apply(numerals_.numeral(v, type), {});
}

const Term* TermManager::apply_arithmetic(std::string_view name, const Symbol* over_int,
                                          const Symbol* over_real, const Term* a, const Term* b) {
  require_number(name, a);
  require_number(name, b);
  const bool integral = a->sort() == get_int_type() && b->sort() == get_int_type();
  return apply(integral ? over_int : over_real, {a, b});
}

const Term* TermManager::make_plus(const Term* a, const Term* b) {
  return apply_arithmetic("+", int_plus_, real_plus_, a, b);
}

const Term* TermManager::make_times(const Term* a, const Term* b) {
  return apply_arithmetic("*", int_times_, real_times_, a, b);
}

const Term* TermManager::make_leq(const Term* a, const Term* b) {
  return apply_arithmetic("<=", int_leq_, real_leq_, a, b);
}

const Term* TermManager::make_floor(const Term* a) {
  require_number("to_int", a);
  return apply(floor_, {a});
}

const Term* TermManager::make_int_modular_congruence(const QNumber& modulus, const Term* a,
                                                     const Term* b) {
  if (!modulus.is_integer() || modulus.sign() <= 0) {
    throw error("divisible: the modulus is " + modulus.to_str() + ", expected a positive integer");
  }
  require_sort("divisible", a, get_int_type());
  require_sort("divisible", b, get_int_type());
  return apply(numerals_.congruence(modulus), {a, b});
}

bool TermManager::is_int_modular_congruence(const Symbol* symbol, QNumber* modulus) const {
  const QNumber* found = numerals_.modulus_of(symbol);
  if (found != nullptr && modulus != nullptr) {
    *modulus = *found;
  }
  return found != nullptr;
}

}  // namespace brum
