#ifndef BRUM_TERMS_DATA_TYPE_H
#define BRUM_TERMS_DATA_TYPE_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "brum/utils/export.h"

namespace brum {

class SortTable;

/// A sort. Made and owned by a TermManager, which keeps each sort once: two sorts are the same
/// exactly when their addresses are. Immutable.
class BRUM_EXPORT DataType {
 public:
  enum class Kind : std::uint8_t {
    boolean,
    integer,
    real,
    bit_vector,
    array,
    uninterpreted,
    function,
  };

  /// Which of the seven families the sort belongs to.
  Kind kind() const { return kind_; }

  /// The number of component sorts: 2 for an array, 1 + number of arguments for a function type,
  /// else 0.
  std::size_t num_components() const { return num_components_; }

  /// Gives component `i`, which must be below num_components(). A function type has its result at
  /// 0 and argument i at i + 1; an array sort has its index sort at 0 and its element sort at 1.
  const DataType* get_component(std::size_t i) const { return components_[i]; }

  /// The width in bits of a bit-vector sort; 0 for every other sort.
  std::size_t width() const { return width_; }

  /// Gives the sort in SMT-LIB 2.6 spelling: `Bool`, `Int`, `Real`, `(_ BitVec 8)`,
  /// `(Array Int Int)`, a function type as `(-> Int Int Bool)`, an uninterpreted sort by its own
  /// name, not quoted. The length of the text is that of the sort written out, without sharing.
  std::string to_str() const;

  /// As to_str(), but a text that grows beyond 64 KiB ends there with " ...": for messages, as a
  /// sort whose components are shared may be written out in exponentially many bytes.
  std::string to_short_str() const;

 private:
  friend class SortTable;
  DataType(const SortTable& table, Kind kind, std::size_t width, const char* name,
           const DataType* const* components, std::size_t num_components)
      : table_(&table),
        kind_(kind),
        width_(width),
        components_(components),
        num_components_(num_components) {
    if (kind == Kind::uninterpreted) {
      name_ = name;
    }
  }

  std::string to_str(std::size_t limit) const;

  const SortTable* table_;  // that holds it
  Kind kind_;
  std::size_t width_;
  union {
    const DataType* const* components_;
    const char* name_;  // of an uninterpreted sort
  };
  std::size_t num_components_;
};

}  // namespace brum

#endif  // BRUM_TERMS_DATA_TYPE_H
