#include "brum/terms/operator_table.h"

#include <vector>

#include "brum/terms/operator_names.h"

namespace brum {

std::uint64_t OperatorTable::HashKey::operator()(const OperatorKey& key) const {
  std::uint64_t hash = key.tag;
  for (const std::uint64_t part :
       {key.first_index, key.second_index,
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key.first_sort)),
        static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(key.second_sort))}) {
    hash = (hash ^ part) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return hash;
}

std::size_t OperatorTable::recent_place(const OperatorKey& key) {
  const std::uint64_t sorts = reinterpret_cast<std::uintptr_t>(key.first_sort) ^
                              reinterpret_cast<std::uintptr_t>(key.second_sort) << 1U;
  const std::uint64_t numbers = key.tag ^ key.first_index << 8U ^ key.second_index << 32U;
  return hsh::mix(numbers ^ hsh::second_mixer, sorts ^ hsh::first_mixer) % num_recent;
}

const Symbol* OperatorTable::get(const OperatorKey& key, const DataType* result,
                                 std::initializer_list<const DataType*> arguments) {
  Recent& recent = recent_[recent_place(key)];
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
