#include "brum/readers/term_stack.h"

#include <algorithm>
#include <string>

namespace brum {

void TermStack::clear() {
  frames_.clear();
  values_.clear();
  numbers_.clear();
  indices_.clear();
}

void TermStack::find_in_signature(Name& name) const {
  const Symbol* symbol = builder_.manager().get_signature()->get_symbol(name.text);
  if (symbol != nullptr)
    name.binding = Binding::to_function(symbol);
}

// Numbers in their spellings.

void TermStack::push_literal(const Token& token) {
  const bool is_number = token.kind == TokenKind::numeral || token.kind == TokenKind::decimal;
  if (is_number && waits_for_number()) {
    push_number(literals_.number(token));
  } else {
    values_.push_back(literals_.get(token));
  }
}

void TermStack::push_number(const Number& number) {
  if (waits_for_number()) {
    values_.push_back({nullptr, false});
    numbers_.push_back(number);
  } else {
    values_.push_back(literals_.get(number));
  }
}

/// What fold_numbers() does where a minus or a division is on top.
bool TermStack::fold_number() {
  const bool is_minus = frames_.back().op->role == Operator::Role::minus;
  const std::size_t count = is_minus ? 1 : 2;
  const std::size_t first = frames_.back().first_value;
  if (values_.size() - first != count) {
    return false;
  }
  for (std::size_t i = first; i < values_.size(); ++i) {
    if (values_[i].term != nullptr) {
      return false;
    }
  }
  Number number = numbers_.back();
  if (is_minus) {
    number.value = -number.value;
  } else if (number.value.sign() == 0) {
    return false;
  } else {
    number = {numbers_[numbers_.size() - 2].value / number.value, true};
  }
  numbers_.resize(numbers_.size() - count);
  values_.shrink(first);
  frames_.pop_back();
  push_number(number);
  return true;
}

const Term* TermStack::top_term() {
  if (values_.back().term == nullptr) {
    values_.back() = literals_.get(numbers_.back());
    numbers_.pop_back();
  }
  return values_.back().term;
}

// Finished applications.

/// What end_divisors_difference() does where a minus or a division is on top.
bool TermStack::end_difference() {
  if (frames_.size() < 2)
    return false;
  const Frame& frame = frames_.back();
  Frame& outer = frames_[frames_.size() - 2];
  const bool is_one =
      frame.op->role == Operator::Role::minus && values_.size() - frame.first_value == 2 &&
      outer.kind == Frame::Kind::operation && outer.op->role == Operator::Role::divisible &&
      outer.first_value == frame.first_value;
  if (is_one) {
    outer.is_difference = true;
    frames_.pop_back();
  }
  return is_one;
}

/// Makes terms of the numbers among the arguments of the frame on top.
void TermStack::make_terms_of_numbers(std::span<Value> arguments) {
  const auto is_number = [](const Value& value) { return value.term == nullptr; };
  const auto count = static_cast<std::size_t>(std::ranges::count_if(arguments, is_number));
  std::size_t next = numbers_.size() - count;
  for (Value& argument : arguments) {
    if (is_number(argument)) {
      argument = literals_.get(numbers_[next++]);
    }
  }
  numbers_.resize(numbers_.size() - count);
}

Value TermStack::build(const Frame& frame, std::span<Value> arguments) {
  if (frame.kind == Frame::Kind::function) {
    return apply_function(frame.function, arguments);
  }
  const bool is_pair = frame.op->role == Operator::Role::divisible && arguments.size() == 2;
  if (is_pair && !frame.is_difference) {
    throw TermManager::error("found 2 arguments of divisible, expected 1");
  }
  return apply_operator(builder_, *frame.op, std::span(indices_).subspan(frame.first_index),
                        arguments);
}

Value TermStack::apply_function(const Symbol* function, std::span<const Value> arguments) {
  if (arguments.size() != function->arity) {
    throw TermManager::error("found " + std::to_string(arguments.size()) +
                             (arguments.size() == 1 ? " argument of " : " arguments of ") +
                             function->name + ", expected " + std::to_string(function->arity));
  }
  children_.clear();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const DataType* expected = function->type->get_component(i + 1);
    const DataType* found = builder_.sort_of(arguments[i]);
    const bool fits = found == expected || (expected == builder_.manager().get_real_type() &&
                                            found == builder_.manager().get_int_type());
    if (!fits) {
      throw TermManager::error("found " + found->to_short_str() + " as argument " +
                               std::to_string(i + 1) + " of " + function->name + ", expected " +
                               expected->to_short_str());
    }
    children_.push_back(arguments[i].term);
  }
  return {builder_.manager().make_term(function, children_), false};
}

}  // namespace brum
