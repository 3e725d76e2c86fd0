#ifndef BRUM_UTILS_HASH_CONTAINERS_H
#define BRUM_UTILS_HASH_CONTAINERS_H

#include "brum/utils/export.h"
#include "brum/utils/hash.h"
#include "brum/utils/join_freed_memory.h"
#include "brum/utils/large_array.h"
#include "brum/utils/large_memory.h"
#include "brum/utils/memory_pool.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace brum::hsh {

/**
 * The number of buckets of a table that asked for `n`: the first prime of a fixed list not below
 * `n`, else the last.
 */
BRUM_EXPORT std::size_t choose_bucket_count(std::size_t n);

/**
 * A number of buckets with what is computed from it once, so that neither look-up nor load check
 * divides.
 */
class BRUM_EXPORT BucketCount {
 public:
  /** No buckets at all; `growth_size` is 0, so that the first insertion asks for some. */
  BucketCount() = default;

  /** `count` must not be 0. */
  explicit BucketCount(std::size_t count);

  /** That of a new table. */
  static const BucketCount& smallest();

  std::size_t count() const noexcept { return buckets; }

  /** The least number of values at which a table with this many buckets grows: a load above 0.7. */
  std::uint64_t growth_size() const noexcept { return size_to_grow_at; }

  /** The remainder of `hash` divided by `count`, which must not be 0. */
  std::size_t index_of(std::uint64_t hash) const noexcept {
    // The reciprocal is rounded down, so the quotient is right or one too small.
    const auto quotient =
        static_cast<std::uint64_t>((static_cast<uint128>(hash) * reciprocal) >> 64U);
    const std::uint64_t rest = hash - quotient * buckets;
    return rest < buckets ? rest : rest - buckets;
  }

 private:
  std::uint64_t buckets = 0;
  std::uint64_t reciprocal = 0;  // 2^64 / buckets
  std::uint64_t size_to_grow_at = 0;
};

/** Key of a value of a map: the first of the pair. */
template <typename Key, typename T>
struct GetKey_pair {
  const Key& operator()(const std::pair<Key, T>& value) const noexcept { return value.first; }
};

/** Key of a value of a set: the value itself. */
template <typename Key>
struct GetKey_identity {
  const Key& operator()(const Key& value) const noexcept { return value; }
};

/**
 * Hash table with separate chaining; `HashMap` and `HashSet` are its two faces.
 *
 * A value lies in a node of a pool, which never moves: references and pointers to it hold until
 * `clear` or the end of the table, whatever is inserted. The number of buckets is a prime, 31 at
 * first; an insertion call (also one that finds its key) that meets a load above 0.7 first grows
 * the table to the next prime, about twice as large.
 *
 * Order of iteration: bucket by bucket, within a bucket the newest value first; growth relinks the
 * nodes in the order of iteration, so that those of one old chain that meet again come out
 * reversed. Printed output follows this order, so it does not change. Inserting while iterating
 * gives no defined order.
 *
 * Cost: constant on average for look-up and insertion, with one allocation per chunk of the pool;
 * iteration and `clear` take time for every bucket.
 *
 * Errors: an insertion that throws (std::bad_alloc, or what copying a key or value throws) inserts
 * nothing. There is one exception: if the new array of buckets cannot be allocated while growing,
 * the table loses all its values, which are destroyed, and its buckets; from then on it is good for
 * destruction only. (It reports a size and a bucket count of 0, finds nothing, and every further
 * insertion throws std::bad_alloc.)
 *
 * One thread at a time, but any number of threads may use const operations together.
 */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
class Hashtable {
 public:
  /** A node: one stored value and the link to the next node of its bucket. */
  struct Bucket {
    Bucket* next;
    Value value;
  };

 private:
  using Pool = MemoryPool<sizeof(Bucket), false>;
  using Heads = LargeArray<Bucket*>;
  static_assert(alignof(Bucket) <= alignof(void*), "the blocks of the pool are aligned to 8 bytes");

  template <bool Const>
  class Iterator {
    using Table = std::conditional_t<Const, const Hashtable, Hashtable>;

   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Value;
    using difference_type = std::ptrdiff_t;
    // What is its own key must not be changed in its bucket.
    using reference = std::conditional_t<Const || std::is_same_v<Value, Key>, const Value&, Value&>;
    using pointer = std::remove_reference_t<reference>*;

    Iterator() = default;

    /** An iterator converts to a const_iterator. */
    template <bool OtherConst>
    requires(Const && !OtherConst) Iterator(const Iterator<OtherConst>& other)
    noexcept : node(other.node), table(other.table) {}

