// What the containers do when memory runs out, or a key or value throws, at every possible moment.

#include "brum/utils/hash_containers.h"

#include "tests/support/counted.h"
#include "tests/support/failing_memory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using brum::hsh::HashMap;
using brum::hsh::HashSet;
using brum::testing::Counted;
using brum::testing::MemoryFault;

/** A key each copy of which takes one allocation, with every kind of std::string. */
struct Name {
  explicit Name(std::string name) : text(std::move(name)) {}
  Name(const Name& other) : text(other.text.data(), other.text.size()) {}
  Name& operator=(const Name&) = default;
  ~Name() = default;
  friend bool operator==(const Name& a, const Name& b) { return a.text == b.text; }

  std::string text;
};

struct NameHash {
  std::uint64_t operator()(const Name& name) const { return brum::hsh::hash_bytes(name.text); }
};

using NameMap = HashMap<Name, Counted, NameHash>;
using NameSet = HashSet<Name, NameHash>;

Name long_name(int i) {
  return Name("a name that is too long for the string object itself: " + std::to_string(i));
}

template <typename Table>
std::size_t count_values(const Table& table) {
  std::size_t count = 0;
  for (auto place = table.begin(); place != table.end(); ++place) {
    ++count;
  }
  return count;
}

/** What is left of a table that lost its buckets: it finds nothing, takes nothing and can go. */
template <typename Table, typename Insert>
void expect_lost(Table& table, const Name& key, const Insert& insert) {
  EXPECT_EQ(table.bucket_count(), 0U);
  EXPECT_EQ(table.size(), 0U);
  EXPECT_TRUE(table.empty());
  EXPECT_EQ(table.begin(), table.end());
  EXPECT_EQ(table.find(key), table.end());
  EXPECT_THROW(insert(key), std::bad_alloc);
  EXPECT_THROW(table.rehash(1), std::bad_alloc);
  EXPECT_NO_THROW(table.rehash(0));
  EXPECT_NO_THROW(table.clear(false));
  EXPECT_NO_THROW(table.clear(true));
  EXPECT_EQ(table.bucket_count(), 0U);
  EXPECT_THROW(insert(key), std::bad_alloc);
}

TEST(HashFaults, ConstructionWithoutMemoryThrows) {
  const MemoryFault fault(1);
  EXPECT_THROW((HashMap<int, int>()), std::bad_alloc);
}

TEST(HashFaults, EveryInsertionIntoAMapHappensOrNot) {
  constexpr int last = 120;  // three growths, three chunks
  bool done = false;
  std::size_t kept = 0;
  std::size_t lost = 0;
  for (std::size_t failing = 1; !done; ++failing) {
    NameMap map;
    int i = 0;
    {
      std::vector<Name> names;
      for (int name = 0; name < last; ++name) {
        names.push_back(long_name(name));
      }
      const MemoryFault fault(failing);
      try {
        for (; i < last; ++i) {
          map[names[static_cast<std::size_t>(i)]];
        }
        done = true;
      } catch (const std::bad_alloc&) {
        done = false;
      }
    }
    if (done) {
      break;
    }
    if (map.bucket_count() == 0) {
      ++lost;
      EXPECT_EQ(Counted::alive, 0);
      expect_lost(map, long_name(0), [&map](const Name& key) { map[key]; });
      continue;
    }
    ++kept;
    ASSERT_EQ(map.size(), static_cast<std::size_t>(i));
    ASSERT_EQ(count_values(map), static_cast<std::size_t>(i));
    ASSERT_EQ(Counted::alive, i);
    ASSERT_EQ(map.find(long_name(i)), map.end());
    for (; i < last; ++i) {
      map[long_name(i)];
    }
    for (int name = 0; name < last; ++name) {
      ASSERT_NE(map.find(long_name(name)), map.end());
    }
    ASSERT_EQ(map.size(), static_cast<std::size_t>(last));
  }
  EXPECT_EQ(Counted::alive, 0);
  // One failure for each copy of a key and each chunk (of 16, 32, 64 and 128 blocks), and one for
  // each array of buckets (of 73, 151 and 313).
  EXPECT_EQ(kept, 124U);
  EXPECT_EQ(lost, 3U);
}

