#include "brum/utils/hash_containers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using brum::Symbol;
using brum::hsh::BucketCount;
using brum::hsh::choose_bucket_count;
using brum::hsh::GetKey_identity;
using brum::hsh::GetKey_pair;
using brum::hsh::HashMap;
using brum::hsh::HashSet;
using brum::hsh::Hashtable;

using NameMap = HashMap<const Symbol*, std::string>;
using NumberMap = HashMap<std::uint64_t, std::string>;
using NumberSet = HashSet<std::uint64_t>;

static_assert(std::forward_iterator<NameMap::iterator>);
static_assert(std::forward_iterator<NameMap::const_iterator>);
static_assert(std::forward_iterator<NumberSet::iterator>);
static_assert(std::forward_iterator<NumberSet::const_iterator>);
static_assert(std::is_convertible_v<NameMap::iterator, NameMap::const_iterator>);
static_assert(!std::is_convertible_v<NameMap::const_iterator, NameMap::iterator>);
static_assert(std::is_same_v<decltype(*std::declval<NameMap::iterator>()),
                             std::pair<const Symbol*, std::string>&>);
static_assert(std::is_same_v<decltype(*std::declval<NameMap::const_iterator>()),
                             const std::pair<const Symbol*, std::string>&>);
static_assert(std::is_same_v<decltype(*std::declval<NumberSet::iterator>()), const std::uint64_t&>);
static_assert(!std::is_copy_constructible_v<NameMap> && !std::is_move_constructible_v<NameMap>);
static_assert(!std::is_copy_assignable_v<NameMap> && !std::is_move_assignable_v<NameMap>);
static_assert(!std::is_copy_constructible_v<NumberSet> && !std::is_move_constructible_v<NumberSet>);
static_assert(std::is_base_of_v<Hashtable<std::pair<int, char>, GetKey_pair<int, char>, int,
                                          brum::hsh::hash<int>, std::equal_to<int>>,
                                HashMap<int, char>>);
static_assert(std::is_base_of_v<
              Hashtable<int, GetKey_identity<int>, int, brum::hsh::hash<int>, std::equal_to<int>>,
              HashSet<int>>);

// A node is link, key and value without padding; with a string of one pointer that is three words.
#if defined(_GLIBCXX_USE_CXX11_ABI) && !_GLIBCXX_USE_CXX11_ABI
static_assert(sizeof(NameMap::Bucket) == 24);
#else
static_assert(sizeof(NameMap::Bucket) == 16 + sizeof(std::string));
#endif
static_assert(sizeof(HashMap<const Symbol*, const void*>::Bucket) == 24);

const std::vector<std::uint64_t> all_primes = {
    31,       73,        151,       313,       643,        1291,       2593,
    5233,     10501,     21013,     42073,     84181,      168451,     337219,
    674701,   1349473,   2699299,   5398891,   10798093,   21596719,   43193641,
    86387383, 172775299, 345550609, 691101253, 1382202559, 2764405229, 4294867387};

/** Number of chunks that the table's pool has got. */
template <typename Table>
std::size_t chunks_of(const Table& table) {
  std::size_t chunks = 0;
  for (void* chunk = table.node_pool().chunk_list; chunk != nullptr;
       chunk = *static_cast<void**>(chunk)) {
    ++chunks;
  }
  return chunks;
}

template <typename Table>
std::vector<std::uint64_t> keys_of(const Table& table) {
  std::vector<std::uint64_t> keys;
  for (const auto& value : table) {
    keys.push_back(value);
  }
  return keys;
}

void insert_numbers(NumberMap& map, std::uint64_t from, std::uint64_t to) {
  for (std::uint64_t key = from; key < to; ++key) {
    map[key] = std::to_string(key);
  }
}

TEST(BucketCount, IsTheFirstPrimeNotBelowTheRequest) {
  for (std::size_t i = 0; i < all_primes.size(); ++i) {
    EXPECT_EQ(choose_bucket_count(all_primes[i] - 1), all_primes[i]);
    EXPECT_EQ(choose_bucket_count(all_primes[i]), all_primes[i]);
    if (i + 1 < all_primes.size()) {
      EXPECT_EQ(choose_bucket_count(all_primes[i] + 1), all_primes[i + 1]);
    }
  }
  EXPECT_EQ(choose_bucket_count(0), 31U);
}

