#include "brum/readers/scopes.h"

#include <array>

namespace brum {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 14> refused_sorts{{
    {"FloatingPoint", "floating point"},
    {"Float16", "floating point"},
    {"Float32", "floating point"},
    {"Float64", "floating point"},
    {"Float128", "floating point"},
    {"RoundingMode", "floating point"},
    {"String", "strings"},
    {"RegLan", "strings"},
    {"Seq", "sequences"},
    {"Set", "sets"},
    {"Bag", "bags"},
    {"Tuple", "tuples"},
    {"UnicodeChar", "strings"},
    {"FiniteField", "finite fields"},
}};

}  // namespace

std::uint64_t Scopes::HashNameAndType::operator()(const NameAndType& key) const {
  return hsh::mix(hsh::hash<const Name*>()(key.name),
                  hsh::hash<const DataType*>()(key.type) * 2 + 1);
}

Scopes::Scopes(NameTable& names, TermBuilder& builder) : builder_(builder) {
  const TermManager& manager = builder.manager();
  const auto predefine = [&](const char* name, const SortBinding& binding) {
    sorts_[&names.get(name)] = binding;
  };
  using Kind = SortBinding::Kind;
  predefine("Bool", {.kind = Kind::sort, .sort = manager.get_bool_type()});
  predefine("Int", {.kind = Kind::sort, .sort = manager.get_int_type()});
  predefine("Real", {.kind = Kind::sort, .sort = manager.get_real_type()});
  predefine("Array", {.kind = Kind::array, .num_parameters = 2});
  predefine("BitVec", {.kind = Kind::bit_vector});
  for (const auto& [name, reason] : refused_sorts) {
    predefine(name, {.kind = Kind::refused, .reason = reason});
  }
}

// Names of terms.

void Scopes::require_free(const Name& name) const {
  if (name.theory_operator != nullptr &&
      !may_be_declared(*name.theory_operator, builder_.logic())) {
    throw TermManager::error("found " + std::string(name.text) +
                             ", which is an operator of a theory, expected a new name");
  }
  if (name.binding.kind != BindingKind::none) {
    throw TermManager::error("found " + std::string(name.text) +
                             ", which is declared already, expected a new name");
  }
}

void Scopes::bind(Name& name, const Binding& binding) {
  if (global_declarations_) {
    global_names_.push_back(&name);
  } else {
    covered_.push_back({&name, name.binding});
  }
  name.binding = binding;
}

const Symbol* Scopes::symbol_for(Name& name, const DataType* type) {
  TermManager& manager = builder_.manager();
  const auto is_usable = [&](const Symbol* symbol) {
    return symbol == nullptr ||
           (symbol->type == type && !builder_.partial_operators().is_introduced(symbol) &&
            renamed_symbols_.find(symbol) == renamed_symbols_.end());
  };
  if (is_usable(manager.get_signature()->get_symbol(name.text))) {
    return manager.declare(std::string(name.text), type);
  }
  return renamed_symbol(name, type);
}

const Symbol* Scopes::renamed_symbol(const Name& name, const DataType* type) {
  TermManager& manager = builder_.manager();
  const Symbol*& renamed = renamed_[{&name, type}];
  if (renamed == nullptr) {
    std::size_t number = 2;
    std::string candidate;
    do {
      candidate = std::string(name.text) + '.' + std::to_string(number++);
    } while (manager.get_signature()->get_symbol(candidate) != nullptr);
    renamed = manager.declare(candidate, type);
    renamed_symbols_.insert(renamed);
  }
  return renamed;
}

const Symbol* Scopes::declare(Name& name, const std::vector<const DataType*>& arguments,
                              const DataType* result) {
  require_free(name);
  const DataType* type =
      arguments.empty() ? result : builder_.manager().make_function_type(arguments, result);
  const Symbol* symbol = symbol_for(name, type);
  bind(name, Binding::to_function(symbol));
  return symbol;
}

