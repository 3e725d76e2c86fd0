#include "brum/readers/smtlib1_term_parser.h"

#include "brum/readers/smtlib1_bit_vectors.h"

namespace brum {

Value SmtLib1TermParser::parse() {
  clear();
  while (true) {
    const Token& token = c_.lexer.next();
    bool has_value = true;
    switch (token.kind) {
      case TokenKind::symbol:
        values_.push_back(symbol(token));
        break;
      case TokenKind::left_bracket:
        open(token.position);
        has_value = false;
        break;
      case TokenKind::right_bracket:
        has_value = close();
        break;
      case TokenKind::numeral:
      case TokenKind::decimal:
        push_literal(token);
        break;
      case TokenKind::keyword:
        has_value = close_annotated();
        break;
      case TokenKind::hexadecimal:
      case TokenKind::binary:
      case TokenKind::string:
      case TokenKind::end:
        c_.lexer.error_expected(frames_.empty() ? "a term" : "a term or ')'");
    }
    if (has_value && frames_.empty())
      return values_.back();
  }
}

void SmtLib1TermParser::error_unknown(const Token& token) const {
  const bool is_variable = token.text.front() == '?' || token.text.front() == '$';
  c_.lexer.error(token.position, is_variable ? "found the variable " + std::string(token.raw) +
                                                   ", expected one of a let or flet around it"
                                             : "found the symbol " + std::string(token.raw) +
                                                   ", expected a declared symbol");
}

void SmtLib1TermParser::expect_right_bracket() {
  if (c_.lexer.next().kind != TokenKind::right_bracket)
    c_.lexer.error_expected("')'");
}

// Symbols.

/// Gives what a symbol without brackets denotes.
Value SmtLib1TermParser::symbol(const Token& token) {
  Name& name = c_.names.get(token.raw);
  if (name.binding.kind == BindingKind::value)
    return name.binding.value();
  return constant(name, token);
}

Value SmtLib1TermParser::constant(Name& name, const Token& token) {
  if (name.is_free()) {
    if (const Term* value = bit_vector(token); value != nullptr) {
      name.binding = Binding::to_value({value, false});
      return {value, false};
    }
    if (c_.use_signature)
      find_in_signature(name);
  }
  const Operator* op = name.theory_operator;
  if (name.binding.kind == BindingKind::function && name.binding.function->arity == 0) {
    const Term* constant = c_.builder.manager().make_term(name.binding.function);
    name.binding = Binding::to_value({constant, false});
    return {constant, false};
  }
  if (name.binding.kind == BindingKind::none) {
    if (op == nullptr)
      error_unknown(token);
    if (op->shape == Shape::constant)
      return apply_operator(c_.builder, *op, {}, {});
  }
  c_.lexer.error(token.position,
                 "found " + std::string(token.raw) + " without arguments, expected a term");
}

const Term* SmtLib1TermParser::bit_vector(const Token& token) {
  try {
    return read_bit_vector(c_.builder.manager(), token);
  } catch (const Exception& error) {
    c_.lexer.error(token.position, error.what());
  }
}

// Brackets.

/// Reads on behind an opening bracket.
void SmtLib1TermParser::open(TextPosition position) {
  const Token& head = c_.lexer.next();
  if (head.kind == TokenKind::numeral || head.kind == TokenKind::decimal) {
    frames_.push_back(new_frame(Frame::Kind::annotated, position));
    push_literal(head);
  } else if (head.kind == TokenKind::symbol) {
    open_application(head, position);
  } else {
    c_.lexer.error_expected("an operator, a function, let or flet");
  }
}

void SmtLib1TermParser::open_application(const Token& token, TextPosition position) {
  if (open_indexed(token, position))
    return;
  Name& name = c_.names.get(token.raw);
  if (name.reserved == ReservedWord::let) {
    open_let(name, position);
    return;
  }
  if (name.reserved == ReservedWord::forall || name.reserved == ReservedWord::exists) {
    c_.lexer.error(position, "found " + std::string(token.raw) +
                                 " (quantifiers), expected a formula without quantifiers");
  }
  if (name.is_free() && c_.use_signature)
    find_in_signature(name);
  Frame frame = new_frame(Frame::Kind::operation, position);
  const Binding& binding = name.binding;
  const bool is_operator = binding.kind == BindingKind::none && name.theory_operator != nullptr;
  if (binding.kind == BindingKind::function && binding.function->arity > 0) {
    frame.kind = Frame::Kind::function;
    frame.function = binding.function;
  } else if (is_operator && name.theory_operator->num_indices > 0) {
    c_.lexer.error(token.position, "found " + std::string(token.raw) +
                                       " without indices, expected " + std::string(token.raw) +
                                       "[index]");
  } else if (is_operator && name.theory_operator->shape != Shape::constant) {
    frame.op = name.theory_operator;
  } else {
    // Not an application: `(x :keyword {text})`.
    frame.kind = Frame::Kind::annotated;
    const Value value = symbol(token);
    frames_.push_back(frame);
    values_.push_back(value);
    return;
  }
  frames_.push_back(frame);
}

/// Opens the application of an operator with indices. Gives false for other symbols.
bool SmtLib1TermParser::open_indexed(const Token& token, TextPosition position) {
  std::string_view indices = SmtLib1Lexer::indices(token);
  if (indices.empty())
    return false;
  const Name& name = c_.names.get(token.text);
  if (name.theory_operator == nullptr || name.theory_operator->num_indices == 0)
    return false;
  Frame frame = new_frame(Frame::Kind::operation, position);
  frame.op = name.theory_operator;
  while (!indices.empty()) {
    indices_.push_back(take_index(indices));
  }
  const std::size_t found = indices_.size() - frame.first_index;
  if (found != name.theory_operator->num_indices) {
    c_.lexer.error(token.position, "found " + std::to_string(found) +
                                       (found == 1 ? " index of " : " indices of ") +
                                       std::string(name.text) + ", expected " +
                                       std::to_string(name.theory_operator->num_indices));
  }
  frames_.push_back(frame);
  return true;
}

/// Reads on behind `let` or `flet` up to the variable's value.
void SmtLib1TermParser::open_let(Name& word, TextPosition position) {
  const bool is_formula = word.text.front() == 'f';
  if (c_.lexer.next().kind != TokenKind::left_bracket)
    c_.lexer.error_expected("'('");
  const Token& token = c_.lexer.next();
  const char first = token.kind == TokenKind::symbol ? token.raw.front() : '\0';
  if (first != (is_formula ? '$' : '?')) {
    c_.lexer.error_expected(is_formula ? "a variable such as $f" : "a variable such as ?x");
  }
  Frame frame = new_frame(Frame::Kind::let_binding, position);
  frame.variable = &c_.names.get(token.raw);
  frames_.push_back(frame);
}

// Finished terms.

/// Ends what is open at its closing bracket. Gives false when there is no value for it yet.
bool SmtLib1TermParser::close() {
  if (frames_.empty())
    c_.lexer.error_expected("a term");
  if (end_divisors_difference())
    return false;
  if (fold_numbers())
    return true;
  const Frame& frame = frames_.back();
  switch (frame.kind) {
    case Frame::Kind::let_binding:
      end_let_binding();
      return false;
    case Frame::Kind::let_body:
      require_one_value(frame);
      c_.scopes.uncover(1);
      frames_.pop_back();
      return true;
    case Frame::Kind::annotated:
    case Frame::Kind::definition:
      c_.lexer.error_expected("an attribute");
    case Frame::Kind::operation:
    case Frame::Kind::function:
      break;
  }
  try {
    end_application(build(frame, arguments()));
  } catch (const Exception& error) {
    c_.lexer.error(frame.position, error.what());
  }
  return true;
}

void SmtLib1TermParser::require_one_value(const Frame& frame) const {
  const std::size_t found = values_.size() - frame.first_value;
  if (found != 1) {
    c_.lexer.error(frame.position,
                   "found " + std::to_string(found) + " terms in brackets, expected 1");
  }
}

/// Gives the variable of the frame on top its value.
void SmtLib1TermParser::end_let_binding() {
  Frame& frame = frames_.back();
  require_one_value(frame);
  const Value value = values_.back();
  const DataType* sort = c_.builder.sort_of(value);
  const bool is_formula = frame.variable->text.front() == '$';
  if ((sort == c_.builder.manager().get_bool_type()) != is_formula) {
    c_.lexer.error(frame.position, "found a term of sort " + sort->to_short_str() + " for " +
                                       std::string(frame.variable->text) +
                                       (is_formula ? ", expected Bool" : ", expected no formula"));
  }
  values_.pop_back();
  c_.scopes.cover(*frame.variable, value);
  frame.kind = Frame::Kind::let_body;
}

/// Reads annotations, of which the first keyword was read, and ends what they belong to.
bool SmtLib1TermParser::close_annotated() {
  if (frames_.empty() || frames_.back().kind == Frame::Kind::let_binding)
    c_.lexer.error_expected(frames_.empty() ? "a term" : "a term or ')'");
  c_.lexer.push_back();
  const auto annotations = read_annotations();
  expect_right_bracket();
  if (frames_.back().kind == Frame::Kind::annotated) {
    require_one_value(frames_.back());
    frames_.pop_back();
  } else if (!close()) {
    return false;  // a difference, which is no term of its own
  }
  const Term* term = top_term();
  for (const auto& [keyword, value] : annotations) {
    c_.handler.on_annotation(term, keyword, value);
  }
  return true;
}

std::vector<std::pair<std::string, std::string>> SmtLib1TermParser::read_annotations() {
  std::vector<std::pair<std::string, std::string>> annotations;
  while (true) {
    const Token& token = c_.lexer.next();
    if (token.kind == TokenKind::keyword) {
      annotations.emplace_back(token.text, "");
    } else if (token.kind == TokenKind::string && !annotations.empty() &&
               annotations.back().second.empty()) {
      annotations.back().second = as_smtlib2_string(token);
    } else {
      c_.lexer.push_back();
      return annotations;
    }
  }
}

}  // namespace brum
