#include "brum/printers/reference_counts.h"

namespace brum {

void ReferenceCounts::add_term(const Term* term, const DefinitionMap* handled) {
  bool at_root = true;
  const auto enter = [&](const Term* visited) {
    const bool is_referred_to = !at_root;
    at_root = false;
    if (handled != nullptr && handled->find(visited) != handled->end()) {
      return false;
    }
    return visit(visited, is_referred_to);
  };
  walk_.run(term, enter, [](const Term*) {});
}

void ReferenceCounts::add_reference(const Term* term) {
  add_reference_and_call(term, [](const Term*) {});
}

}  // namespace brum
