#include "tests/support/random_terms.h"

#include <algorithm>
#include <array>

namespace brum::testing {

namespace {

using BvOperation = const Term* (TermManager::*)(const Term*, const Term*);

constexpr std::array<BvOperation, 18> bv_operations{
    &TermManager::make_bvand,  &TermManager::make_bvor,   &TermManager::make_bvxor,
    &TermManager::make_bvult,  &TermManager::make_bvslt,  &TermManager::make_bvule,
    &TermManager::make_bvsle,  &TermManager::make_bvcomp, &TermManager::make_bvadd,
    &TermManager::make_bvsub,  &TermManager::make_bvmul,  &TermManager::make_bvudiv,
    &TermManager::make_bvsdiv, &TermManager::make_bvurem, &TermManager::make_bvsrem,
    &TermManager::make_bvshl,  &TermManager::make_bvlshr, &TermManager::make_bvashr,
};

// Widths are kept up to this, so that concatenations do not grow without bound.
constexpr std::size_t largest_width = 80;

}  // namespace

RandomTerms::RandomTerms(TermManager& mgr, RandomTheory theory, std::uint32_t seed)
    : mgr_(mgr), theory_(theory), generator_(seed) {
  add_sorts();
  add_functions();
  add_constants();
}

const char* RandomTerms::logic() const {
  return theory_ == RandomTheory::real ? "QF_AUFBVNRA" : "QF_AUFBVNIRA";
}

void RandomTerms::add_sorts() {
  uninterpreted_ = {mgr_.make_uninterpreted_type("first sort"),
                    mgr_.make_uninterpreted_type("|second\\sort")};
  for (const std::size_t width : {1U, 3U, 8U, 33U, 64U}) {
    bit_vectors_.push_back(mgr_.make_bv_type(width));
  }
  arrays_.push_back(mgr_.make_array_type(bit_vectors_[2], bit_vectors_[1]));
  if (theory_ != RandomTheory::real) {
    arrays_.push_back(mgr_.make_array_type(mgr_.get_int_type(), mgr_.get_int_type()));
  }
  if (theory_ != RandomTheory::version_1) {
    arrays_.push_back(mgr_.make_array_type(uninterpreted_[0], mgr_.get_real_type()));
    arrays_.push_back(mgr_.make_array_type(mgr_.get_real_type(), arrays_[0]));
    arrays_.push_back(mgr_.make_array_type(uninterpreted_[1], mgr_.get_bool_type()));
  }
  sorts_ = {mgr_.get_bool_type(), mgr_.get_real_type()};
  if (theory_ != RandomTheory::real) {
    sorts_.push_back(mgr_.get_int_type());
  }
  sorts_.insert(sorts_.end(), uninterpreted_.begin(), uninterpreted_.end());
  sorts_.insert(sorts_.end(), bit_vectors_.begin(), bit_vectors_.end());
  sorts_.insert(sorts_.end(), arrays_.begin(), arrays_.end());
}

/// Gives a name that is not given twice, an odd one now and then.
std::string RandomTerms::new_name() {
  const std::string number = std::to_string(++names_);
  if (theory_ == RandomTheory::version_1 || !chance(4)) {
    return "n" + number;
  }
  static const std::array<std::string, 7> beginnings{"a b",   "0",    "\xC3\xA9", "\n\t;\"(",
                                                     ".def_", "#x1:", "let "};
  return beginnings[below(beginnings.size())] + number;
}

void RandomTerms::add_functions() {
  const std::size_t first = theory_ == RandomTheory::version_1 ? 1 : 0;  // no Bool arguments
  for (int i = 0; i < 12; ++i) {
    std::vector<const DataType*> arguments(1 + below(3));
    for (const DataType*& sort : arguments) {
      sort = sorts_[first + below(sorts_.size() - first)];
    }
    const DataType* result = sorts_[below(sorts_.size())];
    functions_.push_back(mgr_.declare(new_name(), mgr_.make_function_type(arguments, result)));
  }
}

void RandomTerms::add_constants() {
  add(mgr_.make_true());
  add(mgr_.make_false());
  for (const DataType* sort : sorts_) {
    for (int i = 0; i < 3; ++i) {
      add(mgr_.make_term(mgr_.declare(new_name(), sort)));
    }
  }
}

std::vector<const Term*>& RandomTerms::pool(const DataType* sort) {
  const auto found = std::find_if(pools_.begin(), pools_.end(),
                                  [sort](const Pool& entry) { return entry.first == sort; });
  if (found != pools_.end()) {
    return found->second;
  }
  pools_.push_back({sort, {}});
  return pools_.back().second;
}

const Term* RandomTerms::add(const Term* term) {
  pool(term->sort()).push_back(term);
  return term;
}

const Term* RandomTerms::pick(const DataType* sort) {
  const std::vector<const Term*>& terms = pool(sort);
  const std::size_t recent = std::min<std::size_t>(terms.size(), 8);
  return chance(2) ? terms[terms.size() - 1 - below(recent)] : terms[below(terms.size())];
}

/// A Real or an Int; version 1 does not tell a real operator over two integers from one over Int.
const Term* RandomTerms::pick_number() {
  const bool is_int = theory_ != RandomTheory::real && chance(2);
  return pick(is_int ? mgr_.get_int_type() : mgr_.get_real_type());
}

const Term* RandomTerms::pick_bv() {
  return pick(bit_vectors_[below(bit_vectors_.size())]);
}

const Term* RandomTerms::pick_array() {
  return pick(arrays_[below(arrays_.size())]);
}

QNumber RandomTerms::random_integer() {
  if (chance(8)) {
    const mpz_class power = mpz_class(1) << (30 + below(100));
    return {chance(2) ? power : -power, 1};
  }
  return static_cast<std::int64_t>(below(2000)) - 1000;
}

const Term* RandomTerms::make_formula(std::size_t count) {
  std::vector<const Term*> parts;
  for (std::size_t i = 0; i < count; ++i) {
    const Term* term = add(make_term());
    if (term->sort() != mgr_.get_bool_type()) {
      // An equality with a constant of the sort, which is no part of other random terms.
      term = mgr_.make_equal(term, pool(term->sort()).front());
    }
    parts.push_back(term);
  }
  while (parts.size() > 1) {
    std::vector<const Term*> joined;
    for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
      joined.push_back(mgr_.make_and(parts[i], parts[i + 1]));
    }
    if (parts.size() % 2 == 1) {
      joined.push_back(parts.back());
    }
    parts.swap(joined);
  }
  return parts.front();
}

