#ifndef BRUM_UTILS_FOLD_BALANCED_H
#define BRUM_UTILS_FOLD_BALANCED_H

#include <cstddef>
#include <span>

namespace brum {

/// Joins neighbours by `join(left, right)` until one item is left, and gives it: n items, of which
/// there must be one at least, make a tree of ceil(log2 n) levels, in their order. The items are
/// overwritten. Throws what `join` throws.
template <class Item, class Join>
Item fold_balanced(std::span<Item> items, const Join& join) {
  while (items.size() > 1) {
    std::size_t joined = 0;
    for (std::size_t i = 0; i + 1 < items.size(); i += 2) {
      items[joined++] = join(items[i], items[i + 1]);
    }
    if (items.size() % 2 == 1) {
      items[joined++] = items.back();
    }
    items = items.first(joined);
  }
  return items.front();
}

}  // namespace brum

#endif  // BRUM_UTILS_FOLD_BALANCED_H
