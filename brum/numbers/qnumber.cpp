#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"

#include <memory>

namespace brum {

std::int64_t gcd_cache[1024][1024];

mpz_t QNumber::gmp_tmp;

namespace {

constexpr std::int64_t largest_cached = 1023;

/** Initialises the scratch integer on the first call. */
void prepare_gmp_tmp() noexcept {
  static const bool prepared = [] {
    mpz_init(QNumber::gmp_tmp);
    return true;
  }();
  static_cast<void>(prepared);
}

/** Makes the scratch integer ready for who looks at it before any number was normalised. */
[[maybe_unused]] const bool prepared_at_start = (prepare_gmp_tmp(), true);

std::int64_t plain_gcd(std::int64_t a, std::int64_t b) noexcept {
  while (b != 0) {
    const std::int64_t rest = a % b;
    a = b;
    b = rest;
  }
  return a;
}

/**
 * The gcd of two numbers, not both 0, none negative; fills the cache for every small pair that it
 * meets.
 */
std::int64_t cached_gcd(std::int64_t a, std::int64_t b) noexcept {
  while (b != 0) {
    if (a <= largest_cached && b <= largest_cached) {
      if (const std::int64_t known = gcd_cache[a][b]; known != 0) {
        return known;
      }
      const std::int64_t computed = plain_gcd(a, b);
      gcd_cache[a][b] = computed;
      gcd_cache[b][a] = computed;
      // No return: the following steps fill in the pairs on the way to the end.
    }
    const std::int64_t rest = a % b;
    a = b;
    b = rest;
  }
  return a;
}

constexpr std::int64_t magnitude(std::int64_t value) noexcept {
  return value < 0 ? -value : value;
}

/** Throws unless a denominator of this sign can stand. */
void check_denominator(int sign) {
  if (sign == 0) {
    throw Exception("a rational number with denominator 0");
  }
}

/** The value as a machine integer if it is one, else a mix of its limbs and sign. */
std::uint64_t hash_integer(mpz_srcptr value) noexcept {
  if (mpz_fits_slong_p(value) != 0) {
    return static_cast<std::uint64_t>(mpz_get_si(value));
  }
  std::uint64_t result = mpz_sgn(value) < 0 ? hsh::second_mixer : 0;
  for (mp_size_t i = 0; i < static_cast<mp_size_t>(mpz_size(value)); ++i) {
    result = hsh::mix(result ^ mpz_getlimbn(value, i), hsh::first_mixer) + hsh::second_mixer;
  }
  return result;
}

}  // namespace

QNumber::QNumber(std::int64_t num, std::int64_t den) : small_num(0), small_den(1) {
  check_denominator(den == 0 ? 0 : 1);
  set_small(num, den);
  normalize();
}

QNumber::QNumber(const mpz_class& num, const mpz_class& den) : small_num(0), small_den(1) {
  check_denominator(sgn(den));
  if (num.fits_sint_p() && den.fits_sint_p()) {
    set_small(num.get_si(), den.get_si());
  } else {
    auto fresh = std::make_unique<BigBlock>();
    mpz_init_set(fresh->num, num.get_mpz_t());
    mpz_init_set(fresh->den, den.get_mpz_t());
    block = fresh.release();
    small_den = 0;
  }
  normalize();
}

QNumber& QNumber::operator=(const QNumber& other) {
  if (this == &other) {
    return *this;
  }
  if (!other.is_big()) {
    if (!is_big()) {
      small_num = other.small_num;
      small_den = other.small_den;
    } else {
      mpz_set_si(block->num, other.small_num);
      mpz_set_si(block->den, other.small_den);
    }
  } else if (is_big()) {
    mpz_set(block->num, other.block->num);
    mpz_set(block->den, other.block->den);
  } else {
    block = copy_of(*other.block);
    small_den = 0;
  }
  return *this;
}

int QNumber::sign() const noexcept {
  if (is_big()) {
    return mpz_sgn(block->num);
  }
  return static_cast<int>(small_num > 0) - static_cast<int>(small_num < 0);
}

bool QNumber::is_integer() const noexcept {
  return is_big() ? mpz_cmp_ui(block->den, 1) == 0 : small_den == 1;
}

QNumber QNumber::get_num() const {
  return is_big() ? QNumber(mpz_class(block->num), 1) : QNumber(small_num);
}

QNumber QNumber::get_den() const {
  return is_big() ? QNumber(mpz_class(block->den), 1) : QNumber(small_den);
}

mpz_class QNumber::num_mpz() const {
  return is_big() ? mpz_class(block->num) : mpz_class(small_num);
}

mpz_class QNumber::den_mpz() const {
  return is_big() ? mpz_class(block->den) : mpz_class(small_den);
}

std::optional<std::uint64_t> QNumber::to_uint64() const {
  if (!is_integer() || sign() < 0) {
    return std::nullopt;
  }
  if (!is_big()) {
    return static_cast<std::uint64_t>(small_num);
  }
  if (mpz_fits_ulong_p(block->num) == 0) {
    return std::nullopt;
  }
  return mpz_get_ui(block->num);
}

std::uint64_t QNumber::hash() const noexcept {
  const std::uint64_t num =
      is_big() ? hash_integer(block->num) : static_cast<std::uint64_t>(small_num);
  const std::uint64_t den =
      is_big() ? hash_integer(block->den) : static_cast<std::uint64_t>(small_den);
  return hsh::mix(num + hsh::second_mixer, hsh::first_mixer) + den * hsh::second_mixer;
}

void QNumber::normalize() noexcept {
  if (is_big()) {
    normalize_block(*block);
  } else {
    normalize_small();
  }
}

void QNumber::normalize_small() noexcept {
  if (small_num == 0) {
    small_den = 1;
    return;
  }
  const std::int64_t divisor = cached_gcd(magnitude(small_num), magnitude(small_den));
  small_num /= divisor;
  small_den /= divisor;
  if (small_den < 0) {
    small_num = -small_num;
    small_den = -small_den;
  }
}

void QNumber::normalize_block(BigBlock& big) noexcept {
  if (mpz_sgn(big.num) == 0) {
    mpz_set_ui(big.den, 1);
    return;
  }
  if (mpz_cmpabs_ui(big.den, 1) != 0) {
    prepare_gmp_tmp();
    mpz_gcd(gmp_tmp, big.num, big.den);
    mpz_divexact(big.num, big.num, gmp_tmp);
    mpz_divexact(big.den, big.den, gmp_tmp);
  }
  if (mpz_sgn(big.den) < 0) {
    mpz_neg(big.num, big.num);
    mpz_neg(big.den, big.den);
  }
}

QNumber abs(const QNumber& q) {
  QNumber result(q);
  if (result.is_big()) {
    mpz_abs(result.block->num, result.block->num);
  } else {
    result.small_num = magnitude(result.small_num);
  }
  return result;
}

QNumber::BigBlock* QNumber::copy_of(const BigBlock& source) {
  auto* const copy = new BigBlock;
  mpz_init_set(copy->num, source.num);
  mpz_init_set(copy->den, source.den);
  return copy;
}

/** Makes a small number hold this pair, as it is, in the form that can hold it. */
void QNumber::set_small(std::int64_t num, std::int64_t den) {
  if (num == most_negative || den == most_negative) {
    make_big(num, den);
  } else {
    small_num = num;
    small_den = den;
  }
}

/** Turns a small number into a big one that holds this pair, as it is. */
void QNumber::make_big(std::int64_t num, std::int64_t den) {
  auto* const fresh = new BigBlock;
  mpz_init_set_si(fresh->num, num);
  mpz_init_set_si(fresh->den, den);
  block = fresh;
  small_den = 0;
}

void QNumber::free_block(BigBlock* unwanted) noexcept {
  mpz_clear(unwanted->num);
  mpz_clear(unwanted->den);
  delete unwanted;
}

}  // namespace brum
