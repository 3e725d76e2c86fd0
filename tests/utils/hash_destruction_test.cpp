// When and in which order tables destroy their values.
#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <optional>
#include <set>
#include <vector>

#include "brum/utils/hash_containers.h"

namespace {

using brum::hsh::HashMap;
using Numbers = std::vector<int>;

/** So many nodes are taken from one chunk when they are expected. */
constexpr std::size_t many = 200'000;

/** Notes its number when it is destroyed. */
struct Noted {
  static inline Numbers destroyed;
  explicit Noted(int number_) : number(number_) {}
  ~Noted() { destroyed.push_back(number); }
  Noted(const Noted&) = delete;
  Noted& operator=(const Noted&) = delete;
  int number;
};

template <typename Map>
void add_keys(Map& map, std::size_t count) {
  for (std::size_t key = 0; key < count; ++key) {
    map[static_cast<int>(key)];
  }
}

/** The order in which a table with a few values destroys them. */
Numbers order_of_destruction(std::optional<std::size_t> expected_nodes) {
  Noted::destroyed.clear();
  {
    HashMap<int, Noted> map;
    if (expected_nodes) {
      map.expect_nodes(*expected_nodes);
    }
    for (const int key : {5, 3, 34, 8, 1}) {  // 34 shares the bucket of 3
      map.insert_absent(key, key);
    }
  }
  return Noted::destroyed;
}

TEST(HashDestruction, FollowsTheBuckets) {
  EXPECT_EQ(order_of_destruction({}), (Numbers{1, 34, 3, 5, 8}));
}

TEST(HashDestruction, FollowsTheNodesIfTheyWereExpected) {
  EXPECT_EQ(order_of_destruction(5), (Numbers{5, 3, 34, 8, 1}));
  EXPECT_EQ(order_of_destruction(many), (Numbers{5, 3, 34, 8, 1}));
}

TEST(HashDestruction, FollowsTheNodesHoweverMany) {
  for (const int count : {0, 1, 500, 32'768, 32'769, 40'000}) {
    Numbers numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    Noted::destroyed.clear();
    {
      HashMap<int, Noted> map;
      map.expect_nodes(numbers.size());
      for (const int number : numbers) {
        map.insert_absent(count - number, number);
      }
    }
    EXPECT_EQ(Noted::destroyed, numbers) << count;
  }
}

TEST(HashDestruction, FollowsTheBucketsIfFewerWereExpected) {
  EXPECT_EQ(order_of_destruction(4), (Numbers{1, 34, 3, 5, 8}));
}

// The nodes that come back are used again from the last one on.
TEST(HashDestruction, FollowsTheBucketsAgainAfterClearing) {
  {
    HashMap<int, Noted> map;
    map.expect_nodes(many);
    for (const int key : {5, 3, 34, 8, 1}) {
      map.insert_absent(key, key);
    }
    map.clear(false);
    Noted::destroyed.clear();
    map.insert_absent(7, 7);
    map.insert_absent(6, 6);
  }
  EXPECT_EQ(Noted::destroyed, (Numbers{6, 7}));
}

TEST(HashDestruction, FollowsTheBucketsAgainAfterClearingKeys) {
  {
    HashMap<int, Noted> map;
    map.expect_nodes(many);
    for (const int key : {5, 3, 34, 8, 1}) {
      map.insert_absent(key, key);
    }
    map.clear_keys(Numbers{5, 3, 34, 8, 1});
    Noted::destroyed.clear();
    map.insert_absent(7, 7);
    map.insert_absent(6, 6);
  }
  EXPECT_EQ(Noted::destroyed, (Numbers{6, 7}));
}

TEST(HashVersion, CountsWhatIsAddedAndDestroyed) {
  HashMap<int, int> map;
  EXPECT_EQ(map.version(), 0U);
  for (const int key : {5, 3, 34}) {
    map[key] = key;
  }
  EXPECT_EQ(map.version(), 3U);
  map[5] = 6;
  map.rehash(1000);
  EXPECT_EQ(map.version(), 3U);
  map.clear(false);
  EXPECT_EQ(map.version(), 6U);
  map.clear(true);
  EXPECT_EQ(map.version(), 6U);
  for (const int key : {5, 3, 34, 8}) {
    map[key] = key;
  }
  EXPECT_EQ(map.version(), 10U);
  map.clear_keys(Numbers{34, 8});  // the others go, too
  EXPECT_EQ(map.version(), 14U);
  map[1] = 1;
  map.clear_keys(Numbers{1});
  EXPECT_EQ(map.version(), 16U);
}

/** Notes where its objects are, so that one that is destroyed where none is shows. */
struct Placed {
  static inline std::set<const Placed*> objects;
  Placed() { objects.insert(this); }
  Placed(const Placed& /*other*/) { objects.insert(this); }
  Placed& operator=(const Placed&) = default;
  ~Placed() { EXPECT_EQ(objects.erase(this), 1U); }
};

class Destruction : public ::testing::TestWithParam<std::size_t> {
 protected:
  /** A table that expects as many nodes as the test says. */
  struct Map : HashMap<int, Placed> {
    Map() { expect_nodes(GetParam()); }
  };

  Destruction() { Placed::objects.clear(); }
  ~Destruction() override { EXPECT_EQ(Placed::objects.size(), left_); }

  /** As many values are never destroyed. */
  void leave(std::size_t count) { left_ = count; }

  static std::size_t alive() { return Placed::objects.size(); }

 private:
  std::size_t left_ = 0;
};

TEST_P(Destruction, IsDoneOnce) {
  Map map;
  add_keys(map, 100);
  EXPECT_EQ(alive(), 100U);
}

TEST_P(Destruction, IsDoneByClearingToo) {
  Map map;
  add_keys(map, 100);
  map.clear(false);
  EXPECT_EQ(alive(), 0U);
  add_keys(map, 50);
  EXPECT_EQ(alive(), 50U);
}

TEST_P(Destruction, ReachesEveryChunk) {
  Map map;
  add_keys(map, many + 1);
}

TEST_P(Destruction, ReachesNodesThatWereNotExpected) {
  HashMap<int, Placed> map;
  add_keys(map, 10);
  map.expect_nodes(GetParam());
  add_keys(map, 100);
}

TEST_P(Destruction, ReachesNodesThatWereExpectedTwice) {
  Map map;
  add_keys(map, 100);
  map.expect_nodes(GetParam());
  add_keys(map, 200);
}

TEST_P(Destruction, LeavesNodesAloneThatAreNotLinked) {
  const Placed* alone = nullptr;
  {
    Map map;
    alone = &map.new_Bucket({})->value.second;
    add_keys(map, 100);
  }
  EXPECT_EQ(Placed::objects, (std::set<const Placed*>{alone}));
  leave(1);
}

TEST_P(Destruction, IsDoneByClearingKeysToo) {
  for (const Numbers& keys : {Numbers{}, Numbers{5}, Numbers{1000, 7, 7, -3}}) {
    Map map;
    add_keys(map, 100);
    map.clear_keys(keys);
    EXPECT_EQ(alive(), 0U);
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.bucket_count(), 151U);
    EXPECT_EQ(map.begin(), map.end());
    EXPECT_EQ(map.find(1), map.end());
    add_keys(map, 50);
    EXPECT_EQ(alive(), 50U);
  }
}

INSTANTIATE_TEST_SUITE_P(Few, Destruction, ::testing::Values(0, 100));
INSTANTIATE_TEST_SUITE_P(Many, Destruction, ::testing::Values(many));

}  // namespace
