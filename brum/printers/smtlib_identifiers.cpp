#include <array>
#include <string>
#include <string_view>

#include "brum/printers/smtlib_term_printer.h"

// How the user's names become identifiers. All tests are on ASCII codes, whatever the locale.

namespace brum {

namespace {

constexpr bool is_letter(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

constexpr bool is_digit(char byte) {
  return byte >= '0' && byte <= '9';
}

/// Letters, digits and what else a simple symbol of SMT-LIB 2.6 may hold.
constexpr bool is_simple_symbol_byte(char byte) {
  constexpr std::string_view punctuation = "~!@$%^&*_-+=<>.?/";
  return is_letter(byte) || is_digit(byte) || punctuation.find(byte) != std::string_view::npos;
}

/// What is_simple_symbol_byte() says of each byte, by its unsigned value.
constexpr auto simple_symbol_bytes = [] {
  std::array<bool, 256> table{};
  for (unsigned code = 0; code < table.size(); ++code) {
    table[code] = is_simple_symbol_byte(static_cast<char>(code));
  }
  return table;
}();

/// An identifier of SMT-LIB 1.2: a letter or an underscore, then letters, digits, full stops and
/// underscores. Other bytes are written as their signed value.
std::string v1_identifier(const std::string& name) {
  std::string text;
  const char first = name.empty() ? '\0' : name.front();
  if (!is_letter(first) && first != '_') {
    text += '_';
  }
  for (const char byte : name) {
    if (is_letter(byte) || is_digit(byte) || byte == '.' || byte == '_') {
      text += byte;
    } else {
      text += "_h" + std::to_string(static_cast<int>(static_cast<signed char>(byte))) + "_";
    }
  }
  return text;
}

bool is_simple_symbol(const std::string& name) {
  if (!name.empty() && is_digit(name.front())) {
    return false;
  }
  for (const char byte : name) {
    if (!simple_symbol_bytes[static_cast<unsigned char>(byte)]) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string SmtLibTermPrinter::to_smtlib(const std::string& name) const {
  if (v1_format) {
    return v1_identifier(name);
  }
  return is_simple_symbol(name) ? name : "|" + name + "|";
}

}  // namespace brum
