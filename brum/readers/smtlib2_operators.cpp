#include "brum/readers/smtlib2_operators.h"

#include <string>

#include "brum/readers/term_builder.h"
#include "brum/utils/fold_balanced.h"

namespace brum {

namespace {

std::vector<Operator> all_smtlib2_operators() {
  std::vector<Operator> all;
  for (const auto part : {core_operators(), arithmetic_operators(), bit_vector_operators()}) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

std::string count_of_arguments(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

std::string expected_count(const Operator& op) {
  switch (op.shape) {
    case Shape::unary:
      return "1";
    case Shape::binary:
      return "2";
    case Shape::associative:
      return "at least 1";
    case Shape::left:
    case Shape::right:
    case Shape::chain:
      return "at least 2";
    case Shape::constant:  // the parsers refuse arguments of one
    case Shape::whole:
      break;
  }
  // Only divisible may have more, those of a difference, which nobody writes as two arguments.
  const std::string least = std::to_string(op.min_arguments);
  return op.max_arguments == 0 ? "at least " + least : least;
}

bool fits_count(const Operator& op, std::size_t count) {
  switch (op.shape) {
    case Shape::constant:
      return count == 0;
    case Shape::unary:
      return count == 1;
    case Shape::binary:
      return count == 2;
    case Shape::associative:
      return count >= 1;
    case Shape::left:
    case Shape::right:
    case Shape::chain:
      return count >= 2;
    case Shape::whole:
      break;
  }
  return count >= op.min_arguments && (op.max_arguments == 0 || count <= op.max_arguments);
}

[[noreturn]] void error_sort(const TermBuilder& builder, const Operator& op, Value argument,
                             std::size_t index, const std::string& expected) {
  throw TermManager::error("found " + builder.sort_of(argument)->to_short_str() + " as argument " +
                           std::to_string(index + 1) + " of " + std::string(op.name) +
                           ", expected " + expected);
}

/// Requires one sort, or numbers. Gives whether one of them is a Real.
bool check_same(const TermBuilder& builder, const Operator& op, std::span<const Value> arguments) {
  const DataType* first = builder.sort_of(arguments[0]);
  const DataType* const real = builder.manager().get_real_type();
  const bool first_is_number = builder.is_number_sort(first);
  bool any_real = first == real;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const DataType* sort = builder.sort_of(arguments[i]);
    const bool fits = sort == first || (first_is_number && builder.is_number_sort(sort));
    if (!fits)
      error_sort(builder, op, arguments[i], i, first->to_short_str());
    any_real = any_real || sort == real;
  }
  return any_real;
}

/// Requires numbers. Gives whether one of them is a Real.
bool check_numbers(const TermBuilder& builder, const Operator& op,
                   std::span<const Value> arguments) {
  bool any_real = false;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const DataType* sort = builder.sort_of(arguments[i]);
    if (sort == builder.manager().get_real_type()) {
      any_real = true;
    } else if (sort != builder.manager().get_int_type()) {
      error_sort(builder, op, arguments[i], i, "Int or Real");
    }
  }
  return any_real;
}

/// Requires sorts of which `fits` is true; `expected` describes them.
template <class Fits>
void check_each(const TermBuilder& builder, const Operator& op, std::span<const Value> arguments,
                const char* expected, const Fits& fits) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!fits(builder.sort_of(arguments[i]))) {
      error_sort(builder, op, arguments[i], i, expected);
    }
  }
}

void check_same_width(const TermBuilder& builder, const Operator& op,
                      std::span<const Value> arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const DataType* sort = builder.sort_of(arguments[i]);
    if (sort->kind() != DataType::Kind::bit_vector) {
      error_sort(builder, op, arguments[i], i, "a bit-vector");
    }
    if (sort != builder.sort_of(arguments[0])) {
      error_sort(builder, op, arguments[i], i, builder.sort_of(arguments[0])->to_short_str());
    }
  }
}

