#ifndef BRUM_TERMS_OPERATOR_TABLE_H
#define BRUM_TERMS_OPERATOR_TABLE_H

#include <array>
#include <cstdint>
#include <initializer_list>

#include "brum/terms/sort_table.h"
#include "brum/terms/symbol_factory.h"
#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// What tells one tagged operator from another: its kind, the numbers in its spelling, and the
/// sorts that its tag leaves open.
struct OperatorKey {
  SymbolTag::tag tag = SymbolTag::none;
  std::uint64_t first_index = 0;
  std::uint64_t second_index = 0;
  const DataType* first_sort = nullptr;
  const DataType* second_sort = nullptr;

  bool operator==(const OperatorKey&) const = default;
};

/// Holds the tagged operators of a manager, one symbol per kind, indices and sorts. The sort of an
/// operator is worked out by the caller (the manager), which has checked the arguments.
class BRUM_EXPORT OperatorTable {
 public:
  OperatorTable(SymbolFactory& factory, SortTable& sorts) : factory_(factory), sorts_(sorts) {}

  /// Gives the operator for `key`, made with this signature if it is not there yet: `result` and
  /// the sorts of its arguments. Throws std::bad_alloc and then adds nothing.
  const Symbol* get(const OperatorKey& key, const DataType* result,
                    std::initializer_list<const DataType*> arguments) {
    Recent& recent = recent_[HashKey()(key) % recent_.size()];
    if (recent.symbol == nullptr || recent.key != key) {
      recent = {key, look_up(key, result, arguments)};
    }
    return recent.symbol;
  }

  /// Gives the key of a tagged operator, null for any other symbol.
  const OperatorKey* key_of(const Symbol* symbol) const;

 private:
  struct HashKey {
    std::uint64_t operator()(const OperatorKey& key) const {
      const std::uint64_t numbers = hsh::mix(key.first_index << 8U ^ key.tag ^ hsh::second_mixer,
                                             key.second_index ^ hsh::first_mixer);
      return hsh::mix(numbers ^ reinterpret_cast<std::uintptr_t>(key.first_sort),
                      hsh::first_mixer ^ reinterpret_cast<std::uintptr_t>(key.second_sort));
    }
  };

  struct Recent {
    OperatorKey key;
    const Symbol* symbol = nullptr;
  };

  const Symbol* look_up(const OperatorKey& key, const DataType* result,
                        std::initializer_list<const DataType*> arguments);

  SymbolFactory& factory_;
  SortTable& sorts_;
  hsh::HashMap<OperatorKey, const Symbol*, HashKey> symbols_;
  hsh::HashMap<const Symbol*, OperatorKey> keys_;
  std::array<Recent, 64> recent_;  // a formula asks for a few operators again and again
};

}  // namespace brum

#endif  // BRUM_TERMS_OPERATOR_TABLE_H
