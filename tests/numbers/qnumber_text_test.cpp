// Reading and writing of rational numbers.

#include "brum/numbers/qnumber.h"

#include "brum/utils/exception.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <ios>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

namespace {

using brum::Exception;
using brum::QNumber;

TEST(QNumberText, ReadsIntegersFractionsAndDecimals) {
  struct Row {
    std::string text;
    std::string value;
    bool is_big;
  };
  const std::vector<Row> rows = {
      {"-12", "-12", false},
      {"3/4", "3/4", false},
      {"1.25", "5/4", false},
      {"-1.25", "-5/4", false},
      {"0", "0", false},
      {"-0", "0", false},
      {"0/5", "0", false},
      {"-0.0", "0", false},
      {"6/4", "3/2", false},
      {"-6/4", "-3/2", false},
      {"007", "7", false},
      {"007/014", "1/2", false},
      {"2.500", "5/2", false},
      {"0.1", "1/10", false},
      {"10.0", "10", false},
      {"9223372036854775807", "9223372036854775807", false},
      {"-9223372036854775807", "-9223372036854775807", false},
      {"9223372036854775808", "9223372036854775808", true},
      {"-9223372036854775808", "-9223372036854775808", true},
      {"1/9223372036854775807", "1/9223372036854775807", false},
      {"1/9223372036854775808", "1/9223372036854775808", true},
      {"000000000000000000000000000000000000000012", "12", false},
      // Small although their digits as written are many.
      {"18446744073709551616/18446744073709551616", "1", false},
      {"1.00000000000000000000000000000", "1", false},
      {"0.000000000000000000", "0", false},
      {"0.00000000000000000000000000000", "0", false},
      {"-92233720368547758080/10", "-9223372036854775808", true},
      {"-92233720368547758070/10", "-9223372036854775807", false},
      {"0.0000000000000000000001", "1/10000000000000000000000", true},
      {"-123456789012345678901234567890", "-123456789012345678901234567890", true},
      {"-123456789012345678901234567890.5", "-246913578024691357802469135781/2", true},
      {"1000000000000000000000/3000000000000000000000", "1/3", false},
  };
  for (const Row& row : rows) {
    const QNumber value = QNumber::from_string(row.text);
    EXPECT_EQ(value.to_str(), row.value) << row.text;
    EXPECT_EQ(value.is_big(), row.is_big) << row.text;
  }
}

TEST(QNumberText, RejectsEveryOtherText) {
  const std::vector<std::string> texts = {"",
                                          "-",
                                          "--1",
                                          "+1",
                                          " 1",
                                          "1 ",
                                          "1. ",
                                          ".5",
                                          "1.",
                                          "-.5",
                                          ".",
                                          "/",
                                          "1/",
                                          "/1",
                                          "1/-2",
                                          "-1/-2",
                                          "1/+2",
                                          "1//2",
                                          "1/2/3",
                                          "1.2.3",
                                          "1.2/3",
                                          "1/2.3",
                                          "1e5",
                                          "0x10",
                                          "a",
                                          "1a",
                                          "1/a",
                                          "1.a",
                                          "1_000",
                                          "1,5",
                                          "\n1",
                                          "1\n",
                                          "- 1",
                                          "1 /2",
                                          "inf",
                                          "nan",
                                          "1-",
                                          "#b1",
                                          std::string("1\0", 2),
                                          std::string("\0", 1),
                                          "\xd9\xa1",
                                          "99999999999999999999999999x",
                                          "99999999999999999999999999/",
                                          "1/99999999999999999999999999-"};
  for (const std::string& text : texts) {
    EXPECT_THROW(QNumber::from_string(text), Exception) << '"' << text << '"';
  }
}

TEST(QNumberText, SaysWhatItFoundAndWhatItExpected) {
  try {
    QNumber::from_string("+1");
    FAIL();
  } catch (const Exception& error) {
    EXPECT_STREQ(error.what(), "expected a number like -12, 3/4 or 1.25, found \"+1\"");
  }
}

TEST(QNumberText, RejectsAZeroDenominator) {
  for (const std::string text : {"1/0", "0/0", "-1/000", "99999999999999999999999/0",
                                 "1/00000000000000000000000000000000"}) {
    EXPECT_THROW(QNumber::from_string(text), Exception) << text;
  }
}

TEST(QNumberText, WritesNumeratorAndDenominator) {
  const std::vector<std::pair<QNumber, std::string>> rows = {
      {QNumber(3, 4), "3/4"},
      {QNumber(-5), "-5"},
      {QNumber(0), "0"},
      {QNumber(5, 1), "5"},
      {QNumber(6, -4), "-3/2"},
      {QNumber(-9223372036854775807, 2), "-9223372036854775807/2"},
      {QNumber(mpz_class("-1180591620717411303424"), 3), "-1180591620717411303424/3"},
      {QNumber(mpz_class("1180591620717411303424"), 1), "1180591620717411303424"},
      {QNumber(1, mpz_class("1180591620717411303424")), "1/1180591620717411303424"},
      // The bound of GMP on the number of digits is one too high for the first of these.
      {QNumber(mpz_class("99999999999999999999"), 1), "99999999999999999999"},
      {QNumber(mpz_class("100000000000000000000"), 1), "100000000000000000000"},
  };
  for (const auto& [value, text] : rows) {
    std::ostringstream out;
    out << value;
    EXPECT_EQ(out.str(), text);
    EXPECT_EQ(value.to_str(), text);
  }
}

/** Digits in groups of two: what a number must never show. */
class OddNumbers : public std::numpunct<char> {
 protected:
  char do_thousands_sep() const override { return ','; }
  std::string do_grouping() const override { return "\2"; }
};

TEST(QNumberText, IgnoresTheStateOfTheStreamAndTheLocale) {
  const std::locale odd(std::locale::classic(), new OddNumbers);
  const std::locale before = std::locale::global(odd);
  const QNumber small(-1234567, 89101112);
  const QNumber large(mpz_class("1180591620717411303424"), 2147483647);
  std::ostringstream out;
  out.imbue(odd);
  out << std::hex << std::showbase << std::showpos << std::uppercase << std::internal
      << std::setfill('*') << std::setprecision(2) << std::setw(60);
  out << small << ' ' << large;
  const std::string texts = small.to_str() + ' ' + large.to_str();
  const QNumber read = QNumber::from_string("-1234567/89101112");
  std::locale::global(before);
  EXPECT_EQ(read, small);
  EXPECT_EQ(texts, "-1234567/89101112 1180591620717411303424/2147483647");
  // The width stays for the next formatted output, which is the blank.
  EXPECT_EQ(out.str(),
            "-1234567/89101112" + std::string(59, '*') + " 1180591620717411303424/2147483647");
}

TEST(QNumberText, WritesAndReadsAMillionDigits) {
  std::string digits = "1";
  for (int i = 0; i < 200000; ++i) {
    digits += "23456";
  }
  const QNumber integer = QNumber::from_string("-" + digits);
  EXPECT_EQ(integer.to_str(), "-" + digits);
  const QNumber fraction = QNumber::from_string(digits + "/" + digits.substr(1) + "7");
  EXPECT_EQ(fraction * QNumber::from_string(digits.substr(1) + "7"), -integer);
  EXPECT_EQ(QNumber::from_string("0." + std::string(1000000, '0')), QNumber(0));
}

/** A buffer that takes a number of bytes and then throws. */
class ThrowingBuffer : public std::streambuf {
 public:
  explicit ThrowingBuffer(std::size_t room) : left(room) {}
  std::string taken;

