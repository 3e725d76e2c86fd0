#ifndef BRUM_READERS_SMTLIB1_LEXER_H
#define BRUM_READERS_SMTLIB1_LEXER_H

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

#include "brum/readers/lexer_buffer.h"

namespace brum {

/// Cuts SMT-LIB 1.2 text into tokens.
///
/// Symbols are identifiers, variables (`?x`, `$f`) and the names of operators; an identifier may
/// have indices right behind it, as in `extract[7:4]`. A text in braces or quotation marks is of
/// kind `string`. Beyond the standard, identifiers may begin with an underscore and hold the
/// characters of operators, as the printers write them, and braces may be nested.
class SmtLib1Lexer : public LexerBuffer {
 public:
  /// Reads from `in`, which must outlive the lexer; `file_name` is for error messages.
  SmtLib1Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes = 1U << 18U);

  /// Gives the next token, at the end of the input one of kind `end`. It holds until the next call.
  /// Throws ReadError for text that is no token, Exception when the stream cannot be read.
  const Token& next();

  /// Gives what stands between the square brackets of a symbol: numerals with colons between them.
  /// Empty for a symbol without indices, whose `raw` is all of its `text`.
  static std::string_view indices(const Token& token);

 private:
  void scan_symbol();
  void scan_number();
  void scan_keyword();
  void scan_user_value();
  void scan_string();
  void scan_escaped();
};

/// Gives the text of a token in braces or quotation marks as a string of SMT-LIB 2.6, without the
/// backslashes that escape.
std::string as_smtlib2_string(const Token& token);

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_LEXER_H
