// Reading and writing of rational numbers. Nothing here depends on a locale or on the state of a
// stream.

#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <ios>
#include <limits>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

namespace brum {

namespace {

/** Room for a 64-bit integer in decimal with its sign. */
using SmallText = std::array<char, std::numeric_limits<std::int64_t>::digits10 + 2>;

/** Writes `value` to `text` and gives the part that was used. */
std::string_view write_decimal(SmallText& text, std::int64_t value) noexcept {
  const char* const end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), static_cast<std::size_t>(end - text.data())};
}

void put(std::ostream& os, std::string_view text) {
  os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void put_decimal(std::ostream& os, std::int64_t value) {
  SmallText text;
  put(os, write_decimal(text, value));
}

struct Free {
  void operator()(char* text) const noexcept { std::free(text); }
};

void put_decimal(std::ostream& os, mpz_srcptr value) {
  const std::unique_ptr<char, Free> text(mpz_get_str(nullptr, 10, value));
  if (text == nullptr) {
    os.setstate(std::ios_base::badbit);
  } else {
    put(os, text.get());
  }
}

void append_decimal(std::string& out, std::int64_t value) {
  SmallText text;
  out.append(write_decimal(text, value));
}

void append_decimal(std::string& out, mpz_srcptr value) {
  const std::size_t start = out.size();
  out.resize(start + mpz_sizeinbase(value, 10) +
             2);  // at most one digit too many, the sign and the final NUL
  mpz_get_str(out.data() + start, 10, value);
  out.resize(start + std::strlen(out.data() + start));
}

bool is_digits(std::string_view text) noexcept {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return '0' <= c && c <= '9'; });
}

[[noreturn]] void throw_bad_text(std::string_view text) {
  std::string message = "expected a number like -12, 3/4 or 1.25, found \"";
  message += text;
  message += '"';
  throw Exception(message);
}

/** The digits of a number's text; the denominator's are empty for 1. */
struct Digits {
  bool negative = false;
  std::string_view num;       // or the part before the point
  std::string_view den;       // after a slash
  std::string_view fraction;  // after a point
};

Digits split(std::string_view text) {
  Digits digits;
  std::string_view rest = text;
  if (rest.starts_with('-')) {
    digits.negative = true;
    rest.remove_prefix(1);
  }
  const std::size_t mark = rest.find_first_of("/.");
  digits.num = rest.substr(0, mark);
  bool good = is_digits(digits.num);
  if (mark != std::string_view::npos) {
    std::string_view& after = rest[mark] == '/' ? digits.den : digits.fraction;
    after = rest.substr(mark + 1);
    good = good && is_digits(after);
  }
  if (!good) {
    throw_bad_text(text);
  }
  return digits;
}

/**
 * Appends decimal digits to a value that is not negative; false when the result needs more than 63
 * bits.
 */
bool append_digits(std::int64_t& value, std::string_view digits) noexcept {
  return std::all_of(digits.begin(), digits.end(), [&value](char digit) {
    return !__builtin_mul_overflow(value, 10, &value) &&
           !__builtin_add_overflow(value, digit - '0', &value);
  });
}

/** Reads a text of at most 18 digits and nothing else: what nearly every number is. */
std::optional<std::int64_t> short_integer(std::string_view text) noexcept {
  const bool negative = text.starts_with('-');
  text.remove_prefix(negative ? 1 : 0);
  if (text.empty() || text.size() > 18) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') {
      return std::nullopt;
    }
    value = value * 10 + (c - '0');
  }
  return negative ? -value : value;
}

}  // namespace

QNumber QNumber::from_string(std::string_view text) {
  if (const std::optional<std::int64_t> value = short_integer(text); value.has_value()) {
    return QNumber(*value);
  }
  const Digits digits = split(text);

  std::int64_t small_num = 0;
  std::int64_t small_den = digits.den.empty() ? 1 : 0;
  bool small = append_digits(small_num, digits.num) && append_digits(small_num, digits.fraction) &&
               append_digits(small_den, digits.den);
  for (std::size_t i = 0; small && i < digits.fraction.size(); ++i) {
    small = !__builtin_mul_overflow(small_den, 10, &small_den);
  }
  if (small) {
    return QNumber(digits.negative ? -small_num : small_num, small_den);
  }

  mpz_class num(std::string(digits.num).append(digits.fraction), 10);
  if (digits.negative) {
    num = -num;
  }
  mpz_class den(1);
  if (!digits.den.empty()) {
    den = mpz_class(std::string(digits.den), 10);
  }
  mpz_class scale;
  mpz_ui_pow_ui(scale.get_mpz_t(), 10, digits.fraction.size());
  den *= scale;
  if (den == 0) {
    throw Exception("a rational number with denominator 0");
  }
  return from_fraction(std::move(num), std::move(den));
}

std::string QNumber::to_str() const {
  std::string text;
  if (is_big()) {
    append_decimal(text, block->num);
  } else {
    append_decimal(text, small_num);
  }
  if (!is_integer()) {
    text += '/';
    if (is_big()) {
      append_decimal(text, block->den);
    } else {
      append_decimal(text, small_den);
    }
  }
  return text;
}

std::ostream& operator<<(std::ostream& os, const QNumber& q) {
  if (q.is_big()) {
    put_decimal(os, q.block->num);
  } else {
    put_decimal(os, q.small_num);
  }
  if (!q.is_integer()) {
    os.put('/');
    if (q.is_big()) {
      put_decimal(os, q.block->den);
    } else {
      put_decimal(os, q.small_den);
    }
  }
  return os;
}

}  // namespace brum
