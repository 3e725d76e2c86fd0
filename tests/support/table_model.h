#ifndef BRUM_TESTS_SUPPORT_TABLE_MODEL_H
#define BRUM_TESTS_SUPPORT_TABLE_MODEL_H

#include <cstddef>
#include <utility>
#include <vector>

namespace brum::testing {

/**
 * A hash table as one vector for each bucket, its newest value at the end: the rules of growth and
 * order in their plainest form, up to 10501 buckets.
 */
template <typename Key, typename HashOf>
class TableModel {
 public:
  struct Entry {
    Key key;
    int value;
  };

  TableModel() : buckets(31) {}

  std::size_t size() const { return count; }
  std::size_t bucket_count() const { return buckets.size(); }

  Entry* find(const Key& key) {
    for (Entry& entry : buckets[HashOf()(key) % buckets.size()]) {
      if (entry.key == key) {
        return &entry;
      }
    }
    return nullptr;
  }

  /** Gives the entry of the key, made with value 0 if there was none, and whether it was made. */
  std::pair<Entry*, bool> insert(const Key& key) {
    const float load = static_cast<float>(count) / static_cast<float>(buckets.size());
    if (static_cast<double>(load) > 0.7) {
      grow(buckets.size() + 1);
    }
    if (Entry* const entry = find(key); entry != nullptr) {
      return {entry, false};
    }
    auto& bucket = buckets[HashOf()(key) % buckets.size()];
    bucket.push_back(Entry{key, 0});
    ++count;
    return {&bucket.back(), true};
  }

  /** Does what `rehash` does; `wanted` is at most 10501. */
  void grow(std::size_t wanted) {
    if (buckets.size() >= wanted) {
      return;
    }
    std::size_t next = 0;
    for (const std::size_t prime : {31U, 73U, 151U, 313U, 643U, 1291U, 2593U, 5233U, 10501U}) {
      if (prime >= wanted) {
        next = prime;
        break;
      }
    }
    const std::vector<Entry> entries = in_order();
    buckets.assign(next, {});
    for (const Entry& entry : entries) {
      buckets[HashOf()(entry.key) % next].push_back(entry);
    }
  }

  void clear() {
    buckets.assign(buckets.size(), {});
    count = 0;
  }

  /** The entries in the order of iteration. */
  std::vector<Entry> in_order() const {
    std::vector<Entry> entries;
    for (const auto& bucket : buckets) {
      entries.insert(entries.end(), bucket.rbegin(), bucket.rend());
    }
    return entries;
  }

 private:
  std::vector<std::vector<Entry>> buckets;
  std::size_t count = 0;
};

}  // namespace brum::testing

#endif
