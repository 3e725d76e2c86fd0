#ifndef BRUM_TERMS_TERM_INDEX_H
#define BRUM_TERMS_TERM_INDEX_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "brum/terms/term.h"

namespace brum {

/// A value per term for the length of a walk, found by the term's id; 0 at first.
///
/// Values lie in pages of 4096 ids that are made when one of their terms is first asked for. So a
/// walk pays for the terms that it meets, close ids cheaply, and not for the store: beyond the
/// pages there is one word per 4096 ids up to the highest one met.
template <class Value>
class TermIndex {
 public:
  TermIndex() = default;
  TermIndex(const TermIndex&) = delete;
  TermIndex& operator=(const TermIndex&) = delete;
  ~TermIndex() = default;

  /// Gives the value of `term`, to be read or changed. Throws std::bad_alloc and then changes
  /// nothing.
  Value& operator[](const Term* term) {
    const std::size_t page = term->id / page_size;
    if (page != last_page_) {
      turn_to(page);
    }
    return last_values_[term->id % page_size];
  }

  /// Gives the value of `term` without making room for it.
  Value get(const Term* term) const {
    const std::size_t page = term->id / page_size;
    if (page == last_page_) {
      return last_values_[term->id % page_size];
    }
    const bool present = page < pages_.size() && pages_[page] != nullptr;
    return present ? pages_[page][term->id % page_size] : Value{};
  }

  /// Fetches the value of `term` into the cache if there is one.
  [[gnu::always_inline]] void prefetch(const Term* term) const {
    const std::size_t page = term->id / page_size;
    if (page < pages_.size() && pages_[page] != nullptr) {
      __builtin_prefetch(&pages_[page][term->id % page_size]);
    }
  }

  /// Makes every value 0 again and gives the memory back.
  void clear() {
    pages_.clear();
    last_page_ = no_page;
  }

 private:
  static constexpr std::size_t page_size = 4096;
  static constexpr std::size_t no_page = std::numeric_limits<std::size_t>::max();

  void turn_to(std::size_t page) {
    if (page >= pages_.size() || pages_[page] == nullptr) {
      add_page(page);
    }
    last_page_ = page;
    last_values_ = pages_[page].get();
  }

  [[gnu::noinline]] void add_page(std::size_t page) {
    if (page >= pages_.size()) {
      pages_.resize(page + 1);
    }
    pages_[page] = std::make_unique<Value[]>(page_size);
  }

  std::vector<std::unique_ptr<Value[]>> pages_;

  // The page that operator[] gave a value of last: mostly the next value is on it too.
  std::size_t last_page_ = no_page;
  Value* last_values_ = nullptr;
};

/// A set of terms for the length of a walk, at the costs of a TermIndex.
class TermSet {
 public:
  /// Gives whether `term` was not there yet. Throws std::bad_alloc and then changes nothing.
  bool insert(const Term* term) { return !std::exchange(holds_[term], true); }

 private:
  TermIndex<bool> holds_;
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_INDEX_H
