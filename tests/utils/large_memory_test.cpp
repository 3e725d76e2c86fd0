#include "brum/utils/large_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "brum/utils/sanitizers.h"
#include "tests/support/allocated_bytes.h"
#include "tests/support/failing_memory.h"

#ifdef __linux__
#include <sys/mman.h>
#endif

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
  EXPECT_EQ(first.begin(), nullptr);
  EXPECT_EQ(first.size(), 0U);
  EXPECT_EQ(second.begin(), place);
  EXPECT_EQ(second.size(), 10U);
  LargeBlock third(3 * huge_page_bytes);
  third = std::move(second);
  EXPECT_EQ(second.begin(), nullptr);
  EXPECT_EQ(second.size(), 0U);
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

TEST(LargeMemory, IsZeroWhereAskedFor) {
  for (const std::size_t size : {std::size_t{1}, std::size_t{5'000}, huge_page_bytes - 1,
                                 huge_page_bytes, 3 * huge_page_bytes + 1}) {
    // The second time perhaps in memory that was used.
    for (int i = 0; i < 2; ++i) {
      const LargeBlock block = LargeBlock::zeroed(size);
      ASSERT_EQ(block.size(), size);
      EXPECT_TRUE(std::all_of(block.begin(), block.begin() + size, [](std::byte byte) {
        return byte == std::byte{0};
      })) << size;
      fill(block, 0);
    }
  }
  EXPECT_THROW(LargeBlock::zeroed(half_of_all), std::bad_alloc);
}

TEST(LargeMemory, OfOthersMayBePutOnHugePages) {
  for (const std::size_t size :
       {std::size_t{1}, huge_page_bytes - 1, huge_page_bytes, 3 * huge_page_bytes + 7}) {
    std::vector<std::byte> bytes(size + 64, std::byte{7});
    for (const std::size_t begin : {std::size_t{0}, std::size_t{1}, std::size_t{64}}) {
      prefer_huge_pages(bytes.data() + begin, size);
    }
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), std::byte{7}), std::ssize(bytes)) << size;
  }
}

#if defined(__linux__) && !BRUM_ADDRESS_SANITIZER && !BRUM_THREAD_SANITIZER
// The kernel's list of this process's mappings, each by its first address and whether huge pages
// were asked for in it.
std::map<std::uintptr_t, bool> mappings() {
  std::map<std::uintptr_t, bool> found;
  std::ifstream list("/proc/self/smaps");
  std::uintptr_t begin = 0;
  for (std::string line; std::getline(list, line);) {
    if (line.starts_with("VmFlags:")) {
      found[begin] = line.find(" hg") != std::string::npos;
    } else if (const std::size_t dash = line.find('-'); dash < line.find(' ')) {
      begin = std::stoull(line.substr(0, dash), nullptr, 16);
    }
  }
  return found;
}

TEST(LargeMemory, OfOthersIsOnHugePagesWhereWholeOnesFit) {
  if (!std::filesystem::exists("/sys/kernel/mm/transparent_hugepage")) {
    GTEST_SKIP() << "this kernel has no huge pages to ask for";
  }
  constexpr std::size_t pages = 6;
  struct Part {
    std::size_t begin;
    std::size_t size;
    std::size_t first_page;  // of those that the part holds whole
    std::size_t num_pages;
  };
  const Part parts[] = {{huge_page_bytes, huge_page_bytes, 1, 1},
                        {huge_page_bytes, huge_page_bytes - 1, 1, 0},
                        {huge_page_bytes, 3 * huge_page_bytes - 1, 1, 2},
                        {huge_page_bytes + 16, huge_page_bytes + 16, 2, 0},
                        {huge_page_bytes + 16, 2 * huge_page_bytes - 17, 2, 0},
                        {huge_page_bytes + 16, 2 * huge_page_bytes - 16, 2, 1},
                        {2 * huge_page_bytes - 16, 3 * huge_page_bytes + 15, 2, 2}};
  for (const Part& part : parts) {
    constexpr std::size_t length = (pages + 1) * huge_page_bytes;
    void* const mapping =
        ::mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(mapping, MAP_FAILED);
    const std::uintptr_t first =
        (reinterpret_cast<std::uintptr_t>(mapping) / huge_page_bytes + 1) * huge_page_bytes;
    prefer_huge_pages(reinterpret_cast<void*>(first + part.begin), part.size);
    const auto asked = mappings();
    for (std::size_t page = 0; page < pages; ++page) {
      const bool fits = page >= part.first_page && page < part.first_page + part.num_pages;
      const std::uintptr_t begin = first + page * huge_page_bytes;
      for (const std::uintptr_t place : {begin, begin + huge_page_bytes - 1}) {
        EXPECT_EQ(std::prev(asked.upper_bound(place))->second, fits)
            << "page " << page << " of a part from " << part.begin << " of " << part.size;
      }
    }
    ::munmap(mapping, length);
  }
}

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
