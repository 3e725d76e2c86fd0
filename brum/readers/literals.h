#ifndef BRUM_READERS_LITERALS_H
#define BRUM_READERS_LITERALS_H

#include <optional>
#include <string_view>
#include <utility>

#include "brum/readers/term_builder.h"
#include "brum/readers/text_table.h"
#include "brum/readers/token.h"
#include "brum/readers/value.h"
#include "brum/terms/arena.h"

namespace brum {

/// A number that is not a term yet: part of `(- 3)` or `(/ 1 3)`, say.
struct Number {
  QNumber value;
  bool is_real = false;
};

/// Gives the terms of literals: `12`, `1.5`, `#b01`, `#xff`. Remembers them by their text, since
/// inputs repeat a few of them very often.
class Literals {
 public:
  explicit Literals(TermBuilder& builder) : builder_(builder) {}
  Literals(const Literals&) = delete;
  Literals& operator=(const Literals&) = delete;

  /// Requires a numeral, decimal, hexadecimal or binary token.
  Value get(const Token& token);

  /// Gives the number that a numeral or decimal stands for, without making a term.
  Number number(const Token& token) const;

  /// Makes the term of a number.
  Value get(const Number& number);

  /// Must be called when the builder's logic has changed.
  void forget() { literals_.emplace(); }

 private:
  /// What is remembered: 24 bytes, so that all that a search looks at is mostly one cache line.
  struct Literal {
    const Term* term;
    const Symbol* symbol;  // of the term
    const char* text;      // in the arena, with a closing NUL; only of a text that is not short

    friend std::string_view text_of(const Literal& literal) { return literal.text; }
  };

  Literal make_literal(const Token& token);
  Value make(const Token& token);

  TermBuilder& builder_;
  Arena arena_;
  std::optional<TextTable<Literal>> literals_{std::in_place};
};

}  // namespace brum

#endif  // BRUM_READERS_LITERALS_H
