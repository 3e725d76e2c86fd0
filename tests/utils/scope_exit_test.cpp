#include "brum/utils/scope_exit.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace brum::testing {

TEST(ScopeExit, CallsItsFunctionOnceWhenTheScopeEnds) {
  int calls = 0;
  {
    const ScopeExit count([&] { ++calls; });
    EXPECT_EQ(calls, 0);
  }
  EXPECT_EQ(calls, 1);
}

TEST(ScopeExit, CallsItsFunctionAlsoForAnException) {
  int calls = 0;
  try {
    const ScopeExit count([&] { ++calls; });
    throw std::runtime_error("left early");
  } catch (const std::runtime_error&) {
    EXPECT_EQ(calls, 1);
  }
  EXPECT_EQ(calls, 1);
}

TEST(ScopeExit, LaterOnesAreCalledFirst) {
  std::string order;
  {
    const ScopeExit first([&] { order += 'a'; });
    const ScopeExit second([&] { order += 'b'; });
  }
  EXPECT_EQ(order, "ba");
}

}  // namespace brum::testing
