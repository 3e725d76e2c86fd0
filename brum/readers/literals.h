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
  void forget() { known_.emplace(); }

 private:
  /// What is remembered, in so few bytes that a search mostly looks at one cache line only.
  struct Literal {
    const Term* term;
    const Symbol* symbol;  // of the term
    const char* text;      // with a closing NUL; null for a short text

    friend std::string_view text_of(const Literal& literal) { return literal.text; }
  };

  Literal make_literal(const Token& token);
  Value make(const Token& token);

  struct Known {
    Arena texts;
    TextTable<Literal> literals;
  };

  TermBuilder& builder_;
  std::optional<Known> known_{std::in_place};
};

}  // namespace brum

#endif  // BRUM_READERS_LITERALS_H