Binding Scopes::binding_of(Definition definition) {
  if (definition.parameter_sorts.empty() && definition.conditions == SideConditions::none) {
    return Binding::to_value(definition.body);
  }
  definitions_.push_back(std::make_unique<Definition>(std::move(definition)));
  return Binding::to_definition(definitions_.back().get());
}

void Scopes::define(Name& name, Definition definition) {
  require_free(name);
  bind(name, binding_of(std::move(definition)));
}

void Scopes::define_within_term(Name& name, Definition definition) {
  require_free(name);
  names_of_term_.push_back(&name);
  name.binding = binding_of(std::move(definition));
}

void Scopes::end_term() {
  for (Name* name : names_of_term_) {
    const Binding binding = name->binding;
    name->binding = {};
    bind(*name, binding);
  }
  names_of_term_.clear();
}

void Scopes::cover(Name& name, Value value) {
  covered_.push_back({&name, name.binding});
  name.binding = Binding::to_value(value);
}

void Scopes::uncover(std::size_t count) {
  for (; count > 0; --count) {
    covered_.back().name->binding = covered_.back().binding;
    covered_.pop_back();
  }
}

// Names of sorts.

SortBinding Scopes::find_sort(const Name& name) const {
  const auto found = sorts_.find(&name);
  return found == sorts_.end() ? SortBinding{} : found->second;
}

void Scopes::bind_sort(Name& name, const SortBinding& binding) {
  SortBinding& place = sorts_[&name];
  // Names of theories that are not held are free for the user's sorts.
  if (place.kind != SortBinding::Kind::none && place.kind != SortBinding::Kind::refused) {
    throw TermManager::error("found the sort " + std::string(name.text) +
                             ", which is declared already, expected a new name");
  }
  if (global_declarations_) {
    global_sorts_.push_back(&name);
  } else {
    covered_sorts_.emplace_back(&name, place);
  }
  place = binding;
}

void Scopes::declare_sort(Name& name, const DataType* sort) {
  bind_sort(name, {.kind = SortBinding::Kind::sort, .sort = sort});
}

void Scopes::declare_sort_family(Name& name, std::size_t num_parameters) {
  bind_sort(name, {.kind = SortBinding::Kind::family, .num_parameters = num_parameters});
}

void Scopes::define_sort(Name& name, std::size_t num_parameters, const DataType* body) {
  if (num_parameters == 0) {
    declare_sort(name, body);
    return;
  }
  bind_sort(
      name,
      {.kind = SortBinding::Kind::definition, .sort = body, .num_parameters = num_parameters});
}

void Scopes::cover_sort(Name& name, const DataType* sort) {
  SortBinding& place = sorts_[&name];
  covered_sorts_.emplace_back(&name, place);
  place = {.kind = SortBinding::Kind::sort, .sort = sort};
}

void Scopes::uncover_sorts(std::size_t count) {
  for (; count > 0; --count) {
    sorts_[covered_sorts_.back().first] = covered_sorts_.back().second;
    covered_sorts_.pop_back();
  }
}

// Levels.

void Scopes::push(std::size_t count) {
  levels_.insert(levels_.end(), count, Level{covered_.size(), covered_sorts_.size()});
}

void Scopes::undo_to(Level level) {
  uncover(covered_.size() - level.covered);
  uncover_sorts(covered_sorts_.size() - level.covered_sorts);
}

void Scopes::pop(std::size_t count) {
  if (count > levels_.size()) {
    throw TermManager::error("found pop of " + std::to_string(count) +
                             (count == 1 ? " level" : " levels") + ", expected at most " +
                             std::to_string(levels_.size()));
  }
  if (count == 0)
    return;
  const std::size_t left = levels_.size() - count;
  undo_to(levels_[left]);
  levels_.resize(left);
}

void Scopes::reset_assertions() {
  undo_to({0, 0});
  levels_.clear();
}

void Scopes::reset() {
  reset_assertions();
  for (Name* name : global_names_)
    name->binding = {};
  for (const Name* name : global_sorts_)
    sorts_[name] = {};
  global_names_.clear();
  global_sorts_.clear();
  definitions_.clear();
  global_declarations_ = false;
}

}  // namespace brum
