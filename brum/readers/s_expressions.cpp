#include "brum/readers/s_expressions.h"

#include <cstddef>

namespace brum {

std::string read_s_expression(SmtLib2Lexer& lexer) {
  std::string text;
  std::size_t depth = 0;
  bool last_opens = true;  // no blank before the next token
  do {
    const Token& token = lexer.next();
    const bool closes = token.kind == TokenKind::right_bracket;
    if (token.kind == TokenKind::end || (closes && depth == 0)) {
      lexer.error_expected(depth == 0 ? "a value" : "')'");
    }
    if (!last_opens && !closes)
      text += ' ';
    text += token.raw;
    last_opens = token.kind == TokenKind::left_bracket;
    if (last_opens)
      ++depth;
    if (closes)
      --depth;
  } while (depth > 0);
  return text;
}

void skip_rest_of_group(SmtLib2Lexer& lexer) {
  std::size_t depth = 1;
  while (depth > 0) {
    const Token& token = lexer.next();
    if (token.kind == TokenKind::end)
      lexer.error_expected("')'");
    if (token.kind == TokenKind::left_bracket)
      ++depth;
    if (token.kind == TokenKind::right_bracket)
      --depth;
  }
}

}  // namespace brum
