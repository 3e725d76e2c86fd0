// Comparison and arithmetic of rational numbers: literal cases, then GMP's rationals as a judge.

#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"

#include <gmpxx.h>
#include <gtest/gtest.h>

#include <compare>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using brum::Exception;
using brum::QNumber;

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

QNumber q(const std::string& text) {
  return QNumber::from_string(text);
}

/** The value in the big form. */
QNumber big(const QNumber& value) {
  QNumber result(mpz_class("1180591620717411303424"), 1);
  result = value;
  return result;
}

struct Row {
  std::string a;
  std::string b;
  std::string sum;
  std::string difference;
  std::string product;
  std::string quotient;
};

const std::vector<Row> rows = {
    {"1", "2", "3", "-1", "2", "1/2"},
    {"1/2", "1/3", "5/6", "1/6", "1/6", "3/2"},
    {"1/6", "-1/6", "0", "1/3", "-1/36", "-1"},
    {"0", "-5", "-5", "5", "0", "0"},
    {"-3/4", "-3/4", "-3/2", "0", "9/16", "1"},
    {"9223372036854775807", "1", "9223372036854775808", "9223372036854775806",
     "9223372036854775807", "9223372036854775807"},
    {"-9223372036854775807", "1", "-9223372036854775806", "-9223372036854775808",
     "-9223372036854775807", "-9223372036854775807"},
    {"4294967296", "4294967296", "8589934592", "0", "18446744073709551616", "1"},
    {"1/4294967296", "1/4294967297", "8589934593/18446744078004518912", "1/18446744078004518912",
     "1/18446744078004518912", "4294967297/4294967296"},
    {"18446744073709551616", "-18446744073709551615", "1", "36893488147419103231",
     "-340282366920938463444927863358058659840", "-18446744073709551616/18446744073709551615"},
    {"18446744073709551616/3", "1/3", "18446744073709551617/3", "6148914691236517205",
     "18446744073709551616/9", "18446744073709551616"},
    {"3037000500", "-3037000500", "0", "6074001000", "-9223372037000250000", "-1"},
};

TEST(QNumberArithmetic, GivesLiteralResultsInEveryForm) {
  for (const Row& row : rows) {
    for (const QNumber& a : {q(row.a), big(q(row.a))}) {
      for (const QNumber& b : {q(row.b), big(q(row.b))}) {
        EXPECT_EQ((a + b).to_str(), row.sum);
        EXPECT_EQ((a - b).to_str(), row.difference);
        EXPECT_EQ((a * b).to_str(), row.product);
        EXPECT_EQ((a / b).to_str(), row.quotient);
      }
    }
  }
}

TEST(QNumberArithmetic, ResultsAreSmallWhereTheSmallFormCanHoldThem) {
  const QNumber large = q("18446744073709551616");
  EXPECT_TRUE(large.is_big());
  EXPECT_FALSE((large - q("18446744073709551615")).is_big());
  EXPECT_FALSE((large / large).is_big());
  EXPECT_FALSE((QNumber(most) + QNumber(-1)).is_big());
  EXPECT_FALSE((QNumber(most, 2) * QNumber(2)).is_big());
  EXPECT_FALSE((QNumber(most) / QNumber(3)).is_big());
  EXPECT_FALSE((big(QNumber(1)) + big(QNumber(2))).is_big());
  EXPECT_TRUE((QNumber(most) + QNumber(1)).is_big());
  EXPECT_TRUE((QNumber(most) * QNumber(2)).is_big());
}

TEST(QNumberArithmetic, TheMostNegativeIntegerStaysOutOfTheSmallForm) {
  const QNumber sum = QNumber(-most) + QNumber(-1);
  EXPECT_EQ(sum.to_str(), "-9223372036854775808");
  EXPECT_TRUE(sum.is_big());
  EXPECT_EQ(sum, QNumber(least));
  const QNumber product = QNumber(4294967296) * QNumber(-2147483648);
  EXPECT_EQ(product.to_str(), "-9223372036854775808");
  EXPECT_TRUE(product.is_big());
  const QNumber quotient = QNumber(1, 4294967296) / QNumber(2147483648);
  EXPECT_EQ(quotient.to_str(), "1/9223372036854775808");
  EXPECT_TRUE(quotient.is_big());
  EXPECT_EQ((QNumber(least) - QNumber(least)).to_str(), "0");
}

