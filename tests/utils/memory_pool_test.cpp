#include "brum/utils/memory_pool.h"

#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <set>
#include <type_traits>
#include <vector>

namespace {

using brum::MemoryPool;
using brum::testing::MemoryFault;
using Pool = MemoryPool<24, false>;

static_assert(!std::is_copy_constructible_v<Pool> && !std::is_copy_assignable_v<Pool>);
static_assert(std::is_trivially_destructible_v<Pool>);
static_assert(std::is_same_v<decltype(Pool::next_chunk_blocks), std::uint64_t>);
static_assert(std::is_same_v<decltype(Pool::growth_factor), float>);
static_assert(std::is_same_v<decltype(Pool::largest_chunk), std::uint64_t>);
static_assert(sizeof(Pool) == 5 * sizeof(std::uint64_t));

/** A pool that frees its memory, as its owners do. */
template <std::size_t Size = 24>
struct OwnedPool : MemoryPool<Size, false> {
  using MemoryPool<Size, false>::MemoryPool;
  OwnedPool(const OwnedPool&) = delete;
  OwnedPool& operator=(const OwnedPool&) = delete;
  ~OwnedPool() { this->release(); }
};

void* link_of(const void* block) {
  void* link = nullptr;
  std::memcpy(&link, block, sizeof(link));
  return link;
}

std::size_t length_of(const void* list) {
  std::size_t length = 0;
  for (; list != nullptr; list = link_of(list)) {
    ++length;
  }
  return length;
}

/** Distance in bytes from one address to another. */
std::ptrdiff_t distance(const void* from, const void* to) {
  return static_cast<const char*>(to) - static_cast<const char*>(from);
}

TEST(MemoryPool, StartsEmptyWithTheSettingsOfTheTables) {
  const OwnedPool<> pool;
  EXPECT_EQ(pool.next_chunk_blocks, 16U);
  EXPECT_EQ(pool.growth_factor, 2.0F);
  EXPECT_EQ(pool.largest_chunk, 8192U);
  EXPECT_EQ(pool.chunk_list, nullptr);
  EXPECT_EQ(pool.free_list, nullptr);
}

TEST(MemoryPool, GrowPoolChainsTheBlocksOfAChunkInAddressOrder) {
  OwnedPool<> pool;
  void* const first = pool.grow_pool();
  EXPECT_EQ(pool.free_list, nullptr);
  EXPECT_EQ(distance(pool.chunk_list, first), 8);
  EXPECT_EQ(link_of(pool.chunk_list), nullptr);
  void* block = first;
  for (int i = 0; i < 16; ++i) {
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(distance(first, block), i * 24);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 8, 0U);
    block = link_of(block);
  }
  EXPECT_EQ(block, nullptr);
}

TEST(MemoryPool, LinksANewChunkBeforeTheOldOnes) {
  OwnedPool<> pool;
  pool.grow_pool();
  void* const first_chunk = pool.chunk_list;
  pool.grow_pool();
  EXPECT_NE(pool.chunk_list, first_chunk);
  EXPECT_EQ(link_of(pool.chunk_list), first_chunk);
}

TEST(MemoryPool, SixteenBlocksFillTheFirstChunk) {
  OwnedPool<> pool;
  pool.take_block();
  EXPECT_EQ(length_of(pool.chunk_list), 1U);
  EXPECT_EQ(length_of(pool.free_list), 15U);
  for (int i = 2; i <= 16; ++i) {
    pool.take_block();
  }
  EXPECT_EQ(length_of(pool.chunk_list), 1U);
  EXPECT_EQ(pool.free_list, nullptr);
  pool.take_block();
  EXPECT_EQ(length_of(pool.chunk_list), 2U);
  EXPECT_EQ(length_of(pool.free_list), 31U);
}

TEST(MemoryPool, ChunksDoubleUpToTheirBound) {
  const std::vector<std::size_t> expected = {16,   32,   64,   128,  256,  512,
                                             1024, 2048, 4096, 8192, 8192, 8192};
  OwnedPool<> pool;
  for (const std::size_t blocks : expected) {
    EXPECT_EQ(pool.next_chunk_blocks, blocks);
    EXPECT_EQ(length_of(pool.grow_pool()), blocks);
  }
  EXPECT_EQ(length_of(pool.chunk_list), expected.size());
}

TEST(MemoryPool, ChunksDoubleForEverWithoutABound) {
  OwnedPool<8> pool(4096, 2.0F, 0);
  for (const std::size_t blocks : {4096U, 8192U, 16384U, 32768U}) {
    EXPECT_EQ(length_of(pool.grow_pool()), blocks);
  }
}

TEST(MemoryPool, TheNextChunkIsComputedInSinglePrecision) {
  struct Row {
    std::size_t blocks;
    float factor;
    std::size_t bound;
    std::uint64_t next;
  };
  const std::vector<Row> rows = {
      {3, 1.5F, 0, 4},                // 4.5, truncated
      {10, 0.25F, 0, 2},              // 2.5, truncated
      {100, 3.0F, 299, 299},          // beyond the bound
      {100, 3.0F, 300, 300},          // at the bound
      {16777217, 1.0F, 0, 16777216},  // 2^24 + 1 has no float of its own
      {1, 9223372036854775808.0F, 0, 9223372036854775808U},
      {1, 1.8e19F, 0, 18000000404716257280U},  // the nearest float to 1.8e19
      {1, 1e30F, 0, 18446744073709551615U},
      {1, 18446744073709551616.0F, 0, 18446744073709551615U},  // 2^64
      {1, 1e30F, 7, 7},
      {1, 0.0F, 0, 0},
      {1, -1.0F, 0, 0},
      {1, std::numeric_limits<float>::quiet_NaN(), 0, 0},
  };
  for (const Row& row : rows) {
    OwnedPool<8> pool(row.blocks, row.factor, row.bound);
    pool.grow_pool();
    EXPECT_EQ(pool.next_chunk_blocks, row.next) << row.blocks << " * " << row.factor;
  }
}

