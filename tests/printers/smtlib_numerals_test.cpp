#include <gtest/gtest.h>

#include <string>

#include "brum/printers/smtlib_term_printer.h"

namespace brum {
namespace {

TEST(SmtLibNumerals, ByValue) {
  TermManager mgr;
  const SmtLibTermPrinter v1(true, &mgr, "", "");
  const SmtLibTermPrinter v2(false, &mgr, "", "");
  const struct {
    const char* value;
    const char* v1;
    const char* v2;
  } rows[] = {
      {"0", "0", "0"},
      {"-0", "0", "0"},
      {"0/5", "0", "0"},
      {"42", "42", "42"},
      {"-42", "(~ 42)", "(- 42)"},
      {"3/4", "(/ 3 4)", "(/ 3 4)"},
      {"-3/4", "(~ (/ 3 4))", "(- (/ 3 4))"},
      {"6/8", "(/ 3 4)", "(/ 3 4)"},
      {"8/4", "2", "2"},
      {"1.25", "(/ 5 4)", "(/ 5 4)"},
      {"9223372036854775807", "9223372036854775807", "9223372036854775807"},
      {"-9223372036854775808", "(~ 9223372036854775808)", "(- 9223372036854775808)"},
      {"123456789012345678901234567890", "123456789012345678901234567890",
       "123456789012345678901234567890"},
      {"-100000000000000000000/3", "(~ (/ 100000000000000000000 3))",
       "(- (/ 100000000000000000000 3))"},
      {"1/340282366920938463463374607431768211456", "(/ 1 340282366920938463463374607431768211456)",
       "(/ 1 340282366920938463463374607431768211456)"},
  };
  for (const auto& row : rows) {
    const QNumber value = QNumber::from_string(row.value);
    EXPECT_EQ(v1.to_smtlib(value), row.v1);
    EXPECT_EQ(v2.to_smtlib(value), row.v2);
    EXPECT_EQ(value, QNumber::from_string(row.value));  // the caller's number stays
  }
}

TEST(SmtLibNumerals, BothFormsOfANumberPrintAlike) {
  TermManager mgr;
  const SmtLibTermPrinter printer(false, &mgr, "", "");
  const mpz_class large("100000000000");
  const QNumber big(large, mpz_class(3));
  const QNumber small(100000000000, 3);
  ASSERT_TRUE(big.is_big());
  ASSERT_FALSE(small.is_big());
  EXPECT_EQ(printer.to_smtlib(big), "(/ 100000000000 3)");
  EXPECT_EQ(printer.to_smtlib(small), "(/ 100000000000 3)");
}

}  // namespace
}  // namespace brum