TEST(QNumberArithmetic, NegationKeepsTheForm) {
  EXPECT_EQ((-QNumber(3, 4)).to_str(), "-3/4");
  EXPECT_EQ((-QNumber(0)).to_str(), "0");
  EXPECT_EQ((-QNumber(-most)).to_str(), "9223372036854775807");
  EXPECT_FALSE((-QNumber(-most)).is_big());
  EXPECT_EQ((-QNumber(least)).to_str(), "9223372036854775808");
  EXPECT_EQ((-q("-18446744073709551616/7")).to_str(), "18446744073709551616/7");
  EXPECT_TRUE((-big(QNumber(1))).is_big());
}

TEST(QNumberArithmetic, DivisionByZeroThrows) {
  EXPECT_THROW(QNumber(1) / QNumber(0), Exception);
  EXPECT_THROW(QNumber(0) / QNumber(0), Exception);
  EXPECT_THROW(q("18446744073709551616") / QNumber(0), Exception);
  EXPECT_THROW(QNumber(1) / big(QNumber(0)), Exception);
}

TEST(QNumberArithmetic, ComparesByValueWhateverTheForm) {
  // Ascending.
  const std::vector<QNumber> values = {
      q("-18446744073709551616"),
      QNumber(least),
      QNumber(-most),
      QNumber(-2),
      QNumber(-3, 2),
      QNumber(-1),
      QNumber(-1, most),
      QNumber(0),
      q("1/18446744073709551616"),
      QNumber(1, most),
      QNumber(1, 3),
      QNumber(1, 2),
      QNumber(most - 1, most),
      QNumber(1),
      QNumber(most, most - 1),
      QNumber(most - 1),
      QNumber(most),
      q("9223372036854775808"),
      q("18446744073709551616"),
  };
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (std::size_t j = 0; j < values.size(); ++j) {
      for (const QNumber& a : {values[i], big(values[i])}) {
        for (const QNumber& b : {values[j], big(values[j])}) {
          EXPECT_EQ(a == b, i == j) << a << ' ' << b;
          EXPECT_EQ(a != b, i != j) << a << ' ' << b;
          EXPECT_EQ(a < b, i < j) << a << ' ' << b;
          EXPECT_EQ(a <= b, i <= j) << a << ' ' << b;
          EXPECT_EQ(a > b, i > j) << a << ' ' << b;
          EXPECT_EQ(a >= b, i >= j) << a << ' ' << b;
        }
      }
    }
  }
}

TEST(QNumberArithmetic, MixesWithMachineIntegers) {
  EXPECT_EQ(QNumber(1, 2) + 1, QNumber(3, 2));
  EXPECT_EQ(1 - QNumber(1, 2), QNumber(1, 2));
  EXPECT_LT(QNumber(1, 2), 1);
  EXPECT_TRUE(2 == QNumber(4, 2));
}

/** A random integer: of few bits, near a limit of some word, or of many bits. */
mpz_class random_integer(std::mt19937_64& random) {
  mpz_class value;
  switch (random() % 5) {
    case 0:
      value = mpz_class(static_cast<unsigned long>(random() % 20));
      break;
    case 1:
      value = mpz_class(static_cast<unsigned long>(random() >> (random() % 64)));
      break;
    case 2: {
      const std::vector<unsigned> widths = {31, 32, 62, 63, 64, 127};
      mpz_ui_pow_ui(value.get_mpz_t(), 2, widths[random() % widths.size()]);
      value += static_cast<long>(random() % 5) - 2;
      break;
    }
    case 3:
      value = mpz_class(static_cast<unsigned long>(random() % 1200));
      break;
    default:
      for (std::uint64_t words = random() % 5 + 1; words > 0; --words) {
        value = (value << 64) + mpz_class(static_cast<unsigned long>(random()));
      }
  }
  if (random() % 2 == 0) {
    value = -value;
  }
  return value;
}