TEST(MemoryPool, AChunkHoldsAtLeastOneBlock) {
  OwnedPool<> pool(0);
  EXPECT_EQ(length_of(pool.grow_pool()), 1U);
  EXPECT_EQ(pool.next_chunk_blocks, 2U);
}

TEST(MemoryPool, LastGivenBackIsFirstTaken) {
  OwnedPool<> pool;
  void* const a = pool.take_block();
  void* const b = pool.take_block();
  void* const c = pool.take_block();
  pool.give_back(b);
  pool.give_back(a);
  pool.give_back(c);
  EXPECT_EQ(pool.take_block(), c);
  EXPECT_EQ(pool.take_block(), a);
  EXPECT_EQ(pool.take_block(), b);
  EXPECT_EQ(length_of(pool.chunk_list), 1U);
}

TEST(MemoryPool, BlocksGivenBackAreUsedBeforeANewChunk) {
  OwnedPool<> pool;
  std::set<void*> blocks;
  for (int i = 0; i < 48; ++i) {
    blocks.insert(pool.take_block());
  }
  EXPECT_EQ(blocks.size(), 48U);
  EXPECT_EQ(length_of(pool.chunk_list), 2U);
  for (void* const block : blocks) {
    pool.give_back(block);
  }
  std::set<void*> again;
  for (int i = 0; i < 48; ++i) {
    again.insert(pool.take_block());
  }
  EXPECT_EQ(again, blocks);
  EXPECT_EQ(length_of(pool.chunk_list), 2U);
}

TEST(MemoryPool, BlocksKeepWhatIsWrittenToThem) {
  OwnedPool<> pool;
  std::vector<void*> blocks;
  for (int i = 0; i < 200; ++i) {
    blocks.push_back(pool.take_block());
    std::memset(blocks.back(), i, 24);
  }
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const std::vector<char> expected(24, static_cast<char>(i));
    EXPECT_EQ(std::memcmp(blocks[i], expected.data(), 24), 0);
  }
}

TEST(MemoryPool, ReleaseLeavesAnEmptyPoolThatCanBeUsedAgain) {
  OwnedPool<> pool;
  for (int i = 0; i < 17; ++i) {
    pool.take_block();
  }
  pool.release();
  EXPECT_EQ(pool.chunk_list, nullptr);
  EXPECT_EQ(pool.free_list, nullptr);
  EXPECT_EQ(pool.next_chunk_blocks, 64U);
  EXPECT_NE(pool.take_block(), nullptr);
  EXPECT_EQ(length_of(pool.free_list), 63U);
}

TEST(MemoryPool, FailedGrowthChangesNothing) {
  OwnedPool<> pool;
  for (int i = 0; i < 16; ++i) {
    pool.take_block();
  }
  void* const chunk = pool.chunk_list;
  {
    const MemoryFault fault(1);
    EXPECT_THROW(pool.take_block(), std::bad_alloc);
  }
  EXPECT_EQ(pool.chunk_list, chunk);
  EXPECT_EQ(pool.free_list, nullptr);
  EXPECT_EQ(pool.next_chunk_blocks, 32U);
  EXPECT_NE(pool.take_block(), nullptr);
  EXPECT_EQ(length_of(pool.chunk_list), 2U);
}

TEST(MemoryPool, ARequestBeyond64BitsThrowsBadAlloc) {
  constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
  for (const std::size_t blocks : {most, most / 8 + 1, most / 8}) {  // the last: only with the link
    OwnedPool<8> pool(blocks);
    EXPECT_THROW(pool.grow_pool(), std::bad_alloc);
    EXPECT_EQ(pool.chunk_list, nullptr);
    EXPECT_EQ(pool.free_list, nullptr);
    EXPECT_EQ(pool.next_chunk_blocks, blocks);
  }
}

#ifdef BRUM_POOL_POISONS_BLOCKS
TEST(MemoryPool, BlocksGivenBackArePoisoned) {
  OwnedPool<> pool;
  auto* const block = static_cast<char*>(pool.take_block());
  EXPECT_EQ(__asan_region_is_poisoned(block, 24), nullptr);
  pool.give_back(block);
  EXPECT_EQ(__asan_region_is_poisoned(block, 8), nullptr);
  EXPECT_EQ(__asan_region_is_poisoned(block + 8, 16), block + 8);
  EXPECT_EQ(pool.take_block(), block);
  EXPECT_EQ(__asan_region_is_poisoned(block, 24), nullptr);
}
#endif

TEST(MemoryPool, ALargeChunkHoldsItsBlocksInOrder) {
  constexpr std::size_t blocks = 300'000;
  OwnedPool<> pool(blocks);
  const void* const first = pool.grow_pool();
  EXPECT_EQ(length_of(first), blocks);
  EXPECT_EQ(distance(pool.chunk_list, first), 8);
  EXPECT_EQ(distance(first, link_of(first)), 24);
  EXPECT_EQ(pool.next_chunk_blocks, 8192U);
}

}  // namespace
