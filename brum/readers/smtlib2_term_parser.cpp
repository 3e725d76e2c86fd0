#include "brum/readers/smtlib2_term_parser.h"

namespace brum {

Value SmtLib2TermParser::parse(std::string* name) {
  frames_.clear();
  values_.clear();
  numbers_.clear();
  indices_.clear();
  bindings_.clear();
  name_of_whole_ = name;
  while (true) {
    const Token& token = c_.lexer.next();
    bool has_value = true;
    switch (token.kind) {
      case TokenKind::symbol:
        values_.push_back(symbol(token));
        break;
      case TokenKind::left_bracket:
        has_value = open(token.position);
        break;
      case TokenKind::right_bracket:
        has_value = close();
        break;
      case TokenKind::numeral:
      case TokenKind::decimal:
        if (waits_for_number()) {
          push_number(c_.literals.number(token));
        } else {
          values_.push_back(c_.literals.get(token));
        }
        break;
      case TokenKind::hexadecimal:
      case TokenKind::binary:
        values_.push_back(c_.literals.get(token));
        break;
      case TokenKind::string:
        c_.lexer.error(token.position, "found a string constant, expected a term that can be held");
      case TokenKind::keyword:
      case TokenKind::end:
        c_.lexer.error_expected(frames_.empty() ? "a term" : "a term or ')'");
    }
    if (!has_value)
      continue;
    settle();
    if (frames_.empty())
      break;
  }
  c_.scopes.end_term();
  return values_.back();
}

/// Goes on in the frames that wait for one value, now that there is one.
void SmtLib2TermParser::settle() {
  while (!frames_.empty()) {
    Frame& frame = frames_.back();
    switch (frame.kind) {
      case Frame::Kind::operation:
      case Frame::Kind::function:
      case Frame::Kind::definition:
        return;
      case Frame::Kind::let_binding:
        end_let_binding(frame);
        return;
      case Frame::Kind::let_body:
        expect_right_bracket();
        c_.scopes.uncover(frame.count);
        frames_.pop_back();
        break;
      case Frame::Kind::annotated:
        frames_.pop_back();
        read_attributes();
        break;
    }
  }
}

/// Whether the frame on top is a difference that stands alone below `divisible`.
bool SmtLib2TermParser::is_divisors_difference() const {
  if (frames_.size() < 2)
    return false;
  const Frame& frame = frames_.back();
  const Frame& outer = frames_[frames_.size() - 2];
  return frame.kind == Frame::Kind::operation && frame.op->role == Operator::Role::minus &&
         values_.size() - frame.first_value == 2 && outer.kind == Frame::Kind::operation &&
         outer.op->role == Operator::Role::divisible && outer.first_value == frame.first_value;
}

/// Whether a number read now may be part of the spelling of another number. No term is made of it
/// then, so that reading `(- 3)` or `(/ 1 3)` makes one term and not two or three.
bool SmtLib2TermParser::waits_for_number() const {
  if (frames_.empty() || frames_.back().kind != Frame::Kind::operation) {
    return false;
  }
  const Operator::Role role = frames_.back().op->role;
  return role == Operator::Role::minus || role == Operator::Role::division;
}

void SmtLib2TermParser::push_number(const Number& number) {
  if (waits_for_number()) {
    values_.push_back({nullptr, false});
    numbers_.push_back(number);
  } else {
    values_.push_back(c_.literals.get(number));
  }
}

/// Ends the frame on top if it is the spelling of a number: minus a number, or one number divided
/// by another that is not 0.
bool SmtLib2TermParser::fold_numbers() {
  if (!waits_for_number()) {
    return false;
  }
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
  values_.resize(first);
  frames_.pop_back();
  push_number(number);
  return true;
}

/// Makes terms of the numbers among the arguments of the frame on top.
void SmtLib2TermParser::make_terms_of_numbers(std::span<Value> arguments) {
  std::size_t count = 0;
  for (const Value& argument : arguments) {
    count += argument.term == nullptr ? 1 : 0;
  }
  std::size_t next = numbers_.size() - count;
  for (Value& argument : arguments) {
    if (argument.term == nullptr) {
      argument = c_.literals.get(numbers_[next++]);
    }
  }
  numbers_.resize(numbers_.size() - count);
}

/// Ends an application at its closing bracket. Gives false when its value is not there yet.
bool SmtLib2TermParser::close() {
  if (frames_.empty())
    c_.lexer.error_expected("a term");
  if (is_divisors_difference()) {
    frames_.pop_back();
    frames_.back().is_difference = true;
    return false;
  }
  if (fold_numbers()) {
    return true;
  }
  Frame& frame = frames_.back();
  make_terms_of_numbers(std::span(values_).subspan(frame.first_value));
  Value value;
  try {
    value = build(frame, std::span(values_).subspan(frame.first_value));
  } catch (const ReadError&) {
    throw;
  } catch (const Exception& error) {
    c_.lexer.error(frame.position, error.what());
  }
  values_.resize(frame.first_value);
  if (frame.kind == Frame::Kind::operation)
    indices_.resize(frame.first_index);
  frames_.pop_back();
  values_.push_back(value);
  return true;
}

Value SmtLib2TermParser::build(Frame& frame, std::span<Value> arguments) {
  switch (frame.kind) {
    case Frame::Kind::operation: {
      const bool is_pair = frame.op->role == Operator::Role::divisible && arguments.size() == 2;
      if (is_pair && !frame.is_difference) {
        throw TermManager::error("found 2 arguments of divisible, expected 1");
      }
      return apply_operator(c_.builder, *frame.op, std::span(indices_).subspan(frame.first_index),
                            arguments);
    }
    case Frame::Kind::function:
      return apply_function(frame.function, arguments);
    case Frame::Kind::definition:
      return c_.definitions.apply(*frame.definition, frame.name->text, arguments);
    case Frame::Kind::let_binding:
    case Frame::Kind::let_body:
    case Frame::Kind::annotated:
      break;
  }
  c_.lexer.error_expected("a term");
}

Value SmtLib2TermParser::apply_function(const Symbol* function, std::span<const Value> arguments) {
  if (arguments.size() != function->arity) {
    throw TermManager::error("found " + std::to_string(arguments.size()) +
                             (arguments.size() == 1 ? " argument of " : " arguments of ") +
                             function->name + ", expected " + std::to_string(function->arity));
  }
  children_.clear();
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const DataType* expected = function->type->get_component(i + 1);
    const DataType* found = c_.builder.sort_of(arguments[i]);
    const bool fits = found == expected || (expected == c_.builder.manager().get_real_type() &&
                                            found == c_.builder.manager().get_int_type());
    if (!fits) {
      throw TermManager::error("found " + found->to_str() + " as argument " +
                               std::to_string(i + 1) + " of " + function->name + ", expected " +
                               expected->to_str());
    }
    children_.push_back(arguments[i].term);
  }
  return {c_.builder.manager().make_term(function, children_), false};
}

}  // namespace brum
