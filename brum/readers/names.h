#ifndef BRUM_READERS_NAMES_H
#define BRUM_READERS_NAMES_H

#include <cstdint>
#include <string_view>
#include <vector>

#include "brum/readers/smtlib2_operators.h"
#include "brum/readers/text_table.h"
#include "brum/readers/value.h"
#include "brum/terms/arena.h"

namespace brum {

struct Definition;

/// What a name stands for among terms.
enum class BindingKind : std::uint8_t {
  none,
  value,       // a constant, a let variable, a parameter, or a definition without parameters
  function,    // a declared symbol with arguments
  definition,  // a definition with parameters, or one that needs side conditions
};

/// One meaning of a name. Small and copied freely: a scope keeps the binding that it covers.
struct Binding {
  BindingKind kind = BindingKind::none;
  bool as_real = false;  // of a value
  union {
    const Term* term = nullptr;
    const Symbol* function;
    const Definition* definition;
  };

  static Binding to_value(Value value) {
    Binding binding;
    binding.kind = BindingKind::value;
    binding.as_real = value.as_real;
    binding.term = value.term;
    return binding;
  }

  static Binding to_function(const Symbol* symbol) {
    Binding binding;
    binding.kind = BindingKind::function;
    binding.function = symbol;
    return binding;
  }

  static Binding to_definition(const Definition* definition) {
    Binding binding;
    binding.kind = BindingKind::definition;
    binding.definition = definition;
    return binding;
  }

  Value value() const { return {term, as_real}; }
};

/// The words that no symbol may be, unless it stands between bars.
enum class ReservedWord : std::uint8_t {
  none,
  underscore,   // _
  exclamation,  // !
  as_word,
  let,
  forall,
  exists,
  match,
  other,  // par, BINARY, …, and the names of commands
};

/// A name that occurred in the input, or an operator's or a reserved word. Its address is its
/// identity: it stays the same as long as the table lives.
struct Name {
  std::string_view text;
  const Operator* theory_operator = nullptr;
  Binding binding;
  std::uint64_t mark = 0;  // for finding doubles, see NameTable::new_mark()
  ReservedWord reserved = ReservedWord::none;

  bool is_free() const { return theory_operator == nullptr && binding.kind == BindingKind::none; }
};

/// Gives the text by which the table of names finds a name.
inline std::string_view text_of(const Name* name) {
  return name->text;
}

/// Keeps every name once.
class NameTable {
 public:
  /// Fills in the reserved words and the theories' operators.
  NameTable();

  /// Gives the name with this text, made now if it is not there. Throws std::bad_alloc.
  Name& get(std::string_view text) {
    return *names_.get(text, [&] { return make(text); });
  }

  /// Gives a number that no name is marked with yet.
  std::uint64_t new_mark() { return ++last_mark_; }

 private:
  Name* make(std::string_view text);

  Arena arena_;
  TextTable<Name*> names_;
  std::uint64_t last_mark_ = 0;
};

}  // namespace brum

#endif  // BRUM_READERS_NAMES_H
