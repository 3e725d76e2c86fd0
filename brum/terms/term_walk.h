#ifndef BRUM_TERMS_TERM_WALK_H
#define BRUM_TERMS_TERM_WALK_H

#include <cstddef>
#include <cstdint>

#include "brum/terms/prefetch_term.h"
#include "brum/terms/term.h"
#include "brum/utils/large_array.h"

namespace brum {

/// Walks over the subterms of a term, arguments from left to right and before the term itself.
/// Keeps its own stack: never recurses, however deep the term is.
///
///     TermWalk walk;
///     walk.run(formula, [&](const Term* t) { return first_visit(t); },
///              [&](const Term* t) { arguments_are_done(t); });
class TermWalk {
 public:
  /// Calls `enter` for `root` and then for every reference from an argument position of an entered
  /// term; it gives whether the term referred to is to be entered. Calls `leave` for each entered
  /// term after its arguments. An exception from either ends the walk and leaves this object ready
  /// for the next.
  template <class Enter, class Leave>
  void run(const Term* root, Enter&& enter, Leave&& leave) {
    open_.clear();
    OpenTerm top{nullptr, 0};  // what is around the root
    const Term* visited = root;
    do {
      if (enter(visited)) {
        if (visited->symbol->arity == 0) {
          leave(visited);
          prefetch_behind(visited, root);
        } else {
          open_.push_back(top);
          top = {visited, 0};
          for (const Term* next : visited->arguments()) {
            prefetch_term(next);
          }
        }
      }
      while (top.term != nullptr && top.next == top.term->symbol->arity) {
        leave(top.term);
        prefetch_behind(top.term, root);
        top = open_.back();
        open_.pop_back();
      }
      if (top.term != nullptr) {
        visited = top.term->children[top.next++];
      }
    } while (top.term != nullptr);
    if (open_.capacity() > most_kept) {
      open_ = {};
    }
  }

 private:
  /// A term that was entered, and the number of its arguments that were visited.
  struct OpenTerm {
    const Term* term;
    std::uint64_t next;
  };

  /// Fetches into the cache what lies some thousand terms behind `term`, if `root` lies behind
  /// that: terms lie in the order in which they were made, and a walk leaves them in about that
  /// order.
  [[gnu::always_inline]] static void prefetch_behind(const Term* term, const Term* root) {
    constexpr std::size_t distance = std::size_t{1} << 17U;  // in bytes
    constexpr std::size_t fewest_terms = distance / 40;      // mostly of two arguments
    constexpr std::size_t cache_line = 64;
    if (root->id - term->id > fewest_terms) {
      const char* const place = reinterpret_cast<const char*>(term) + distance;
      __builtin_prefetch(place);
      __builtin_prefetch(place + cache_line);
    }
  }

  /// Memory for more open terms than this is given back after the walk.
  static constexpr std::size_t most_kept = 4096;

  LargeList<OpenTerm> open_;  // all but the innermost
};

}  // namespace brum

#endif  // BRUM_TERMS_TERM_WALK_H