TEST(HashFaults, EveryInsertionIntoASetHappensOrNot) {
  constexpr int last = 60;
  bool done = false;
  std::size_t lost = 0;
  for (std::size_t failing = 1; !done; ++failing) {
    NameSet set;
    int i = 0;
    {
      std::vector<Name> names;
      for (int name = 0; name < last; ++name) {
        names.push_back(long_name(name));
      }
      const MemoryFault fault(failing);
      try {
        for (; i < last; ++i) {
          set.insert(names[static_cast<std::size_t>(i)]);
        }
        done = true;
      } catch (const std::bad_alloc&) {
        done = false;
      }
    }
    if (done) {
      break;
    }
    if (set.bucket_count() == 0) {
      ++lost;
      expect_lost(set, long_name(0), [&set](const Name& key) { set.insert(key); });
      continue;
    }
    ASSERT_EQ(set.size(), static_cast<std::size_t>(i));
    ASSERT_EQ(count_values(set), static_cast<std::size_t>(i));
    EXPECT_TRUE(set.insert(long_name(i)).second);
  }
  EXPECT_EQ(lost, 2U);
}

TEST(HashFaults, ARehashWithoutMemoryDestroysTheValues) {
  NameMap map;
  for (int i = 0; i < 20; ++i) {
    map[long_name(i)];
  }
  {
    const MemoryFault fault(1);
    EXPECT_THROW(map.rehash(1000), std::bad_alloc);
  }
  EXPECT_EQ(Counted::alive, 0);
  expect_lost(map, long_name(3), [&map](const Name& key) { map[key]; });
}

TEST(HashFaults, ClearThatCannotRenewTheBucketsLeavesAnEmptyTable) {
  NameMap map;
  for (int i = 0; i < 50; ++i) {
    map[long_name(i)];
  }
  {
    const MemoryFault fault(1);
    EXPECT_THROW(map.clear(true), std::bad_alloc);
  }
  EXPECT_EQ(Counted::alive, 0);
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(map.begin(), map.end());
  EXPECT_EQ(map.bucket_count(), 73U);
  map[long_name(1)];
  EXPECT_EQ(map.size(), 1U);
  EXPECT_EQ(count_values(map), 1U);
}

TEST(HashFaults, LookingUpAndClearingNeedNoMemory) {
  HashMap<int, int> map;
  for (int key = 0; key < 100; ++key) {
    map[key] = key;
  }
  const MemoryFault fault(1, true);
  int sum = 0;
  for (const auto& [key, value] : map) {
    sum += map.find(key)->second;
  }
  map.clear(false);
  EXPECT_EQ(sum, 4950);
  EXPECT_FALSE(fault.hit());
  EXPECT_EQ(fault.allocations(), 0U);
}

TEST(HashFaults, AClearedTableIsFilledAgainWithoutAllocation) {
  HashMap<int, int> map;
  for (int key = 0; key < 5000; ++key) {
    map[key];
  }
  map.clear(false);
  const MemoryFault fault(1, true);
  for (int key = 10000; key < 15000; ++key) {
    map[key];
  }
  EXPECT_EQ(map.size(), 5000U);
  EXPECT_EQ(fault.allocations(), 0U);
}

TEST(HashFaults, NodesAreAllocatedByChunks) {
  HashMap<int, int> map;
  map.rehash(100000);
  const MemoryFault fault(MemoryFault::never);
  for (int key = 0; key < 16 + 32 + 64 + 128; ++key) {
    map[key];
  }
  EXPECT_EQ(fault.allocations(), 4U);
  map[-1];
  EXPECT_EQ(fault.allocations(), 5U);
}

