#ifndef BRUM_READERS_SIDE_CONDITIONS_H
#define BRUM_READERS_SIDE_CONDITIONS_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "brum/terms/term.h"

namespace brum {

/// Remembers which facts about introduced constants must be asserted along with which terms.
///
/// A term that mentions an introduced constant means what it should only where the constant's
/// defining condition holds. While a term is read, use() is called for each constant and each
/// definition that it relies on. Whatever is asserted then is conjoined with the conditions that
/// assert_used() gives: each one once for as long as an assertion that carries it is in force.
///
/// Definitions form a graph, which is followed only as far as no condition is in force yet, so that
/// the cost over a whole script is linear in what is read.
class SideConditions {
 public:
  /// A constant's condition, or what a definition relies on. none: relies on nothing.
  using Node = std::uint32_t;
  static constexpr Node none = 0;

  /// Makes the node of a condition of its own.
  Node add_condition(const Term* condition);

  /// Notes that what is being read relies on `node`; no-op for none.
  void use(Node node);

  /// Begins to collect apart from what was noted so far; end_definition() gives a node for what
  /// was noted since (none if there is nothing) and goes back to the former collection, which does
  /// not use that node yet. Calls may be nested.
  void begin_definition();
  Node end_definition();

  /// Forgets what was noted, as at the beginning of a command.
  void clear_used();

  /// Gives the conditions that what was noted relies on and that are not in force, oldest first,
  /// and takes them as in force from now on until the present level of push() ends.
  std::vector<const Term*> assert_used();

  /// Gives the same conditions without taking them as in force.
  std::vector<const Term*> conditions_used();

  void push() { levels_.push_back(in_force_.size()); }

  /// Ends `count` levels, at most as many as there are.
  void pop(std::size_t count);

  /// Ends all levels; nothing is in force any more.
  void reset();

 private:
  struct Entry {
    const Term* condition;         // null for a definition
    std::vector<Node> relies_on;   // of a definition
    std::uint64_t collection = 0;  // the last collection that noted it
    bool is_in_force = false;
  };

  Node add_entry(Entry entry);
  void forget_from(std::size_t size);

  std::vector<Entry> entries_{Entry{nullptr, {}, 0, false}};  // entry 0 is none
  std::vector<Node> used_;
  std::vector<std::size_t> starts_of_definitions_;  // in used_
  std::vector<std::uint64_t> outer_collections_;
  std::uint64_t collection_ = 1;
  std::uint64_t last_collection_ = 1;
  std::vector<Node> in_force_;
  std::vector<std::size_t> levels_;  // the size of in_force_ at each push
};

}  // namespace brum

#endif  // BRUM_READERS_SIDE_CONDITIONS_H
