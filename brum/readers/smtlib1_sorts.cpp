#include "brum/readers/smtlib1_sorts.h"

#include <array>
#include <optional>

#include "brum/readers/smtlib1_bit_vectors.h"
#include "brum/utils/smtlib_words.h"

namespace brum {

namespace {

using namespace std::literals;

constexpr std::array sorts_of_all_logics = {"Int"sv, "Real"sv, "Bool"sv};

/// Sorts that theories of version 1 have without saying more about them.
constexpr std::array sorts_of_theories = {"U"sv, "Index"sv, "Element"sv};

}  // namespace

void SmtLib1Sorts::declare(std::string_view name, const DataType* sort) {
  const std::string key(name);
  if (is_among(sorts_of_all_logics, name) || declared_.find(key) != declared_.end()) {
    throw TermManager::error("found the sort " + key +
                             ", which is declared already, expected a new name");
  }
  declared_[key] = sort;
}

const DataType* SmtLib1Sorts::parse(SmtLib1Lexer& lexer) const {
  const Token& token = lexer.token();
  const DataType* sort = nullptr;
  try {
    sort = find(token);
  } catch (const TermManager::error& error) {
    lexer.error(token.position, error.what());
  }
  if (sort == nullptr) {
    lexer.error(token.position,
                "found the sort " + std::string(token.raw) + ", expected a declared sort");
  }
  return sort;
}

const DataType* SmtLib1Sorts::find(const Token& token) const {
  if (const auto found = declared_.find(std::string(token.raw)); found != declared_.end()) {
    return found->second;
  }
  if (token.raw.size() != token.text.size())
    return indexed(token);
  TermManager& manager = builder_.manager();
  const std::string_view name = token.text;
  if (name == "Int")
    return manager.get_int_type();
  if (name == "Real")
    return manager.get_real_type();
  if (name == "Bool")
    return manager.get_bool_type();
  if (name == "Array")
    return array();
  if (name == "Array1" || name == "Array2") {
    const DataType* integer = manager.get_int_type();
    const DataType* inner = manager.make_array_type(integer, manager.get_real_type());
    return name == "Array1" ? inner : manager.make_array_type(integer, inner);
  }
  return is_among(sorts_of_theories, name) ? of_theory(std::string(name)) : nullptr;
}

const DataType* SmtLib1Sorts::of_theory(const std::string& name) const {
  const auto found = declared_.find(name);
  return found != declared_.end() ? found->second
                                  : builder_.manager().make_uninterpreted_type(name);
}

const DataType* SmtLib1Sorts::indexed(const Token& token) const {
  TermManager& manager = builder_.manager();
  std::string_view indices = SmtLib1Lexer::indices(token);
  const DataType* sort = nullptr;
  if (token.text == "BitVec") {
    sort = manager.make_bv_type(take_width(indices));
  } else if (token.text == "Array") {
    const DataType* index = manager.make_bv_type(take_width(indices));
    sort = manager.make_array_type(index, manager.make_bv_type(take_width(indices)));
  }
  return indices.empty() ? sort : nullptr;
}

const DataType* SmtLib1Sorts::array() const {
  TermManager& manager = builder_.manager();
  const std::optional<LogicFeatures>& logic = builder_.logic();
  const bool has_own_sorts =
      logic && logic->arrays && !logic->integers && !logic->reals && !logic->bit_vectors;
  if (has_own_sorts) {
    return manager.make_array_type(of_theory("Index"), of_theory("Element"));
  }
  return manager.make_array_type(manager.get_int_type(), manager.get_int_type());
}

}  // namespace brum