const Term* RandomTerms::make_term() {
  switch (below(8)) {
    case 0:
      return make_core();
    case 1:
    case 2:
      return make_arithmetic();
    case 3:
      return make_bv_binary();
    case 4:
    case 5:
      return make_bv_other();
    case 6:
      return make_array_or_function();
    default:
      return make_equality();
  }
}

const Term* RandomTerms::make_core() {
  const DataType* boolean = mgr_.get_bool_type();
  switch (below(4)) {
    case 0:
      return mgr_.make_not(pick(boolean));
    case 1:
      return mgr_.make_and(pick(boolean), pick(boolean));
    case 2:
      return mgr_.make_or(pick(boolean), pick(boolean));
    default:
      return mgr_.make_iff(pick(boolean), pick(boolean));
  }
}

const Term* RandomTerms::make_numeral() {
  const QNumber integer = random_integer();
  if (theory_ == RandomTheory::real) {
    const QNumber value = chance(2) ? integer : integer / QNumber(7);
    return mgr_.make_number(value, mgr_.get_real_type());
  }
  return mgr_.make_number(chance(2) ? integer : integer / QNumber(7));
}

const Term* RandomTerms::make_arithmetic() {
  const bool has_integers = theory_ != RandomTheory::real;
  const DataType* real = mgr_.get_real_type();
  const DataType* number = has_integers && chance(2) ? mgr_.get_int_type() : real;
  const bool real_over_any = theory_ == RandomTheory::mixed && chance(4);
  const auto apply = [&](const Symbol* symbol) {
    return mgr_.make_term(symbol, {pick_number(), pick_number()});
  };
  switch (below(has_integers ? 6 : 4)) {
    case 0:
      return make_numeral();
    case 1:
      return real_over_any ? apply(mgr_.get_real_plus_symbol())
                           : mgr_.make_plus(pick(number), pick_number());
    case 2:
      return real_over_any ? apply(mgr_.get_real_times_symbol())
                           : mgr_.make_times(pick_number(), pick(number));
    case 3:
      return real_over_any ? apply(mgr_.get_real_leq_symbol())
                           : mgr_.make_leq(pick_number(), pick_number());
    case 4:
      return mgr_.make_floor(pick_number());
    default:
      return mgr_.make_int_modular_congruence(abs(random_integer()) + QNumber(1),
                                              pick(mgr_.get_int_type()), pick(mgr_.get_int_type()));
  }
}

