#include "brum/utils/large_array.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <numeric>
#include <span>
#include <utility>

#include "tests/support/failing_memory.h"

namespace brum {
namespace {

constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / sizeof(std::uint64_t);

/// Pushes the squares of 0, 1, ... until there are `size`.
void push_squares(LargeList<std::uint64_t>& list, std::size_t size) {
  for (std::uint64_t i = list.size(); i < size; ++i) {
    list.push_back(i * i);
  }
}

bool are_squares(std::span<const std::uint64_t> numbers) {
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] != i * i) {
      return false;
    }
  }
  return true;
}

TEST(LargeArray, IsZeroAtFirst) {
  for (const std::size_t size : {0U, 1U, 31U, 100'000U, 1'000'000U}) {
    LargeArray<std::uint64_t> numbers(size);
    ASSERT_EQ(numbers.size(), size);
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 0U), static_cast<std::ptrdiff_t>(size));
  }
  const LargeArray<const char*> pointers(100);
  for (const char* pointer : pointers) {
    EXPECT_EQ(pointer, nullptr);
  }
  EXPECT_EQ(LargeArray<char>().size(), 0U);
}

TEST(LargeArray, MovesWithItsElements) {
  LargeArray<std::uint64_t> first(1'000);
  std::iota(first.begin(), first.end(), 5U);
  LargeArray<std::uint64_t> second(std::move(first));
  EXPECT_EQ(first.size(), 0U);
  LargeArray<std::uint64_t> third(7);
  third = std::move(second);
  EXPECT_EQ(second.size(), 0U);
  ASSERT_EQ(third.size(), 1'000U);
  EXPECT_EQ(third[0], 5U);
  EXPECT_EQ(std::as_const(third)[999], 1'004U);
}

TEST(LargeArray, ThrowsWhereMemoryEnds) {
  EXPECT_THROW(LargeArray<std::uint64_t>{most}, std::bad_alloc);
  EXPECT_THROW(LargeArray<std::uint64_t>{most + 2}, std::bad_alloc);  // 8 bytes, modulo 2^64
}

TEST(LargeList, KeepsWhatIsPushed) {
  LargeList<std::uint64_t> list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.capacity(), 0U);
  push_squares(list, 1'000'000);
  ASSERT_EQ(list.size(), 1'000'000U);
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(list.capacity(), 1'048'576U);  // 64, doubled again and again
  EXPECT_TRUE(are_squares(list));
  EXPECT_EQ(list[999], 998'001U);
  EXPECT_EQ(list.end() - list.begin(), 1'000'000);
  EXPECT_EQ(std::as_const(list).end(), list.end());
}

TEST(LargeList, GivesTheLastOneFirst) {
  LargeList<std::uint64_t> list;
  push_squares(list, 1'000);
  for (std::uint64_t i = 1'000; i-- > 0;) {
    ASSERT_EQ(list.back(), i * i);
    list.pop_back();
  }
  EXPECT_TRUE(list.empty());
}

TEST(LargeList, GivesElementsToBeChanged) {
  LargeList<std::uint64_t> list;
  push_squares(list, 10);
  list[3] = 100;
  list.back() = 200;
  EXPECT_EQ(std::as_const(list)[3], 100U);
  EXPECT_EQ(std::as_const(list).back(), 200U);
  EXPECT_EQ(list[9], 200U);
}

TEST(LargeList, DropsItsEnd) {
  LargeList<std::uint64_t> list;
  push_squares(list, 100);
  const std::size_t capacity = list.capacity();
  list.shrink(100);
  EXPECT_EQ(list.size(), 100U);
  list.shrink(40);
  EXPECT_EQ(list.size(), 40U);
  EXPECT_EQ(list.back(), 39U * 39U);
  EXPECT_EQ(list.capacity(), capacity);
  push_squares(list, 100);
  EXPECT_TRUE(are_squares(list));
  list.shrink(0);
  EXPECT_TRUE(list.empty());
}

TEST(LargeList, FillsHugePages) {
  struct Triple {
    std::array<std::uint64_t, 3> numbers;
  };
  LargeList<Triple> list;
  for (std::uint64_t i = 0; i < 200'000; ++i) {
    list.push_back({{i, i + 1, i + 2}});
  }
  // 64 doubled until it takes 1.5 MiB, then 3 MiB rounded up to two huge pages, then four.
  EXPECT_EQ(list.capacity(), 4 * huge_page_bytes / sizeof(Triple));
  for (std::uint64_t i = 0; i < 200'000; ++i) {
    ASSERT_EQ(list[i].numbers[2], i + 2);
  }
}

TEST(LargeList, KeepsItsMemoryWhenCleared) {
  LargeList<std::uint64_t> list;
  push_squares(list, 100);
  const std::size_t capacity = list.capacity();
  list.clear();
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.capacity(), capacity);
  push_squares(list, 50);
  EXPECT_TRUE(are_squares(list));
}

TEST(LargeList, MovesWithItsElements) {
  LargeList<std::uint64_t> first;
  push_squares(first, 300);
  LargeList<std::uint64_t> second(std::move(first));
  EXPECT_TRUE(first.empty());
  EXPECT_EQ(first.capacity(), 0U);
  LargeList<std::uint64_t> third;
  push_squares(third, 7);
  third = std::move(second);
  EXPECT_TRUE(second.empty());
  EXPECT_EQ(second.capacity(), 0U);
  EXPECT_EQ(third.size(), 300U);
  push_squares(third, 1'000);
  EXPECT_TRUE(are_squares(third));
  push_squares(first, 10);
  EXPECT_TRUE(are_squares(first));
}

TEST(LargeList, StaysAsItWasWhereMemoryEnds) {
  LargeList<std::uint64_t> list;
  push_squares(list, 3);
  while (list.size() < list.capacity()) {
    push_squares(list, list.size() + 1);
  }
  const std::size_t size = list.size();
  bool threw = false;
  {
    const testing::MemoryFault fault(1);
    try {
      list.push_back(0);
    } catch (const std::bad_alloc&) {
      threw = true;
    }
  }
  EXPECT_TRUE(threw);
  EXPECT_EQ(list.size(), size);
  EXPECT_EQ(list.capacity(), size);
  push_squares(list, 2 * size);
  EXPECT_TRUE(are_squares(list));
}

}  // namespace
}  // namespace brum
