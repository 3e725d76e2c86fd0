#include "brum/utils/slot_table.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <new>
#include <random>
#include <stdexcept>
#include <vector>

#include "tests/support/failing_memory.h"

namespace brum {
namespace {

struct Entry {
  int number;
  int count;
};

class Table {
 public:
  Entry& get(std::uint64_t key, int number) {
    const auto is_it = [&](const Entry& entry) { return entry.number == number; };
    return table_.get(key, is_it, [&] { return Entry{number, 0}; });
  }

  SlotTable<Entry> table_;
};

TEST(SlotTable, KeepsAnEntryForEachNumber) {
  Table table;
  EXPECT_EQ(table.get(7, 1).count, 0);
  table.get(7, 1).count = 3;
  EXPECT_EQ(table.get(8, 2).count, 0);
  EXPECT_EQ(table.get(7, 1).count, 3);
}

TEST(SlotTable, TellsEntriesOfOneKeyApart) {
  Table table;
  for (int number = 0; number < 1'000; ++number) {
    table.get(5, number).count = number;
  }
  for (int number = 0; number < 1'000; ++number) {
    EXPECT_EQ(table.get(5, number).count, number);
  }
}

// Against a map; many of the keys differ in a few bits only.
TEST(SlotTable, AgreesWithAMap) {
  std::mt19937 random(3);  // NOLINT(cert-msc*): the same sequence in every run
  Table table;
  std::map<int, int> counts;
  for (int step = 0; step < 20'000; ++step) {
    const auto number = static_cast<int>(random() % 3'000);
    const std::uint64_t key = 1 + static_cast<std::uint64_t>(number) % 2'000;
    ASSERT_EQ(table.get(key, number).count++, counts[number]++);
  }
  std::map<int, int> visited;
  table.table_.for_each([&](const Entry& entry) { visited[entry.number] = entry.count; });
  EXPECT_EQ(visited, counts);
}

TEST(SlotTable, HasNoEntriesAtFirst) {
  const SlotTable<Entry> table;
  table.for_each([](const Entry&) { FAIL(); });
}

TEST(SlotTable, FindsOnlyWhatItHolds) {
  Table table;
  const auto is = [](int number) {
    return [=](const Entry& entry) { return entry.number == number; };
  };
  EXPECT_EQ(table.table_.find(1, is(1)), nullptr);
  for (int number = 1; number < 1'000; ++number) {
    const auto key = static_cast<std::uint64_t>(number / 2 + 1);  // two numbers of each key
    EXPECT_EQ(table.table_.find(key, is(number)), nullptr);
    const Entry& made = table.get(key, number);
    EXPECT_EQ(table.table_.find(key, is(number)), &made);
    EXPECT_EQ(table.table_.find(key, is(-1)), nullptr);
  }
  EXPECT_EQ(table.table_.find(5'000, is(1)), nullptr);
}

TEST(SlotTable, WhatFailsToBeMadeIsNotThere) {
  SlotTable<int> table;
  const auto is_it = [](int) { return true; };
  EXPECT_THROW(table.get(9, is_it, []() -> int { throw std::runtime_error("no"); }),
               std::runtime_error);
  EXPECT_EQ(table.get(9, is_it, [] { return 4; }), 4);
  EXPECT_EQ(table.get(9, is_it, [] { return 5; }), 4);
}

TEST(SlotTable, ThrowsWhereMemoryEndsAndKeepsWhatItHolds) {
  Table table;
  bool threw = false;
  int number = 0;
  {
    // Each allocation from the second on, which makes the table larger, fails.
    const testing::MemoryFault fault(2, true);
    try {
      for (; number < 1'000; ++number) {
        table.get(static_cast<std::uint64_t>(number) + 1, number).count = number;
      }
    } catch (const std::bad_alloc&) {
      threw = true;
    }
  }
  EXPECT_TRUE(threw);
  EXPECT_EQ(number, 128);
  for (int i = 0; i < number; ++i) {
    EXPECT_EQ(table.get(static_cast<std::uint64_t>(i) + 1, i).count, i);
  }
}

}  // namespace
}  // namespace brum
