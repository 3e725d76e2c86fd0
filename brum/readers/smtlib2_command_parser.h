#ifndef BRUM_READERS_SMTLIB2_COMMAND_PARSER_H
#define BRUM_READERS_SMTLIB2_COMMAND_PARSER_H

#include <cstddef>
#include <istream>
#include <string>
#include <utility>
#include <vector>

#include "brum/readers/command_teller.h"
#include "brum/readers/definitions.h"
#include "brum/readers/literals.h"
#include "brum/readers/names.h"
#include "brum/readers/scopes.h"
#include "brum/readers/script_handler.h"
#include "brum/readers/smtlib2_lexer.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/readers/smtlib2_sort_parser.h"
#include "brum/readers/smtlib2_term_parser.h"
#include "brum/readers/term_builder.h"

namespace brum {

/// Reads one script: its commands, in order, with all that they change. Used once.
class SmtLib2CommandParser {
 public:
  SmtLib2CommandParser(TermManager& manager, const ReaderOptions& options, std::istream& in,
                       ScriptHandler& handler);

  /// Reads up to the end of the input or to `exit`.
  void read_script();

  /// Reads one term and the end of the input.
  const Term* read_term();

 private:
  /// Reads a command behind its name, but for the closing bracket.
  using Action = void (SmtLib2CommandParser::*)();
  struct Entry {
    std::string_view name;
    Action action;        // null: the command asks for output and is skipped
    const char* refusal;  // not null: the command cannot be held, and this is why
  };
  static const Entry* find_command(std::string_view name);

  void read_command();

  void assert_term();
  void check_sat();
  void check_sat_assuming();
  void declare_const();
  void declare_fun();
  void declare_sort();
  void define_const();
  void define_fun();
  void define_sort();
  void exit();
  void pop();
  void push();
  void reset();
  void reset_assertions();
  void set_info();
  void set_logic();
  void set_option();

  Name& read_new_name();
  std::size_t read_levels();
  std::pair<std::string, std::string> read_attribute();
  const Term* read_boolean(std::string* name);
  void declare(Name& name, const std::vector<const DataType*>& arguments, const DataType* result);
  void read_body(Name& name, std::vector<const DataType*> parameter_sorts, bool has_parameters);
  void expect(TokenKind kind, const char* expected);
  void expect_closing_bracket() { expect(TokenKind::right_bracket, "')'"); }
  Command make_command(Command::Kind kind) const;

  const ReaderOptions& options_;
  ScriptHandler& handler_;
  TermManager& manager_;
  SmtLib2Lexer lexer_;
  NameTable names_;
  TermBuilder builder_;
  CommandTeller teller_;
  Definitions definitions_;
  Scopes scopes_;
  Literals literals_;
  SmtLib2SortParser sorts_;
  SmtLib2TermParser terms_;
  TextPosition command_position_;
  std::string status_;
  bool logic_is_set_ = false;
  bool has_exited_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_COMMAND_PARSER_H
