#include "brum/readers/partial_operators.h"

#include <algorithm>
#include <bit>
#include <span>
#include <string_view>
#include <utility>

#include "brum/readers/term_builder.h"
#include "brum/utils/fold_balanced.h"

namespace brum {

std::uint64_t PartialOperators::HashDivision::operator()(const Division& division) const {
  return hsh::mix(division.dividend->id * 2 + (division.real ? 1 : 0) + 0x9e3779b97f4a7c15U,
                  division.divisor->id + 0xc2b2ae3d27d4eb4fU);
}

const Term* PartialOperators::conjunction(std::vector<const Term*>& terms) {
  return fold_balanced(std::span(terms), [this](const Term* left, const Term* right) {
    return builder_.manager().make_and(left, right);
  });
}

const Term* PartialOperators::disjunction(std::vector<const Term*>& terms) {
  return fold_balanced(std::span(terms), [this](const Term* left, const Term* right) {
    return builder_.manager().make_or(left, right);
  });
}

// Names hold a full stop in their middle: users' names rarely do, and both versions of SMT-LIB take
// them as they are.
const Symbol* PartialOperators::introduce(const std::string& base, const DataType* type,
                                          const std::string& operation,
                                          std::vector<const Term*> arguments) {
  TermManager& manager = builder_.manager();
  std::size_t number = introduced_.size() + 1;
  std::string name = base + '.' + std::to_string(number);
  while (manager.get_signature()->get_symbol(name) != nullptr) {
    name = base + '.' + std::to_string(++number);
  }
  const Symbol* symbol = manager.declare(name, type);
  introduced_set_.insert(symbol);
  introduced_.push_back({symbol, operation, std::move(arguments)});
  return symbol;
}

const Term* PartialOperators::defer(Kind kind, const DataType* type,
                                    const std::vector<const Term*>& arguments) {
  // The sort is part of the name so that each sort gets a symbol; its address does not outlive it.
  const std::string name = "deferred " + std::to_string(static_cast<int>(kind)) + ' ' +
                           std::to_string(std::bit_cast<std::uintptr_t>(type));
  const Symbol* symbol = builder_.manager().declare_interpreted(name, type);
  deferred_kinds_[symbol] = kind;
  return builder_.manager().make_term(symbol, arguments);
}

Value PartialOperators::resolve(const Symbol* symbol, std::span<const Term* const> arguments) {
  const DataType* real_sort = builder_.manager().get_real_type();
  switch (deferred_kinds_[symbol]) {
    case Kind::real_division:
      return divide(builder_.as_sort(arguments[0], real_sort),
                    builder_.as_sort(arguments[1], real_sort));
    case Kind::integer_division:
      return {divide_integers(arguments[0], arguments[1]), false};
    case Kind::remainder:
      return {remainder(arguments[0], arguments[1]), false};
    case Kind::distinct:
      break;
  }
  const DataType* sort = symbol->type->get_component(1);
  std::vector<Value> terms(arguments.size());
  std::ranges::transform(arguments, terms.begin(),
                         [&](const Term* argument) { return builder_.as_sort(argument, sort); });
  return {distinct(terms, sort == real_sort), false};
}

// Division.

const Term* PartialOperators::is_zero(const Term* a, bool real) {
  return builder_.equal(a, builder_.number(QNumber(0), real), real);
}

const Term* PartialOperators::at_zero(Kind kind, const Term* a) {
  TermManager& manager = builder_.manager();
  builder_.need(&LogicFeatures::functions);
  const Symbol*& function = functions_at_zero_[static_cast<std::size_t>(kind)];
  if (function == nullptr) {
    const bool real = kind == Kind::real_division;
    const DataType* sort = real ? manager.get_real_type() : manager.get_int_type();
    constexpr const char* bases[] = {"brum.real_quotient_at_zero", "brum.quotient_at_zero",
                                     "brum.remainder_at_zero"};
    constexpr const char* operations[] = {"/", "div", "mod"};
    function =
        introduce(bases[static_cast<std::size_t>(kind)], manager.make_function_type({sort}, sort),
                  operations[static_cast<std::size_t>(kind)], {});
  }
  return manager.make_term(function, {a});
}

const Term* PartialOperators::quotient(const Term* a, const Term* b, bool real) {
  Quotient& known = quotients_[{a, b, real}];
  if (known.term == nullptr) {
    TermManager& manager = builder_.manager();
    builder_.need(&LogicFeatures::beyond_difference);
    builder_.need(&LogicFeatures::beyond_linear);
    const Kind kind = real ? Kind::real_division : Kind::integer_division;
    const Term* when_zero = at_zero(kind, a);
    const Term* q = manager.make_term(
        introduce("brum.quotient", real ? manager.get_real_type() : manager.get_int_type(),
                  real ? "/" : "div", {a, b}));
    const Term* zero = is_zero(b, real);
    const Term* for_zero =
        manager.make_or(manager.make_not(zero), builder_.equal(q, when_zero, real));
    const Term* otherwise = real ? real_condition(q, a, b) : integer_condition(q, a, b);
    known.condition =
        conditions_.add_condition(manager.make_and(for_zero, manager.make_or(zero, otherwise)));
    known.term = q;
  }
  conditions_.use(known.condition);
  return known.term;
}

/// The quotient's meaning where b is not 0.
const Term* PartialOperators::real_condition(const Term* q, const Term* a, const Term* b) {
  return builder_.equal(builder_.times(b, q, true), a, true);
}

/// b * q <= a < b * q + |b|.
const Term* PartialOperators::integer_condition(const Term* q, const Term* a, const Term* b) {
  TermManager& manager = builder_.manager();
  const Term* product = manager.make_times(b, q);
  const Term* zero = builder_.number(QNumber(0), false);
  const Term* size_of_b =
      builder_.ite(builder_.leq(zero, b, false), b, builder_.negate(b, false), false);
  return manager.make_and(manager.make_leq(product, a),
                          builder_.less(a, manager.make_plus(product, size_of_b), false));
}

Value PartialOperators::divide(Value a, Value b) {
  TermManager& manager = builder_.manager();
  const DataType* real_sort = manager.get_real_type();
  const QNumber* divisor = builder_.number_of(b.term);
  if (divisor == nullptr) {
    if (deferring_) {
      return {
          defer(Kind::real_division, manager.make_function_type({real_sort, real_sort}, real_sort),
                {a.term, b.term}),
          false};
    }
    return {quotient(a.term, b.term, true), false};
  }
  if (divisor->sign() == 0)
    return {at_zero(Kind::real_division, a.term), false};
  if (const QNumber* dividend = builder_.number_of(a.term); dividend != nullptr) {
    return builder_.decimal(*dividend / *divisor);
  }
  if (*divisor == QNumber(1))
    return builder_.as_sort(a.term, real_sort);
  builder_.need(&LogicFeatures::beyond_difference);
  return {builder_.times(builder_.number(QNumber(1) / *divisor, true), a.term, true), false};
}

/// For a divisor above 1: the floor of the real quotient.
const Term* PartialOperators::divide_by_number(const Term* a, const QNumber& divisor) {
  builder_.need(&LogicFeatures::beyond_difference);
  builder_.need(&LogicFeatures::reals);
  return builder_.manager().make_floor(
      builder_.times(builder_.number(QNumber(1) / divisor, true), a, true));
}

const Term* PartialOperators::divide_integers(const Term* a, const Term* b) {
  TermManager& manager = builder_.manager();
  const QNumber* divisor = builder_.number_of(b);
  if (divisor == nullptr) {
    if (!deferring_)
      return quotient(a, b, false);
    const DataType* sort = manager.get_int_type();
    return defer(Kind::integer_division, manager.make_function_type({sort, sort}, sort), {a, b});
  }
  if (divisor->sign() == 0)
    return at_zero(Kind::integer_division, a);
  const QNumber size = abs(*divisor);
  const bool negative = divisor->sign() < 0;
  const Term* result = size == QNumber(1) ? a : divide_by_number(a, size);
  return negative ? builder_.negate(result, false) : result;
}

const Term* PartialOperators::remainder(const Term* a, const Term* b) {
  TermManager& manager = builder_.manager();
  const QNumber* divisor = builder_.number_of(b);
  if (divisor == nullptr) {
    if (deferring_) {
      const DataType* sort = manager.get_int_type();
      return defer(Kind::remainder, manager.make_function_type({sort, sort}, sort), {a, b});
    }
    const Term* product = manager.make_times(b, quotient(a, b, false));
    return builder_.ite(is_zero(b, false), at_zero(Kind::remainder, a),
                        builder_.minus(a, product, false), false);
  }
  if (divisor->sign() == 0)
    return at_zero(Kind::remainder, a);
  const QNumber size = abs(*divisor);
  if (size == QNumber(1))
    return builder_.number(QNumber(0), false);
  const Term* multiple =
      manager.make_times(builder_.number(-size, false), divide_by_number(a, size));
  return manager.make_plus(a, multiple);
}

// Distinct.

const Term* PartialOperators::distinct(std::span<const Value> terms, bool real) {
  if (terms.size() <= largest_distinct_by_pairs)
    return distinct_by_pairs(terms, real);
  TermManager& manager = builder_.manager();
  const DataType* sort = real ? manager.get_real_type() : terms[0].term->sort();
  if (sort == manager.get_bool_type())
    return manager.make_false();
  if (!deferring_)
    return distinct_by_function(terms, real);
  std::vector<const Term*> arguments;
  for (const Value value : terms)
    arguments.push_back(value.term);
  const std::vector<const DataType*> sorts(terms.size(), sort);
  return defer(Kind::distinct, manager.make_function_type(sorts, manager.get_bool_type()),
               arguments);
}

const Term* PartialOperators::distinct_by_pairs(std::span<const Value> terms, bool real) {
  std::vector<const Term*> parts;
  parts.reserve(terms.size() * (terms.size() - 1) / 2);
  for (std::size_t i = 0; i < terms.size(); ++i) {
    for (std::size_t j = i + 1; j < terms.size(); ++j) {
      const Term* equal = builder_.equal(terms[i].term, terms[j].term, real);
      parts.push_back(builder_.manager().make_not(equal));
    }
  }
  return conjunction(parts);
}

/// A sort of the stated logic in which `count` terms can be numbered; else Int.
const DataType* PartialOperators::index_sort(std::size_t count) {
  TermManager& manager = builder_.manager();
  const std::optional<LogicFeatures>& logic = builder_.logic();
  const bool has_integers = !logic || logic->integers;
  if (!has_integers && logic->reals)
    return manager.get_real_type();
  if (!has_integers && logic->bit_vectors) {
    return manager.make_bv_type(static_cast<std::size_t>(std::bit_width(count - 1)));
  }
  builder_.need(&LogicFeatures::integers);
  builder_.need(&LogicFeatures::beyond_difference);
  return manager.get_int_type();
}

const Term* PartialOperators::index(std::size_t i, const DataType* sort) {
  const QNumber value(static_cast<std::int64_t>(i));
  if (sort->kind() == DataType::Kind::bit_vector) {
    return builder_.manager().make_bv_number(value, sort->width());
  }
  return builder_.number(value, sort == builder_.manager().get_real_type());
}

/// Says that `element` is the term with number `index`.
const Term* PartialOperators::is_member(const Term* place, const Term* element,
                                        std::span<const Value> terms, bool real) {
  std::vector<const Term*> parts;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    const Term* is_here = builder_.manager().make_equal(place, index(i, place->sort()));
    parts.push_back(
        builder_.manager().make_and(is_here, builder_.equal(element, terms[i].term, real)));
  }
  return disjunction(parts);
}

