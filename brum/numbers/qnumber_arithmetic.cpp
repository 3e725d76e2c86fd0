// Comparison and arithmetic of rational numbers. Small operands are worked on in 128 bits, where
// neither a product of two of them nor a sum of two such products overflows; a result that does not
// fit in the small form is computed again by GMP.

#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"

#include <limits>
#include <utility>

namespace brum {

namespace {

__extension__ using int128 = __int128;

static_assert(sizeof(mp_limb_t) == sizeof(std::int64_t) && sizeof(long) == sizeof(std::int64_t));

int128 wide_product(std::int64_t a, std::int64_t b) noexcept {
  return static_cast<int128>(a) * b;
}

/** Whether the small form can hold this integer. */
bool fits_small(int128 value) noexcept {
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  return -largest <= value && value <= largest;
}

/** The same for an integer of any size. */
bool fits_small(const mpz_class& value) noexcept {
  return value.fits_slong_p() && fits_small(int128{value.get_si()});
}

/** num / den; integers, the most frequent numbers, without the divisions of the normal form. */
QNumber reduced(std::int64_t num, std::int64_t den) {
  return den == 1 ? QNumber(num) : QNumber(num, den);
}

}  // namespace

/** Reads the parts of a number as GMP integers, whatever its form, without an allocation. */
class QNumber::Operand {
 public:
  explicit Operand(const QNumber& q) noexcept {
    if (q.is_big()) {
      num = q.block->num;
      den = q.block->den;
    } else {
      num = view(q.small_num, num_limb, num_view);
      den = view(q.small_den, den_limb, den_view);
    }
  }

  Operand(const Operand&) = delete;
  Operand& operator=(const Operand&) = delete;
  ~Operand() = default;

  mpz_srcptr num;
  mpz_srcptr den;

 private:
  static mpz_srcptr view(std::int64_t value, mp_limb_t& limb, mpz_ptr storage) noexcept {
    limb = static_cast<mp_limb_t>(value < 0 ? -value : value);
    return mpz_roinit_n(storage, &limb,
                        value < 0 ? -1 : 1);  // leading zero limbs are dropped, so 0 needs no care
  }

  mp_limb_t num_limb;
  mp_limb_t den_limb;
  mpz_t num_view;
  mpz_t den_view;
};

/** The number num / den, which takes over their digits; small if it can be. `den` must not be 0. */
QNumber QNumber::from_fraction(mpz_class&& num, mpz_class&& den) {
  if (den != 1) {
    const mpz_class divisor = gcd(num, den);
    mpz_divexact(num.get_mpz_t(), num.get_mpz_t(), divisor.get_mpz_t());
    mpz_divexact(den.get_mpz_t(), den.get_mpz_t(), divisor.get_mpz_t());
    if (den < 0) {
      num = -num;
      den = -den;
    }
  }
  QNumber result;
  if (fits_small(num) && fits_small(den)) {
    result.small_num = num.get_si();
    result.small_den = den.get_si();
  } else {
    result.make_big(0, 1);
    mpz_swap(result.block->num, num.get_mpz_t());
    mpz_swap(result.block->den, den.get_mpz_t());
  }
  return result;
}

bool operator==(const QNumber& a, const QNumber& b) noexcept {
  if (!a.is_big() && !b.is_big()) {
    return a.small_num == b.small_num && a.small_den == b.small_den;
  }
  const QNumber::Operand x(a);
  const QNumber::Operand y(b);
  return mpz_cmp(x.num, y.num) == 0 && mpz_cmp(x.den, y.den) == 0;
}

std::strong_ordering operator<=>(const QNumber& a, const QNumber& b) {
  if (!a.is_big() && !b.is_big()) {
    const int128 left = wide_product(a.small_num, b.small_den);
    const int128 right = wide_product(b.small_num, a.small_den);
    return left <=> right;
  }
  const QNumber::Operand x(a);
  const QNumber::Operand y(b);
  mpz_class left;
  mpz_class right;
  mpz_mul(left.get_mpz_t(), x.num, y.den);
  mpz_mul(right.get_mpz_t(), y.num, x.den);
  return cmp(left, right) <=> 0;
}

QNumber operator-(const QNumber& a) {
  QNumber result(a);
  if (result.is_big()) {
    mpz_neg(result.block->num, result.block->num);
  } else {
    result.small_num = -result.small_num;
  }
  return result;
}

/** a + b or a - b. */
QNumber QNumber::sum(const QNumber& a, const QNumber& b, bool subtract) {
  if (!a.is_big() && !b.is_big()) {
    const int128 left = wide_product(a.small_num, b.small_den);
    const int128 right = wide_product(b.small_num, a.small_den);
    const int128 num = subtract ? left - right : left + right;
    const int128 den = wide_product(a.small_den, b.small_den);
    if (fits_small(num) && fits_small(den)) {
      return reduced(static_cast<std::int64_t>(num), static_cast<std::int64_t>(den));
    }
  }
  const Operand x(a);
  const Operand y(b);
  mpz_class num;
  mpz_class den;
  mpz_mul(num.get_mpz_t(), x.num, y.den);
  if (subtract) {
    mpz_submul(num.get_mpz_t(), y.num, x.den);
  } else {
    mpz_addmul(num.get_mpz_t(), y.num, x.den);
  }
  mpz_mul(den.get_mpz_t(), x.den, y.den);
  return from_fraction(std::move(num), std::move(den));
}

QNumber operator+(const QNumber& a, const QNumber& b) {
  return QNumber::sum(a, b, false);
}

QNumber operator-(const QNumber& a, const QNumber& b) {
  return QNumber::sum(a, b, true);
}

/** a * b or a / b, where b is not 0. */
QNumber QNumber::product(const QNumber& a, const QNumber& b, bool divide) {
  if (!a.is_big() && !b.is_big()) {
    const int128 num = wide_product(a.small_num, divide ? b.small_den : b.small_num);
    const int128 den = wide_product(a.small_den, divide ? b.small_num : b.small_den);
    if (fits_small(num) && fits_small(den)) {
      return reduced(static_cast<std::int64_t>(num), static_cast<std::int64_t>(den));
    }
  }
  const Operand x(a);
  const Operand y(b);
  mpz_class num;
  mpz_class den;
  mpz_mul(num.get_mpz_t(), x.num, divide ? y.den : y.num);
  mpz_mul(den.get_mpz_t(), x.den, divide ? y.num : y.den);
  return from_fraction(std::move(num), std::move(den));
}

QNumber operator*(const QNumber& a, const QNumber& b) {
  return QNumber::product(a, b, false);
}

QNumber operator/(const QNumber& a, const QNumber& b) {
  if (b.sign() == 0) {
    throw Exception("division of a rational number by 0");
  }
  return QNumber::product(a, b, true);
}

}  // namespace brum
