#include "brum/terms/arena.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace brum::testing {

TEST(Arena, GivesAlignedPlacesThatDoNotOverlap) {
  Arena arena;
  char* first = static_cast<char*>(arena.allocate(3));
  char* second = static_cast<char*>(arena.allocate(1));
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % alignof(void*), 0U);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(second) % alignof(void*), 0U);
  EXPECT_GE(second - first, 3);
}

TEST(Arena, KeepsTextsOfAnyLength) {
  Arena arena;
  const std::string_view small = arena.copy("small");
  const std::string_view nothing = arena.copy("");
  const std::string long_text(100000, 'x');
  const std::string_view large = arena.copy(long_text);
  const std::string_view after = arena.copy("after");
  EXPECT_EQ(small, "small");
  EXPECT_EQ(small.data()[5], '\0');
  EXPECT_EQ(nothing.data()[0], '\0');
  EXPECT_EQ(large, long_text);
  EXPECT_EQ(after, "after");
}

TEST(Arena, KeepsManyTexts) {
  Arena arena;
  std::vector<std::string_view> texts;
  for (std::size_t i = 0; i < 300000; ++i) {  // 10 MB
    texts.push_back(arena.copy(std::to_string(i) + " and some more to fill chunks"));
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    ASSERT_EQ(texts[i], std::to_string(i) + " and some more to fill chunks");
  }
}

TEST(Arena, RefusesWhatNoMemoryHolds) {
  Arena arena;
  EXPECT_THROW(arena.allocate(std::numeric_limits<std::size_t>::max()), std::bad_alloc);
  EXPECT_THROW(arena.allocate(std::numeric_limits<std::size_t>::max() / 2 + 1), std::bad_alloc);
  EXPECT_EQ(arena.copy("still usable"), "still usable");
}

}  // namespace brum::testing
