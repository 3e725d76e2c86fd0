#include "brum/readers/smtlib1_benchmark_parser.h"

#include <array>
#include <vector>

#include "brum/readers/smtlib1_operators.h"

namespace brum {

SmtLib1BenchmarkParser::SmtLib1BenchmarkParser(TermManager& manager, const ReaderOptions& options,
                                               std::istream& in, ScriptHandler& handler)
    : options_(options),
      handler_(handler),
      manager_(manager),
      lexer_(in, options.file_name),
      builder_(manager),
      teller_(handler, builder_.partial_operators()),
      scopes_(names_, builder_),
      literals_(builder_),
      sorts_(builder_),
      terms_(Smt1TermContext{lexer_, names_, scopes_, builder_, literals_, handler,
                             options.use_signature}) {
  builder_.set_logic(options.logic);
  fill_names();
}

/// Makes the names those of version 1: its operators, and few reserved words.
void SmtLib1BenchmarkParser::fill_names() {
  for (const Operator& op : smtlib2_operators())
    names_.get(op.name).theory_operator = nullptr;
  for (const Operator& op : smtlib1_operators())
    names_.get(op.name).theory_operator = &op;
  names_.get("flet").reserved = ReservedWord::let;
}

SmtLib1BenchmarkParser::Action SmtLib1BenchmarkParser::find_action(std::string_view keyword) {
  using P = SmtLib1BenchmarkParser;
  static constexpr std::array<Entry, 7> attributes{{
      {"assumption", &P::assumption},
      {"extrafuns", &P::extra_functions},
      {"extrapreds", &P::extra_predicates},
      {"extrasorts", &P::extra_sorts},
      {"formula", &P::formula},
      {"logic", &P::logic},
      {"status", &P::status},
  }};
  for (const Entry& entry : attributes) {
    if (entry.keyword == keyword)
      return entry.action;
  }
  return nullptr;
}

void SmtLib1BenchmarkParser::expect(TokenKind kind, const char* expected) {
  if (lexer_.next().kind != kind)
    lexer_.error_expected(expected);
}

void SmtLib1BenchmarkParser::read_benchmark() {
  expect(TokenKind::left_bracket, "'(benchmark'");
  const TextPosition position = lexer_.token().position;
  expect(TokenKind::symbol, "benchmark");
  if (lexer_.token().raw != "benchmark")
    lexer_.error_expected("benchmark");
  expect(TokenKind::symbol, "the name of a benchmark");
  while (lexer_.next().kind != TokenKind::right_bracket) {
    if (lexer_.token().kind != TokenKind::keyword)
      lexer_.error_expected("an attribute or ')'");
    read_attribute();
  }
  expect(TokenKind::end, "the end of the input");
  Command command = make_command(Command::Kind::check_sat, position);
  const Question question{.status = status_, .literals = {}, .conditions = {}};
  command.question = &question;
  teller_.tell(command);
  handler_.on_end(builder_.added_features());
}

void SmtLib1BenchmarkParser::read_attribute() {
  attribute_position_ = lexer_.token().position;
  keyword_ = lexer_.token().text;
  const Action action = find_action(keyword_);
  if (action == nullptr) {
    other_attribute(keyword_);
    return;
  }
  builder_.side_conditions().clear_used();
  try {
    (this->*action)();
  } catch (const TermManager::error& error) {
    lexer_.error(attribute_position_, error.what());
  }
}

const Term* SmtLib1BenchmarkParser::read_term() {
  const Value value = terms_.parse();
  expect(TokenKind::end, "the end of the input");
  return value.term;
}

// What is asserted.

Command SmtLib1BenchmarkParser::make_command(Command::Kind kind, TextPosition position) const {
  Command command;
  command.kind = kind;
  command.position = position;
  return command;
}

void SmtLib1BenchmarkParser::assumption() {
  lexer_.next();
  const TextPosition position = lexer_.token().position;
  lexer_.push_back();
  const Value value = terms_.parse();
  const DataType* sort = builder_.sort_of(value);
  if (sort != manager_.get_bool_type()) {
    lexer_.error(position, "found a term of sort " + sort->to_short_str() + ", expected a formula");
  }
  Command command = make_command(Command::Kind::assertion, attribute_position_);
  command.term = value.term;
  for (const Term* condition : builder_.side_conditions().assert_used()) {
    command.term = manager_.make_and(command.term, condition);
  }
  teller_.tell(command);
}

void SmtLib1BenchmarkParser::formula() {
  if (has_formula_)
    lexer_.error_expected("one :formula only");
  has_formula_ = true;
  assumption();
}

// What is said about the benchmark.

void SmtLib1BenchmarkParser::logic() {
  expect(TokenKind::symbol, "the name of a logic");
  if (logic_is_set_)
    lexer_.error_expected("one :logic only");
  logic_is_set_ = true;
  const std::string name(lexer_.token().text);
  builder_.set_logic(name);
  literals_.forget();
  handler_.on_logic(name);
}

void SmtLib1BenchmarkParser::status() {
  expect(TokenKind::symbol, "sat, unsat or unknown");
  status_ = lexer_.token().raw;
  handler_.on_info("status", status_);
}

void SmtLib1BenchmarkParser::other_attribute(const std::string& keyword) {
  const Token& token = lexer_.next();
  const bool has_value = token.kind == TokenKind::string;
  handler_.on_info(keyword, has_value ? as_smtlib2_string(token) : std::string());
  if (!has_value)
    lexer_.push_back();
}

// Declarations.

void SmtLib1BenchmarkParser::extra_sorts() {
  expect(TokenKind::left_bracket, "'(' and names of sorts");
  while (lexer_.next().kind != TokenKind::right_bracket) {
    if (lexer_.token().kind != TokenKind::symbol)
      lexer_.error_expected("the name of a sort or ')'");
    const std::string name(lexer_.token().raw);
    const DataType* sort = nullptr;
    if (options_.sorts != nullptr) {
      const auto given = options_.sorts->find(name);
      if (given != options_.sorts->end())
        sort = given->second;
    }
    if (sort == nullptr)
      sort = manager_.make_uninterpreted_type(name);
    sorts_.declare(name, sort);
    handler_.on_sort(name, sort);
  }
}

void SmtLib1BenchmarkParser::extra_functions() {
  read_declarations(false);
}

void SmtLib1BenchmarkParser::extra_predicates() {
  read_declarations(true);
}

void SmtLib1BenchmarkParser::read_declarations(bool are_predicates) {
  expect(TokenKind::left_bracket, "'(' and declarations");
  while (lexer_.next().kind != TokenKind::right_bracket) {
    if (lexer_.token().kind != TokenKind::left_bracket)
      lexer_.error_expected("'(' and a declaration, or ')'");
    declare(are_predicates);
  }
}

/// Reads a declaration behind its opening bracket, the closing one included.
void SmtLib1BenchmarkParser::declare(bool is_predicate) {
  Name& name = read_new_name();
  const TextPosition position = lexer_.token().position;
  std::vector<const DataType*> sorts;
  while (lexer_.next().kind == TokenKind::symbol) {
    sorts.push_back(sorts_.parse(lexer_));
  }
  lexer_.push_back();
  terms_.read_annotations();
  expect(TokenKind::right_bracket, "a sort or ')'");
  if (is_predicate) {
    sorts.push_back(manager_.get_bool_type());
  } else if (sorts.empty()) {
    lexer_.error_expected("a sort");
  }
  const DataType* result = sorts.back();
  sorts.pop_back();
  try {
    handler_.on_symbol(std::string(name.text), scopes_.declare(name, sorts, result));
  } catch (const TermManager::error& error) {
    lexer_.error(position, error.what());
  }
}

/// Reads a name that a declaration may give.
Name& SmtLib1BenchmarkParser::read_new_name() {
  expect(TokenKind::symbol, "a new name");
  const Token& token = lexer_.token();
  Name& name = names_.get(token.raw);
  const bool is_word = name.reserved == ReservedWord::let ||
                       name.reserved == ReservedWord::forall ||
                       name.reserved == ReservedWord::exists;
  if (is_word || token.raw.front() == '?' || token.raw.front() == '$')
    lexer_.error_expected("a new name");
  return name;
}

}  // namespace brum
