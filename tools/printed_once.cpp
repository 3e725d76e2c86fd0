#include "printed_once.h"

#include <algorithm>

#include "brum/printers/definition_rule.h"
#include "brum/terms/term_walk.h"

namespace brum::tools {

PrintedOnce::PrintedOnce(const std::vector<const Term*>& asserted) {
  std::vector<const Term*> arguments_first;
  TermSet visited;
  TermWalk walk;
  const auto enter = [&](const Term* term) { return visited.insert(term); };
  const auto leave = [&](const Term* term) { arguments_first.push_back(term); };
  for (const Term* term : asserted) {
    walk.run(term, enter, leave);
  }
  const auto add = [&](const Term* term, std::uint8_t copies) {
    constexpr int many = 2;
    std::uint8_t& sum = copies_[term];
    sum = static_cast<std::uint8_t>(std::min(sum + copies, many));
  };
  for (const Term* term : asserted) {
    add(term, 1);
  }
  const DefinitionRule rule = DefinitionRule::for_trace();
  for (auto place = arguments_first.rbegin(); place != arguments_first.rend(); ++place) {
    const Term* term = *place;
    if (rule.is_shared(term)) {
      copies_[term] = 1;
    }
    for (const Term* argument : term->arguments()) {
      add(argument, copies_.get(term));
    }
  }
}

}  // namespace brum::tools
