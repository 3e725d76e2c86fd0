#include "tests/support/term_generator.h"

#include <algorithm>
#include <array>
#include <limits>
#include <random>
#include <string_view>
#include <utility>

#include "brum/printers/check_names.h"
#include "brum/printers/smtlib_identifiers.h"

namespace brum::testing {

namespace {

constexpr std::array<std::size_t, 9> widths = {1, 2, 3, 4, 7, 8, 32, 64, 65};

/// The widest bit-vector that operations build.
constexpr std::size_t widest = 200;

constexpr std::array<const Term* (TermManager::*)(const Term*, const Term*), 17> binary_builders = {
    &TermManager::make_bvand,  &TermManager::make_bvor,   &TermManager::make_bvxor,
    &TermManager::make_bvult,  &TermManager::make_bvslt,  &TermManager::make_bvule,
    &TermManager::make_bvsle,  &TermManager::make_bvcomp, &TermManager::make_bvadd,
    &TermManager::make_bvsub,  &TermManager::make_bvmul,  &TermManager::make_bvudiv,
    &TermManager::make_bvsdiv, &TermManager::make_bvurem, &TermManager::make_bvsrem,
    &TermManager::make_bvshl,  &TermManager::make_bvlshr,
};

}  // namespace

TermGeneratorOptions TermGeneratorOptions::for_version_1() {
  TermGeneratorOptions options;
  options.all_arrays = false;
  options.boolean_arguments = false;
  options.real_operators_over_integers = false;
  options.v1_names = true;
  return options;
}

TermGeneratorOptions TermGeneratorOptions::for_real_logic() {
  TermGeneratorOptions options;
  options.integers = false;
  options.integral_reals = true;
  return options;
}

TermGenerator::TermGenerator(TermManager& manager, std::uint64_t seed,
                             const TermGeneratorOptions& options)
    : TermGenerator(
          manager,
          [random = std::mt19937_64(seed)](std::uint64_t bound) mutable {
            return random() % bound;
          },
          options) {}

TermGenerator::TermGenerator(TermManager& manager, Choice choice,
                             const TermGeneratorOptions& options)
    : mgr_(manager), options_(options), choice_(std::move(choice)) {
  choose_sorts();
  choose_operations();
  choose_functions();
}

// Sorts and symbols.

void TermGenerator::choose_sorts() {
  if (options_.integers)
    sorts_.push_back(mgr_.get_int_type());
  if (options_.reals)
    sorts_.push_back(mgr_.get_real_type());
  if (options_.bit_vectors) {
    for (const std::size_t width : widths)
      bit_vectors_.push_back(mgr_.make_bv_type(width));
    sorts_.insert(sorts_.end(), bit_vectors_.begin(), bit_vectors_.end());
  }
  if (options_.sorts) {
    for (const char* sort_name : {"S", "a sort", "U0"})
      sorts_.push_back(mgr_.make_uninterpreted_type(sort_name));
  }
  if (!options_.arrays)
    return;
  if (options_.integers)
    arrays_.push_back(mgr_.make_array_type(mgr_.get_int_type(), mgr_.get_int_type()));
  if (options_.bit_vectors) {
    for (std::size_t i = 0; i < 3; ++i)
      arrays_.push_back(mgr_.make_array_type(any_of(bit_vectors_), any_of(bit_vectors_)));
  }
  if (options_.all_arrays) {
    std::vector<const DataType*> components = sorts_;
    components.push_back(mgr_.get_bool_type());
    for (std::size_t i = 0; i < 5; ++i) {
      arrays_.push_back(mgr_.make_array_type(any_of(components), any_of(components)));
      components.push_back(arrays_.back());
    }
  }
  sorts_.insert(sorts_.end(), arrays_.begin(), arrays_.end());
}

void TermGenerator::choose_operations() {
  using G = TermGenerator;
  operations_ = {&G::connective, &G::connective, &G::connective, &G::equality, &G::if_then_else};
  if (options_.integers)
    operations_.insert(operations_.end(), {&G::integer_operation, &G::congruence});
  if (options_.reals)
    operations_.push_back(&G::real_operation);
  if (options_.integers && options_.reals)
    operations_.push_back(&G::floor);
  if (options_.bit_vectors) {
    operations_.insert(operations_.end(), {&G::bit_vector_unary, &G::bit_vector_binary,
                                           &G::bit_vector_binary, &G::bit_vector_structure});
  }
  if (!arrays_.empty())
    operations_.push_back(&G::array_access);
  if (options_.functions)
    operations_.push_back(&G::application);
}

void TermGenerator::choose_functions() {
  if (!options_.functions)
    return;
  for (std::size_t i = 0; i < 6; ++i) {
    std::vector<const DataType*> arguments;
    for (std::size_t left = 1 + pick(3); left > 0; --left) {
      const bool is_boolean = options_.boolean_arguments && pick(6) == 0;
      arguments.push_back(is_boolean || sorts_.empty() ? mgr_.get_bool_type() : any_of(sorts_));
    }
    const DataType* type = mgr_.make_function_type(arguments, any_sort());
    functions_.push_back(mgr_.declare(name('f'), type));
  }
}

const DataType* TermGenerator::any_sort() {
  return sorts_.empty() || pick(4) == 0 ? mgr_.get_bool_type() : any_of(sorts_);
}

/// Gives a name that was not given before.
std::string TermGenerator::name(char prefix) {
  while (true) {
    std::string text =
        options_.arbitrary_names ? arbitrary_name() : prefix + std::to_string(num_names_);
    if (names_.get_signature()->get_symbol(text) == nullptr && is_writable(text)) {
      ++num_names_;
      return text;
    }
  }
}

std::string TermGenerator::arbitrary_name() {
  constexpr std::string_view v1_bytes = "abcxyzABCXYZ_0123456789._";
  switch (pick(options_.v1_names ? 2 : 5)) {
    case 0:
      return (pick(2) == 0 ? "bvx" : "def_") + std::to_string(pick(50));
    case 1: {
      std::string text(1 + pick(12), '_');
      for (char& byte : text)
        byte = v1_bytes[pick(v1_bytes.size())];
      return text;
    }
    case 2:  // like labels
      return (pick(2) == 0 ? ".def_" : "?def_") + std::to_string(pick(50));
    case 3: {
      std::string text((options_.unwritable_names ? 0 : 1) + pick(6), ' ');
      for (char& byte : text)
        byte = static_cast<char>(1 + pick(255));
      return text;
    }
    default: {
      constexpr std::array<std::string_view, 10> words = {"a b", "x\ny", "1",  "é",      "(",
                                                          ";",   "\"",   ":x", "let me", "true "};
      return std::string(words[pick(words.size())]) + std::to_string(pick(5));
    }
  }
}

/// Whether a printer writes the name so that it stands for itself.
bool TermGenerator::is_writable(const std::string& text) {
  if (options_.v1_names && v1_identifier(text) != text)
    return false;
  const Term* term = names_.make_term(names_.declare(text, names_.get_bool_type()));
  return options_.unwritable_names || check_names(names_, {term}, options_.v1_names).empty();
}

// Arguments.

const Term* TermGenerator::argument(const DataType* sort) {
  const Term* term = pick(4) == 0 ? nullptr : earlier(sort);
  if (term == nullptr)
    return leaf(sort);
  used_.insert(term);
  return term;
}

/// Gives a term that the formula holds already, null if there is none; later ones more often.
const Term* TermGenerator::earlier(const DataType* sort) {
  const std::vector<const Term*>& terms = made_of_sort_[sort];
  if (terms.empty())
    return nullptr;
  return terms[std::max(pick(terms.size()), pick(terms.size()))];
}

const Term* TermGenerator::leaf(const DataType* sort) {
  switch (sort->kind()) {
    case DataType::Kind::boolean:
      if (pick(8) == 0)
        return pick(2) == 0 ? mgr_.make_true() : mgr_.make_false();
      break;
    case DataType::Kind::integer:
    case DataType::Kind::real:
    case DataType::Kind::bit_vector:
      if (pick(2) == 0)
        return numeral(sort);
      break;
    case DataType::Kind::array:
    case DataType::Kind::uninterpreted:
    case DataType::Kind::function:
      break;
  }
  return constant(sort);
}

const Term* TermGenerator::constant(const DataType* sort) {
  std::vector<const Term*>& constants = constants_[sort];
  constexpr std::size_t most = 4;
  const std::size_t chosen = pick(most);
  if (chosen < constants.size())
    return constants[chosen];
  constants.push_back(mgr_.make_term(mgr_.declare(name('x'), sort)));
  return constants.back();
}

mpz_class TermGenerator::any_natural() {
  constexpr std::size_t any = std::numeric_limits<std::size_t>::max();
  mpz_class value = static_cast<unsigned long>(pick(2) == 0 ? pick(10) : pick(any) >> pick(64));
  if (pick(10) == 0)
    value = value * value * value;
  return value;
}

const Term* TermGenerator::numeral(const DataType* sort) {
  if (sort->kind() == DataType::Kind::bit_vector)
    return bit_vector_numeral(sort->width());
  mpz_class numerator = any_natural();
  if (pick(2) == 0)
    numerator = -numerator;
  if (sort == mgr_.get_int_type())
    return mgr_.make_number(QNumber(numerator, 1), sort);
  QNumber value(numerator, 2 + any_natural());
  if (options_.integral_reals && pick(2) == 0)
    value = QNumber(numerator, 1);
  if (value.is_integer() && !options_.integral_reals)
    value = value + QNumber(1, 2);
  return mgr_.make_number(value, sort);
}

const Term* TermGenerator::bit_vector_numeral(std::size_t width) {
  mpz_class value = 0;
  for (std::size_t bits = 0; bits < width; bits += 32)
    value = (value << 32) + static_cast<unsigned long>(pick(std::size_t{1} << 32U));
  mpz_class bound = 1;
  bound <<= width;
  value %= pick(2) == 0 ? bound : mpz_class(std::min(bound, mpz_class(5)));
  return mgr_.make_bv_number(QNumber(value, 1), width);
}

/// Gives a real, or an integer in its place.
const Term* TermGenerator::real_argument() {
  const bool is_integer = options_.integers && pick(3) == 0;
  return argument(is_integer ? mgr_.get_int_type() : mgr_.get_real_type());
}

std::pair<const Term*, const Term*> TermGenerator::two_reals() {
  const Term* a = real_argument();
  const Term* b = real_argument();
  const bool are_integers = a->sort() == b->sort() && a->sort() == mgr_.get_int_type();
  if (are_integers && !options_.real_operators_over_integers)
    b = argument(mgr_.get_real_type());
  return {a, b};
}

// Operations.

const Term* TermGenerator::connective() {
  const DataType* boolean = mgr_.get_bool_type();
  const Term* a = argument(boolean);
  switch (pick(4)) {
    case 0:
      return mgr_.make_not(a);
    case 1:
      return mgr_.make_and(a, argument(boolean));
    case 2:
      return mgr_.make_or(a, argument(boolean));
    default:
      return mgr_.make_iff(a, argument(boolean));
  }
}

const Term* TermGenerator::equality() {
  const DataType* sort = any_sort();
  if (sort == mgr_.get_bool_type())
    return mgr_.make_equal(argument(sort), argument(sort));
  if (sort != mgr_.get_real_type())
    return mgr_.make_term(mgr_.get_equality_symbol(sort), {argument(sort), argument(sort)});
  const auto [a, b] = two_reals();
  return mgr_.make_term(mgr_.get_equality_symbol(sort), {a, b});
}

const Term* TermGenerator::if_then_else() {
  const DataType* sort = any_sort();
  const Term* condition = argument(mgr_.get_bool_type());
  if (sort == mgr_.get_bool_type())
    return mgr_.make_ite(condition, argument(sort), argument(sort));
  if (sort != mgr_.get_real_type())
    return mgr_.make_term(mgr_.get_ite_symbol(sort), {condition, argument(sort), argument(sort)});
  const auto [a, b] = two_reals();
  return mgr_.make_term(mgr_.get_ite_symbol(sort), {condition, a, b});
}

const Term* TermGenerator::integer_operation() {
  const Term* a = argument(mgr_.get_int_type());
  const Term* b = argument(mgr_.get_int_type());
  switch (pick(3)) {
    case 0:
      return mgr_.make_plus(a, b);
    case 1:
      return mgr_.make_times(a, b);
    default:
      return mgr_.make_leq(a, b);
  }
}

const Term* TermGenerator::real_operation() {
  const auto [a, b] = two_reals();
  switch (pick(3)) {
    case 0:
      return mgr_.make_term(mgr_.get_real_plus_symbol(), {a, b});
    case 1:
      return mgr_.make_term(mgr_.get_real_times_symbol(), {a, b});
    default:
      return mgr_.make_term(mgr_.get_real_leq_symbol(), {a, b});
  }
}

const Term* TermGenerator::floor() {
  return mgr_.make_floor(real_argument());
}

const Term* TermGenerator::congruence() {
  const QNumber modulus(any_natural() + 1, 1);
  const Term* a = argument(mgr_.get_int_type());
  return mgr_.make_int_modular_congruence(modulus, a, argument(mgr_.get_int_type()));
}

const Term* TermGenerator::bit_vector_unary() {
  const Term* a = bit_vector();
  return pick(2) == 0 ? mgr_.make_bvnot(a) : mgr_.make_bvneg(a);
}

const Term* TermGenerator::bit_vector_binary() {
  const DataType* sort = any_of(bit_vectors_);
  const Term* a = argument(sort);
  const Term* b = argument(sort);
  const std::size_t chosen = pick(binary_builders.size() + 1);
  if (chosen == binary_builders.size())
    return mgr_.make_bvashr(a, b);
  return (mgr_.*binary_builders[chosen])(a, b);
}

/// Concatenation and what has indices.
const Term* TermGenerator::bit_vector_structure() {
  const Term* a = bit_vector();
  const std::size_t width = a->sort()->width();
  switch (pick(6)) {
    case 0: {
      const Term* b = bit_vector();
      return width + b->sort()->width() > widest ? mgr_.make_bvnot(a) : mgr_.make_concat(a, b);
    }
    case 1: {
      const std::size_t high = pick(width);
      return mgr_.make_extract(high, pick(high + 1), a);
    }
    case 2:
      return mgr_.make_rotate_left(pick(2 * width), a);
    case 3:
      return mgr_.make_rotate_right(pick(2 * width), a);
    case 4:
      return mgr_.make_zero_extend(pick(20), a);
    default:
      return mgr_.make_sign_extend(pick(20), a);
  }
}

const Term* TermGenerator::array_access() {
  const DataType* sort = any_of(arrays_);
  const auto component = [&](std::size_t i) {
    const DataType* wanted = sort->get_component(i);
    return wanted == mgr_.get_real_type() ? real_argument() : argument(wanted);
  };
  const Term* array = argument(sort);
  const Term* index = component(0);
  return pick(2) == 0 ? mgr_.make_select(array, index)
                      : mgr_.make_store(array, index, component(1));
}

const Term* TermGenerator::application() {
  const Symbol* function = functions_[pick(functions_.size())];
  std::vector<const Term*> arguments;
  for (std::size_t i = 1; i <= function->arity; ++i) {
    const DataType* sort = function->type->get_component(i);
    arguments.push_back(sort == mgr_.get_real_type() ? real_argument() : argument(sort));
  }
  return mgr_.make_term(function, arguments);
}

// Formulas.

void TermGenerator::add(const Term* term) {
  made_.push_back(term);
  made_of_sort_[term->sort()].push_back(term);
}

const Term* TermGenerator::formula(std::size_t size) {
  for (auto& [sort, terms] : made_of_sort_)
    terms.clear();
  made_.clear();
  used_.clear(false);
  for (std::size_t i = 0; i < size; ++i)
    add((this->*operations_[pick(operations_.size())])());
  std::vector<const Term*> parts;
  for (const Term* term : made_) {
    if (used_.insert(term).second)
      parts.push_back(as_formula(term));
  }
  return parts.empty() ? leaf(mgr_.get_bool_type()) : join(std::move(parts));
}

/// Gives a formula that holds the term.
const Term* TermGenerator::as_formula(const Term* term) {
  const DataType* sort = term->sort();
  if (sort == mgr_.get_bool_type())
    return term;
  return mgr_.make_equal(term, constant(sort));
}

const Term* TermGenerator::join(std::vector<const Term*> parts) {
  while (parts.size() > 1) {
    const Term* b = parts.back();
    parts.pop_back();
    const Term*& a = parts[pick(parts.size())];
    switch (pick(3)) {
      case 0:
        a = mgr_.make_and(a, b);
        break;
      case 1:
        a = mgr_.make_or(b, a);
        break;
      default:
        a = mgr_.make_iff(a, b);
    }
  }
  return parts.front();
}

}  // namespace brum::testing