 protected:
  int_type overflow(int_type c) override {
    const char byte = traits_type::to_char_type(c);
    return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
  }

  std::streamsize xsputn(const char* text, std::streamsize size) override {
    for (std::streamsize i = 0; i < size; ++i) {
      if (left == 0) {
        throw std::runtime_error("full");
      }
      --left;
      taken += text[i];
    }
    return size;
  }

 private:
  std::size_t left;
};

TEST(QNumberText, LetsTheExceptionsOfAStreamPass) {
  for (const QNumber& value : {QNumber(-12, 345), QNumber(mpz_class("1180591620717411303424"),
                                                          mpz_class("1180591620717411303425"))}) {
    const std::string text = value.to_str();
    for (std::size_t room = 0; room <= text.size(); ++room) {
      ThrowingBuffer buffer(room);
      std::ostream out(&buffer);
      out.exceptions(std::ios_base::badbit);
      if (room == text.size()) {
        EXPECT_NO_THROW(out << value);
      } else {
        EXPECT_THROW(out << value, std::runtime_error);
      }
      EXPECT_EQ(buffer.taken, text.substr(0, room));

      ThrowingBuffer quiet_buffer(room);
      std::ostream quiet(&quiet_buffer);
      EXPECT_NO_THROW(quiet << value);
      EXPECT_EQ(quiet.bad(), room < text.size());
      EXPECT_EQ(quiet_buffer.taken, text.substr(0, room));
    }
  }
}

}  // namespace
