#ifndef BRUM_READERS_SMTLIB2_TERM_PARSER_H
#define BRUM_READERS_SMTLIB2_TERM_PARSER_H

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "brum/readers/definitions.h"
#include "brum/readers/literals.h"
#include "brum/readers/names.h"
#include "brum/readers/scopes.h"
#include "brum/readers/script_handler.h"
#include "brum/readers/smtlib2_lexer.h"
#include "brum/readers/smtlib2_sort_parser.h"
#include "brum/readers/term_builder.h"
#include "brum/readers/term_stack.h"
#include "brum/utils/large_array.h"

namespace brum {

/// All that a parser of terms works with. Everything outlives the parser.
struct TermContext {
  SmtLib2Lexer& lexer;
  NameTable& names;
  Scopes& scopes;
  TermBuilder& builder;
  Definitions& definitions;
  Literals& literals;
  SmtLib2SortParser& sorts;
  ScriptHandler& handler;

  /// Whether names that are not declared may stand for symbols of the manager.
  bool use_signature;
};

/// Reads terms of SMT-LIB 2.6.
class SmtLib2TermParser : private TermStack {
 public:
  explicit SmtLib2TermParser(const TermContext& context)
      : TermStack(context.builder, context.literals), c_(context) {}

  /// Reads one term. If `name` is not null, it gets the name that `:named` gives to the whole term,
  /// empty if there is none; all other attributes go to the handler. Throws ReadError.
  Value parse(std::string* name = nullptr);

 private:
  struct LetBinding {
    Name* variable;
    Value value;
    TextPosition position;
  };

  // Symbols and brackets.
  Value symbol(const Token& token);
  Value look_up_constant(Name& name, const Token& token);
  bool open(TextPosition position);
  void open_application(Name& name, const Token& token, TextPosition position);
  void open_compound_head(TextPosition position);
  void open_indexed(TextPosition position);
  void open_qualified(TextPosition position);
  void read_indices();
  Value indexed_constant();
  Value qualified_constant();
  Name& read_name(const std::string& expected);
  void expect_right_bracket();
  [[noreturn]] void error_unknown(const Token& token) const;
  [[noreturn]] void error_no_function(const Name& name, const Token& token) const;
  [[noreturn]] void error_reserved(const Name& name, const Token& word,
                                   TextPosition position) const;

  // Finished terms.
  bool close();
  Value build_application(Frame& frame, std::span<Value> arguments);
  void settle();

  // Lets and attributes.
  void open_let();
  void open_let_binding(Frame& frame);
  void end_let_binding(Frame& frame);
  void cover_variables(Frame& frame);
  void read_attributes();
  std::string_view name_term(Name& name, TextPosition position, Value value,
                             SideConditions::Node conditions);

  TermContext c_;
  LargeList<LetBinding> bindings_;
  std::string* name_of_whole_ = nullptr;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_TERM_PARSER_H
