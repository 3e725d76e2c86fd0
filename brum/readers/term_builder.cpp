#include "brum/readers/term_builder.h"

namespace brum {

void TermBuilder::set_logic(const std::string& name) {
  logic_ = features_of_logic(name);
  numerals_are_real_ = brum::numerals_are_real(name);
}

Value TermBuilder::numeral(const QNumber& number) {
  return {manager_.make_number(number, manager_.get_int_type()), false};
}

Value TermBuilder::decimal(const QNumber& number) {
  if (number.is_integer() && !numerals_are_real_) {
    return {manager_.make_number(number, manager_.get_int_type()), true};
  }
  return {manager_.make_number(number, manager_.get_real_type()), false};
}

const Term* TermBuilder::number(const QNumber& number, bool real) {
  if (real)
    return decimal(number).term;
  return manager_.make_number(number, manager_.get_int_type());
}

const QNumber* TermBuilder::number_of(const Term* term) const {
  if (term->symbol->arity != 0 || !is_number_sort(term->sort()))
    return nullptr;
  return manager_.get_number(term->symbol);
}

const Term* TermBuilder::apply(const Symbol* symbol, std::initializer_list<const Term*> arguments) {
  arguments_.assign(arguments);
  return manager_.make_term(symbol, arguments_);
}

const Term* TermBuilder::plus(const Term* a, const Term* b, bool real) {
  if (real && over_integers(a, b))
    return apply(manager_.get_real_plus_symbol(), {a, b});
  return manager_.make_plus(a, b);
}

const Term* TermBuilder::times(const Term* a, const Term* b, bool real) {
  if (real && over_integers(a, b))
    return apply(manager_.get_real_times_symbol(), {a, b});
  return manager_.make_times(a, b);
}

const Term* TermBuilder::leq(const Term* a, const Term* b, bool real) {
  if (real && over_integers(a, b))
    return apply(manager_.get_real_leq_symbol(), {a, b});
  return manager_.make_leq(a, b);
}

const Term* TermBuilder::equal(const Term* a, const Term* b, bool real) {
  if (real && over_integers(a, b)) {
    return apply(manager_.get_equality_symbol(manager_.get_real_type()), {a, b});
  }
  return manager_.make_equal(a, b);
}

const Term* TermBuilder::ite(const Term* condition, const Term* a, const Term* b, bool real) {
  if (real && over_integers(a, b)) {
    return apply(manager_.get_ite_symbol(manager_.get_real_type()), {condition, a, b});
  }
  return manager_.make_ite(condition, a, b);
}

const Term* TermBuilder::negate(const Term* a, bool real) {
  if (const QNumber* value = number_of(a); value != nullptr) {
    return manager_.make_number(-*value, a->sort());
  }
  const bool over_reals = real || a->sort() == manager_.get_real_type();
  return times(number(QNumber(-1), over_reals), a, over_reals);
}

const Term* TermBuilder::minus(const Term* a, const Term* b, bool real) {
  need(&LogicFeatures::beyond_difference);
  return plus(a, negate(b, real), real);
}

const Term* TermBuilder::less(const Term* a, const Term* b, bool real) {
  return manager_.make_not(leq(b, a, real));
}

}  // namespace brum