/// Requires the sorts that the operator takes. Gives whether it is one of numbers and an argument a
/// Real, or an Int that stands for one.
bool check_sorts(const TermBuilder& builder, const Operator& op, std::span<const Value> arguments) {
  const TermManager& manager = builder.manager();
  switch (op.operands) {
    case Operands::any:
      break;
    case Operands::same:
      return check_same(builder, op, arguments);
    case Operands::booleans:
      check_each(builder, op, arguments, "Bool",
                 [&](const DataType* sort) { return sort == manager.get_bool_type(); });
      break;
    case Operands::integers:
      check_each(builder, op, arguments, "Int",
                 [&](const DataType* sort) { return sort == manager.get_int_type(); });
      break;
    case Operands::numbers:
      return check_numbers(builder, op, arguments);
    case Operands::bit_vectors:
      check_each(builder, op, arguments, "a bit-vector",
                 [](const DataType* sort) { return sort->kind() == DataType::Kind::bit_vector; });
      break;
    case Operands::same_width:
      check_same_width(builder, op, arguments);
      break;
  }
  return false;
}

const Term* fold_left(TermBuilder& builder, const Operator& op, std::span<const Value> arguments,
                      bool real) {
  const Term* result = arguments[0].term;
  for (const Value argument : arguments.subspan(1)) {
    result = op.step(builder, result, argument.term, real);
  }
  return result;
}

const Term* fold_right(TermBuilder& builder, const Operator& op, std::span<const Value> arguments) {
  const Term* result = arguments.back().term;
  for (std::size_t i = arguments.size() - 1; i-- > 0;) {
    result = op.step(builder, arguments[i].term, result, false);
  }
  return result;
}

Value fold_chain(TermBuilder& builder, const Operator& op, std::span<Value> arguments, bool real) {
  for (std::size_t i = 0; i + 1 < arguments.size(); ++i) {
    arguments[i] = {op.step(builder, arguments[i].term, arguments[i + 1].term, real), false};
  }
  return fold_balanced(arguments.first(arguments.size() - 1), [&](Value left, Value right) {
    return Value{builder.manager().make_and(left.term, right.term), false};
  });
}

/// Puts the arguments of a binary operator, or of one that takes more, together in steps.
Value fold(TermBuilder& builder, const Operator& op, std::span<Value> arguments, bool real) {
  if (arguments.size() == 2) {  // as mostly: one step, whatever the shape
    return {op.step(builder, arguments[0].term, arguments[1].term, real), false};
  }
  if (op.shape == Shape::left) {
    return {fold_left(builder, op, arguments, real), false};
  }
  if (op.shape == Shape::right) {
    return {fold_right(builder, op, arguments), false};
  }
  if (op.shape == Shape::chain) {
    return fold_chain(builder, op, arguments, real);
  }
  return fold_balanced(arguments, [&](Value left, Value right) {
    return Value{op.step(builder, left.term, right.term, real), false};
  });
}

}  // namespace

const std::vector<Operator>& smtlib2_operators() {
  static const std::vector<Operator> all = all_smtlib2_operators();
  return all;
}

bool may_be_declared(const Operator& op, const std::optional<LogicFeatures>& logic) {
  if (op.theory == Theory::later)
    return true;
  if (!logic)
    return false;
  switch (op.theory) {
    case Theory::core:
    case Theory::later:
      break;
    case Theory::arrays:
      return !logic->arrays;
    case Theory::numbers:
      return !logic->integers && !logic->reals;
    case Theory::integers:
      return !logic->integers;
    case Theory::reals:
      return !logic->reals;
    case Theory::integers_and_reals:
      return !logic->integers || !logic->reals;
    case Theory::bit_vectors:
      // Floating point numbers are made of bit-vectors.
      return !logic->bit_vectors && !logic->floating_point;
  }
  return false;
}

Value apply_operator(TermBuilder& builder, const Operator& op, std::span<const QNumber> indices,
                     std::span<Value> arguments) {
  if (!fits_count(op, arguments.size())) {
    throw TermManager::error("found " + count_of_arguments(arguments.size()) + " of " +
                             std::string(op.name) + ", expected " + expected_count(op));
  }
  const bool real = check_sorts(builder, op, arguments);
  switch (op.shape) {
    case Shape::constant:
      return {op.step(builder, nullptr, nullptr, false), false};
    case Shape::unary:
      return {op.step(builder, arguments[0].term, nullptr, real), false};
    case Shape::whole:
      return op.whole(builder, {indices, arguments, real});
    case Shape::binary:
    case Shape::associative:
    case Shape::left:
    case Shape::right:
    case Shape::chain:
      break;
  }
  return fold(builder, op, arguments, real);
}

}  // namespace brum
