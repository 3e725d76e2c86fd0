#include "brum/printers/smtlib_identifiers.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "brum/printers/smtlib_term_printer.h"

namespace brum {
namespace {

TEST(SmtLibIdentifiers, Version1NamesByValue) {
  TermManager mgr;
  const SmtLibTermPrinter printer(true, &mgr, "", "");
  const struct {
    std::string name;
    const char* text;
  } rows[] = {
      {"x", "x"},
      {"x.y_z", "x.y_z"},
      {"", "_"},
      {"1a", "_1a"},
      {"a1", "a1"},
      {"_a", "_a"},
      {".a", "_.a"},
      {"a b", "a_h32_b"},
      {"x'", "x_h39_"},
      {"a-b", "a_h45_b"},
      {"-x", "__h45_x"},
      {"\xC3\xA9", "__h-61__h-87_"},
      {"x\xC3\xA9", "x_h-61__h-87_"},
      {"a ", "a_h32_"},
      {"a_h32_", "a_h32_"},
      {" ", "__h32_"},
      {"|", "__h124_"},
      {"\x7F", "__h127_"},
      {"\x80", "__h-128_"},
      {"\xFF", "__h-1_"},
      {std::string("\0", 1), "__h0_"},
      {std::string("a\0b", 3), "a_h0_b"},
      {"assert", "assert"},
      {"let", "let"},
      {"_", "_"},
      {"!", "__h33_"},
      {"ABCxyz019._", "ABCxyz019._"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(printer.to_smtlib(row.name), row.text) << row.name;
  }
}

TEST(SmtLibIdentifiers, Version2NamesByValue) {
  TermManager mgr;
  const SmtLibTermPrinter printer(false, &mgr, "", "");
  const struct {
    std::string name;
    std::string text;
  } rows[] = {
      {"x", "x"},
      {"-x", "-x"},
      {"a.b", "a.b"},
      {"x~y", "x~y"},
      {"<=>", "<=>"},
      {"_", "_"},
      {"", ""},
      {"1x", "|1x|"},
      {"x1", "x1"},
      {"a b", "|a b|"},
      {"a:b", "|a:b|"},
      {"a#b", "|a#b|"},
      {"a|b", "|a|b|"},
      {"a\\b", "|a\\b|"},
      {"|", "|||"},
      {"\xC3\xA9", "|\xC3\xA9|"},
      {"x\x80", "|x\x80|"},
      {"x\n", "|x\n|"},
      {std::string("a\0b", 3), std::string("|a\0b|", 5)},
      {"assert", "assert"},
      {"let", "let"},
      {"!", "!"},
      {".def_12", ".def_12"},
      {"@x", "@x"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(printer.to_smtlib(row.name), row.text) << row.name;
  }
}

// The classes of bytes, written out.
const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
const std::string digits = "0123456789";
const std::string v2_punctuation =
    "\x7E\x21\x40\x24\x25\x5E\x26\x2A\x5F\x2D\x2B\x3D\x3C\x3E\x2E\x3F\x2F";

bool holds(const std::string& bytes, char byte) {
  return bytes.find(byte) != std::string::npos;
}

TEST(SmtLibIdentifiers, EveryByteOfVersion1) {
  TermManager mgr;
  const SmtLibTermPrinter printer(true, &mgr, "", "");
  for (int code = 0; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    const bool kept = holds(letters + digits + "._", byte);
    const int signed_code = code < 128 ? code : code - 256;
    const std::string text = kept ? std::string(1, byte) : "_h" + std::to_string(signed_code) + "_";
    const bool may_begin = holds(letters + "_", byte);
    EXPECT_EQ(printer.to_smtlib(std::string(1, byte)), (may_begin ? "" : "_") + text) << code;
    EXPECT_EQ(printer.to_smtlib(std::string("x") + byte + "y"), "x" + text + "y") << code;
  }
}

TEST(SmtLibIdentifiers, Version1NamesThatStayAreKnown) {
  EXPECT_FALSE(is_v1_identifier(""));
  EXPECT_TRUE(is_v1_identifier("_"));
  for (int code = 0; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    for (const std::string& name : {byte, "a" + byte, "_" + byte + "b"}) {
      EXPECT_EQ(is_v1_identifier(name), v1_identifier(name) == name) << code;
    }
  }
}

TEST(SmtLibIdentifiers, EveryByteOfVersion2) {
  ASSERT_EQ(v2_punctuation.size(), 17U);
  TermManager mgr;
  const SmtLibTermPrinter printer(false, &mgr, "", "");
  for (int code = 0; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    const bool plain_alone = holds(letters + v2_punctuation, byte);
    const bool plain_inside = plain_alone || holds(digits, byte);
    const std::string alone(1, byte);
    const std::string inside = std::string("x") + byte + "y";
    EXPECT_EQ(printer.to_smtlib(alone), plain_alone ? alone : "|" + alone + "|") << code;
    EXPECT_EQ(printer.to_smtlib(inside), plain_inside ? inside : "|" + inside + "|") << code;
  }
}

TEST(SmtLibIdentifiers, ASymbolIsPutBetweenBarsWhereItNeedsThem) {
  for (const char* plain : {"x", "a-b", "+", "and", ".def_1", "LET", "Int"}) {
    EXPECT_EQ(v2_symbol(plain), plain);
  }
  EXPECT_EQ(v2_symbol(""), "||");
  EXPECT_EQ(v2_symbol("1x"), "|1x|");
  EXPECT_EQ(v2_symbol("a b"), "|a b|");
  EXPECT_EQ(v2_symbol("let"), "|let|");
  EXPECT_EQ(v2_symbol("check-sat"), "|check-sat|");
}

TEST(SmtLibIdentifiers, TheLocaleOfTheProcessDoesNotMatter) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* name : {"C.UTF-8", "en_US.ISO-8859-1", "C"}) {
    std::setlocale(LC_ALL, name);  // where it is not installed nothing changes
    TermManager mgr;
    EXPECT_EQ(SmtLibTermPrinter(true, &mgr, "", "").to_smtlib(std::string("\xE9")), "__h-23_");
    EXPECT_EQ(SmtLibTermPrinter(false, &mgr, "", "").to_smtlib(std::string("\xE9")), "|\xE9|");
  }
  std::setlocale(LC_ALL, before.c_str());
}

TEST(SmtLibIdentifiers, LongNamesAreWrittenWhole) {
  TermManager mgr;
  const std::string blanks(100'000, ' ');
  std::string escaped = "_";
  for (std::size_t i = 0; i < blanks.size(); ++i) {
    escaped += "_h32_";
  }
  EXPECT_EQ(SmtLibTermPrinter(true, &mgr, "", "").to_smtlib(blanks), escaped);
  EXPECT_EQ(SmtLibTermPrinter(false, &mgr, "", "").to_smtlib(blanks), "|" + blanks + "|");
}

}  // namespace
}  // namespace brum
