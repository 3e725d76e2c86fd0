#include "conjunction.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "brum/printers/definition_rule.h"
#include "brum/utils/fold_balanced.h"

namespace brum::tools {

namespace {

/// Of up to so many terms the text is not too much to be copied on each level of a tree.
constexpr std::size_t most_in_plain_tree = 1024;

/// In a row of so many terms even constants are nested deep enough to be given a definition.
constexpr std::size_t row_length = DefinitionRule::inline_levels + 2;

std::vector<const Term*> join_in_rows(TermManager& manager, std::span<const Term* const> terms) {
  std::vector<const Term*> rows;
  while (!terms.empty()) {
    const auto members = terms.first(std::min(row_length, terms.size()));
    const Term* row = members.front();
    for (const Term* member : members.subspan(1)) {
      row = manager.make_and(row, member);
    }
    rows.push_back(row);
    terms = terms.subspan(members.size());
  }
  return rows;
}

}  // namespace

// What is written inline is copied on every level above it. In the tree alone that would be all of
// a document, several times and in pieces as large as itself. So many terms are joined in rows
// first, which get definitions, and what goes up the tree is little more than their labels.
const Term* conjunction(TermManager& manager, std::vector<const Term*> terms) {
  if (terms.empty()) {
    return manager.make_true();
  }
  if (terms.size() > most_in_plain_tree) {
    terms = join_in_rows(manager, terms);
  }
  return fold_balanced(std::span(terms), [&](const Term* left, const Term* right) {
    return manager.make_and(left, right);
  });
}

}  // namespace brum::tools
