#include "brum/readers/definitions.h"

#include <algorithm>
#include <bit>
#include <string>
#include <utility>

namespace brum {

bool Definitions::Application::operator==(const Application& other) const {
  return definition == other.definition && deferring == other.deferring &&
         std::ranges::equal(arguments, other.arguments);
}

std::uint64_t Definitions::HashApplication::operator()(const Application& application) const {
  constexpr std::uint64_t factor = 0x9e3779b97f4a7c15U;
  std::uint64_t result = application.definition * 2 + (application.deferring ? 1 : 0);
  for (const Term* argument : application.arguments) {
    result = hsh::mix(result ^ argument->id, factor) + factor;
  }
  return result;
}

const Term* Definitions::parameter(std::size_t index, const DataType* sort) {
  // The same for all definitions, so that one which hands on its parameters gets the body as it is.
  const std::string name = "parameter " + std::to_string(index) + ' ' +
                           std::to_string(std::bit_cast<std::uintptr_t>(sort));
  const Symbol* symbol = builder_.manager().declare_interpreted(name, sort);
  parameter_indices_[symbol] = static_cast<std::uint32_t>(index);
  const Term* term = builder_.manager().make_term(symbol);
  first_open_id_ = std::min(first_open_id_, term->id);
  return term;
}

/// Whether a term depends on a parameter, or holds a deferred operator. Remembered, so that each
/// term is looked at once in a script.
bool Definitions::is_open(const Term* term) {
  std::vector<const Term*> pending{term};
  const auto known = [this](const Term* t) {
    return t->id < first_open_id_ || is_open_.find(t) != is_open_.end();
  };
  const auto open = [this](const Term* t) {
    return t->id >= first_open_id_ && is_open_.find(t)->second;
  };
  while (!pending.empty()) {
    const Term* t = pending.back();
    if (known(t)) {
      pending.pop_back();
      continue;
    }
    const std::size_t size = pending.size();
    for (const Term* child : t->arguments()) {
      if (!known(child))
        pending.push_back(child);
    }
    if (pending.size() != size)
      continue;
    pending.pop_back();
    is_open_[t] = parameter_indices_.find(t->symbol) != parameter_indices_.end() ||
                  builder_.partial_operators().is_deferred(t->symbol) ||
                  std::ranges::any_of(t->arguments(), open);
  }
  return open(term);
}

Definitions::Plan Definitions::make_plan(const Definition& definition) {
  Plan plan;
  hsh::HashMap<const Term*, std::uint32_t> slots;
  const auto operand = [&](const Term* t) -> Plan::Operand {
    const auto parameter = parameter_indices_.find(t->symbol);
    if (parameter != parameter_indices_.end())
      return {nullptr, parameter->second};
    const auto slot = slots.find(t);
    if (slot != slots.end())
      return {nullptr, slot->second};
    return {t, 0};
  };
  const auto needs_step = [&](const Term* t) { return operand(t).fixed != nullptr && is_open(t); };
  std::vector<const Term*> pending{definition.body.term};
  while (!pending.empty()) {
    const Term* t = pending.back();
    if (!needs_step(t)) {
      pending.pop_back();
      continue;
    }
    const std::size_t size = pending.size();
    for (const Term* child : t->arguments()) {
      if (needs_step(child))
        pending.push_back(child);
    }
    if (pending.size() != size)
      continue;
    pending.pop_back();
    const auto first_operand = static_cast<std::uint32_t>(plan.operands.size());
    for (const Term* child : t->arguments())
      plan.operands.push_back(operand(child));
    slots[t] = static_cast<std::uint32_t>(definition.parameter_sorts.size() + plan.steps.size());
    plan.steps.push_back(
        {t->symbol, first_operand, builder_.partial_operators().is_deferred(t->symbol)});
  }
  plan.result = operand(definition.body.term);
  return plan;
}

const Definitions::Plan& Definitions::plan_of(const Definition& definition) {
  const auto known = plans_.find(definition.number);
  if (known != plans_.end())
    return *known->second;
  auto plan = std::make_unique<const Plan>(make_plan(definition));
  return *(plans_[definition.number] = std::move(plan));
}

Definition Definitions::define(std::vector<const DataType*> parameter_sorts,
                               const DataType* result_sort, Value body,
                               SideConditions::Node conditions) {
  Definition definition;
  definition.number = ++last_number_;
  definition.parameter_sorts = std::move(parameter_sorts);
  definition.result_sort = result_sort;
  definition.body = builder_.as_sort(body.term, result_sort);
  definition.conditions = conditions;
  definition.depends_on_parameters =
      !definition.parameter_sorts.empty() && is_open(definition.body.term);
  return definition;
}

void Definitions::check(const Definition& definition, std::string_view name,
                        std::span<const Value> arguments) const {
  const std::size_t wanted = definition.parameter_sorts.size();
  if (arguments.size() != wanted) {
    throw TermManager::error("found " + std::to_string(arguments.size()) + " arguments of " +
                             std::string(name) + ", expected " + std::to_string(wanted));
  }
  for (std::size_t i = 0; i < wanted; ++i) {
    const DataType* found = builder_.sort_of(arguments[i]);
    const DataType* expected = definition.parameter_sorts[i];
    const bool fits = found == expected || (found == builder_.manager().get_int_type() &&
                                            expected == builder_.manager().get_real_type());
    if (!fits) {
      throw TermManager::error("found " + found->to_short_str() + " as argument " +
                               std::to_string(i + 1) + " of " + std::string(name) + ", expected " +
                               expected->to_short_str());
    }
  }
}

/// Whether the arguments are the parameters themselves, within another definition's body.
bool Definitions::is_own_body(const Definition& definition) {
  if (!builder_.partial_operators().deferring())
    return false;
  for (std::size_t i = 0; i < arguments_.size(); ++i) {
    const auto index = parameter_indices_.find(arguments_[i]->symbol);
    if (index == parameter_indices_.end() || index->second != i ||
        arguments_[i]->sort() != definition.parameter_sorts[i]) {
      return false;
    }
  }
  return true;
}

Value Definitions::apply(const Definition& definition, std::string_view name,
                         std::span<const Value> arguments) {
  check(definition, name, arguments);
  builder_.side_conditions().use(definition.conditions);
  arguments_.clear();
  for (const Value argument : arguments)
    arguments_.push_back(argument.term);
  if (!definition.depends_on_parameters || is_own_body(definition))
    return definition.body;

  Application application{definition.number, arguments_, builder_.partial_operators().deferring()};
  if (const auto known = results_.find(application); known != results_.end()) {
    builder_.side_conditions().use(known->second.conditions);
    return known->second.value;
  }
  builder_.side_conditions().begin_definition();
  const Value value = build(definition);
  const SideConditions::Node conditions = builder_.side_conditions().end_definition();
  application.arguments = arena_.copy(application.arguments);
  results_[application] = {value, conditions};
  builder_.side_conditions().use(conditions);
  return value;
}

Value Definitions::build(const Definition& definition) {
  const Plan& plan = plan_of(definition);
  slots_.assign(arguments_.begin(), arguments_.end());
  for (const Plan::Step& step : plan.steps) {
    children_.clear();
    for (std::size_t i = 0; i < step.symbol->arity; ++i) {
      const Plan::Operand& operand = plan.operands[step.first_operand + i];
      children_.push_back(operand.fixed != nullptr ? operand.fixed : slots_[operand.slot]);
    }
    slots_.push_back(step.is_deferred
                         ? builder_.partial_operators().resolve(step.symbol, children_).term
                         : builder_.manager().make_term(step.symbol, children_));
  }
  return builder_.as_sort(slots_[plan.result.slot], definition.result_sort);
}

}  // namespace brum
