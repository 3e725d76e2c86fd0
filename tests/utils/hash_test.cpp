#include "brum/utils/hash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace {

using brum::hsh::hash;

enum class Kind : std::uint32_t { none = 0, some = 41, last = 0xffffffff };
enum Signed : std::int8_t { minus_one = -1, seven = 7 };

/** A type is complete if its size can be asked for. */
template <typename T>
concept Complete = requires {
  sizeof(T);
};

// A table of terms cannot be made before the header of terms says how they hash.
static_assert(!Complete<hash<const brum::Term*>>);
static_assert(Complete<hash<const brum::Symbol*>> && Complete<hash<const brum::DataType*>>);

TEST(Hash, PointersGiveTheirAddress) {
  int numbers[3] = {};
  for (int& number : numbers) {
    EXPECT_EQ(hash<int*>()(&number), reinterpret_cast<std::uintptr_t>(&number));
    EXPECT_EQ(hash<const int*>()(&number), reinterpret_cast<std::uintptr_t>(&number));
  }
  EXPECT_EQ(hash<const brum::Symbol*>()(nullptr), 0U);
}

TEST(Hash, EnumeratorsGiveTheirValueWidenedWithZeros) {
  EXPECT_EQ(hash<Kind>()(Kind::none), 0U);
  EXPECT_EQ(hash<Kind>()(Kind::some), 41U);
  EXPECT_EQ(hash<Kind>()(Kind::last), 4294967295U);
  EXPECT_EQ(hash<Signed>()(seven), 7U);
  EXPECT_EQ(hash<Signed>()(minus_one), 255U);
}

TEST(Hash, IntegersGiveTheirValueWidenedWithZeros) {
  EXPECT_EQ(hash<std::uint64_t>()(18446744073709551615U), 18446744073709551615U);
  EXPECT_EQ(hash<std::int64_t>()(-1), 18446744073709551615U);
  EXPECT_EQ(hash<std::int32_t>()(-2), 4294967294U);
  EXPECT_EQ(hash<char>()('a'), 97U);
  EXPECT_EQ(hash<bool>()(true), 1U);
  EXPECT_EQ(hash<bool>()(false), 0U);
}

// Worked out from the definition: words of 8 bytes, the first byte the lowest, then what is left.
TEST(Hash, TextsHashByWordsOfEightBytes) {
  EXPECT_EQ(hash<std::string_view>()(""), 0x0000000000000000U);
  EXPECT_EQ(hash<std::string_view>()("x"), 0x400201070a3a424aU);
  EXPECT_EQ(hash<std::string_view>()("abcdefg"), 0x66d7a06501b45067U);
  EXPECT_EQ(hash<std::string_view>()("abcdefgh"), 0xb39009ca1eca490aU);
  EXPECT_EQ(hash<std::string_view>()("abcdefghi"), 0x0c605c2b7c087522U);
  EXPECT_EQ(hash<std::string_view>()("\xff\xfe"), 0x2dc9e6fd62cf8ee3U);
  EXPECT_EQ(hash<std::string_view>()("sixteen bytes 16"), 0xef910b8735f70feaU);
}

TEST(Hash, StringsAndViewsAgree) {
  const std::string text("a longer name with\0a zero byte", 30);
  for (std::size_t length = 0; length <= text.size(); ++length) {
    const std::string part = text.substr(0, length);
    EXPECT_EQ(hash<std::string>()(part), hash<std::string_view>()(part));
  }
}

TEST(Hash, StringsDifferWithEveryByteLengthAndPlace) {
  std::set<std::uint64_t> seen;
  std::size_t made = 0;
  for (std::size_t length = 0; length <= 40; ++length) {
    const std::string base(length, 'a');
    seen.insert(hash<std::string>()(base));
    ++made;
    for (std::size_t place = 0; place < length; ++place) {
      for (const char other : {'\0', 'b', 'A', '\xff'}) {
        std::string changed = base;
        changed[place] = other;
        seen.insert(hash<std::string>()(changed));
        ++made;
      }
    }
  }
  EXPECT_EQ(seen.size(), made);
}

TEST(Hash, NumberedNamesSpreadOverTheBucketsOfATable) {
  // 10501 buckets, 7000 names: a random function leaves about 51 % of the buckets empty.
  std::set<std::uint64_t> used;
  for (int i = 0; i < 7000; ++i) {
    used.insert(hash<std::string>()("x" + std::to_string(i)) % 10501);
  }
  EXPECT_GT(used.size(), 4900U);
  EXPECT_LT(used.size(), 5400U);
}

}  // namespace
