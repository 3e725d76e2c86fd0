// Representation, normal form and queries of rational numbers.

#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"
#include "brum/utils/hash_containers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using brum::Exception;
using brum::gcd_cache;
using brum::QNumber;

static_assert(sizeof(QNumber) == 16);
static_assert(std::is_convertible_v<std::int64_t, QNumber>);
static_assert(std::is_same_v<decltype(gcd_cache), std::int64_t[1024][1024]>);

constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

// Made before main, perhaps before the scratch integer of the library would be initialised.
const QNumber made_early(mpz_class("1180591620717411303424"), mpz_class("-6442450944"));

/** 2^70, which is 1180591620717411303424. */
mpz_class two_to_70() {
  return mpz_class("1180591620717411303424");
}

/** The value in the big form. */
QNumber big(const QNumber& value) {
  QNumber result(two_to_70(), 1);
  result = value;
  return result;
}

/** Makes the cache what it is at the start of a program. */
void forget_divisors() {
  for (auto& row : gcd_cache) {
    std::fill(std::begin(row), std::end(row), 0);
  }
}

TEST(QNumber, TheCacheOfDivisorsStartsEmpty) {
  EXPECT_EQ(gcd_cache[0][0], 0);
}

TEST(QNumber, NumbersMadeBeforeMainAreNormalised) {
  EXPECT_EQ(made_early.to_str(), "-549755813888/3");
}

static_assert(std::is_convertible_v<int, QNumber> && std::is_convertible_v<std::int64_t, QNumber>);
static_assert(!std::is_constructible_v<QNumber, double> && !std::is_convertible_v<float, QNumber>);

TEST(QNumber, IsZeroByDefault) {
  const QNumber zero;
  EXPECT_EQ(zero.to_str(), "0");
  EXPECT_FALSE(zero.is_big());
  EXPECT_EQ(zero.sign(), 0);
  EXPECT_TRUE(zero.is_integer());
}

TEST(QNumber, FractionsAreInLowestTermsWithAPositiveDenominator) {
  struct Row {
    std::int64_t num;
    std::int64_t den;
    std::string text;
  };
  const std::vector<Row> rows = {
      {6, -4, "-3/2"},
      {-6, -4, "3/2"},
      {-6, 4, "-3/2"},
      {0, -7, "0"},
      {0, 7, "0"},
      {5, 1, "5"},
      {5, -1, "-5"},
      {10, 5, "2"},
      {1023, 1023, "1"},
      {1024, 2048, "1/2"},
      {most, most, "1"},
      {-most, most, "-1"},
      {most, 7, "1317624576693539401"},  // 2^63 - 1 is 7 * 7 * 73 * 127 * 337 * 92737 * 649657
      {most, 2, "9223372036854775807/2"},
      {1, -most, "-1/9223372036854775807"},
  };
  for (const Row& row : rows) {
    const QNumber small(row.num, row.den);
    EXPECT_EQ(small.to_str(), row.text);
    EXPECT_FALSE(small.is_big());
    const QNumber from_gmp(mpz_class(row.num), mpz_class(row.den));
    EXPECT_EQ(from_gmp.to_str(), row.text);
    EXPECT_EQ(from_gmp, small);
  }
}

TEST(QNumber, TheMostNegativeIntegerIsNeverSmall) {
  struct Row {
    QNumber value;
    std::string text;
  };
  const std::vector<Row> rows = {
      {QNumber(least), "-9223372036854775808"},
      {QNumber(least, 1), "-9223372036854775808"},
      {QNumber(least, -1), "9223372036854775808"},
      {QNumber(1, least), "-1/9223372036854775808"},
      {QNumber(least, least), "1"},
      {QNumber(least, 2), "-4611686018427387904"},
      {QNumber(0, least), "0"},
  };
  for (const Row& row : rows) {
    EXPECT_TRUE(row.value.is_big()) << row.text;
    EXPECT_EQ(row.value.to_str(), row.text);
  }
  EXPECT_FALSE(QNumber(-most).is_big());
  EXPECT_EQ(QNumber(-most).to_str(), "-9223372036854775807");
}

