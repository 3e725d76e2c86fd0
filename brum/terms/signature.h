#ifndef BRUM_TERMS_SIGNATURE_H
#define BRUM_TERMS_SIGNATURE_H

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
    const auto found = symbols_.find(name);
    return found == symbols_.end() ? nullptr : found->second;
  }

 private:
  friend class TermManager;
  hsh::HashMap<std::string_view, const Symbol*> symbols_;
};

}  // namespace brum

#endif  // BRUM_TERMS_SIGNATURE_H
