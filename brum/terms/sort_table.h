#ifndef BRUM_TERMS_SORT_TABLE_H
#define BRUM_TERMS_SORT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "brum/terms/arena.h"
#include "brum/terms/data_type.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Holds the sorts of a manager, each once. Arguments are trusted: the manager checks them.
///
/// Sorts lie in the arena given at construction, which must outlive the table. Every operation may
/// throw std::bad_alloc and then adds nothing.
class BRUM_EXPORT SortTable {
 public:
  explicit SortTable(Arena& arena);

  const DataType* boolean() const { return boolean_; }
  const DataType* integer() const { return integer_; }
  const DataType* real() const { return real_; }
  const DataType* bit_vector(std::size_t width);
  const DataType* array(const DataType* index, const DataType* element);
  const DataType* uninterpreted(std::string_view name);

  /// `components` are the result sort and then the argument sorts.
  const DataType* function(std::span<const DataType* const> components);

  /// True for the sorts of this table.
  bool holds(const DataType* sort) const { return sort->table_ == this; }

 private:
  struct HashSorts {
    std::uint64_t operator()(std::span<const DataType* const> sorts) const;
  };
  struct SameSorts {
    bool operator()(std::span<const DataType* const> left,
                    std::span<const DataType* const> right) const;
  };
  using Composites =
      hsh::HashMap<std::span<const DataType* const>, const DataType*, HashSorts, SameSorts>;

  const DataType* make(DataType::Kind kind, std::size_t width, const char* name,
                       std::span<const DataType* const> components);
  const DataType* composite(Composites& table, DataType::Kind kind,
                            std::span<const DataType* const> components);

  Arena& arena_;
  const DataType* boolean_;
  const DataType* integer_;
  const DataType* real_;
  hsh::HashMap<std::uint64_t, const DataType*> bit_vectors_;
  hsh::HashMap<std::string_view, const DataType*> uninterpreted_;
  Composites arrays_;
  Composites functions_;
};

}  // namespace brum

#endif  // BRUM_TERMS_SORT_TABLE_H