const Term* PartialOperators::distinct_by_function(std::span<const Value> terms, bool real) {
  TermManager& manager = builder_.manager();
  builder_.need(&LogicFeatures::functions);
  const DataType* sort = real ? manager.get_real_type() : terms[0].term->sort();
  const DataType* numbers = index_sort(terms.size());
  const auto constant = [&](const char* base, const DataType* type) {
    return manager.make_term(introduce(base, type, "distinct", {}));
  };
  const Symbol* number_of =
      introduce("brum.number_of", manager.make_function_type({sort}, numbers), "distinct", {});
  std::vector<const Term*> parts;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    parts.push_back(
        manager.make_equal(manager.make_term(number_of, {terms[i].term}), index(i, numbers)));
  }
  const Term* all_differ = conjunction(parts);

  const Term* first = constant("brum.first", numbers);
  const Term* second = constant("brum.second", numbers);
  const Term* common = constant("brum.common", sort);
  const Term* ordered = numbers->kind() == DataType::Kind::bit_vector
                            ? manager.make_bvult(first, second)
                            : manager.make_not(manager.make_leq(second, first));
  std::vector<const Term*> two_agree{ordered, is_member(first, common, terms, real),
                                     is_member(second, common, terms, real)};
  conditions_.use(conditions_.add_condition(manager.make_or(all_differ, conjunction(two_agree))));
  return all_differ;
}

}  // namespace brum
