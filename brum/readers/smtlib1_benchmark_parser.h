#ifndef BRUM_READERS_SMTLIB1_BENCHMARK_PARSER_H
#define BRUM_READERS_SMTLIB1_BENCHMARK_PARSER_H

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

#include "brum/readers/command_teller.h"
#include "brum/readers/literals.h"
#include "brum/readers/names.h"
#include "brum/readers/reader_options.h"
#include "brum/readers/scopes.h"
#include "brum/readers/script_handler.h"
#include "brum/readers/smtlib1_lexer.h"
#include "brum/readers/smtlib1_sorts.h"
#include "brum/readers/smtlib1_term_parser.h"
#include "brum/readers/term_builder.h"

namespace brum {

/// Reads one benchmark: its attributes, in order. Used once.
class SmtLib1BenchmarkParser {
 public:
  SmtLib1BenchmarkParser(TermManager& manager, const ReaderOptions& options, std::istream& in,
                         ScriptHandler& handler);

  /// Reads a benchmark and the end of the input.
  void read_benchmark();

  /// Reads one term and the end of the input.
  const Term* read_term();

 private:
  /// Reads what belongs to an attribute, behind its keyword.
  using Action = void (SmtLib1BenchmarkParser::*)();
  struct Entry {
    std::string_view keyword;
    Action action;
  };

  static Action find_action(std::string_view keyword);
  void read_attribute();
  void assumption();
  void extra_functions();
  void extra_predicates();
  void extra_sorts();
  void formula();
  void logic();
  void status();
  void other_attribute(const std::string& keyword);

  void fill_names();
  void declare(bool is_predicate);
  void read_declarations(bool are_predicates);
  Name& read_new_name();
  void expect(TokenKind kind, const char* expected);
  Command make_command(Command::Kind kind, TextPosition position) const;

  const ReaderOptions& options_;
  ScriptHandler& handler_;
  TermManager& manager_;
  SmtLib1Lexer lexer_;
  NameTable names_;
  TermBuilder builder_;
  CommandTeller teller_;
  Scopes scopes_;
  Literals literals_;
  SmtLib1Sorts sorts_;
  SmtLib1TermParser terms_;

  std::string keyword_;  // of the attribute being read
  TextPosition attribute_position_;
  std::string status_;
  bool logic_is_set_ = false;
  bool has_formula_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_BENCHMARK_PARSER_H