/** A key whose copy throws when told to. */
struct Stubborn {
  explicit Stubborn(int n, bool refuses = false) : number(n), refuses_copies(refuses) {}
  Stubborn(const Stubborn& other) : number(other.number), refuses_copies(other.refuses_copies) {
    if (refuses_copies) {
      throw std::runtime_error("no copy");
    }
  }
  Stubborn& operator=(const Stubborn&) = default;
  ~Stubborn() = default;
  friend bool operator==(const Stubborn& a, const Stubborn& b) { return a.number == b.number; }

  int number;
  bool refuses_copies;
};

/** Throws after a number of calls, if one is set. */
struct StubbornHash {
  static inline std::optional<int> calls_left;
  std::uint64_t operator()(const Stubborn& key) const {
    if (calls_left.has_value() && --*calls_left < 0) {
      throw std::runtime_error("no hash");
    }
    return static_cast<std::uint64_t>(key.number);
  }
};

TEST(HashFaults, AKeyThatCannotBeCopiedIsNotInserted) {
  HashSet<Stubborn, StubbornHash> set;
  const Stubborn* const first = &*set.insert(Stubborn(1)).first;
  set.clear(false);
  EXPECT_THROW(set.insert(Stubborn(2, true)), std::runtime_error);
  EXPECT_THROW(set.new_Bucket(Stubborn(2, true)), std::runtime_error);
  EXPECT_TRUE(set.empty());
  // The node that was taken for it is the next one to be used.
  EXPECT_EQ(&*set.insert(Stubborn(3)).first, first);
}

TEST(HashFaults, ATableThatCannotMakeRoomIsAsBefore) {
  HashMap<int, Counted> map;
  for (int key = 0; key < 21; ++key) {
    map[key];
  }
  map.make_room();
  EXPECT_EQ(map.bucket_count(), 31U);
  map[21];
  EXPECT_EQ(map.bucket_count(), 31U);
  {
    const MemoryFault fault(1);
    EXPECT_THROW(map.make_room(), std::bad_alloc);
  }
  EXPECT_EQ(map.size(), 22U);
  EXPECT_EQ(map.bucket_count(), 31U);
  map.make_room();
  EXPECT_EQ(map.bucket_count(), 73U);
  map[22];
  EXPECT_EQ(map.bucket_count(), 73U);
  EXPECT_EQ(map.size(), 23U);
}

TEST(HashFaults, KeysThatCannotBeClearedAreAsBefore) {
  HashMap<int, Counted> map;
  for (int key = 0; key < 100; ++key) {
    map[key];
  }
  {
    const MemoryFault fault(1);
    EXPECT_THROW(map.clear_keys(std::array{1, 2, 3}), std::bad_alloc);
  }
  EXPECT_EQ(map.size(), 100U);
  EXPECT_EQ(map.bucket_count(), 151U);
  map.clear_keys(std::array{1, 2, 3});
  EXPECT_EQ(Counted::alive, 0);
}

/** Growth of a table with `count` keys, `step` apart, is cut short after every number of hashes. */
void expect_end_of_growing_table(int count, int step) {
  for (int calls = 0; calls < count; ++calls) {
    HashMap<Stubborn, Counted, StubbornHash> map;
    for (int i = 0; i < count; ++i) {
      map[Stubborn(i * step)];
    }
    ASSERT_EQ(Counted::alive, count);
    StubbornHash::calls_left = calls;
    EXPECT_THROW(map.rehash(map.bucket_count() + 1), std::runtime_error);
    StubbornHash::calls_left.reset();
    EXPECT_EQ(map.bucket_count(), 0U);
    EXPECT_EQ(map.size(), 0U);
    EXPECT_EQ(Counted::alive, 0);
    EXPECT_THROW(map[Stubborn(1)], std::bad_alloc);
    EXPECT_THROW(map.make_room(), std::bad_alloc);
  }
}

TEST(HashFaults, AHashThatThrowsEndsAGrowingTable) {
  expect_end_of_growing_table(20, 1);
  expect_end_of_growing_table(200, 1);
  expect_end_of_growing_table(200, 313);  // all in one of 313 buckets
}

}  // namespace
