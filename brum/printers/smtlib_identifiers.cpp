#include "brum/printers/smtlib_identifiers.h"

#include <algorithm>
#include <array>

#include "brum/printers/check_names.h"
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

/// For each byte, by its unsigned value, whether it may be part of a name.
using ByteSet = std::array<bool, 256>;

constexpr ByteSet letters_digits_and(std::string_view punctuation) {
  ByteSet set{};
  for (std::size_t code = 0; code < set.size(); ++code) {
    const char byte = static_cast<char>(code);
    set.at(code) =
        is_letter(byte) || is_digit(byte) || punctuation.find(byte) != std::string_view::npos;
  }
  return set;
}

/// What an identifier of SMT-LIB 1.2 is made of here, and a simple symbol of SMT-LIB 2.6.
constexpr ByteSet v1_identifier_bytes = letters_digits_and("._");
constexpr ByteSet simple_symbol_bytes = letters_digits_and("~!@$%^&*_-+=<>.?/");

bool is_in(const ByteSet& set, char byte) {
  return set[static_cast<unsigned char>(byte)];
}

bool are_all_in(const ByteSet& set, std::string_view name) {
  return std::all_of(name.begin(), name.end(), [&](char byte) { return is_in(set, byte); });
}

bool may_begin_v1_identifier(std::string_view name) {
  return !name.empty() && (is_letter(name.front()) || name.front() == '_');
}

}  // namespace

std::string v1_identifier(std::string_view name) {
  std::string text;
  if (!may_begin_v1_identifier(name)) {
    text += '_';
  }
  for (const char byte : name) {
    if (is_in(v1_identifier_bytes, byte)) {
      text += byte;
    } else {
      const auto value = static_cast<signed char>(byte);
      text += concat({"_h", std::to_string(value), "_"});
    }
  }
  return text;
}

bool is_v1_identifier(std::string_view name) {
  return may_begin_v1_identifier(name) && are_all_in(v1_identifier_bytes, name);
}

bool is_simple_symbol(std::string_view name) {
  return (name.empty() || !is_digit(name.front())) && are_all_in(simple_symbol_bytes, name);
}

std::string v2_symbol(std::string_view name) {
  const bool is_plain = !name.empty() && is_simple_symbol(name) && !is_reserved_word(name);
  return is_plain ? std::string(name) : concat({"|", name, "|"});
}

std::string SmtLibTermPrinter::to_smtlib(const std::string& name) const {
  if (v1_format) {
    return v1_identifier(name);
  }
  return is_simple_symbol(name) ? name : concat({"|", name, "|"});
}

}  // namespace brum
