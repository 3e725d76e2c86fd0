#include "brum/terms/operator_table.h"

#include <vector>

#include "brum/terms/operator_names.h"

namespace brum {

std::uint64_t OperatorTable::HashKey::operator()(const OperatorKey& key) const {
  const std::uint64_t numbers = hsh::mix(key.first_index << 8U ^ key.tag ^ hsh::second_mixer,
                                         key.second_index ^ hsh::first_mixer);
  return hsh::mix(numbers ^ reinterpret_cast<std::uintptr_t>(key.first_sort),
                  hsh::first_mixer ^ reinterpret_cast<std::uintptr_t>(key.second_sort));
}

const Symbol* OperatorTable::get(const OperatorKey& key, const DataType* result,
                                 std::initializer_list<const DataType*> arguments) {
  Recent& recent = recent_[HashKey()(key) % recent_.size()];
  if (recent.symbol == nullptr || recent.key != key) {
    recent = {key, look_up(key, result, arguments)};
  }
  return recent.symbol;
}

const Symbol* OperatorTable::look_up(const OperatorKey& key, const DataType* result,
                                     std::initializer_list<const DataType*> arguments) {
  if (const auto found = symbols_.find(key); found != symbols_.end()) {
    return found->second;
  }
  keys_.make_room();
  symbols_.make_room();
  std::vector<const DataType*> components{result};
  components.insert(components.end(), arguments);
  const Symbol* symbol = factory_.make_interpreted_symbol(operator_name(key.tag).name,
                                                          sorts_.function(components), key.tag);
  // The symbol counts as made once it is in the second table; a key without a symbol in the first
  // is never asked for.
  keys_[symbol] = key;
  symbols_[key] = symbol;
  return symbol;
}

const OperatorKey* OperatorTable::key_of(const Symbol* symbol) const {
  const auto found = keys_.find(symbol);
  return found == keys_.end() ? nullptr : &found->second;
}

}  // namespace brum