TEST(BucketCount, StaysAtTheLastPrimeBeyondIt) {
  EXPECT_EQ(choose_bucket_count(2764405229U), 2764405229U);
  EXPECT_EQ(choose_bucket_count(2764405230U), 4294867387U);
  EXPECT_EQ(choose_bucket_count(4294867387U), 4294867387U);
  EXPECT_EQ(choose_bucket_count(4294867388U), 4294867387U);
  EXPECT_EQ(choose_bucket_count(std::numeric_limits<std::size_t>::max()), 4294867387U);
}

TEST(BucketCount, GrowsAboveALoadOfSevenTenths) {
  const std::vector<std::pair<std::size_t, std::uint64_t>> rows = {
      {31, 22},   {73, 52}, {151, 106},
      {313, 220}, {10, 8},  // 7/10 is a little below 0.7 in single precision
  };
  for (const auto& [count, size] : rows) {
    EXPECT_EQ(BucketCount(count).growth_size(), size) << count;
  }
  EXPECT_EQ(BucketCount().growth_size(), 0U);
  EXPECT_EQ(BucketCount().count(), 0U);
}

TEST(BucketCount, TakesTheLoadInSinglePrecision) {
  for (const std::uint64_t count : all_primes) {
    const std::uint64_t size = BucketCount(count).growth_size();
    const float at = static_cast<float>(size) / static_cast<float>(count);
    const float below = static_cast<float>(size - 1) / static_cast<float>(count);
    EXPECT_GT(static_cast<double>(at), 0.7) << count;
    EXPECT_LE(static_cast<double>(below), 0.7) << count;
  }
}

TEST(BucketCount, IndexIsTheRemainder) {
  std::mt19937_64 random(1);
  std::vector<std::uint64_t> counts = all_primes;
  counts.insert(counts.end(), {1, 2, 3, 64, 4294967296U});
  for (const std::uint64_t count : counts) {
    const BucketCount buckets(count);
    EXPECT_EQ(buckets.count(), count);
    std::vector<std::uint64_t> hashes = {0, 1, count - 1, count, count + 1, 2 * count - 1};
    const std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t multiple = most / count * count;
    hashes.insert(hashes.end(), {most, most - 1, multiple, multiple - 1, multiple / 2});
    for (int i = 0; i < 2000; ++i) {
      hashes.push_back(random() >> (random() % 64));
      hashes.push_back(random() % (most / count) * count);
      hashes.push_back(hashes.back() + count - 1);
    }
    for (const std::uint64_t hash : hashes) {
      ASSERT_EQ(buckets.index_of(hash), hash % count) << hash << " mod " << count;
    }
  }
}

TEST(HashMap, StartsWithThirtyOneBuckets) {
  const NameMap map;
  EXPECT_EQ(map.bucket_count(), 31U);
  EXPECT_EQ(map.size(), 0U);
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(map.begin(), map.end());
  EXPECT_EQ(chunks_of(map), 0U);
}

TEST(HashMap, GrowsInTheCallThatMeetsTwentyTwoValues) {
  NumberMap map;
  insert_numbers(map, 0, 22);
  EXPECT_EQ(map.size(), 22U);
  EXPECT_EQ(map.bucket_count(), 31U);
  map[22];
  EXPECT_EQ(map.size(), 23U);
  EXPECT_EQ(map.bucket_count(), 73U);
}

TEST(HashMap, GrowsEvenIfTheCallFindsItsKey) {
  NumberMap map;
  insert_numbers(map, 0, 22);
  EXPECT_EQ(map[5], "5");
  EXPECT_EQ(map.size(), 22U);
  EXPECT_EQ(map.bucket_count(), 73U);
}

TEST(HashMap, GrowsFromPrimeToPrime) {
  NumberMap map;
  std::vector<std::size_t> counts = {map.bucket_count()};
  std::vector<std::size_t> sizes;
  for (std::uint64_t key = 0; key < 500; ++key) {
    map[key];
    if (map.bucket_count() != counts.back()) {
      counts.push_back(map.bucket_count());
      sizes.push_back(map.size() - 1);
    }
  }
  EXPECT_EQ(counts, (std::vector<std::size_t>{31, 73, 151, 313, 643, 1291}));
  EXPECT_EQ(sizes, (std::vector<std::size_t>{22, 52, 106, 220, 451}));
}

