#include "tests/support/formulas.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace brum::testing {

const Term* make_negations(TermManager& mgr, const Term* inner, std::size_t size) {
  const Term* term = inner;
  for (std::size_t i = 0; i < size; ++i) {
    term = mgr.make_not(term);
  }
  return term;
}

const Term* make_left_chain(TermManager& mgr, std::size_t size) {
  const Term* variables[] = {make_bool(mgr, "p0"), make_bool(mgr, "p1")};
  const Term* term = variables[0];
  for (std::size_t i = 0; i < size; ++i) {
    term = mgr.make_and(term, variables[(i + 1) % 2]);
  }
  return term;
}

const Term* make_right_chain(TermManager& mgr, std::size_t size) {
  const Term* variables[] = {make_bool(mgr, "p0"), make_bool(mgr, "p1")};
  const Term* term = variables[0];
  for (std::size_t i = 0; i < size; ++i) {
    term = mgr.make_and(variables[(i + 1) % 2], term);
  }
  return term;
}

const Term* make_ladder(TermManager& mgr, std::size_t size) {
  const Term* term = make_int(mgr, "x");
  for (std::size_t i = 0; i < size; ++i) {
    term = mgr.make_plus(term, term);
  }
  return term;
}

const Term* make_balanced_tree(TermManager& mgr, std::size_t size) {
  std::vector<const Term*> level;
  for (std::size_t i = 0; i <= size; ++i) {
    level.push_back(make_int(mgr, "x" + std::to_string(i)));
  }
  while (level.size() > 1) {
    std::vector<const Term*> above;
    for (std::size_t i = 0; i + 1 < level.size(); i += 2) {
      above.push_back(mgr.make_plus(level[i], level[i + 1]));
    }
    if (level.size() % 2 == 1) {
      above.push_back(level.back());
    }
    level = std::move(above);
  }
  return level.front();
}

const Term* make_random_dag(TermManager& mgr, std::size_t size, unsigned seed) {
  // std::mt19937 is the same everywhere; the distributions are not.
  std::mt19937 random(seed);
  std::vector<const Term*> made;
  for (const char* name : {"x", "y", "z"}) {
    made.push_back(make_int(mgr, name));
  }
  std::size_t compounds = 0;
  std::size_t roots = 0;  // compound terms that nothing refers to yet
  while (compounds + roots < size + 1) {
    // A near argument gives depth, one from anywhere gives far sharing.
    const std::size_t reach = std::min<std::size_t>(made.size(), 40);
    const Term* near = made[made.size() - 1 - random() % reach];
    const Term* any = made[random() % made.size()];
    const auto is_root = [](const Term* term) {
      return term->symbol->arity != 0 && TermManager::num_uses(term) == 0;
    };
    const std::size_t used_roots =
        (is_root(near) ? 1U : 0U) + (is_root(any) && any != near ? 1U : 0U);
    if (used_roots == 0 && compounds + roots == size) {
      continue;  // would be one term too many in the end
    }
    const std::size_t before = mgr.num_terms();
    const Term* term = random() % 2 == 0 ? mgr.make_plus(near, any) : mgr.make_plus(any, near);
    if (mgr.num_terms() == before) {
      continue;
    }
    roots += 1;
    roots -= used_roots;
    made.push_back(term);
    ++compounds;
  }
  const Term* all = nullptr;
  for (const Term* term : made) {
    if (term->symbol->arity != 0 && mgr.num_uses(term) == 0) {
      all = all == nullptr ? term : mgr.make_plus(all, term);
    }
  }
  return all;
}

}  // namespace brum::testing
