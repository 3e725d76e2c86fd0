// Rational numbers when memory runs out, and when GMP gives no text.

#include "brum/numbers/qnumber.h"

#include "tests/support/failing_memory.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <ios>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

bool gmp_gives_no_text = false;

}  // namespace

// Stands before GMP's function of this name, which the macro mpz_get_str spells.
extern "C" char* mpz_get_str(char* text, int base, mpz_srcptr value) {
  using Function = char* (*)(char*, int, mpz_srcptr);
  static const auto original = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "__gmpz_get_str"));
  return gmp_gives_no_text && text == nullptr ? nullptr : original(text, base, value);
}

namespace {

using brum::QNumber;
using brum::testing::MemoryFault;

TEST(QNumberFaults, ANullTextFromGmpMakesTheStreamBad) {
  const QNumber large(mpz_class("1180591620717411303424"), 3);
  std::ostringstream out;
  gmp_gives_no_text = true;
  out << large;
  gmp_gives_no_text = false;
  EXPECT_TRUE(out.bad());
  EXPECT_EQ(out.str(), "");
  std::ostringstream throwing;
  throwing.exceptions(std::ios_base::badbit);
  gmp_gives_no_text = true;
  EXPECT_THROW(throwing << large, std::ios_base::failure);
  gmp_gives_no_text = false;
  out.clear();
  out << large;
  EXPECT_EQ(out.str(), "1180591620717411303424/3");
}

TEST(QNumberFaults, OperationsHappenOrChangeNothing) {
  const mpz_class two_to_70("1180591620717411303424");
  const QNumber large(two_to_70, 7);
  const QNumber most(9223372036854775807);
  const QNumber one(1);
  const std::string large_text = "1180591620717411303424/7";
  const std::vector<std::pair<std::string, std::function<std::string()>>> operations = {
      {"-9223372036854775808",
       [] { return QNumber(std::numeric_limits<std::int64_t>::min()).to_str(); }},
      {"-9223372036854775808/3",
       [] { return QNumber(std::numeric_limits<std::int64_t>::min(), 3).to_str(); }},
      {"1180591620717411303424/5", [&] { return QNumber(two_to_70, 5).to_str(); }},
      {large_text, [&] { return QNumber(large).to_str(); }},
      {"-" + large_text, [&] { return (-large).to_str(); }},
      {large_text, [&] { return abs(large).to_str(); }},
      {"9223372036854775808", [&] { return (most + one).to_str(); }},
      {"-9223372036854775808", [&] { return (-most - one).to_str(); }},
      {"18446744073709551614", [&] { return (most * QNumber(2)).to_str(); }},
      {"1/18446744073709551614", [&] { return (one / most / QNumber(2)).to_str(); }},
      {"1180591620717411303424", [&] { return large.get_num().to_str(); }},
      {"7", [&] { return large.get_den().to_str(); }},
      {"123456789012345678901234567891/3",
       [] { return QNumber::from_string("123456789012345678901234567891/3").to_str(); }},
      {"true", [&] { return large > most || large == one ? "true" : "false"; }},
  };
  for (const auto& [expected, operation] : operations) {
    bool done = false;
    for (std::size_t failing = 1; !done; ++failing) {
      ASSERT_LT(failing, 100U);
      std::string text;
      {
        const MemoryFault fault(failing);
        try {
          text = operation();
          done = true;
        } catch (const std::bad_alloc&) {
          done = false;
        }
      }
      if (done) {
        EXPECT_EQ(text, expected);
      }
    }
    EXPECT_EQ(large.to_str(), large_text);
    EXPECT_EQ(one.to_str(), "1");
  }
}

TEST(QNumberFaults, AFailedAssignmentLeavesTheOldValue) {
  const QNumber large(mpz_class("1180591620717411303424"), 7);
  QNumber value(3, 4);
  {
    const MemoryFault fault(1);
    EXPECT_THROW(value = large, std::bad_alloc);
  }
  EXPECT_EQ(value, QNumber(3, 4));
  EXPECT_FALSE(value.is_big());
  value = large;
  EXPECT_EQ(value, large);
}

TEST(QNumberFaults, SmallNumbersNeedNoMemory) {
  QNumber value(3, 4);
  bool less = false;
  {
    const MemoryFault fault(1, true);
    value = (value + 1) * QNumber(-5, 7) - QNumber(2) / value;
    less = value < QNumber::from_string("-1.5");
    EXPECT_EQ(fault.allocations(), 0U);
  }
  EXPECT_EQ(value, QNumber(-47, 12));
  EXPECT_TRUE(less);
}

}  // namespace
