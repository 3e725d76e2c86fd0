#include "brum/printers/smtlib_identifiers.h"

#include <algorithm>
#include <array>

#include "brum/printers/smtlib_term_printer.h"
#include "brum/utils/concat.h"

// How the user's names become identifiers. All tests are on ASCII codes, whatever the locale.

namespace brum {

namespace {

constexpr bool is_letter(char byte) {
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

constexpr bool is_digit(char byte) {
  return byte >= '0' && byte <= '9';
}

constexpr std::array<bool, 256> find_simple_symbol_bytes() {
  constexpr std::string_view punctuation = "~!@$%^&*_-+=<>.?/";
  std::array<bool, 256> table{};
  for (std::size_t code = 0; code < table.size(); ++code) {
    const char byte = static_cast<char>(code);
    table.at(code) =
        is_letter(byte) || is_digit(byte) || punctuation.find(byte) != std::string_view::npos;
  }
  return table;
}

/// For each byte, by its unsigned value, whether a simple symbol of SMT-LIB 2.6 may hold it.
constexpr std::array<bool, 256> simple_symbol_bytes = find_simple_symbol_bytes();

}  // namespace

std::string v1_identifier(std::string_view name) {
  std::string text;
  const char first = name.empty() ? '\0' : name.front();
  if (!is_letter(first) && first != '_') {
    text += '_';
  }
  for (const char byte : name) {
    if (is_letter(byte) || is_digit(byte) || byte == '.' || byte == '_') {
      text += byte;
    } else {
      const auto value = static_cast<signed char>(byte);
      text += concat({"_h", std::to_string(value), "_"});
    }
  }
  return text;
}

bool is_simple_symbol(std::string_view name) {
  if (!name.empty() && is_digit(name.front())) {
    return false;
  }
  return std::all_of(name.begin(), name.end(), [](char byte) {
    return simple_symbol_bytes[static_cast<unsigned char>(byte)];
  });
}

std::string SmtLibTermPrinter::to_smtlib(const std::string& name) const {
  if (v1_format) {
    return v1_identifier(name);
  }
  return is_simple_symbol(name) ? name : concat({"|", name, "|"});
}

}  // namespace brum