/** Checks the value against GMP's and the invariants of the class. */
void expect_value(const QNumber& value, const mpq_class& expected) {
  ASSERT_EQ(value.num_mpz(), expected.get_num());
  ASSERT_EQ(value.den_mpz(), expected.get_den());
  ASSERT_EQ(value.to_str(), expected.get_str());
  ASSERT_EQ(value.sign(), sgn(expected));
  ASSERT_EQ(value.is_integer(), expected.get_den() == 1);
  ASSERT_EQ(QNumber::from_string(value.to_str()), value);
  ASSERT_EQ(QNumber::from_string(value.to_str()).hash(), value.hash());
  const mpz_class limit("-9223372036854775808");
  if (!value.is_big()) {
    ASSERT_TRUE(value.num_mpz() != limit && value.num_mpz().fits_slong_p());
    ASSERT_TRUE(value.den_mpz() != limit && value.den_mpz().fits_slong_p());
  }
}

/** The same for the result of an operation, which is small whenever it can be. */
void expect_result(const QNumber& value, const mpq_class& expected) {
  expect_value(value, expected);
  const mpz_class limit("9223372036854775807");
  const bool can_be_small = abs(expected.get_num()) <= limit && expected.get_den() <= limit;
  ASSERT_EQ(value.is_big(), !can_be_small) << value;
}

TEST(QNumberArithmetic, AgreesWithGmpOverRandomHistories) {
  std::mt19937_64 random(71);
  std::vector<QNumber> values(16);
  std::vector<mpq_class> expected(16);
  for (int step = 0; step < 40000; ++step) {
    const std::size_t i = random() % values.size();
    const std::size_t j = random() % values.size();
    const std::size_t k = random() % values.size();
    const QNumber& a = values[i];
    const QNumber& b = values[j];
    const mpq_class& x = expected[i];
    const mpq_class& y = expected[j];
    mpq_class result;
    switch (random() % 10) {
      case 0:
      case 1: {
        const mpz_class num = random_integer(random);
        mpz_class den = random_integer(random);
        if (den == 0) {
          den = 1;
        }
        result = mpq_class(num, den);
        result.canonicalize();
        if (num.fits_slong_p() && den.fits_slong_p() && random() % 2 == 0) {
          values[k] = QNumber(num.get_si(), den.get_si());
        } else {
          values[k] = QNumber(num, den);
        }
        break;
      }
      case 2:
        result = x + y;
        ASSERT_NO_FATAL_FAILURE(expect_result(a + b, result));
        values[k] = a + b;
        break;
      case 3:
        result = x - y;
        ASSERT_NO_FATAL_FAILURE(expect_result(a - b, result));
        values[k] = a - b;
        break;
      case 4:
        result = x * y;
        ASSERT_NO_FATAL_FAILURE(expect_result(a * b, result));
        values[k] = a * b;
        break;
      case 5:
        if (y == 0) {
          EXPECT_THROW(a / b, Exception);
          continue;
        }
        result = x / y;
        ASSERT_NO_FATAL_FAILURE(expect_result(a / b, result));
        values[k] = a / b;
        break;
      case 6:
        result = -x;
        values[k] = -a;
        break;
      case 7:
        result = abs(x);
        values[k] = abs(a);
        break;
      case 8:
        result = mpq_class(x.get_num());
        values[k] = a.get_num();
        break;
      default:
        result = mpq_class(x.get_den());
        values[k] = a.get_den();
        break;
    }
    if (mpz_sizeinbase(result.get_num_mpz_t(), 2) + mpz_sizeinbase(result.get_den_mpz_t(), 2) >
        4000) {
      result = 0;
      values[k] = 0;
    }
    if (random() % 50 == 0) {  // numbers turn big and stay so; make some small again
      values[k].~QNumber();
      new (&values[k]) QNumber(result.get_num().fits_slong_p() && result.get_den() == 1
                                   ? QNumber(result.get_num().get_si())
                                   : QNumber(result.get_num(), result.get_den()));
    }
    expected[k] = result;
    ASSERT_NO_FATAL_FAILURE(expect_value(values[k], result)) << "in step " << step;
    ASSERT_EQ(values[k] == values[i], result == expected[i]);
    ASSERT_EQ(values[k] < values[j], result < expected[j]);
    ASSERT_EQ(values[k] <=> values[j], cmp(result, expected[j]) <=> 0);
    values[k].normalize();
    ASSERT_EQ(values[k].to_str(), result.get_str());
  }
}

}  // namespace
