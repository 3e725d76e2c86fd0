#ifndef BRUM_TERMS_SIGNATURE_H
#define BRUM_TERMS_SIGNATURE_H

#include <bitset>
#include <cstddef>
#include <string_view>

#include "brum/terms/term.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// The user's symbols of a manager by name. Interpreted symbols are not in it: their names stand in
/// nobody's way.
class BRUM_EXPORT Signature {
 public:
  /// Gives the symbol declared under exactly this name, null if there is none.
  const Symbol* get_symbol(const char* name) const { return get_symbol(std::string_view(name)); }
  const Symbol* get_symbol(std::string_view name) const {
    if (!first_bytes_[first_byte(name)]) {
      return nullptr;
    }
    const auto found = symbols_.find(name);
    return found == symbols_.end() ? nullptr : found->second;
  }

 private:
  friend class TermManager;

  static std::size_t first_byte(std::string_view name) {
    return name.empty() ? 0 : static_cast<unsigned char>(name.front());
  }

  void add(const Symbol* symbol) {
    symbols_.make_room();  // so that none is lost when memory ends
    symbols_[symbol->name_view()] = symbol;
    first_bytes_.set(first_byte(symbol->name_view()));
  }

  hsh::HashMap<std::string_view, const Symbol*> symbols_;
  std::bitset<256> first_bytes_;  // of the names, so that most labels need no look-up
};

}  // namespace brum

#endif  // BRUM_TERMS_SIGNATURE_H