TEST(QNumber, FromGmpIsSmallWhenBothPartsFitIn32Bits) {
  struct Row {
    std::string num;
    std::string den;
    bool is_big;
    std::string text;
  };
  const std::vector<Row> rows = {
      {"2147483647", "1", false, "2147483647"},
      {"2147483648", "1", true, "2147483648"},
      {"-2147483648", "1", false, "-2147483648"},
      {"-2147483649", "1", true, "-2147483649"},
      {"1", "2147483647", false, "1/2147483647"},
      {"1", "2147483648", true, "1/2147483648"},
      {"1", "-2147483648", false, "-1/2147483648"},
      {"1", "-2147483649", true, "-1/2147483649"},
      {"6", "-4", false, "-3/2"},
      {"0", "5", false, "0"},
      {"0", "-18446744073709551616", true, "0"},
      // The parts as given decide: these are big although their quotients are not.
      {"1099511627776", "1099511627776", true, "1"},
      {"1099511627776", "3", true, "1099511627776/3"},
      {"-1180591620717411303424", "-1180591620717411303424", true, "1"},
      {"1180591620717411303424", "-6", true, "-590295810358705651712/3"},
  };
  for (const Row& row : rows) {
    QNumber value{mpz_class(row.num), mpz_class(row.den)};
    EXPECT_EQ(value.is_big(), row.is_big) << row.num << '/' << row.den;
    EXPECT_EQ(value.to_str(), row.text);
    value.normalize();
    EXPECT_EQ(value.is_big(), row.is_big);
    EXPECT_EQ(value.to_str(), row.text);
  }
}

TEST(QNumber, AZeroDenominatorThrows) {
  EXPECT_THROW(QNumber(1, 0), Exception);
  EXPECT_THROW(QNumber(0, 0), Exception);
  EXPECT_THROW(QNumber(least, 0), Exception);
  EXPECT_THROW(QNumber(mpz_class(1), mpz_class(0)), Exception);
  EXPECT_THROW(QNumber(two_to_70(), mpz_class(0)), Exception);
}

TEST(QNumber, NormalizeFillsTheCacheOfDivisorsOnItsWay) {
  forget_divisors();
  const QNumber value(10, 4);
  EXPECT_EQ(value.to_str(), "5/2");
  EXPECT_EQ(gcd_cache[10][4], 2);
  EXPECT_EQ(gcd_cache[4][10], 2);
  EXPECT_EQ(gcd_cache[4][2], 2);
  EXPECT_EQ(gcd_cache[2][4], 2);
  EXPECT_EQ(gcd_cache[2][0], 0);  // the loop ends before a pair with 0
  EXPECT_EQ(gcd_cache[2][2], 0);
}

TEST(QNumber, NormalizeUsesTheCacheUpTo1023) {
  forget_divisors();
  EXPECT_EQ(QNumber(1023, 1022).to_str(), "1023/1022");
  EXPECT_EQ(gcd_cache[1023][1022], 1);
  EXPECT_EQ(gcd_cache[1022][1023], 1);
  EXPECT_EQ(gcd_cache[1022][1], 1);
  // 2046/1023: the first pair is too large, the next one ends the loop.
  EXPECT_EQ(QNumber(2046, 1023).to_str(), "2");
  EXPECT_EQ(gcd_cache[1023][0], 0);
  // A known entry is used as it stands; a wrong one shows that.
  gcd_cache[900][600] = 100;
  EXPECT_EQ(QNumber(900, 600).to_str(), "9/6");
  forget_divisors();
}

TEST(QNumber, NormalizeLeavesTheDivisorOfABigNumberInTheScratchInteger) {
  const QNumber value(two_to_70() * 3, 12);
  EXPECT_EQ(value.to_str(), "295147905179352825856");
  EXPECT_EQ(mpz_class(QNumber::gmp_tmp), 12);
}

