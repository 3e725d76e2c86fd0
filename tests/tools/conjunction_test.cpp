#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "brum/readers/script.h"
#include "brum/readers/smtlib2_reader.h"
#include "brum/terms/term_manager.h"
#include "tests/tools/command.h"

// What is asserted, as the one formula of a document.

namespace brum::testing {

namespace {

/// A script that asserts `prefix` and a number and `suffix`, for every number below `count`.
std::string script_of(std::size_t count, const std::string& prefix, const std::string& suffix) {
  std::string text = "(declare-fun x () Int)\n";
  for (std::size_t i = 0; i < count; ++i) {
    text += "(assert " + prefix + std::to_string(i) + suffix + ")\n";
  }
  return text;
}

/// As many closing brackets as `text` has opening ones.
std::string closed(const std::string& text) {
  return std::string(static_cast<std::size_t>(std::count(text.begin(), text.end(), '(')), ')');
}

std::size_t count_of(const std::string& part, const std::string& text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

std::size_t longest_line(const std::string& text) {
  std::istringstream lines(text);
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) {
    longest = std::max(longest, line.size());
  }
  return longest;
}

/// The members of a nest of conjunctions, and how deep they lie in it.
struct Members {
  std::vector<const Term*> terms;
  std::size_t depth = 0;
};

Members members_of(const Term* formula) {
  struct Place {
    const Term* term;
    std::size_t depth;
  };
  Members members;
  std::vector<Place> places = {{formula, 0}};
  while (!places.empty()) {
    const Place place = places.back();
    places.pop_back();
    if (place.term->symbol->name_view() == "and") {
      places.push_back({place.term->children[1], place.depth + 1});
      places.push_back({place.term->children[0], place.depth + 1});
    } else {
      members.terms.push_back(place.term);
      members.depth = std::max(members.depth, place.depth);
    }
  }
  return members;
}

/// Converts a script that asserts (<= x N) and reads the document.
void expect_all_in_order(std::size_t count, std::size_t most_depth) {
  const Outcome outcome = brumlin({}, script_of(count, "(<= x ", ")"));
  ASSERT_EQ(outcome.status, 0) << outcome.err;
  TermManager manager;
  Script script;
  std::istringstream document(outcome.out);
  SmtLib2Reader(manager).read(document, script);
  const std::vector<const Term*> assertions = script.at_end().assertions;
  ASSERT_EQ(assertions.size(), 1U);
  const Members members = members_of(assertions.front());
  EXPECT_LE(members.depth, most_depth) << count;
  ASSERT_EQ(members.terms.size(), count);
  for (std::size_t i = 0; i < count; ++i) {
    ASSERT_EQ(members.terms[i]->children[1]->symbol->name_view(), std::to_string(i)) << count;
  }
}

TEST(Conjunction, HoldsWhatIsAssertedInItsOrder) {
  expect_all_in_order(2, 1);
  expect_all_in_order(1000, 10);
  expect_all_in_order(1024, 10);
  expect_all_in_order(1025, 65 + 4);          // 16 rows
  expect_all_in_order(66 * 100 + 1, 65 + 7);  // 101 rows, the last of one assertion
}

TEST(Conjunction, OfUpToAThousandIsOneText) {
  for (const std::string form : {"v1", "v2"}) {
    const Outcome outcome = brumlin({"--to", form}, script_of(1024, "(<= x ", ")"));
    EXPECT_EQ(count_of("(<= x ", outcome.out), 1024U);
    EXPECT_EQ(count_of("(let ", outcome.out), 0U);
    EXPECT_EQ(count_of("(flet ", outcome.out), 0U);
  }
}

// Little more than labels goes up the tree, so that no line is much longer than that of a row.
TEST(Conjunction, OfMoreIsDefinedRowByRow) {
  constexpr std::size_t rows = 200;
  for (const std::string nots : {"", "(not ", "(not (not (not "}) {
    const std::string text = script_of(rows * 66, nots + "(<= x ", ")" + closed(nots));
    const Outcome outcome = brumlin({}, text);
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(count_of("(let ", outcome.out), rows);
    EXPECT_LT(longest_line(outcome.out), text.size() / 10);
  }
}

TEST(Conjunction, DefinesRowsOfConstantsToo) {
  constexpr std::size_t rows = 20;
  std::string text;
  for (std::size_t i = 0; i < rows * 66; ++i) {
    const std::string name = "p" + std::to_string(i);
    text += "(declare-const " + name + " Bool)(assert " + name + ")\n";
  }
  EXPECT_EQ(count_of("(let ", brumlin({}, text).out), rows);
}

}  // namespace

}  // namespace brum::testing
