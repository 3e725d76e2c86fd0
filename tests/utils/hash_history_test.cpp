// Long random histories of the containers, compared step by step with a plain model that knows the
// rules of growth and order and nothing of the code under test.

#include "brum/utils/hash_containers.h"

#include "tests/support/table_model.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using brum::Symbol;
using brum::hsh::HashMap;
using brum::hsh::HashSet;
using brum::testing::TableModel;

constexpr int distinct_keys = 3000;

/** Each kind of key: how to make the i-th one, what the table and what the model hash it with. */
struct PointerKeys {
  using Key = const Symbol*;
  using TableHash = brum::hsh::hash<Key>;
  struct ModelHash {
    std::uint64_t operator()(Key key) const { return reinterpret_cast<std::uintptr_t>(key); }
  };
  static Key make(int i) {
    static std::vector<std::uint64_t> places(static_cast<std::size_t>(distinct_keys) * 5);
    return reinterpret_cast<Key>(&places[static_cast<std::size_t>(i) * 5]);
  }
};

enum class Kind : std::uint32_t {};

struct EnumKeys {
  using Key = Kind;
  using TableHash = brum::hsh::hash<Key>;
  struct ModelHash {
    std::uint64_t operator()(Key key) const { return static_cast<std::uint32_t>(key); }
  };
  static Key make(int i) { return static_cast<Kind>(i % 2 == 0 ? i : -i); }
};

struct StringKeys {
  using Key = std::string;
  using TableHash = brum::hsh::hash<Key>;
  using ModelHash = TableHash;  // any good function will do; how it spreads is tested elsewhere
  static Key make(int i) { return "a symbol with a long name " + std::to_string(i); }
};

/** Seven hashes for all keys, so that chains are long. */
struct CollidingKeys {
  using Key = int;
  struct TableHash {
    std::uint64_t operator()(Key key) const { return static_cast<std::uint64_t>(key % 7) << 60U; }
  };
  using ModelHash = TableHash;
  static Key make(int i) { return i; }
};

template <typename Key>
const Key& key_of(const Key& value) {
  return value;
}

template <typename Key>
const Key& key_of(const std::pair<Key, int>& value) {
  return value.first;
}

template <typename Key>
int mapped(const Key& /*value*/) {
  return 0;
}

template <typename Key>
int mapped(const std::pair<Key, int>& value) {
  return value.second;
}

/** The same operations under the same names for maps and for sets. */
template <typename Keys>
struct MapFace {
  using Key = typename Keys::Key;
  HashMap<Key, int, typename Keys::TableHash> table;

  bool insert(const Key& key, int value) {
    const std::size_t before = table.size();
    table[key] = value;
    return table.size() != before;
  }
};

template <typename Keys>
struct SetFace {
  using Key = typename Keys::Key;
  HashSet<Key, typename Keys::TableHash> table;

  bool insert(const Key& key, int /*value*/) {
    const auto [place, added] = table.insert(key);
    EXPECT_EQ(*place, key);
    return added;
  }
};

template <template <typename> typename FaceOf, typename KeysOf, bool IsMap>
struct Kit {
  using Face = FaceOf<KeysOf>;
  using Keys = KeysOf;
  static constexpr bool is_map = IsMap;
};

template <typename KitType>
class HashHistory : public ::testing::Test {
 protected:
  using Keys = typename KitType::Keys;
  using Key = typename Keys::Key;

  void compare_order() {
    const auto entries = model.in_order();
    const auto& table = face.table;
    std::size_t i = 0;
    const auto compare = [&](const auto& value) {
      ASSERT_LT(i, entries.size());
      ASSERT_EQ(key_of<Key>(value), entries[i].key);
      ASSERT_EQ(mapped<Key>(value), entries[i].value);
      ++i;
    };
    for (const auto& value : table) {
      compare(value);
    }
    ASSERT_EQ(i, entries.size());
    i = 0;
    table.for_each(compare);
    ASSERT_EQ(i, entries.size());
  }

  void insert(int i, int value) {
    const Key key = Keys::make(i);
    const auto [entry, added] = model.insert(key);
    entry->value = KitType::is_map ? value : 0;
    ASSERT_EQ(face.insert(key, value), added);
  }

  void find(int i) {
    const Key key = Keys::make(i);
    const auto* const entry = model.find(key);
    const auto& constant = face.table;
    const auto place = face.table.find(key);
    ASSERT_EQ(constant.find(key), place);
    ASSERT_EQ(place != face.table.end(), entry != nullptr);
    if (entry != nullptr) {
      ASSERT_EQ(key_of<Key>(*place), key);
      ASSERT_EQ(mapped<Key>(*place), entry->value);
    }
  }

  typename KitType::Face face;
  TableModel<Key, typename Keys::ModelHash> model;
};

using Kits =
    ::testing::Types<Kit<MapFace, PointerKeys, true>, Kit<SetFace, PointerKeys, false>,
                     Kit<MapFace, EnumKeys, true>, Kit<SetFace, EnumKeys, false>,
                     Kit<MapFace, StringKeys, true>, Kit<SetFace, StringKeys, false>,
                     Kit<MapFace, CollidingKeys, true>, Kit<SetFace, CollidingKeys, false>>;
TYPED_TEST_SUITE(HashHistory, Kits);

TYPED_TEST(HashHistory, FollowsTheModel) {
  std::mt19937_64 random(20240607);
  // Small ranges of keys give many hits and few values, large ones the opposite.
  int range = 10;
  for (int step = 0; step < 60000; ++step) {
    const std::uint64_t choice = random() % 10000;
    const int i = static_cast<int>(random() % static_cast<std::uint64_t>(range));
    if (choice < 6000) {
      this->insert(i, step);
    } else if (choice < 9960) {
      this->find(i);
    } else if (choice < 9985) {
      this->compare_order();
    } else if (choice < 9994) {
      const std::size_t wanted = random() % (2 * this->model.bucket_count());
      if (wanted <= 10501) {
        this->face.table.rehash(wanted);
        this->model.grow(wanted);
      }
      this->compare_order();
    } else {
      this->face.table.clear(random() % 2 == 0);
      this->model.clear();
      range = range * 7 % distinct_keys + 1;
    }
    if (this->HasFatalFailure()) {
      FAIL() << "in step " << step;
    }
    ASSERT_EQ(this->face.table.size(), this->model.size());
    ASSERT_EQ(this->face.table.empty(), this->model.size() == 0);
    ASSERT_EQ(this->face.table.bucket_count(), this->model.bucket_count());
  }
  this->compare_order();
}

TYPED_TEST(HashHistory, KeepsTheOrderOfTheModelThroughEveryGrowth) {
  for (int i = 0; i < distinct_keys; ++i) {
    const std::size_t before = this->face.table.bucket_count();
    this->insert(i, i);
    if (this->face.table.bucket_count() != before) {
      this->compare_order();
    }
    ASSERT_FALSE(this->HasFatalFailure());
  }
  EXPECT_EQ(this->face.table.bucket_count(), 5233U);
  this->compare_order();
}

}  // namespace