TEST(HashSet, GrowsLikeAMap) {
  NumberSet set;
  for (std::uint64_t key = 0; key < 22; ++key) {
    set.insert(key);
  }
  EXPECT_EQ(set.bucket_count(), 31U);
  EXPECT_FALSE(set.insert(0).second);
  EXPECT_EQ(set.bucket_count(), 73U);
}

TEST(HashMap, FindDoesNotGrow) {
  NumberMap map;
  insert_numbers(map, 0, 22);
  EXPECT_NE(map.find(3), map.end());
  EXPECT_EQ(map.find(30), map.end());
  EXPECT_EQ(map.bucket_count(), 31U);
}

TEST(Hashtable, RehashGrowsToTheNextPrime) {
  NumberMap map;
  insert_numbers(map, 0, 20);
  map.rehash(10);
  EXPECT_EQ(map.bucket_count(), 31U);
  map.rehash(31);
  EXPECT_EQ(map.bucket_count(), 31U);
  map.rehash(32);
  EXPECT_EQ(map.bucket_count(), 73U);
  map.rehash(74);
  EXPECT_EQ(map.bucket_count(), 151U);
  map.rehash(74);
  EXPECT_EQ(map.bucket_count(), 151U);
  map.rehash(100000);
  EXPECT_EQ(map.bucket_count(), 168451U);
  EXPECT_EQ(map.size(), 20U);
  for (std::uint64_t key = 0; key < 20; ++key) {
    ASSERT_NE(map.find(key), map.end());
    EXPECT_EQ(map.find(key)->second, std::to_string(key));
  }
}

TEST(HashMap, IndexingStoresAnEmptyTextForAnAbsentKey) {
  int place = 0;
  const auto* const symbol = reinterpret_cast<const Symbol*>(&place);
  NameMap map;
  EXPECT_EQ(map[symbol], "");
  EXPECT_EQ(map.size(), 1U);
  map[symbol] = "name";
  EXPECT_EQ(map[symbol], "name");
  EXPECT_EQ(map.size(), 1U);
}

TEST(HashMap, FindOrInsertTellsWhetherTheKeyWasAdded) {
  NumberMap map;
  const auto first = map.find_or_insert(7);
  EXPECT_TRUE(first.second);
  EXPECT_EQ(first.first->first, 7U);
  EXPECT_EQ(first.first->second, "");
  first.first->second = "seven";
  const auto second = map.find_or_insert(7);
  EXPECT_FALSE(second.second);
  EXPECT_EQ(second.first, first.first);
  EXPECT_EQ(map.find(7)->second, "seven");
}

TEST(HashSet, InsertTellsWhetherTheKeyWasAdded) {
  HashSet<std::string> set;
  const auto first = set.insert("a");
  EXPECT_TRUE(first.second);
  EXPECT_EQ(*first.first, "a");
  const auto second = set.insert("a");
  EXPECT_FALSE(second.second);
  EXPECT_EQ(second.first, first.first);
  EXPECT_EQ(set.size(), 1U);
}

/** Fails the test when it is asked for a hash. */
struct NeverHash {
  std::uint64_t operator()(int /*key*/) const {
    ADD_FAILURE() << "hashed";
    return 0;
  }
};

TEST(Hashtable, FindInAnEmptyTableDoesNotHash) {
  HashMap<int, int, NeverHash> map;
  EXPECT_EQ(map.find(1), map.end());
  const auto& constant = map;
  EXPECT_EQ(constant.find(1), constant.end());
}

TEST(Hashtable, FindGivesTheStoredValue) {
  NumberMap map;
  insert_numbers(map, 0, 3);
  map.find(2)->second += '!';
  const NumberMap& constant = map;
  EXPECT_EQ(constant.find(2)->second, "2!");
  EXPECT_EQ((*constant.find(1)).second, "1");
  EXPECT_EQ(constant.find(3), constant.end());
  EXPECT_EQ(constant.find(2), map.find(2));
}

