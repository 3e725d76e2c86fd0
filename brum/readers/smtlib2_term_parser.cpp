#include "brum/readers/smtlib2_term_parser.h"

namespace brum {

Value SmtLib2TermParser::parse(std::string* name) {
  clear();
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
      case TokenKind::hexadecimal:
      case TokenKind::binary:
        push_literal(token);
        break;
      case TokenKind::string:
        c_.lexer.error(token.position, "found a string constant, expected a term that can be held");
      case TokenKind::keyword:
      case TokenKind::end:
        c_.lexer.error_expected(frames_.empty() ? "a term" : "a term or ')'");
    }
    if (!has_value || waits_for_arguments())
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

/// Ends an application at its closing bracket. Gives false when its value is not there yet.
bool SmtLib2TermParser::close() {
  if (frames_.empty())
    c_.lexer.error_expected("a term");
  if (end_divisors_difference())
    return false;
  if (fold_numbers())
    return true;
  Frame& frame = frames_.back();
  switch (frame.kind) {
    case Frame::Kind::operation:
    case Frame::Kind::function:
    case Frame::Kind::definition:
      break;
    case Frame::Kind::let_binding:
    case Frame::Kind::let_body:
    case Frame::Kind::annotated:
      c_.lexer.error_expected("a term");
  }
  try {
    end_application(build_application(frame, arguments()));
  } catch (const Exception& error) {
    c_.lexer.error(frame.position, error.what());
  }
  return true;
}

Value SmtLib2TermParser::build_application(Frame& frame, std::span<Value> arguments) {
  if (frame.kind == Frame::Kind::definition) {
    return c_.definitions.apply(*frame.definition, frame.name->text, arguments);
  }
  return build(frame, arguments);
}

}  // namespace brum