TEST(QNumber, CopiesKeepFormAndValue) {
  const QNumber small(3, 4);
  const QNumber small_copy(small);
  EXPECT_FALSE(small_copy.is_big());
  EXPECT_EQ(small_copy.to_str(), "3/4");

  QNumber source(two_to_70(), 3);
  const QNumber big_copy(source);
  source = QNumber(1);
  EXPECT_TRUE(big_copy.is_big());
  EXPECT_EQ(big_copy.to_str(), "1180591620717411303424/3");
  EXPECT_EQ(source.to_str(), "1");
}

TEST(QNumber, AssignmentKeepsTheBigForm) {
  const QNumber half(1, 2);
  const QNumber large(two_to_70(), 3);

  QNumber value(5);
  value = half;  // small to small
  EXPECT_FALSE(value.is_big());
  EXPECT_EQ(value.to_str(), "1/2");

  value = large;  // big to small
  EXPECT_TRUE(value.is_big());
  EXPECT_EQ(value.to_str(), "1180591620717411303424/3");

  value = QNumber(-two_to_70(), 7);  // big to big
  EXPECT_TRUE(value.is_big());
  EXPECT_EQ(value.to_str(), "-1180591620717411303424/7");

  value = half;  // small to big
  EXPECT_TRUE(value.is_big());
  EXPECT_EQ(value.to_str(), "1/2");
  EXPECT_EQ(value, half);
}

TEST(QNumber, AssignmentToItselfChangesNothing) {
  QNumber small(3, 4);
  QNumber large(two_to_70(), 3);
  const QNumber& same_small = small;
  const QNumber& same_large = large;
  small = same_small;
  large = same_large;
  EXPECT_EQ(small.to_str(), "3/4");
  EXPECT_EQ(large.to_str(), "1180591620717411303424/3");
}

TEST(QNumber, PartsAreNumbersThemselves) {
  struct Row {
    QNumber value;
    std::string num;
    bool num_is_big;
    std::string den;
    bool den_is_big;
  };
  const std::vector<Row> rows = {
      {QNumber(-3, 4), "-3", false, "4", false},
      {QNumber(0), "0", false, "1", false},
      {QNumber(most, 2), "9223372036854775807", false, "2", false},
      {big(QNumber(6)), "6", false, "1", false},
      {big(QNumber(most)), "9223372036854775807", true, "1", false},
      {QNumber(least), "-9223372036854775808", true, "1", false},
      {QNumber(1, least), "-1", false, "9223372036854775808", true},
      {QNumber(-two_to_70(), 3), "-1180591620717411303424", true, "3", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.value.get_num().to_str(), row.num);
    EXPECT_EQ(row.value.get_num().is_big(), row.num_is_big) << row.num;
    EXPECT_EQ(row.value.get_den().to_str(), row.den);
    EXPECT_EQ(row.value.get_den().is_big(), row.den_is_big) << row.den;
    EXPECT_EQ(row.value.num_mpz().get_str(), row.num);
    EXPECT_EQ(row.value.den_mpz().get_str(), row.den);
  }
}

TEST(QNumber, AbsoluteValueKeepsTheForm) {
  struct Row {
    QNumber value;
    std::string text;
    bool is_big;
  };
  const std::vector<Row> rows = {
      {QNumber(-7, 3), "7/3", false},
      {QNumber(7, 3), "7/3", false},
      {QNumber(0), "0", false},
      {QNumber(-most), "9223372036854775807", false},
      {QNumber(least), "9223372036854775808", true},
      {QNumber(-two_to_70(), 3), "1180591620717411303424/3", true},
      {QNumber(two_to_70(), 3), "1180591620717411303424/3", true},
      {big(QNumber(-1, 2)), "1/2", true},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(abs(row.value).to_str(), row.text);
    EXPECT_EQ(abs(row.value).is_big(), row.is_big) << row.text;
  }
}

