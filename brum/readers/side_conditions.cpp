#include "brum/readers/side_conditions.h"

#include <algorithm>
#include <utility>

namespace brum {

SideConditions::Node SideConditions::add_entry(Entry entry) {
  entries_.push_back(std::move(entry));
  return static_cast<Node>(entries_.size() - 1);
}

SideConditions::Node SideConditions::add_condition(const Term* condition) {
  return add_entry({condition, {}, 0, false});
}

void SideConditions::use(Node node) {
  if (node == none || entries_[node].collection == collection_)
    return;
  used_.push_back(node);
  entries_[node].collection = collection_;
}

void SideConditions::begin_definition() {
  starts_of_definitions_.push_back(used_.size());
  outer_collections_.push_back(collection_);
  collection_ = ++last_collection_;
}

SideConditions::Node SideConditions::end_definition() {
  const std::size_t start = starts_of_definitions_.back();
  Node node = none;
  if (used_.size() == start + 1) {
    node = used_.back();
  } else if (used_.size() > start) {
    node = add_entry(
        {nullptr, {used_.begin() + static_cast<std::ptrdiff_t>(start), used_.end()}, 0, false});
  }
  used_.resize(start);
  starts_of_definitions_.pop_back();
  collection_ = outer_collections_.back();
  outer_collections_.pop_back();
  return node;
}

void SideConditions::clear_used() {
  used_.clear();
  starts_of_definitions_.clear();
  outer_collections_.clear();
  collection_ = ++last_collection_;
}

std::vector<const Term*> SideConditions::assert_used() {
  std::vector<Node> reached;
  std::vector<Node> open = used_;
  while (!open.empty()) {
    const Node node = open.back();
    open.pop_back();
    Entry& entry = entries_[node];
    if (entry.is_in_force)
      continue;
    entry.is_in_force = true;
    in_force_.push_back(node);
    if (entry.condition != nullptr)
      reached.push_back(node);
    open.insert(open.end(), entry.relies_on.begin(), entry.relies_on.end());
  }
  std::sort(reached.begin(), reached.end());
  std::vector<const Term*> conditions;
  conditions.reserve(reached.size());
  for (const Node node : reached)
    conditions.push_back(entries_[node].condition);
  return conditions;
}

std::vector<const Term*> SideConditions::conditions_used() {
  const std::size_t size = in_force_.size();
  std::vector<const Term*> conditions = assert_used();
  forget_from(size);
  return conditions;
}

void SideConditions::forget_from(std::size_t size) {
  for (std::size_t i = size; i < in_force_.size(); ++i)
    entries_[in_force_[i]].is_in_force = false;
  in_force_.resize(size);
}

void SideConditions::pop(std::size_t count) {
  const std::size_t left = levels_.size() - count;
  if (count == 0)
    return;
  forget_from(levels_[left]);
  levels_.resize(left);
}

void SideConditions::reset() {
  forget_from(0);
  levels_.clear();
}

}  // namespace brum