TEST(Hashtable, IteratesBucketByBucketNewestFirst) {
  NumberSet set;
  for (const std::uint64_t key : {40U, 2U, 33U, 9U, 64U, 30U, 0U, 62U}) {
    set.insert(key);
  }
  // By remainder modulo 31: 0 and 62; 2, 33 and 64; 40 and 9; 30.
  EXPECT_EQ(keys_of(set), (std::vector<std::uint64_t>{62, 0, 64, 33, 2, 9, 40, 30}));
}

TEST(Hashtable, RehashReversesTheNodesThatMeetAgain) {
  NumberSet set;
  // All in bucket 0 of 31; modulo 73 they are 0, 0, 0 and 31.
  for (const std::uint64_t key : {0U, 2263U, 31U, 4526U}) {
    set.insert(key);
  }
  EXPECT_EQ(keys_of(set), (std::vector<std::uint64_t>{4526, 31, 2263, 0}));
  set.rehash(32);
  EXPECT_EQ(keys_of(set), (std::vector<std::uint64_t>{0, 2263, 4526, 31}));
}

TEST(Hashtable, RehashTakesOldBucketsInTheirOrder) {
  NumberSet set;
  // Buckets 18, 26 and 11 of 31; modulo 73 all are 5. The last one linked comes first.
  for (const std::uint64_t key : {5U + 73U * 4U, 5U + 73U * 16U, 5U + 73U * 9U}) {
    set.insert(key);
  }
  ASSERT_EQ(keys_of(set), (std::vector<std::uint64_t>{662, 297, 1173}));
  set.rehash(32);
  EXPECT_EQ(keys_of(set), (std::vector<std::uint64_t>{1173, 297, 662}));
}

TEST(Hashtable, IteratorsBeginInTheFirstBucket) {
  NumberSet set;
  set.insert(1);
  set.insert(0);
  EXPECT_EQ(*set.begin(), 0U);
  EXPECT_EQ(*std::as_const(set).begin(), 0U);
}

TEST(Hashtable, IteratorsMoveForwardAndCompareByNode) {
  NumberSet set;
  set.insert(1);
  set.insert(32);
  set.insert(30);
  auto place = set.begin();
  EXPECT_EQ(*place++, 32U);
  EXPECT_EQ(*place, 1U);
  EXPECT_EQ(place, set.find(1));
  EXPECT_NE(place, set.begin());
  EXPECT_EQ(*++place, 30U);
  EXPECT_EQ(++place, set.end());
  EXPECT_EQ(NumberSet::iterator(), NumberSet::iterator());
  EXPECT_EQ(std::distance(set.begin(), set.end()), 3);
}

TEST(Hashtable, ValuesKeepTheirAddressWhileTheTableGrows) {
  NumberMap map;
  std::string* const text = &map[1];
  *text = "one";
  insert_numbers(map, 100, 5000);
  EXPECT_EQ(&map[1], text);
  EXPECT_EQ(*text, "one");
}

TEST(Hashtable, NewBucketCopiesTheValueIntoAnUnlinkedNode) {
  NumberMap map;
  const std::pair<std::uint64_t, std::string> value(5, "five");
  NumberMap::Bucket* const node = map.new_Bucket(value);
  EXPECT_EQ(node->next, nullptr);
  EXPECT_EQ(node->value, value);
  EXPECT_EQ(map.size(), 0U);
  EXPECT_EQ(map.find(5), map.end());
  node->value.second = std::string();  // nobody destroys the value of a node that is not linked
  std::destroy_at(node);
}

TEST(Hashtable, ClearKeepsTheNodesForTheNextValues) {
  NumberMap map;
  insert_numbers(map, 0, 1000);
  const std::size_t chunks = chunks_of(map);
  const std::size_t buckets = map.bucket_count();
  map.clear(false);
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(map.begin(), map.end());
  EXPECT_EQ(map.find(1), map.end());
  EXPECT_EQ(map.bucket_count(), buckets);
  insert_numbers(map, 5000, 6000);
  EXPECT_EQ(map.size(), 1000U);
  EXPECT_EQ(chunks_of(map), chunks);
  map[0];
  EXPECT_EQ(map.size(), 1001U);
}

