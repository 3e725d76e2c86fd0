#include "brum/readers/text_table.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/failing_memory.h"

namespace brum {
namespace {

struct Counted {
  std::string_view text;
  int count = 0;
};

TEST(TextTable, KeepsAnEntryForEachText) {
  TextTable<Counted> table;
  Counted& x = table.get("x");
  EXPECT_EQ(x.text, "x");
  EXPECT_EQ(x.count, 0);
  x.count = 3;
  EXPECT_EQ(&table.get("x"), &x);
  EXPECT_EQ(table.get("x").count, 3);
  EXPECT_NE(&table.get("y"), &x);
  EXPECT_EQ(table.get("y").count, 0);
  EXPECT_EQ(table.get("").text, "");
  EXPECT_EQ(&table.get(""), &table.get(""));
}

TEST(TextTable, KeepsTheBytesThemselves) {
  TextTable<Counted> table;
  std::string text = "name";
  const Counted& entry = table.get(text);
  text = "other";
  EXPECT_EQ(entry.text, "name");
}

// Texts of all lengths that differ from another in one byte only, at any place, and in length only.
TEST(TextTable, TellsTextsApart) {
  TextTable<Counted> table;
  std::set<std::string> texts;
  for (std::size_t length = 0; length <= 40; ++length) {
    texts.insert(std::string(length, 'a'));
    texts.insert(std::string(length, '\0'));
    for (std::size_t place = 0; place < length; ++place) {
      std::string text(length, 'a');
      text[place] = 'b';
      texts.insert(text);
    }
  }
  std::vector<const Counted*> entries;
  for (const std::string& text : texts) {
    entries.push_back(&table.get(text));
  }
  EXPECT_EQ(std::set<const Counted*>(entries.begin(), entries.end()).size(), texts.size());
  std::size_t i = 0;
  for (const std::string& text : texts) {
    EXPECT_EQ(&table.get(text), entries[i]);
    EXPECT_EQ(entries[i]->text, text);
    ++i;
  }
}

TEST(TextTable, GrowsWithoutMovingEntries) {
  TextTable<Counted> table;
  std::vector<const Counted*> entries;
  for (int i = 0; i < 100'000; ++i) {
    Counted& entry = table.get("v" + std::to_string(i));
    entry.count = i;
    entries.push_back(&entry);
  }
  for (int i = 0; i < 100'000; ++i) {
    const std::string text = "v" + std::to_string(i);
    ASSERT_EQ(&table.get(text), entries[static_cast<std::size_t>(i)]);
    ASSERT_EQ(table.get(text).text, text);
    ASSERT_EQ(table.get(text).count, i);
  }
}

TEST(TextTable, StaysAsItWasWhereMemoryEnds) {
  TextTable<Counted> table;
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
      ASSERT_EQ(table.get(text).text, text);
      ASSERT_EQ(table.get(texts.front()).text, texts.front());
    }
  }
  EXPECT_GT(failures, 10);  // eight larger tables, five chunks of the arena
  std::vector<const Counted*> entries;
  for (const std::string& text : texts) {
    entries.push_back(&table.get(text));
    ASSERT_EQ(entries.back()->text, text);
  }
  EXPECT_EQ(std::set<const Counted*>(entries.begin(), entries.end()).size(), texts.size());
}

}  // namespace
}  // namespace brum
