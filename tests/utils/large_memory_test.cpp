#include "brum/utils/large_memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "brum/utils/sanitizers.h"
#include "tests/support/allocated_bytes.h"
#include "tests/support/failing_memory.h"

namespace brum {
namespace {

constexpr std::size_t half_of_all = std::numeric_limits<std::size_t>::max() / 2;

// Each byte tells its place, so that one at a wrong place shows.
std::byte byte_at(std::size_t place) {
  return static_cast<std::byte>(place * 2654435761U >> 13U);
}

void fill(const LargeBlock& block, std::size_t from) {
  for (std::size_t i = from; i < block.size(); ++i) {
    block.begin()[i] = byte_at(i);
  }
}

bool is_filled(const LargeBlock& block, std::size_t bytes) {
  for (std::size_t i = 0; i < bytes; ++i) {
    if (block.begin()[i] != byte_at(i)) {
      return false;
    }
  }
  return true;
}

TEST(LargeMemory, IsEmptyAtFirst) {
  const LargeBlock block;
  EXPECT_EQ(block.begin(), nullptr);
  EXPECT_EQ(block.size(), 0U);
}

TEST(LargeMemory, KeepsItsContentsOfEverySizeWhenItGrows) {
  const std::size_t sizes[] = {1,
                               4'096,
                               huge_page_bytes - 1,
                               huge_page_bytes,
                               huge_page_bytes + 1,
                               3 * huge_page_bytes + 4'095,
                               8 * huge_page_bytes};
  LargeBlock grown;
  for (const std::size_t size : sizes) {
    const std::size_t before = grown.size();
    grown.grow(size);
    EXPECT_EQ(grown.size(), size);
    EXPECT_TRUE(is_filled(grown, before)) << size;
    fill(grown, before);
    LargeBlock at_once(size);
    fill(at_once, 0);
    EXPECT_TRUE(is_filled(at_once, size)) << size;
  }
  grown.grow(grown.size());
  EXPECT_TRUE(is_filled(grown, grown.size()));
}

TEST(LargeMemory, MovesWithItsOwner) {
  LargeBlock first(10);
  fill(first, 0);
  const std::byte* const place = first.begin();
  LargeBlock second(std::move(first));
  EXPECT_EQ(first.size(), 0U);
  EXPECT_EQ(second.begin(), place);
  EXPECT_EQ(second.size(), 10U);
  LargeBlock third(3 * huge_page_bytes);
  third = std::move(second);
  EXPECT_EQ(third.begin(), place);
  EXPECT_TRUE(is_filled(third, 10));
}

TEST(LargeMemory, StaysAsItWasWhereMemoryEnds) {
  EXPECT_THROW(LargeBlock{half_of_all}, std::bad_alloc);
  EXPECT_THROW(LargeBlock{std::numeric_limits<std::size_t>::max()}, std::bad_alloc);
  for (const std::size_t size : {std::size_t{100}, 2 * huge_page_bytes}) {
    LargeBlock block(size);
    fill(block, 0);
    EXPECT_THROW(block.grow(half_of_all), std::bad_alloc);
    EXPECT_EQ(block.size(), size);
    EXPECT_TRUE(is_filled(block, size));
  }
  bool threw = false;
  {
    const testing::MemoryFault fault(1);
    try {
      LargeBlock(100);
    } catch (const std::bad_alloc&) {
      threw = true;
    }
  }
  EXPECT_TRUE(threw);
}

TEST(LargeMemory, GivesBackAllThatItTook) {
  const auto use_some = [] {
    for (std::size_t i = 0; i < 100; ++i) {
      LargeBlock block(huge_page_bytes + i * 10'000);
      block.grow(2 * block.size());
    }
  };
  use_some();
  const std::size_t before = testing::allocated_bytes();
  use_some();
  EXPECT_LE(testing::allocated_bytes(), before + huge_page_bytes);
}

TEST(LargeMemory, ServesVectors) {
  std::vector<std::uint64_t, LargeArrayAllocator<std::uint64_t>> numbers;
  for (std::uint64_t i = 0; i < 1'000'000; ++i) {
    numbers.push_back(i * i);
  }
  auto copied = numbers;
  const auto moved = std::move(numbers);
  copied.resize(600'000);
  copied.shrink_to_fit();
  for (std::uint64_t i = 0; i < 1'000'000; ++i) {
    ASSERT_EQ(moved[i], i * i);
    ASSERT_TRUE(i >= copied.size() || copied[i] == i * i);
  }
  LargeArrayAllocator<std::uint64_t> allocator;
  const LargeArrayAllocator<char> other(allocator);
  EXPECT_TRUE(allocator == LargeArrayAllocator<std::uint64_t>(other));
  EXPECT_THROW(allocator.allocate(half_of_all), std::bad_alloc);
  EXPECT_THROW(allocator.allocate(half_of_all / sizeof(std::uint64_t)), std::bad_alloc);
  constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / sizeof(std::uint64_t);
  EXPECT_THROW(allocator.allocate(most + 2), std::bad_alloc);  // 8 bytes, modulo 2^64
}

#if defined(__linux__) && !BRUM_ADDRESS_SANITIZER && !BRUM_THREAD_SANITIZER
TEST(LargeMemory, BeginsAtAHugePage) {
  for (const std::size_t size : {huge_page_bytes, 5 * huge_page_bytes + 12'345}) {
    LargeBlock block(size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.begin()) % huge_page_bytes, 0U);
    block.grow(2 * size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block.begin()) % huge_page_bytes, 0U);
  }
}
#endif

}  // namespace
}  // namespace brum
