#include "brum/readers/text_table.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "brum/terms/arena.h"
#include "tests/support/failing_memory.h"

namespace brum {
namespace {

struct Counted {
  const char* bytes;
  std::size_t size;
  int count;
};

std::string_view text_of(const Counted& entry) {
  return {entry.bytes, entry.size};
}

class CountedTable {
 public:
  Counted& get(std::string_view text) {
    return table_.get(text, [&] {
      const Counted made{arena_.copy(text).data(), text.size(), 0};
      ++num_made_;
      return made;
    });
  }

  std::size_t num_made() const { return num_made_; }

 private:
  Arena arena_;
  TextTable<Counted> table_;
  std::size_t num_made_ = 0;
};

TEST(TextTable, KeepsAnEntryForEachText) {
  CountedTable table;
  EXPECT_EQ(text_of(table.get("x")), "x");
  EXPECT_EQ(table.get("x").count, 0);
  table.get("x").count = 3;
  EXPECT_EQ(table.get("y").count, 0);
  EXPECT_EQ(text_of(table.get("")), "");
  EXPECT_EQ(table.get("x").count, 3);
  EXPECT_EQ(table.get("").count, 0);
  EXPECT_EQ(table.num_made(), 3U);
}

// Texts of all lengths that differ from another in one byte only, at any place, and in length only.
TEST(TextTable, TellsTextsApart) {
  std::set<std::string> texts;
  for (std::size_t length = 0; length <= 40; ++length) {
    texts.insert(std::string(length, 'a'));
    texts.insert(std::string(length, '\0'));
    texts.insert(std::string(length, '\xFF'));
    for (std::size_t place = 0; place < length; ++place) {
      for (const char other : {'b', '\0', '\xE1'}) {
        std::string text(length, 'a');
        text[place] = other;
        texts.insert(text);
      }
    }
  }
  CountedTable table;
  int count = 0;
  for (const std::string& text : texts) {
    table.get(text).count = ++count;
  }
  EXPECT_EQ(table.num_made(), texts.size());
  count = 0;
  for (const std::string& text : texts) {
    EXPECT_EQ(table.get(text).count, ++count);
    EXPECT_EQ(text_of(table.get(text)), text);
  }
  EXPECT_EQ(table.num_made(), texts.size());
}

TEST(TextTable, FindsWhatItHoldsWhenItGrows) {
  CountedTable table;
  for (int i = 0; i < 100'000; ++i) {
    table.get("v" + std::to_string(i)).count = i;
  }
  for (int i = 0; i < 100'000; ++i) {
    const std::string text = "v" + std::to_string(i);
    ASSERT_EQ(text_of(table.get(text)), text);
    ASSERT_EQ(table.get(text).count, i);
  }
  EXPECT_EQ(table.num_made(), 100'000U);
}

TEST(TextTable, StaysAsItWasWhereMakingFails) {
  TextTable<Counted> table;
  const auto fail = []() -> Counted { throw 1; };
  const auto make = [] { return Counted{"x", 1, 5}; };
  EXPECT_THROW(table.get("x", fail), int);
  EXPECT_EQ(table.get("x", make).count, 5);
  EXPECT_EQ(table.get("x", fail).count, 5);
  EXPECT_THROW(table.get("y", fail), int);
}

TEST(TextTable, StaysAsItWasWhereMemoryEnds) {
  CountedTable table;
  std::vector<std::string> texts;
  for (int i = 0; i < 10'000; ++i) {
    // Long ones use up the arena's memory too.
    texts.push_back(std::string(100, 'x') + std::to_string(i));
  }
  int failures = 0;
  for (const std::string& text : texts) {
    bool failed = false;
    {
      const testing::MemoryFault fault(1);
      try {
        table.get(text);
      } catch (const std::bad_alloc&) {
        failed = true;
      }
    }
    if (failed) {
      ++failures;
      ASSERT_EQ(text_of(table.get(text)), text);
      ASSERT_EQ(text_of(table.get(texts.front())), texts.front());
    }
  }
  EXPECT_GT(failures, 10);  // eight larger tables, five chunks of the arena
  for (const std::string& text : texts) {
    ASSERT_EQ(text_of(table.get(text)), text);
  }
  EXPECT_EQ(table.num_made(), texts.size());
}

}  // namespace
}  // namespace brum
