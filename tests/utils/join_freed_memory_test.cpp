#include "brum/utils/join_freed_memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "brum/utils/hash_containers.h"
#include "tests/support/allocated_bytes.h"
#include "tests/support/failing_memory.h"

namespace brum {
namespace {

using testing::MemoryFault;

TEST(JoinFreedMemory, GivesBackWhatItTakes) {
  const std::size_t before = testing::allocated_bytes();
  join_freed_memory();
  EXPECT_EQ(testing::allocated_bytes(), before);
}

TEST(JoinFreedMemory, DoesWithoutWhereThereIsNone) {
  MemoryFault fault(1);
  join_freed_memory();
  EXPECT_TRUE(fault.hit());
}

/// How often a table with this many values has memory joined when it is destroyed.
std::size_t joins_at_the_end_of(int num_values) {
  std::size_t before = 0;
  MemoryFault counter(MemoryFault::never);
  {
    hsh::HashMap<int, std::string> map;
    map.expect_nodes(static_cast<std::size_t>(num_values));
    for (int key = 0; key < num_values; ++key) {
      map.insert_absent(key, std::string(30, 'a'));
    }
    before = counter.allocations();
  }
  return counter.allocations() - before;
}

TEST(JoinFreedMemory, IsForTablesOfVeryManyValues) {
  EXPECT_EQ(joins_at_the_end_of(0), 0U);
  EXPECT_EQ(joins_at_the_end_of(32'768), 0U);
  EXPECT_EQ(joins_at_the_end_of(32'769), 1U);
  EXPECT_EQ(joins_at_the_end_of(32'768 + 512), 1U);
  EXPECT_EQ(joins_at_the_end_of(32'768 + 513), 2U);
}

}  // namespace
}  // namespace brum
