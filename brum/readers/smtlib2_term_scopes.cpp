// The part of the parser of terms that reads let variables and attributes.

#include "brum/readers/s_expressions.h"
#include "brum/readers/smtlib2_term_parser.h"

namespace brum {

/// Reads on behind `(let` up to the first variable's value.
void SmtLib2TermParser::open_let() {
  if (c_.lexer.next().kind != TokenKind::left_bracket)
    c_.lexer.error_expected("'('");
  if (c_.lexer.next().kind != TokenKind::left_bracket)
    c_.lexer.error_expected("'('");
  open_let_binding(frames_.back());
}

/// Reads on behind the opening bracket of a variable.
void SmtLib2TermParser::open_let_binding(Frame& frame) {
  frame.variable = &read_name("a variable");
  bindings_.push_back({frame.variable, {}, c_.lexer.token().position});
}

/// Takes the value of a variable and reads on to the next one's value or to the body.
void SmtLib2TermParser::end_let_binding(Frame& frame) {
  expect_right_bracket();
  bindings_.back().value = values_.back();
  values_.pop_back();
  const Token& token = c_.lexer.next();
  if (token.kind == TokenKind::left_bracket) {
    open_let_binding(frame);
  } else if (token.kind == TokenKind::right_bracket) {
    cover_variables(frame);
  } else {
    c_.lexer.error_expected("'(' or ')'");
  }
}

/// Gives all variables of a let their values at once.
void SmtLib2TermParser::cover_variables(Frame& frame) {
  const std::uint64_t mark = c_.names.new_mark();
  const std::size_t first = frame.first_value;
  for (std::size_t i = first; i < bindings_.size(); ++i) {
    Name& variable = *bindings_[i].variable;
    if (variable.mark == mark) {
      c_.lexer.error(bindings_[i].position, "found the variable " + std::string(variable.text) +
                                                " twice in a let, expected another one");
    }
    variable.mark = mark;
    c_.scopes.cover(variable, bindings_[i].value);
  }
  frame.kind = Frame::Kind::let_body;
  frame.count = bindings_.size() - first;
  bindings_.shrink(first);
}

/// Reads on behind the term of `(! term`, whose frame is not on the stack any more.
void SmtLib2TermParser::read_attributes() {
  const Value value = values_.back();
  const SideConditions::Node conditions = c_.builder.side_conditions().end_definition();
  c_.builder.side_conditions().use(conditions);
  std::size_t count = 0;
  for (; c_.lexer.next().kind != TokenKind::right_bracket; ++count) {
    if (c_.lexer.token().kind != TokenKind::keyword)
      c_.lexer.error_expected("an attribute or ')'");
    const std::string keyword(c_.lexer.token().text);
    const TokenKind next = c_.lexer.next().kind;
    c_.lexer.push_back();
    const bool has_value = next != TokenKind::keyword && next != TokenKind::right_bracket;
    std::string text;
    if (keyword == "named") {
      Name& name = read_name("a name");
      text = c_.lexer.token().raw;
      const std::string_view told = name_term(name, c_.lexer.token().position, value, conditions);
      if (frames_.empty() && name_of_whole_ != nullptr) {
        *name_of_whole_ = told;
        continue;
      }
      if (told != name.text)
        text = told;
    } else if (has_value) {
      text = read_s_expression(c_.lexer);
    }
    c_.handler.on_annotation(value.term, keyword, text);
  }
  if (count == 0)
    c_.lexer.error_expected("an attribute");
}

/// Lets a name stand for a term, and keeps the manager's symbols, hence labels, apart from it.
/// Gives the name to tell of: where it is an operator's, which what is written may need, another.
std::string_view SmtLib2TermParser::name_term(Name& name, TextPosition position, Value value,
                                              SideConditions::Node conditions) {
  if (c_.builder.partial_operators().deferring()) {
    c_.lexer.error(position, "found :named in a definition with parameters, expected no name");
  }
  const DataType* sort = c_.builder.sort_of(value);
  try {
    c_.scopes.define_within_term(name, c_.definitions.define({}, sort, value, conditions));
  } catch (const Exception& error) {
    c_.lexer.error(position, error.what());
  }
  if (name.theory_operator != nullptr)
    return c_.scopes.renamed_symbol(name, sort)->name_view();
  TermManager& manager = c_.builder.manager();
  if (manager.get_signature()->get_symbol(name.text) == nullptr) {
    manager.declare(std::string(name.text), sort);
  }
  return name.text;
}

}  // namespace brum
