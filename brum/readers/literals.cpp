#include "brum/readers/literals.h"

#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>

namespace brum {

namespace {

QNumber number_of(std::string_view digits, int base) {
  std::int64_t small = 0;
  if (std::from_chars(digits.data(), digits.data() + digits.size(), small, base).ec ==
      std::errc()) {
    return small;
  }
  return {mpz_class(std::string(digits), base), 1};
}

}  // namespace

Value Literals::get(const Token& token) {
  const Literal& literal = known_->literals.get(token.raw, [&] { return make_literal(token); });
  // Its sort is asked for soon, and a rare number's is far away.
  __builtin_prefetch(literal.term);
  __builtin_prefetch(literal.symbol);
  if (token.kind == TokenKind::decimal) {  // 3.0 may be the Int term 3, which stands for a Real
    return builder_.as_sort(literal.term, builder_.manager().get_real_type());
  }
  return {literal.term, false};
}

Literals::Literal Literals::make_literal(const Token& token) {
  const Term* const term = make(token).term;
  const bool is_short = token.raw.size() <= TextTable<Literal>::longest_short_text;
  return {term, term->symbol, is_short ? nullptr : known_->texts.copy(token.raw).data()};
}

Number Literals::number(const Token& token) const {
  const bool is_real = token.kind == TokenKind::decimal || builder_.numerals_are_real();
  return {QNumber::from_string(token.text), is_real};
}

Value Literals::get(const Number& number) {
  return number.is_real ? builder_.decimal(number.value) : builder_.numeral(number.value);
}

Value Literals::make(const Token& token) {
  if (token.kind == TokenKind::numeral || token.kind == TokenKind::decimal) {
    return get(number(token));
  }
  const bool hexadecimal = token.kind == TokenKind::hexadecimal;
  const std::size_t width = token.text.size() * (hexadecimal ? 4 : 1);
  return {builder_.manager().make_bv_number(number_of(token.text, hexadecimal ? 16 : 2), width),
          false};
}

}  // namespace brum
