#ifndef BRUM_READERS_SMTLIB1_TERM_PARSER_H
#define BRUM_READERS_SMTLIB1_TERM_PARSER_H

#include <string>
#include <utility>
#include <vector>

#include "brum/readers/scopes.h"
#include "brum/readers/script_handler.h"
#include "brum/readers/smtlib1_lexer.h"
#include "brum/readers/term_stack.h"

namespace brum {

/// All that a parser of terms of version 1 works with. Everything outlives the parser.
struct Smt1TermContext {
  SmtLib1Lexer& lexer;
  NameTable& names;  // without what is particular to version 2
  Scopes& scopes;
  TermBuilder& builder;
  Literals& literals;
  ScriptHandler& handler;

  /// Whether names that are not declared may stand for symbols of the manager.
  bool use_signature;
};

/// Reads terms and formulas of SMT-LIB 1.2, which it treats alike but for the variables of `let`
/// (terms) and `flet` (formulas).
class SmtLib1TermParser : private TermStack {
 public:
  explicit SmtLib1TermParser(const Smt1TermContext& context)
      : TermStack(context.builder, context.literals), c_(context) {}

  /// Reads one term. Its annotations go to the handler, with texts in braces as strings of
  /// SMT-LIB 2.6. Throws ReadError.
  Value parse();

  /// Reads annotations, as many as there are: keywords without their colons, and values.
  std::vector<std::pair<std::string, std::string>> read_annotations();

 private:
  // Symbols and brackets.
  Value symbol(const Token& token);
  Value constant(Name& name, const Token& token);
  const Term* bit_vector(const Token& token);
  void open(TextPosition position);
  void open_application(const Token& token, TextPosition position);
  bool open_indexed(const Token& token, TextPosition position);
  void open_let(Name& word, TextPosition position);
  [[noreturn]] void error_unknown(const Token& token) const;
  void expect_right_bracket();

  // Finished terms.
  bool close();
  bool close_annotated();
  void end_let_binding();
  void require_one_value(const Frame& frame) const;

  Smt1TermContext c_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_TERM_PARSER_H
