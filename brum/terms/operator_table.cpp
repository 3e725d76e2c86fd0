#include "brum/terms/operator_table.h"

#include <vector>

#include "brum/terms/operator_names.h"

namespace brum {

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
