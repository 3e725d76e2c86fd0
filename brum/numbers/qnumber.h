#ifndef BRUM_NUMBERS_QNUMBER_H
#define BRUM_NUMBERS_QNUMBER_H

#include "brum/utils/export.h"
#include "brum/utils/hash.h"

#include <gmpxx.h>

#include <compare>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace brum {

/**
 * Memo of `QNumber::normalize`: entry [a][b] is the greatest common divisor of a and b once it was
 * computed, else 0.
 */
extern BRUM_EXPORT std::int64_t gcd_cache[1024][1024];

/**
 * Exact rational number of any size.
 *
 * Two forms. Small: numerator and denominator are machine integers, no allocation. Big: a heap
 * block of two GMP integers, owned by the number. Which form holds a value is visible (`is_big`)
 * but never matters to its meaning: values compare, hash and print alike in both.
 *
 * Invariants, in both forms: the denominator is positive, numerator and denominator have no common
 * factor, zero is 0/1. The small form never holds -2^63, so that negation and absolute value cannot
 * overflow.
 *
 * Which form a value gets: from machine integers the small one (but for -2^63); from GMP integers
 * the small one only when both fit in 32 bits; from text and from `+ - * /` the small one whenever
 * it can hold the value. Assignment to a big number keeps it big, so that its block is used again.
 * For the same reason there are no move operations.
 *
 *     QNumber half(1, 2);
 *     QNumber sum = half + QNumber::from_string("-0.75");  // -1/4
 *
 * Errors: Exception for a zero denominator, division by zero and bad text; std::bad_alloc for the
 * block. An operation that throws changes nothing. GMP itself ends the program when it gets no
 * memory for digits.
 *
 * Not thread-safe, not even on different numbers: `normalize`, which nearly everything calls,
 * writes shared tables.
 */
class BRUM_EXPORT QNumber {
 public:
  /** Zero. */
  QNumber() noexcept : small_num(0), small_den(1) {}

  /** The integer `value`. Greater ones, unsigned too, come as `mpz_class` or as text. */
  QNumber(std::int64_t value) : small_num(value), small_den(1) {
    if (value == most_negative) {
      make_big(value, 1);
    }
  }

  /** A floating-point number would lose its fraction on the way. */
  template <std::floating_point Value>
  QNumber(Value value) = delete;

  /** The rational `num` / `den`. Throws Exception if `den` is 0. */
  QNumber(std::int64_t num, std::int64_t den);

  /**
   * The rational `num` / `den`: small if both, as given, fit in 32 bits. Throws Exception if `den`
   * is 0.
   */
  QNumber(const mpz_class& num, const mpz_class& den);

  /** A copy in the same form. */
  QNumber(const QNumber& other) : small_num(other.small_num), small_den(other.small_den) {
    if (other.is_big()) {
      block = copy_of(*other.block);
    }
  }

  /** Takes over the value; a big number stays big. */
  QNumber& operator=(const QNumber& other);

  ~QNumber() {
    if (is_big()) {
      free_block(block);
    }
  }

  /**
   * Reads -?DIGITS, -?DIGITS/DIGITS or -?DIGITS.DIGITS, where DIGITS is one decimal digit or more,
   * leading zeros allowed. Throws Exception on any other text (no blanks, no plus sign, no
   * exponent, no bare point) and on a zero denominator.
   */
  static QNumber from_string(std::string_view text);

  /** Whether the number is in the big form. */
  bool is_big() const noexcept { return small_den == 0; }

  /** -1, 0 or 1. */
  int sign() const noexcept;

  /** Whether the denominator is 1. */
  bool is_integer() const noexcept;

  /** The numerator as a number. */
  QNumber get_num() const;

  /** The denominator as a number; positive. */
  QNumber get_den() const;

  /** The numerator as a GMP integer. */
  mpz_class num_mpz() const;

  /** The denominator as a GMP integer; positive. */
  mpz_class den_mpz() const;

  /** The value, if it is an integer from 0 to 2^64 - 1. */
  std::optional<std::uint64_t> to_uint64() const;

  /** The text that `operator<<` writes: `-12`, `3/4`. */
  std::string to_str() const;

  /** A hash of the value; the same in both forms. */
  std::uint64_t hash() const noexcept;

  /** Establishes the invariants of the class without changing the form. */
  void normalize() noexcept;

  BRUM_EXPORT friend bool operator==(const QNumber& a, const QNumber& b) noexcept;
  BRUM_EXPORT friend std::strong_ordering operator<=>(const QNumber& a, const QNumber& b);

  /** The result is in the form of the operand. */
  BRUM_EXPORT friend QNumber operator-(const QNumber& a);

  BRUM_EXPORT friend QNumber operator+(const QNumber& a, const QNumber& b);
  BRUM_EXPORT friend QNumber operator-(const QNumber& a, const QNumber& b);
  BRUM_EXPORT friend QNumber operator*(const QNumber& a, const QNumber& b);

  /** Throws Exception if `b` is 0. */
  BRUM_EXPORT friend QNumber operator/(const QNumber& a, const QNumber& b);

  BRUM_EXPORT friend QNumber abs(const QNumber& q);
  BRUM_EXPORT friend std::ostream& operator<<(std::ostream& os, const QNumber& q);

  /** Scratch of `normalize`: the last divisor of a big number. Initialised before the first use. */
  static mpz_t gmp_tmp;

 private:
  struct BigBlock {
    mpz_t num;
    mpz_t den;
  };

  static constexpr std::int64_t most_negative = INT64_MIN;

  class Operand;

  static BigBlock* copy_of(const BigBlock& source);
  static void free_block(BigBlock* unwanted) noexcept;
  static QNumber from_fraction(mpz_class&& num, mpz_class&& den);
  static QNumber sum(const QNumber& a, const QNumber& b, bool subtract);
  static QNumber product(const QNumber& a, const QNumber& b, bool divide);

  void set_small(std::int64_t num, std::int64_t den);
  void make_big(std::int64_t num, std::int64_t den);
  void normalize_small() noexcept;
  static void normalize_block(BigBlock& big) noexcept;

  union {
    std::int64_t small_num;
    BigBlock* block;
  };
  std::int64_t small_den;  // 0 marks the big form
};

static_assert(sizeof(QNumber) == 16);

/** The absolute value, in the form of `q`. */
BRUM_EXPORT QNumber abs(const QNumber& q);

/**
 * Writes the numerator in decimal and, unless the denominator is 1, `/` and the denominator,
 * without blanks. Flags, width, fill and locale of the stream have no effect.
 */
BRUM_EXPORT std::ostream& operator<<(std::ostream& os, const QNumber& q);

namespace hsh {

template <>
struct hash<QNumber> {
  std::uint64_t operator()(const QNumber& key) const noexcept { return key.hash(); }
};

}  // namespace hsh
}  // namespace brum

#endif
