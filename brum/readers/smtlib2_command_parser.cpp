#include "brum/readers/smtlib2_command_parser.h"

#include <array>
#include <string>
#include <vector>

#include "brum/readers/s_expressions.h"

namespace brum {

SmtLib2CommandParser::SmtLib2CommandParser(TermManager& manager, const ReaderOptions& options,
                                           std::istream& in, ScriptHandler& handler)
    : options_(options),
      handler_(handler),
      manager_(manager),
      lexer_(in, options.file_name),
      builder_(manager),
      teller_(handler, builder_.partial_operators()),
      definitions_(builder_),
      scopes_(names_, builder_),
      literals_(builder_),
      sorts_(lexer_, names_, scopes_, manager),
      terms_(TermContext{lexer_, names_, scopes_, builder_, definitions_, literals_, sorts_,
                         handler, options.use_signature}) {
  builder_.set_logic(options.logic);
}

const SmtLib2CommandParser::Entry* SmtLib2CommandParser::find_command(std::string_view name) {
  using P = SmtLib2CommandParser;
  static constexpr std::array<Entry, 33> commands{{
      {"assert", &P::assert_term, nullptr},
      {"check-sat", &P::check_sat, nullptr},
      {"check-sat-assuming", &P::check_sat_assuming, nullptr},
      {"declare-const", &P::declare_const, nullptr},
      {"declare-fun", &P::declare_fun, nullptr},
      {"declare-sort", &P::declare_sort, nullptr},
      {"define-const", &P::define_const, nullptr},
      {"define-fun", &P::define_fun, nullptr},
      {"define-sort", &P::define_sort, nullptr},
      {"exit", &P::exit, nullptr},
      {"pop", &P::pop, nullptr},
      {"push", &P::push, nullptr},
      {"reset", &P::reset, nullptr},
      {"reset-assertions", &P::reset_assertions, nullptr},
      {"set-info", &P::set_info, nullptr},
      {"set-logic", &P::set_logic, nullptr},
      {"set-option", &P::set_option, nullptr},
      {"echo", nullptr, nullptr},
      {"get-assertions", nullptr, nullptr},
      {"get-assignment", nullptr, nullptr},
      {"get-info", nullptr, nullptr},
      {"get-model", nullptr, nullptr},
      {"get-option", nullptr, nullptr},
      {"get-proof", nullptr, nullptr},
      {"get-unsat-assumptions", nullptr, nullptr},
      {"get-unsat-core", nullptr, nullptr},
      {"get-value", nullptr, nullptr},
      {"declare-datatype", nullptr, "datatypes"},
      {"declare-datatypes", nullptr, "datatypes"},
      {"declare-codatatypes", nullptr, "datatypes"},
      {"declare-sort-parameter", nullptr, "parametric sorts"},
      {"define-fun-rec", nullptr, "recursive definitions"},
      {"define-funs-rec", nullptr, "recursive definitions"},
  }};
  for (const Entry& entry : commands) {
    if (entry.name == name)
      return &entry;
  }
  return nullptr;
}

void SmtLib2CommandParser::read_script() {
  while (!has_exited_) {
    const Token& token = lexer_.next();
    if (token.kind == TokenKind::end)
      break;
    if (token.kind != TokenKind::left_bracket)
      lexer_.error_expected("'(' and a command");
    command_position_ = token.position;
    read_command();
  }
  handler_.on_end(builder_.added_features());
}

void SmtLib2CommandParser::read_command() {
  const Token& token = lexer_.next();
  if (token.kind != TokenKind::symbol)
    lexer_.error_expected("a command");
  const Entry* entry = token.quoted ? nullptr : find_command(token.text);
  if (entry == nullptr)
    lexer_.error_expected("a command");
  if (entry->refusal != nullptr) {
    lexer_.error(command_position_, "found " + std::string(entry->name) + " (" + entry->refusal +
                                        "), expected a command that can be held");
  }
  if (entry->action == nullptr) {
    skip_rest_of_group(lexer_);
    return;
  }
  builder_.side_conditions().clear_used();
  try {
    (this->*entry->action)();
  } catch (const ReadError&) {
    throw;
  } catch (const TermManager::error& error) {
    lexer_.error(command_position_, error.what());
  }
  expect_closing_bracket();
}

const Term* SmtLib2CommandParser::read_term() {
  const Value value = terms_.parse();
  expect(TokenKind::end, "the end of the input");
  return value.term;
}

void SmtLib2CommandParser::expect(TokenKind kind, const char* expected) {
  if (lexer_.next().kind != kind)
    lexer_.error_expected(expected);
}

Command SmtLib2CommandParser::make_command(Command::Kind kind) const {
  Command command;
  command.kind = kind;
  command.position = command_position_;
  return command;
}

// Assertions and queries.

const Term* SmtLib2CommandParser::read_boolean(std::string* name) {
  lexer_.next();
  const TextPosition position = lexer_.token().position;
  lexer_.push_back();
  const Value value = terms_.parse(name);
  const DataType* sort = builder_.sort_of(value);
  if (sort != manager_.get_bool_type()) {
    lexer_.error(position, "found a term of sort " + sort->to_short_str() + ", expected Bool");
  }
  return value.term;
}

void SmtLib2CommandParser::assert_term() {
  Command command = make_command(Command::Kind::assertion);
  std::string name;
  command.term = read_boolean(&name);
  command.name = name;
  for (const Term* condition : builder_.side_conditions().assert_used()) {
    command.term = manager_.make_and(command.term, condition);
  }
  teller_.tell(command);
}

void SmtLib2CommandParser::check_sat() {
  const Question question{.status = status_, .literals = {}, .conditions = {}};
  Command command = make_command(Command::Kind::check_sat);
  command.question = &question;
  teller_.tell(command);
}

void SmtLib2CommandParser::check_sat_assuming() {
  expect(TokenKind::left_bracket, "'(' and literals");
  std::vector<const Term*> literals;
  while (lexer_.next().kind != TokenKind::right_bracket) {
    lexer_.push_back();
    literals.push_back(read_boolean(nullptr));
  }
  const std::vector<const Term*> conditions = builder_.side_conditions().conditions_used();
  const Question question{.status = status_, .literals = literals, .conditions = conditions};
  Command command = make_command(Command::Kind::check_sat_assuming);
  command.question = &question;
  teller_.tell(command);
}

// Levels.

/// Reads the number of levels of push and pop; without one it is 1.
std::size_t SmtLib2CommandParser::read_levels() {
  const Token& token = lexer_.next();
  if (token.kind == TokenKind::right_bracket) {
    lexer_.push_back();
    return 1;
  }
  if (token.kind != TokenKind::numeral)
    lexer_.error_expected("a number of levels");
  constexpr std::size_t most = 1000000;
  const std::optional<std::uint64_t> levels = QNumber::from_string(token.text).to_uint64();
  if (!levels || *levels > most)
    lexer_.error_expected("at most 1000000 levels");
  return static_cast<std::size_t>(*levels);
}

void SmtLib2CommandParser::push() {
  Command command = make_command(Command::Kind::push);
  command.levels = read_levels();
  scopes_.push(command.levels);
  for (std::size_t i = 0; i < command.levels; ++i)
    builder_.side_conditions().push();
  teller_.tell(command);
}

void SmtLib2CommandParser::pop() {
  Command command = make_command(Command::Kind::pop);
  command.levels = read_levels();
  scopes_.pop(command.levels);
  builder_.side_conditions().pop(command.levels);
  teller_.tell(command);
}

void SmtLib2CommandParser::reset() {
  scopes_.reset();
  builder_.side_conditions().reset();
  builder_.set_logic(options_.logic);
  literals_.forget();
  logic_is_set_ = false;
  status_.clear();
  teller_.tell(make_command(Command::Kind::reset));
}

void SmtLib2CommandParser::reset_assertions() {
  scopes_.reset_assertions();
  builder_.side_conditions().reset();
  teller_.tell(make_command(Command::Kind::reset_assertions));
}

void SmtLib2CommandParser::exit() {
  has_exited_ = true;
}

// Settings.

void SmtLib2CommandParser::set_logic() {
  expect(TokenKind::symbol, "the name of a logic");
  if (logic_is_set_)
    lexer_.error_expected("one set-logic only");
  logic_is_set_ = true;
  const std::string name(lexer_.token().text);
  builder_.set_logic(name);
  literals_.forget();
  handler_.on_logic(name);
}

std::pair<std::string, std::string> SmtLib2CommandParser::read_attribute() {
  expect(TokenKind::keyword, "a keyword");
  std::string keyword(lexer_.token().text);
  const bool has_value = lexer_.next().kind != TokenKind::right_bracket;
  lexer_.push_back();
  std::string value = has_value ? read_s_expression(lexer_) : std::string();
  return {std::move(keyword), std::move(value)};
}

void SmtLib2CommandParser::set_info() {
  const auto [keyword, value] = read_attribute();
  if (keyword == "status")
    status_ = value;
  handler_.on_info(keyword, value);
}

void SmtLib2CommandParser::set_option() {
  const auto [keyword, value] = read_attribute();
  if (keyword == "global-declarations")
    scopes_.set_global_declarations(value == "true");
  handler_.on_option(keyword, value);
}

}  // namespace brum
