#ifndef BRUM_TOOLS_PRINTED_ONCE_H
#define BRUM_TOOLS_PRINTED_ONCE_H

#include <cstdint>
#include <vector>

#include "brum/terms/term_index.h"

namespace brum::tools {

/// Tells which terms a trace writes exactly once.
///
/// A term with a definition is written there and nowhere else. Any other term is written as often
/// as what it stands in: twice where an assertion around it is asserted twice, or is a part of
/// another assertion without being defined. Terms that get a definition only for their length count
/// as terms without one, so the answer may be no for a term that is written once, never the
/// reverse.
class PrintedOnce {
 public:
  /// `asserted` are the terms that the trace asserts, each as often as it does. Throws
  /// std::bad_alloc.
  explicit PrintedOnce(const std::vector<const Term*>& asserted);

  bool operator()(const Term* term) const { return copies_.get(term) == 1; }

 private:
  TermIndex<std::uint8_t> copies_;  // 2 stands for more, too
};

}  // namespace brum::tools

#endif  // BRUM_TOOLS_PRINTED_ONCE_H
