#ifndef BRUM_READERS_TOKEN_H
#define BRUM_READERS_TOKEN_H

#include <cstdint>
#include <string>
#include <string_view>

#include "brum/readers/read_error.h"

namespace brum {

/// The kinds of tokens of SMT-LIB 2.6.
enum class TokenKind : std::uint8_t {
  end,            // of the input
  left_bracket,   // (
  right_bracket,  // )
  symbol,         // simple or quoted; reserved words too, which only the caller can tell apart
  keyword,        // :name
  numeral,        // 12
  decimal,        // 1.50
  hexadecimal,    // #x0aF
  binary,         // #b01
  string,         // "text"
};

/// A token. Its texts point into the lexer's buffer and hold until the next token is asked for.
struct Token {
  TokenKind kind = TokenKind::end;

  /// Whether a symbol stands between bars; such a symbol is never a reserved word.
  bool quoted = false;

  /// The token as written: with bars, quotation marks, colon or `#x`.
  std::string_view raw;

  /// What it stands for: a symbol without its bars, a keyword without its colon, the digits of a
  /// hexadecimal or binary constant; a string's text between its quotation marks, where doubled
  /// ones are still double.
  std::string_view text;

  TextPosition position;
};

/// Says what a token is, for error messages: `the symbol x`, `the end of the input`, `)`. Long
/// tokens are cut.
std::string describe(const Token& token);

}  // namespace brum

#endif  // BRUM_READERS_TOKEN_H