TEST(Hashtable, ClearMayRenewTheBuckets) {
  NumberMap map;
  insert_numbers(map, 0, 1000);
  const std::size_t chunks = chunks_of(map);
  map.clear(true);
  EXPECT_TRUE(map.empty());
  EXPECT_EQ(map.bucket_count(), 2593U);
  insert_numbers(map, 0, 1000);
  EXPECT_EQ(chunks_of(map), chunks);
  EXPECT_EQ(map.bucket_count(), 2593U);
  map.clear(true);
  map.clear(true);
  map.clear(false);
  EXPECT_EQ(map.bucket_count(), 2593U);
}

TEST(Hashtable, GrowsSafelyOnlyIfItHasFewerBuckets) {
  NumberSet set;
  set.insert(1);
  set.insert(32);  // into the same bucket: the newest comes first, and growth would turn them round
  for (const std::size_t buckets : {0U, 31U}) {
    set.grow_safely(buckets);
    EXPECT_EQ(std::vector<std::uint64_t>(set.begin(), set.end()),
              (std::vector<std::uint64_t>{32, 1}));
    EXPECT_EQ(set.bucket_count(), 31U);
  }
  set.grow_safely(32);
  EXPECT_EQ(std::vector<std::uint64_t>(set.begin(), set.end()),
            (std::vector<std::uint64_t>{1, 32}));
  EXPECT_EQ(set.bucket_count(), 73U);
}

TEST(Hashtable, TakesManyExpectedNodesFromOneChunk) {
  constexpr std::uint64_t many = 200'000;
  HashMap<std::uint64_t, std::uint64_t> map;
  map.expect_nodes(many);
  EXPECT_EQ(map.node_pool().chunk_list, nullptr);
  for (std::uint64_t key = 0; key < many; ++key) {
    map.prefetch(key + 1);
    map[key] = key * key;
  }
  EXPECT_EQ(map.node_pool().free_list, nullptr);
  EXPECT_EQ(map.node_pool().next_chunk_blocks, 8192U);
  map[many] = 1;
  EXPECT_EQ(map.size(), many + 1);
  EXPECT_EQ(map.find(many - 1)->second, (many - 1) * (many - 1));
}

TEST(Hashtable, TakesTheFirstExpectedNodesFromOneChunk) {
  HashSet<std::uint64_t> set;
  set.expect_nodes(100);
  for (std::uint64_t key = 0; key < 100; ++key) {
    set.insert(key);
  }
  EXPECT_EQ(set.node_pool().free_list, nullptr);
  EXPECT_NE(set.node_pool().begin_of_only_chunk(), nullptr);
}

TEST(Hashtable, TakesLaterNodesAsUsualIfTheyAreFew) {
  HashSet<std::uint64_t> set;
  set.insert(1);
  set.expect_nodes(1'000);
  EXPECT_EQ(set.node_pool().next_chunk_blocks, 32U);
}

TEST(Hashtable, NodesAreUsedAgainInTheOrderOfTheFreeList) {
  NumberSet set;
  set.insert(0);
  set.insert(1);
  set.insert(2);
  const std::uint64_t* const last = &*set.find(2);
  set.clear(false);
  // The nodes went back in the order of iteration, so the last one is the first to be taken.
  EXPECT_EQ(&*set.insert(9).first, last);
}

/** A mapped value that can only be made in its place. */
struct Fixed {
  Fixed() = default;
  Fixed(const Fixed&) = delete;
  Fixed& operator=(const Fixed&) = delete;
  ~Fixed() = default;
  int number = 3;
};

TEST(HashMap, MakesMappedValuesInTheirPlace) {
  HashMap<int, Fixed> map;
  EXPECT_EQ(map[1].number, 3);
  map[1].number = 4;
  EXPECT_EQ(map[1].number, 4);
}

TEST(HashMap, TakesAKeyThatLiesInTheTableItself) {
  HashMap<std::string, int> map;
  for (int i = 0; i < 22; ++i) {
    map["key number " + std::to_string(i)] = i;
  }
  const auto& first = *map.begin();
  EXPECT_EQ(map[first.first], first.second);
  EXPECT_EQ(map.bucket_count(), 73U);
  EXPECT_EQ(map.size(), 22U);
}

}  // namespace
