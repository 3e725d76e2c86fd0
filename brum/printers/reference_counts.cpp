#include "brum/printers/reference_counts.h"

namespace brum {

void ReferenceCounts::add_term(const Term* term, const DefinitionMap* handled) {
  bool at_root = true;
  const auto enter = [&](const Term* visited) {
    const bool from_argument = !at_root;
    at_root = false;
    if (handled != nullptr && handled->find(visited) != handled->end()) {
      return false;
    }
    std::uint8_t& count = counts_[visited];
    const bool first_visit = count == unseen;
    if (first_visit) {
      count = met;
      ++num_terms_;
    }
    if (from_argument && count < many) {
      ++count;
    }
    return first_visit;
  };
  walk_.run(term, enter, [](const Term*) {});
}

void ReferenceCounts::add_reference(const Term* term) {
  add_term(term);
  std::uint8_t& count = counts_[term];
  if (count < many) {
    ++count;
  }
}

}  // namespace brum
