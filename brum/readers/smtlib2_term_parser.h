#ifndef BRUM_READERS_SMTLIB2_TERM_PARSER_H
#define BRUM_READERS_SMTLIB2_TERM_PARSER_H

#include <cstddef>
#include <cstdint>
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
///
/// Terms are built bottom-up as their brackets close. What is open lies on a stack of frames, and
/// the values of finished arguments on a stack of values, so that the depth of a term costs no call
/// stack, and each token a constant number of steps.
class SmtLib2TermParser {
 public:
  explicit SmtLib2TermParser(const TermContext& context) : c_(context) {}

  /// Reads one term. If `name` is not null, it gets the name that `:named` gives to the whole term,
  /// empty if there is none; all other attributes go to the handler. Throws ReadError.
  Value parse(std::string* name = nullptr);

 private:
  struct Frame {
    enum class Kind : std::uint8_t {
      operation,    // of a theory
      function,     // a declared symbol
      definition,   // a defined function
      let_binding,  // the value of a let variable
      let_body,
      annotated,  // (! ...
    };

    Kind kind = Kind::operation;
    bool is_difference = false;  // of divisible: its arguments are those of a difference
    union {
      const Operator* op = nullptr;
      const Symbol* function;
      const Definition* definition;
      Name* variable;     // of let_binding
      std::size_t count;  // of let_body: its variables
    };
    Name* name = nullptr;         // of a definition
    std::size_t first_value = 0;  // in values_; for a let, in bindings_
    std::size_t first_index = 0;  // in indices_
    TextPosition position;
  };

  struct LetBinding {
    Name* variable;
    Value value;
    TextPosition position;
  };

  // Symbols and brackets.
  Frame new_frame(Frame::Kind kind, TextPosition position) const;
  Value symbol(const Token& token);
  Value constant_of(Name& name, const Token& token);
  void find_in_signature(Name& name) const;
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

  // Numbers in their spellings.
  bool waits_for_number() const;
  void push_number(const Number& number);
  bool fold_numbers();
  void make_terms_of_numbers(std::span<Value> arguments);

  // Finished terms.
  bool close();
  Value build(Frame& frame, std::span<Value> arguments);
  Value apply_function(const Symbol* function, std::span<const Value> arguments);
  bool is_divisors_difference() const;
  void settle();

  // Lets and attributes.
  void open_let();
  void open_let_binding(Frame& frame);
  void end_let_binding(Frame& frame);
  void cover_variables(Frame& frame);
  void read_attributes();
  void name_term(Name& name, TextPosition position, Value value, SideConditions::Node conditions);

  TermContext c_;
  std::vector<Frame> frames_;
  std::vector<Value> values_;    // of finished arguments; those without a term are in numbers_
  std::vector<Number> numbers_;  // in the order of their places in values_
  std::vector<QNumber> indices_;
  std::vector<LetBinding> bindings_;
  std::vector<const Term*> children_;
  std::string* name_of_whole_ = nullptr;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_TERM_PARSER_H
