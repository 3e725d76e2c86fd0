// The part of the parser of commands that reads declarations and definitions.

#include "brum/readers/smtlib2_command_parser.h"

namespace brum {

/// Reads a name that a declaration may give.
Name& SmtLib2CommandParser::read_new_name() {
  expect(TokenKind::symbol, "a new name");
  Name& name = names_.get(lexer_.token().text);
  if (name.reserved != ReservedWord::none && !lexer_.token().quoted) {
    lexer_.error(lexer_.token().position,
                 "found the reserved word " + std::string(name.text) + ", expected a new name");
  }
  return name;
}

void SmtLib2CommandParser::declare(Name& name, const std::vector<const DataType*>& arguments,
                                   const DataType* result) {
  handler_.on_symbol(std::string(name.text), scopes_.declare(name, arguments, result));
}

void SmtLib2CommandParser::declare_const() {
  Name& name = read_new_name();
  declare(name, {}, sorts_.parse());
}

void SmtLib2CommandParser::declare_fun() {
  Name& name = read_new_name();
  expect(TokenKind::left_bracket, "'(' and the sorts of arguments");
  std::vector<const DataType*> arguments;
  while (lexer_.next().kind != TokenKind::right_bracket) {
    lexer_.push_back();
    arguments.push_back(sorts_.parse());
  }
  declare(name, arguments, sorts_.parse());
}

void SmtLib2CommandParser::declare_sort() {
  Name& name = read_new_name();
  expect(TokenKind::numeral, "the number of a sort's parameters");
  if (lexer_.token().text != "0") {
    constexpr std::size_t most = 64;  // each application holds all of them
    const std::optional<std::uint64_t> count =
        QNumber::from_string(lexer_.token().text).to_uint64();
    if (!count || *count > most)
      lexer_.error_expected("at most 64 parameters");
    scopes_.declare_sort_family(name, static_cast<std::size_t>(*count));
    return;
  }
  const std::string text(name.text);
  const DataType* sort = nullptr;
  if (options_.sorts != nullptr) {
    const auto given = options_.sorts->find(text);
    if (given != options_.sorts->end())
      sort = given->second;
  }
  if (sort == nullptr)
    sort = manager_.make_uninterpreted_type(text);
  scopes_.declare_sort(name, sort);
  handler_.on_sort(text, sort);
}

void SmtLib2CommandParser::define_sort() {
  Name& name = read_new_name();
  expect(TokenKind::left_bracket, "'(' and parameters");
  std::size_t count = 0;
  while (lexer_.next().kind != TokenKind::right_bracket) {
    lexer_.push_back();
    scopes_.cover_sort(read_new_name(), sorts_.parameter(count));
    ++count;
  }
  const DataType* body = sorts_.parse();
  scopes_.uncover_sorts(count);
  scopes_.define_sort(name, count, body);
}

void SmtLib2CommandParser::define_const() {
  Name& name = read_new_name();
  read_body(name, {}, false);
}

void SmtLib2CommandParser::define_fun() {
  Name& name = read_new_name();
  expect(TokenKind::left_bracket, "'(' and parameters");
  std::vector<const DataType*> sorts;
  std::vector<Name*> parameters;
  while (lexer_.next().kind != TokenKind::right_bracket) {
    if (lexer_.token().kind != TokenKind::left_bracket) {
      lexer_.error_expected("'(' and a parameter, or ')'");
    }
    parameters.push_back(&read_new_name());
    sorts.push_back(sorts_.parse());
    expect_closing_bracket();
  }
  // Of two parameters with one name the body sees the later one.
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    scopes_.cover(*parameters[i], {definitions_.parameter(i, sorts[i]), false});
  }
  builder_.partial_operators().set_deferring(!parameters.empty());
  read_body(name, std::move(sorts), !parameters.empty());
}

/// Reads the result sort and the body of a definition whose parameters are covered already.
void SmtLib2CommandParser::read_body(Name& name, std::vector<const DataType*> parameter_sorts,
                                     bool has_parameters) {
  const DataType* result = sorts_.parse();
  lexer_.next();
  const TextPosition position = lexer_.token().position;
  lexer_.push_back();
  builder_.side_conditions().begin_definition();
  const Value body = terms_.parse();
  const SideConditions::Node conditions = builder_.side_conditions().end_definition();
  const DataType* sort = builder_.sort_of(body);
  const bool fits =
      sort == result || (sort == manager_.get_int_type() && result == manager_.get_real_type());
  if (!fits) {
    lexer_.error(position, "found a term of sort " + sort->to_short_str() + ", expected " +
                               result->to_short_str());
  }
  if (has_parameters) {
    builder_.partial_operators().set_deferring(false);
    scopes_.uncover(parameter_sorts.size());
  }
  scopes_.define(name, definitions_.define(std::move(parameter_sorts), result, body, conditions));
}

}  // namespace brum
