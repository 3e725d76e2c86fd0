#ifndef BRUM_TESTS_SUPPORT_RANDOM_TERMS_H
#define BRUM_TESTS_SUPPORT_RANDOM_TERMS_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "brum/terms/term_manager.h"

namespace brum::testing {

/// Which terms a text can hold so that reading it gives them again.
enum class RandomTheory : std::uint8_t {
  mixed,      // integers and reals: no integral numeral of sort Real, which would come back as Int
  real,       // reals only, any numeral
  version_1,  // as mixed, without what version 1.2 cannot write or does not tell apart
};

/**
 * Makes random terms over every operation of the store, the same ones for the same seed on every
 * machine. Arguments are picked among the terms made before, recent ones more often, so that terms
 * are shared and grow deep.
 *
 *     RandomTerms terms(mgr, RandomTheory::mixed, 42);
 *     const Term* formula = terms.make_formula(1000);
 */
class RandomTerms {
 public:
  RandomTerms(TermManager& mgr, RandomTheory theory, std::uint32_t seed);

  /// Gives a conjunction that mentions `count` new random terms, each in a place of its own: it is
  /// read back as the same term only if all of them are.
  const Term* make_formula(std::size_t count);

  /// The logic in which the formulas are to be printed and read.
  const char* logic() const;

  /// The uninterpreted sorts that are used.
  const std::vector<const DataType*>& uninterpreted_sorts() const { return uninterpreted_; }

 private:
  using Pool = std::pair<const DataType*, std::vector<const Term*>>;

  std::size_t below(std::size_t bound) { return generator_() % bound; }
  bool chance(std::size_t one_in) { return below(one_in) == 0; }

  void add_sorts();
  void add_constants();
  void add_functions();
  std::string new_name();
  std::vector<const Term*>& pool(const DataType* sort);
  const Term* add(const Term* term);
  const Term* pick(const DataType* sort);
  const Term* pick_number();
  const Term* pick_bv();
  const Term* pick_array();
  QNumber random_integer();

  const Term* make_term();
  const Term* make_core();
  const Term* make_arithmetic();
  const Term* make_numeral();
  const Term* make_bv_binary();
  const Term* make_bv_other();
  const Term* make_array_or_function();
  const Term* make_equality();

  TermManager& mgr_;
  RandomTheory theory_;
  std::mt19937 generator_;
  std::vector<const DataType*> uninterpreted_;
  std::vector<const DataType*> bit_vectors_;
  std::vector<const DataType*> arrays_;
  std::vector<const DataType*> sorts_;  // all
  std::vector<const Symbol*> functions_;
  std::vector<Pool> pools_;
  std::size_t names_ = 0;
};

}  // namespace brum::testing

#endif