TEST(QNumber, KnowsItsSignAndWhetherItIsAnInteger) {
  struct Row {
    QNumber value;
    int sign;
    bool is_integer;
  };
  const std::vector<Row> rows = {
      {QNumber(0), 0, true},          {QNumber(42), 1, true},
      {QNumber(-42), -1, true},       {QNumber(1, 2), 1, false},
      {QNumber(-1, 2), -1, false},    {QNumber(least), -1, true},
      {QNumber(1, least), -1, false}, {QNumber(two_to_70(), 1), 1, true},
      {big(QNumber(0)), 0, true},     {big(QNumber(-1, 2)), -1, false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(row.value.sign(), row.sign) << row.value;
    EXPECT_EQ(row.value.is_integer(), row.is_integer) << row.value;
  }
}

TEST(QNumber, GivesUnsignedMachineIntegersWhereTheyFit) {
  const mpz_class two_to_64("18446744073709551616");
  const std::vector<std::pair<QNumber, std::optional<std::uint64_t>>> rows = {
      {QNumber(0), 0},
      {QNumber(7), 7},
      {QNumber(most), 9223372036854775807U},
      {QNumber(two_to_64 - 1, 1), 18446744073709551615U},
      {big(QNumber(7)), 7},
      {QNumber(two_to_64, 1), std::nullopt},
      {QNumber(-1), std::nullopt},
      {big(QNumber(-1)), std::nullopt},
      {QNumber(1, 2), std::nullopt},
      {QNumber(two_to_64, 3), std::nullopt},
  };
  for (const auto& [value, expected] : rows) {
    EXPECT_EQ(value.to_uint64(), expected) << value;
  }
}

TEST(QNumber, EqualValuesHashEqualInBothForms) {
  for (const QNumber& value : {QNumber(0), QNumber(-1), QNumber(3, 4), QNumber(-3, 4),
                               QNumber(most), QNumber(-most), QNumber(most, 2), QNumber(2, most)}) {
    EXPECT_FALSE(value.is_big());
    EXPECT_TRUE(big(value).is_big());
    EXPECT_EQ(value.hash(), big(value).hash()) << value;
    EXPECT_EQ(brum::hsh::hash<QNumber>()(value), value.hash());
  }
  EXPECT_EQ(QNumber(two_to_70(), 3).hash(), QNumber(two_to_70() * -5, -15).hash());
}

TEST(QNumber, DifferentValuesHashDifferently) {
  std::vector<QNumber> values;
  for (std::int64_t num = -20; num <= 20; ++num) {
    for (std::int64_t den = 1; den <= 20; ++den) {
      values.emplace_back(num, den);
      values.emplace_back(two_to_70() + num, mpz_class(den));
      values.emplace_back(-two_to_70() - num, mpz_class(den));
      values.emplace_back(mpz_class(num), two_to_70() + den);
      values.emplace_back(two_to_70() * two_to_70() + num, mpz_class(den));
    }
  }
  brum::hsh::HashMap<std::uint64_t, std::string> texts;
  for (const QNumber& value : values) {
    std::string& text = texts[value.hash()];
    if (text.empty()) {
      text = value.to_str();
    }
    EXPECT_EQ(text, value.to_str());
  }
  EXPECT_GT(texts.size(), 2000U);
}

TEST(QNumber, CanBeTheKeyOfATable) {
  brum::hsh::HashMap<QNumber, int> table;
  table[QNumber(1, 2)] = 3;
  table[QNumber(two_to_70(), 1)] = 4;
  EXPECT_EQ(table[big(QNumber(1, 2))], 3);
  EXPECT_EQ(table.find(QNumber(two_to_70() * 2, 2))->second, 4);
  EXPECT_EQ(table.size(), 2U);
}

}  // namespace
