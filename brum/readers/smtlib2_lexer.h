#ifndef BRUM_READERS_SMTLIB2_LEXER_H
#define BRUM_READERS_SMTLIB2_LEXER_H

#include <cstddef>
#include <istream>
#include <string>

#include "brum/readers/lexer_buffer.h"

namespace brum {

/// Cuts SMT-LIB 2.6 text into tokens.
///
/// Blanks and comments are skipped. Beyond the standard, any byte but NUL may stand in comments and
/// strings, and any but NUL, bar and backslash in a quoted symbol, so that whatever name a printer
/// puts between bars can be read back.
class SmtLib2Lexer : public LexerBuffer {
 public:
  /// Reads from `in`, which must outlive the lexer; `file_name` is for error messages.
  SmtLib2Lexer(std::istream& in, std::string file_name, std::size_t buffer_bytes = 1U << 18U);

  /// Gives the next token, at the end of the input one of kind `end`. It holds until the next call.
  /// Throws ReadError for text that is no token, Exception when the stream cannot be read.
  const Token& next();

 private:
  void scan_number();
  void scan_radix_constant();
  void scan_simple_symbol();
  void scan_keyword();
  void scan_quoted_symbol();
  void scan_string();
  [[noreturn]] void error_malformed_token(const std::string& expected);
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB2_LEXER_H
