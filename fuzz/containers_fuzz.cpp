// The bytes are a history of operations on a map, a set and a pool, compared step by step with
// plain models.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "brum/utils/hash_containers.h"
#include "brum/utils/memory_pool.h"
#include "fuzz/fuzz_input.h"
#include "tests/support/table_model.h"

namespace brum::fuzz {

namespace {

constexpr std::size_t most_steps = 4000;
constexpr std::size_t most_buckets = 10501;

/// Keys that collide often: each byte of the input chooses how.
struct Key {
  std::uint16_t number;
  bool operator==(const Key&) const = default;
};

struct HashKey {
  std::uint64_t operator()(const Key& key) const {
    return std::uint64_t{key.number} << (key.number % 3 == 0 ? 52U : 0U);
  }
};

/// The map holds strings long enough for the heap, so that a lost or doubled one shows.
std::string text_of(int value) {
  return "a text that is longer than a string object holds " + std::to_string(value);
}

class Tables {
 public:
  void step(FuzzInput& input) {
    const std::uint8_t operation = input.byte();
    const Key key{static_cast<std::uint16_t>(input.below(1024))};
    if (operation < 140) {
      insert(key);
    } else if (operation < 230) {
      find(key);
    } else if (operation < 240) {
      compare();
    } else if (operation < 250) {
      const std::size_t wanted = input.below(most_buckets + 1);
      map_.rehash(wanted);
      set_.rehash(wanted);
      model_.grow(wanted);
    } else {
      map_.clear(operation % 2 == 0);
      set_.clear(operation % 2 != 0);
      model_.clear();
    }
    require(map_.size() == model_.size() && set_.size() == model_.size(), "the size");
    require(map_.empty() == (model_.size() == 0), "whether it is empty");
    require(map_.bucket_count() == model_.bucket_count(), "the number of buckets of the map");
    require(set_.bucket_count() == model_.bucket_count(), "the number of buckets of the set");
  }

  void compare() const {
    auto in_map = map_.begin();
    auto in_set = set_.begin();
    for (const auto& entry : model_.in_order()) {
      require(in_map != map_.end() && in_set != set_.end(), "every value is met");
      require(in_map->first == entry.key && *in_set == entry.key, "the order of iteration");
      require(in_map->second == text_of(entry.value), "the mapped value");
      ++in_map;
      ++in_set;
    }
    require(in_map == map_.end() && in_set == set_.end(), "nothing else is met");
  }

 private:
  void insert(const Key& key) {
    ++steps_;
    const auto [entry, added] = model_.insert(key);
    entry->value = steps_;
    map_[key] = text_of(steps_);
    require(set_.insert(key).second == added, "whether it was added");
  }

  void find(const Key& key) {
    const bool known = model_.find(key) != nullptr;
    require((map_.find(key) != map_.end()) == known, "whether the map has it");
    require((set_.find(key) != set_.end()) == known, "whether the set has it");
    if (known)
      require(map_.find(key)->second == text_of(model_.find(key)->value), "what the map has");
  }

  hsh::HashMap<Key, std::string, HashKey> map_;
  hsh::HashSet<Key, HashKey> set_;
  testing::TableModel<Key, HashKey> model_;
  int steps_ = 0;
};

/// A pool: blocks that are handed out do not overlap, and the last given back comes first.
class Blocks {
 public:
  explicit Blocks(FuzzInput& input)
      : pool_(1 + input.below(40), 0.5F + static_cast<float>(input.below(40)) / 8.0F,
              input.below(300)) {}
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;
  ~Blocks() { pool_.release(); }

  void step(FuzzInput& input) {
    if (taken_.empty() || input.byte() < 160) {
      take();
    } else {
      give_back(input.below(taken_.size()));
    }
  }

 private:
  static constexpr std::size_t block_bytes = 24;

  void take() {
    void* const block = pool_.take_block();
    require(last_given_back_ == nullptr || block == last_given_back_, "last back, first out");
    last_given_back_ = nullptr;
    const auto mark = static_cast<unsigned char>(taken_.size());
    std::memset(block, mark, block_bytes);
    taken_.emplace_back(static_cast<unsigned char*>(block), mark);
  }

  void give_back(std::size_t i) {
    const auto [block, mark] = taken_[i];
    for (std::size_t at = 0; at < block_bytes; ++at)
      require(block[at] == mark, "a block is nobody else's");
    pool_.give_back(block);
    last_given_back_ = block;
    taken_[i] = taken_.back();
    taken_.pop_back();
  }

  MemoryPool<block_bytes, false> pool_;
  std::vector<std::pair<unsigned char*, unsigned char>> taken_;
  void* last_given_back_ = nullptr;
};

}  // namespace

}  // namespace brum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brum::fuzz::FuzzInput input(data, size);
  if (input.byte() % 4 == 0) {
    brum::fuzz::Blocks blocks(input);
    for (std::size_t step = 0; !input.at_end() && step < brum::fuzz::most_steps; ++step)
      blocks.step(input);
    return 0;
  }
  brum::fuzz::Tables tables;
  for (std::size_t step = 0; !input.at_end() && step < brum::fuzz::most_steps; ++step)
    tables.step(input);
  tables.compare();
  return 0;
}
