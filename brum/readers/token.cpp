#include "brum/readers/token.h"

namespace brum {

namespace {

/// How many bytes of a token an error message shows.
constexpr std::size_t shown_bytes = 60;

std::string shown(std::string_view text) {
  if (text.size() <= shown_bytes)
    return std::string(text);
  return std::string(text.substr(0, shown_bytes)) + "...";
}

}  // namespace

std::string describe(const Token& token) {
  switch (token.kind) {
    case TokenKind::end:
      return "the end of the input";
    case TokenKind::left_bracket:
    case TokenKind::right_bracket:
      return '\'' + std::string(token.raw) + '\'';
    case TokenKind::symbol:
      return "the symbol " + shown(token.raw);
    case TokenKind::keyword:
      return "the keyword " + shown(token.raw);
    case TokenKind::numeral:
      return "the numeral " + shown(token.raw);
    case TokenKind::decimal:
      return "the decimal " + shown(token.raw);
    case TokenKind::hexadecimal:
    case TokenKind::binary:
      return "the constant " + shown(token.raw);
    case TokenKind::string:
      break;
  }
  return "the string " + shown(token.raw);
}

}  // namespace brum
