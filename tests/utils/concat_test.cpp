#include "brum/utils/concat.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace brum::testing {

TEST(Concat, JoinsThePiecesInTheirOrder) {
  EXPECT_EQ(concat({}), "");
  EXPECT_EQ(concat({"", ""}), "");
  EXPECT_EQ(concat({"one"}), "one");
  const std::string owned = "and a string";
  EXPECT_EQ(concat({"a literal, ", std::string_view("a view, longer").substr(0, 8), owned}),
            "a literal, a view, and a string");
}

TEST(Concat, KeepsBytesOfZero) {
  EXPECT_EQ(concat({std::string_view("a\0b", 3), "c"}), std::string("a\0bc", 4));
}

TEST(Concat, TakesTheMemoryOnce) {
  // Growing piece by piece would double the memory: 1000, 2000, then 4000 bytes for the 3000.
  const std::string piece(1000, 'x');
  EXPECT_EQ(concat({piece, piece, piece}), std::string(3000, 'x'));
  EXPECT_LT(concat({piece, piece, piece}).capacity(), 3100U);
}

}  // namespace brum::testing
