#include "brum/readers/smtlib1_bit_vectors.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include "brum/readers/smtlib1_lexer.h"

namespace brum {

namespace {

constexpr std::size_t width_without_index = 32;

bool holds_only(std::string_view text, std::string_view bytes) {
  return !text.empty() && text.find_first_not_of(bytes) == std::string_view::npos;
}

/// Reads the digits of a number whose every digit stands for `bits` bits.
const Term* from_digits(TermManager& manager, std::string_view digits, std::size_t bits) {
  const mpz_class value(std::string(digits), bits == 1 ? 2 : 16);
  return manager.make_bv_number(QNumber(value, 1), digits.size() * bits);
}

}  // namespace

QNumber take_index(std::string_view& indices) {
  const std::size_t length = std::min(indices.find(':'), indices.size());
  QNumber index = QNumber::from_string(indices.substr(0, length));
  indices.remove_prefix(std::min(length + 1, indices.size()));
  return index;
}

std::size_t take_width(std::string_view& indices) {
  constexpr std::uint64_t largest_width = 0xFFFFFFFF;
  std::optional<std::uint64_t> width;
  if (!indices.empty())
    width = take_index(indices).to_uint64();
  if (!width || *width == 0 || *width > largest_width) {
    throw TermManager::error("found no width of a bit-vector, expected one from 1 to 4294967295");
  }
  return static_cast<std::size_t>(*width);
}

const Term* read_bit_vector(TermManager& manager, const Token& token) {
  const std::string_view text = token.text;
  std::string_view indices = SmtLib1Lexer::indices(token);
  if (!text.starts_with('b'))
    return nullptr;
  if (holds_only(text.substr(std::min<std::size_t>(text.size(), 2)), "0123456789") &&
      text[1] == 'v') {
    const std::size_t width = indices.empty() ? width_without_index : take_width(indices);
    if (!indices.empty())
      throw TermManager::error("found 2 indices of a bit-vector, expected its width");
    return manager.make_bv_number(QNumber::from_string(text.substr(2)), width);
  }
  if (!indices.empty())
    return nullptr;
  if (text.starts_with("bvbin") && holds_only(text.substr(5), "01"))
    return from_digits(manager, text.substr(5), 1);
  if (text.starts_with("bvhex") && holds_only(text.substr(5), "0123456789abcdefABCDEF"))
    return from_digits(manager, text.substr(5), 4);
  if (text == "bit0" || text == "bit1")
    return manager.make_bv_number(QNumber(text == "bit1" ? 1 : 0), 1);
  return nullptr;
}

}  // namespace brum