const Term* RandomTerms::make_bv_binary() {
  const DataType* sort = bit_vectors_[below(bit_vectors_.size())];
  return (mgr_.*bv_operations[below(bv_operations.size())])(pick(sort), pick(sort));
}

const Term* RandomTerms::make_bv_other() {
  const Term* a = pick_bv();
  const std::size_t width = a->sort()->width();
  const std::size_t room = largest_width - width;
  const auto known = [this](const Term* term) {
    if (std::find(bit_vectors_.begin(), bit_vectors_.end(), term->sort()) == bit_vectors_.end()) {
      bit_vectors_.push_back(term->sort());
    }
    return term;
  };
  switch (below(9)) {
    case 0:
      return mgr_.make_bvnot(a);
    case 1:
      return mgr_.make_bvneg(a);
    case 2:
      return mgr_.make_rotate_left(below(2 * width), a);
    case 3:
      return mgr_.make_rotate_right(below(2 * width), a);
    case 4:
      return known(mgr_.make_zero_extend(below(room + 1), a));
    case 5:
      return known(mgr_.make_sign_extend(below(room + 1), a));
    case 6: {
      const std::size_t low = below(width);
      return known(mgr_.make_extract(low + below(width - low), low, a));
    }
    case 7: {
      const Term* b = pick_bv();
      return b->sort()->width() <= room ? known(mgr_.make_concat(a, b)) : mgr_.make_bvnot(a);
    }
    default: {
      mpz_class value = 0;
      for (std::size_t bit = 0; bit < width; ++bit) {
        value = value * 2 + static_cast<int>(below(2));
      }
      return mgr_.make_bv_number(QNumber(value, 1), width);
    }
  }
}

const Term* RandomTerms::make_array_or_function() {
  const auto argument = [this](const DataType* sort) {
    const bool may_be_int = sort == mgr_.get_real_type() && theory_ != RandomTheory::real;
    return may_be_int ? pick_number() : pick(sort);
  };
  if (chance(2)) {
    const Symbol* function = functions_[below(functions_.size())];
    std::vector<const Term*> arguments;
    for (std::size_t i = 0; i < function->arity; ++i) {
      arguments.push_back(argument(function->type->get_component(i + 1)));
    }
    return mgr_.make_term(function, arguments);
  }
  const Term* array = pick_array();
  const Term* index = argument(array->sort()->get_component(0));
  if (chance(2)) {
    return mgr_.make_select(array, index);
  }
  return mgr_.make_store(array, index, argument(array->sort()->get_component(1)));
}

const Term* RandomTerms::make_equality() {
  const DataType* sort = sorts_[below(sorts_.size())];
  const bool is_number = sort == mgr_.get_int_type() || sort == mgr_.get_real_type();
  const Term* a = is_number ? pick_number() : pick(sort);
  const Term* b = is_number ? pick_number() : pick(sort);
  const Term* condition = pick(mgr_.get_bool_type());
  const bool real_over_any = is_number && theory_ == RandomTheory::mixed && chance(4);
  if (chance(2)) {
    return real_over_any ? mgr_.make_term(mgr_.get_equality_symbol(mgr_.get_real_type()), {a, b})
                         : mgr_.make_equal(a, b);
  }
  return real_over_any
             ? mgr_.make_term(mgr_.get_ite_symbol(mgr_.get_real_type()), {condition, a, b})
             : mgr_.make_ite(condition, a, b);
}

}  // namespace brum::testing
