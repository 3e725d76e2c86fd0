#include "brum/readers/text_key.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

namespace brum {
namespace {

constexpr std::uint64_t group_size = 4;

// The texts to count through have short and long keys, and both on the way from one to the other.
const char* const prefixes[] = {"", "t", "abcd", "abcde", "definition_"};

TEST(TextKey, ShortTextsHaveKeysOfTheirOwn) {
  std::set<std::uint64_t> keys;
  std::size_t num_texts = 0;
  for (const std::string begin : {"", "ab", "abcde"}) {
    for (int last = 0; last < 256; ++last) {
      keys.insert(TextKey::of(begin + static_cast<char>(last)));
      keys.insert(TextKey::of(begin + static_cast<char>(last) + '\0'));
      num_texts += 2;
    }
  }
  EXPECT_EQ(keys.size(), num_texts);
}

TEST(TextKey, NoKeyIsZero) {
  EXPECT_NE(TextKey::of(""), 0U);
  EXPECT_NE(TextKey::of(std::string(7, '\0')), 0U);
  EXPECT_NE(TextKey::of(std::string(8, '\0')), 0U);
}

TEST(TextKey, LongTextsThatDifferHaveOtherKeys) {
  std::set<std::uint64_t> keys;
  for (int i = 0; i < 100'000; ++i) {
    keys.insert(TextKey::of("definition_" + std::to_string(i)));
  }
  EXPECT_EQ(keys.size(), 100'000U);
  EXPECT_NE(TextKey::of("efinition_1"), TextKey::of("definition_1"));
}

TEST(TextKey, DigitsOfOneGroupDifferInTheLastBitsOnly) {
  for (const std::string prefix : prefixes) {
    for (int i = 0; i < 1'000; ++i) {
      const auto digit = static_cast<std::uint64_t>(i % 10);
      const std::string first = std::to_string(i - static_cast<int>(digit % group_size));
      if (i % 10 < 8) {
        EXPECT_EQ(TextKey::of(prefix + std::to_string(i)),
                  TextKey::of(prefix + first) + digit % group_size)
            << prefix << i;
      }
    }
  }
}

TEST(TextKey, TheKeyAheadIsInTheGroupThatFollows) {
  for (const std::string prefix : prefixes) {
    for (int i = 10; i < 1'000; ++i) {
      const int last = i % 10;
      const int next = last < 4 ? i - last + 4 : last < 8 ? i - last + 8 : i - last + 10;
      if (next / 100 != i / 100) {
        continue;
      }
      const std::string text = prefix + std::to_string(i);
      const std::uint64_t ahead = TextKey::ahead(text, TextKey::of(text));
      EXPECT_EQ(ahead / group_size, TextKey::of(prefix + std::to_string(next)) / group_size)
          << text;
    }
  }
}

TEST(TextKey, ThereIsAKeyAheadOfAnyText) {
  for (const std::string text : {"", "x", "9", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF", "a name of words"}) {
    EXPECT_NE(TextKey::ahead(text, TextKey::of(text)), TextKey::of(text)) << text;
  }
}

}  // namespace
}  // namespace brum