    reference operator*() const noexcept { return node->value; }
    pointer operator->() const noexcept { return &node->value; }

    Iterator& operator++() noexcept {
      node = table->node_after(node);
      return *this;
    }

    Iterator operator++(int) noexcept {
      Iterator before = *this;
      ++*this;
      return before;
    }

    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.node == b.node;
    }

   private:
    friend class Hashtable;
    template <bool>
    friend class Iterator;

    Iterator(Bucket* at, Table* in) noexcept : node(at), table(in) {}

    Bucket* node = nullptr;
    Table* table = nullptr;
  };

 public:
  /** Forward iterators over the values. The key of a map's pair must not be assigned to. */
  using iterator = Iterator<false>;
  using const_iterator = Iterator<true>;
  using key_type = Key;
  using value_type = Value;

  /** Makes an empty table of 31 buckets. Throws std::bad_alloc. */
  Hashtable() : buckets(BucketCount::smallest().count()), counts(BucketCount::smallest()) {}

  Hashtable(const Hashtable&) = delete;
  Hashtable& operator=(const Hashtable&) = delete;

  ~Hashtable() {
    destroy_values();
    pool.release();
  }

  std::size_t size() const noexcept { return num_values; }
  bool empty() const noexcept { return num_values == 0; }
  std::size_t bucket_count() const noexcept { return counts.count(); }

  iterator begin() noexcept { return {first_node_from(0), this}; }
  iterator end() noexcept { return {nullptr, this}; }
  const_iterator begin() const noexcept { return {first_node_from(0), this}; }
  const_iterator end() const noexcept { return {nullptr, this}; }

  /** Gives the value with this key, or `end()`. An empty table does not hash the key. */
  iterator find(const Key& key) { return {find_node(key), this}; }
  const_iterator find(const Key& key) const { return {find_node(key), this}; }

  /** Calls `visit` with each value, in the order of iteration, faster than iterators do it. */
  template <typename Visit>
  void for_each(Visit&& visit) const {
    ChainReader reader(buckets);
    for (auto nodes = reader.read(); !nodes.empty(); nodes = reader.read()) {
      for (const Bucket* node : nodes) {
        visit(node->value);
      }
    }
  }

  /**
   * Fetches the bucket of this key into the cache, for a look-up or insertion that is soon to come.
   * Always inline: in a function of its own GCC 12 takes the fetching for nothing and drops it.
   */
  [[gnu::always_inline]] void prefetch(const Key& key) const noexcept {
    __builtin_prefetch(&buckets[index_of(key)]);
  }

  /** The same for the first node of this key's bucket; the bucket should be in the cache. */
  [[gnu::always_inline]] void prefetch_node(const Key& key) const noexcept {
    __builtin_prefetch(buckets[index_of(key)]);
  }

  /**
   * Has the next `n` nodes, if they are the first or many, come from one chunk of the pool instead
   * of chunks of the usual sizes; many lie on huge pages then. Takes no memory yet. If the first
   * nodes remain the only ones, and if the table is never cleared, their values are destroyed in
   * the order in which they were made, which is quicker.
   */
  void expect_nodes(std::size_t n) noexcept {
    if (pool.chunk_list == nullptr) {
      nodes_in_row = true;
      pool.next_chunk_blocks = n;
    } else if (n >= huge_page_bytes / sizeof(Bucket)) {
      pool.next_chunk_blocks = n;
    }
  }

  /**
   * Grows to at least `n` buckets; with that many already, does nothing. On std::bad_alloc see the
   * class.
   */
  void rehash(std::size_t n);

  /**
   * Does what `rehash` does, but throws std::bad_alloc before anything is changed: for tables that
   * must not lose their values.
   */
  void grow_safely(std::size_t n);

  /** Whether the next call of an insertion grows the table, also if it finds its key. */
  bool is_full() const noexcept { return num_values >= counts.growth_size(); }

  /** Grows safely now if the next insertion would grow the table, which that then does not. */
  void make_room() {
    if (is_full()) {
      grow_safely(counts.count() + 1);
    }
  }

  /**
   * Copies `value` into a node of the pool, which is not linked into the table: that is left to the
   * caller. Throws std::bad_alloc and what copying throws.
   */
  Bucket* new_Bucket(const Value& value) {
    nodes_in_row = false;
    return make_bucket([&value]() -> const Value& { return value; });
  }

  /**
   * Destroys every value. The nodes stay with the table for the next insertions, and so do the
   * buckets, in a freshly allocated array if `reset_buckets`. If that throws std::bad_alloc, the
   * table is empty and in order.
   */
  void clear(bool reset_buckets);

  /**
   * Does what `clear(false)` does, in time for `keys` instead of time for every bucket, if these
   * are all the keys of the table. `keys` is a range; keys that the table does not hold do no harm.
   * Throws std::bad_alloc and then changes nothing.
   */
  template <typename Keys>
  void clear_keys(const Keys& keys);

  /** How many values were added or destroyed so far: while it is the same, so are the nodes. */
  std::uint64_t version() const noexcept { return num_values + 2 * num_destroyed; }

  /** The pool of the nodes, for measuring memory. */
  const MemoryPool<sizeof(Bucket), false>& node_pool() const noexcept { return pool; }

 protected:
  /**
   * Finds the value with this key, or links in a node whose value is what `make_value` returns; the
   * bool tells which, true for a new one. Every insertion comes through here.
   */
  template <typename MakeValue>
  std::pair<iterator, bool> find_or_link(const Key& key, const MakeValue& make_value);

  /**
   * Links in a node whose value is what `make_value` returns, for a key that is not there. Grows
   * the table as every insertion does, but does not look for the key.
   */
  template <typename MakeValue>
  iterator link_absent(const Key& key, const MakeValue& make_value);

 private:
  std::size_t index_of(const Key& key) const { return counts.index_of(hasher(key)); }
  const Key& key_of(const Bucket* node) const { return GetKey()(node->value); }

  Bucket* find_in_chain(std::size_t index, const Key& key) const {
    Bucket* node = buckets[index];
    while (node != nullptr && !equal(key_of(node), key)) {
      node = node->next;
    }
    return node;
  }

  Bucket* find_node(const Key& key) const {
    return num_values == 0 ? nullptr : find_in_chain(index_of(key), key);
  }

  Bucket* first_node_from(std::size_t index) const noexcept {
    for (; index < buckets.size(); ++index) {
      if (buckets[index] != nullptr) {
        return buckets[index];
      }
    }
    return nullptr;
  }

  Bucket* node_after(const Bucket* node) const noexcept {
    return node->next != nullptr ? node->next : first_node_from(index_of(key_of(node)) + 1);
  }

  template <typename MakeValue>
  Bucket* make_bucket(const MakeValue& make_value);

  template <typename MakeValue>
  iterator link_at(std::size_t index, const MakeValue& make_value);

  void grow_if_loaded() {
    if (is_full()) {
      rehash(counts.count() + 1);
    }
  }

  /**
   * Reads the nodes of all chains in the order of iteration, faster than iterators: it goes on from
   * bucket to bucket without a branch on whether one is empty, which no processor can foresee, and
   * fetches nodes into the cache ahead, as those of neighbouring chains lie far apart.
   */
  class ChainReader {
   public:
    static constexpr std::size_t most_nodes = 64;

    explicit ChainReader(const Heads& heads_) noexcept
        : heads(heads_), next(heads.size() == 0 ? nullptr : heads[0]) {}

    /** Gives the nodes that come next, a few at a time; none at the end. */
    std::span<Bucket* const> read() noexcept;

    /** Takes the nodes that were read out of `chains`, which are those that it reads. */
    void unlink_from(Heads& chains) noexcept;

   private:
    const Heads& heads;
    std::size_t index = 0;  // of the bucket whose chain ...
    Bucket* next;           // ... goes on with this node
    std::size_t unlinked = 0;
    std::array<Bucket*, most_nodes> nodes;
  };

  /** Throws if the values were lost earlier: an empty table would pass for the right one. */
  void require_buckets() const {
    if (counts.count() == 0) {
      throw std::bad_alloc();
    }
  }

  void move_to(Heads new_buckets);
  void lose_values() noexcept;
  void drop_chains(Heads& heads) noexcept;
  std::size_t drop_chain(Bucket*& head) noexcept;
  void destroy_values() noexcept;
  void destroy_chains() noexcept;
  void relink(Heads& old_heads);

  Pool pool;
  [[no_unique_address]] Hash hasher;
  [[no_unique_address]] Eq equal;
  Heads buckets;
  std::uint64_t num_values = 0;
  std::uint64_t num_destroyed = 0;
  BucketCount counts;         // of `buckets`
  bool nodes_in_row = false;  // the first chunk's are taken in the order of their places
};

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
template <typename MakeValue>
auto Hashtable<Value, GetKey, Key, Hash, Eq>::make_bucket(const MakeValue& make_value) -> Bucket* {
  void* const block = pool.take_block();
  try {
    return ::new (block) Bucket{nullptr, make_value()};
  } catch (...) {
    pool.give_back(block);
    throw;
  }
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
template <typename MakeValue>
auto Hashtable<Value, GetKey, Key, Hash, Eq>::find_or_link(const Key& key,
                                                           const MakeValue& make_value)
    -> std::pair<iterator, bool> {
  grow_if_loaded();
  const std::size_t index = index_of(key);
  if (Bucket* const found = find_in_chain(index, key); found != nullptr) {
    return {iterator(found, this), false};
  }
  return {link_at(index, make_value), true};
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
template <typename MakeValue>
auto Hashtable<Value, GetKey, Key, Hash, Eq>::link_absent(const Key& key,
                                                          const MakeValue& make_value) -> iterator {
  grow_if_loaded();
  return link_at(index_of(key), make_value);
}

/** Links in a new node at the head of this bucket. */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
template <typename MakeValue>
auto Hashtable<Value, GetKey, Key, Hash, Eq>::link_at(std::size_t index,
                                                      const MakeValue& make_value) -> iterator {
  Bucket* const node = make_bucket(make_value);
  node->next = buckets[index];
  buckets[index] = node;
  ++num_values;
  return iterator(node, this);
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::rehash(std::size_t n) {
  if (counts.count() >= n) {
    return;
  }
  require_buckets();
  const std::size_t new_count = choose_bucket_count(n);
  Heads new_buckets;
  try {
    new_buckets = Heads(new_count);
  } catch (...) {
    lose_values();
    throw;
  }
  move_to(std::move(new_buckets));
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::grow_safely(std::size_t n) {
  if (counts.count() < n) {
    require_buckets();
    move_to(Heads(choose_bucket_count(n)));
  }
}

/** Puts every node into the chains of `new_buckets`; if a hash throws, the values are lost. */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::move_to(Heads new_buckets) {
  Heads old_buckets = std::exchange(buckets, std::move(new_buckets));
  counts = BucketCount(buckets.size());
  try {
    relink(old_buckets);
  } catch (...) {
    drop_chains(old_buckets);
    lose_values();
    throw;
  }
}

/** Leaves the table without values and without buckets. */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::lose_values() noexcept {
  drop_chains(buckets);
  buckets = Heads();
  counts = BucketCount();
  num_values = 0;
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
auto Hashtable<Value, GetKey, Key, Hash, Eq>::ChainReader::read() noexcept
    -> std::span<Bucket* const> {
  constexpr std::size_t chains_ahead = 24;
  Bucket* no_node = nullptr;
  Bucket* node = next;
  std::size_t count = 0;
  while (count < nodes.size() && index < heads.size()) {
    nodes[count] = node;
    count += node != nullptr ? 1 : 0;
    Bucket** const link = node != nullptr ? &node->next : &no_node;
    node = *link;
    if (node == nullptr) {
      ++index;
      node = index < heads.size() ? heads[index] : nullptr;
      if (index + chains_ahead < heads.size()) {
        __builtin_prefetch(heads[index + chains_ahead]);
      }
    }
  }
  next = node;
  return std::span(nodes).first(count);
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::ChainReader::unlink_from(Heads& chains) noexcept {
  for (; unlinked < index; ++unlinked) {
    chains[unlinked] = nullptr;
  }
  if (index < chains.size()) {
    chains[index] = next;
  }
}

/**
 * Moves every node from the chains of `old_heads` to the head of its new chain, in order of
 * iteration.
 */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::relink(Heads& old_heads) {
  ChainReader reader(old_heads);
  std::array<Bucket**, ChainReader::most_nodes> new_heads;
  for (auto nodes = reader.read(); !nodes.empty(); nodes = reader.read()) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      new_heads[i] = &buckets[index_of(key_of(nodes[i]))];
      __builtin_prefetch(new_heads[i]);
    }
    reader.unlink_from(old_heads);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      nodes[i]->next = *new_heads[i];
      *new_heads[i] = nodes[i];
    }
  }
}

/** Destroys the values of a chain, gives its nodes back to the pool and tells their number. */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
std::size_t Hashtable<Value, GetKey, Key, Hash, Eq>::drop_chain(Bucket*& head) noexcept {
  std::size_t count = 0;
  for (; head != nullptr; ++count) {
    Bucket* const node = head;
    head = node->next;
    std::destroy_at(node);
    pool.give_back(node);
  }
  return count;
}

/** Does so with all of these chains, and leaves the heads null. */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::drop_chains(Heads& heads) noexcept {
  nodes_in_row = false;
  for (Bucket*& head : heads) {
    drop_chain(head);
  }
}

/**
 * Destroys every value and leaves the nodes where they are, for the end of the table. Nodes in a
 * row are gone through as they lie: what their values hold elsewhere was mostly allocated in that
 * order, and memory that is given back piece by piece from all over the place costs several times
 * as much. What very many give back is put together batch by batch, while it is in the cache.
 */
template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::destroy_values() noexcept {
  if constexpr (!std::is_trivially_destructible_v<Value>) {
    void* const row = nodes_in_row ? pool.begin_of_only_chunk() : nullptr;
    if (row == nullptr) {
      destroy_chains();
    } else {
      constexpr std::size_t cached = 32768;  // values whose memory the cache has room for
      constexpr std::size_t batch = 512;
      auto* nodes = static_cast<Bucket*>(row);
      std::size_t left = num_values;
      while (left > cached) {
        nodes = std::destroy_n(nodes, batch);
        left -= batch;
        join_freed_memory();
      }
      std::destroy_n(nodes, left);
    }
  }
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::destroy_chains() noexcept {
  ChainReader reader(buckets);
  for (auto nodes = reader.read(); !nodes.empty(); nodes = reader.read()) {
    for (Bucket* node : nodes) {
      std::destroy_at(node);
    }
  }
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
void Hashtable<Value, GetKey, Key, Hash, Eq>::clear(bool reset_buckets) {
  if (num_values != 0) {
    drop_chains(buckets);
    num_destroyed += num_values;
    num_values = 0;
  }
  if (reset_buckets) {
    buckets = Heads(counts.count());
  }
}

template <typename Value, typename GetKey, typename Key, typename Hash, typename Eq>
template <typename Keys>
void Hashtable<Value, GetKey, Key, Hash, Eq>::clear_keys(const Keys& keys) {
  std::vector<std::size_t> indices;
  for (const Key& key : keys) {
    indices.push_back(index_of(key));
  }
  std::sort(indices.begin(), indices.end());  // as the nodes come back in the order of buckets
  nodes_in_row = false;
  for (const std::size_t index : indices) {
    const std::size_t count = drop_chain(buckets[index]);
    num_values -= count;
    num_destroyed += count;
  }
  clear(false);
}

/**
 * Map from `Key` to `T`; see `Hashtable` for cost, order and errors.
 *
 *     HashMap<const Symbol*, std::string> names;
 *     names[symbol] = "x";
 *     if (auto found = names.find(symbol); found != names.end()) { use(found->second); }
 */
template <typename Key, typename T, typename Hash = hash<Key>, typename Eq = std::equal_to<Key>>
class HashMap : public Hashtable<std::pair<Key, T>, GetKey_pair<Key, T>, Key, Hash, Eq> {
  using Base = Hashtable<std::pair<Key, T>, GetKey_pair<Key, T>, Key, Hash, Eq>;

 public:
  using typename Base::iterator;

  /** The value mapped to `key`, a default-constructed one if there was none. */
  T& operator[](const Key& key) { return find_or_insert(key).first->second; }

  /** Does the same in one look-up and tells whether the key was added. */
  std::pair<iterator, bool> find_or_insert(const Key& key) {
    return this->find_or_link(key, [&key] {
      return std::pair<Key, T>(std::piecewise_construct, std::forward_as_tuple(key),
                               std::forward_as_tuple());
    });
  }

  /**
   * Adds `key`, which must not be there, with a value made of `arguments`. When there is no memory
   * for the node, what `arguments` hold is still theirs.
   */
  template <typename... Arguments>
  iterator insert_absent(const Key& key, Arguments&&... arguments) {
    return this->link_absent(key, [&] {
      return std::pair<Key, T>(std::piecewise_construct, std::forward_as_tuple(key),
                               std::forward_as_tuple(std::forward<Arguments>(arguments)...));
    });
  }
};

/**
 * Set of `Key`; see `Hashtable` for cost, order and errors.
 *
 *     HashSet<const Symbol*> seen;
 *     if (seen.insert(symbol).second) { first_time(symbol); }
 */
template <typename Key, typename Hash = hash<Key>, typename Eq = std::equal_to<Key>>
class HashSet : public Hashtable<Key, GetKey_identity<Key>, Key, Hash, Eq> {
  using Base = Hashtable<Key, GetKey_identity<Key>, Key, Hash, Eq>;

 public:
  using typename Base::iterator;

  /** Adds `key` if it is not there. Gives its place and whether it was added. */
  std::pair<iterator, bool> insert(const Key& key) {
    return this->find_or_link(key, [&key]() -> const Key& { return key; });
  }
};

}  // namespace brum::hsh

#endif
