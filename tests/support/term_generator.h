#ifndef BRUM_TESTS_SUPPORT_TERM_GENERATOR_H
#define BRUM_TESTS_SUPPORT_TERM_GENERATOR_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "brum/terms/term_manager.h"
#include "brum/utils/hash_containers.h"

namespace brum::testing {

/// What random terms may hold. By default all that a store can, but for what a printer's text does
/// not tell apart: integral numerals of sort Real, which look like those of sort Int.
struct TermGeneratorOptions {
  bool integers = true;
  bool reals = true;
  bool bit_vectors = true;
  bool arrays = true;
  bool sorts = true;      // uninterpreted ones
  bool functions = true;  // uninterpreted ones

  /// Arrays of all sorts, nested ones too; else those that SMT-LIB 1.2 has a name for.
  bool all_arrays = true;

  /// Functions with arguments of sort Bool, which SMT-LIB 1.2 lacks.
  bool boolean_arguments = true;

  /// Numerals of sort Real that are integers.
  bool integral_reals = false;

  /// `+ * <= = ite` over Real all of whose arguments are Int.
  bool real_operators_over_integers = true;

  /// Names of any bytes that the printers can write so that they stand for themselves; else x0, f1.
  bool arbitrary_names = false;

  /// Of the arbitrary names also those that no text tells apart or that end a text early.
  bool unwritable_names = false;

  /// Names are to be writable in version 1.2 without being rewritten.
  bool v1_names = false;

  /// What a version 1 printer can print and a reader reads back as the same.
  static TermGeneratorOptions for_version_1();

  /// What reads back under a logic whose numerals are real.
  static TermGeneratorOptions for_real_logic();
};

/// Makes random well-sorted terms out of every operation of a TermManager.
///
/// The same seed and options give the same terms on every machine, in managers of one history.
/// Sorts and symbols are chosen once, for all terms of one generator.
class TermGenerator {
 public:
  /// Gives a number from 0 up to but not its argument; it must not go on giving the same one.
  using Choice = std::function<std::uint64_t(std::uint64_t bound)>;

  /// Takes its choices from a random sequence. `manager` must outlive the generator.
  TermGenerator(TermManager& manager, std::uint64_t seed, const TermGeneratorOptions& options = {});

  /// Takes its choices from `choice`.
  TermGenerator(TermManager& manager, Choice choice, const TermGeneratorOptions& options = {});

  /// Gives a formula that holds `size` random applications, and as many more as it takes to put
  /// them into one formula. Applications refer to earlier ones of the same formula, often to the
  /// same one several times, and to constants and numerals.
  const Term* formula(std::size_t size);

  /// Gives a random number from 0 up to but not `bound`.
  std::size_t pick(std::size_t bound) { return static_cast<std::size_t>(choice_(bound)); }

 private:
  using Operation = const Term* (TermGenerator::*)();
  using BitVectorBuilder = const Term* (TermManager::*)(const Term*, const Term*);

  // Sorts and symbols.
  void choose_sorts();
  void choose_operations();
  void choose_functions();
  std::string name(char prefix);
  std::string arbitrary_name();
  bool is_writable(const std::string& name);
  const DataType* any_sort();
  const DataType* any_of(const std::vector<const DataType*>& sorts) {
    return sorts[pick(sorts.size())];
  }

  // Arguments.
  const Term* argument(const DataType* sort);
  const Term* earlier(const DataType* sort);
  const Term* leaf(const DataType* sort);
  const Term* constant(const DataType* sort);
  const Term* numeral(const DataType* sort);
  const Term* bit_vector_numeral(std::size_t width);
  const Term* real_argument();
  std::pair<const Term*, const Term*> two_reals();
  const Term* bit_vector() { return argument(any_of(bit_vectors_)); }
  mpz_class any_natural();

  // Operations.
  const Term* connective();
  const Term* equality();
  const Term* if_then_else();
  const Term* integer_operation();
  const Term* real_operation();
  const Term* floor();
  const Term* congruence();
  const Term* bit_vector_unary();
  const Term* bit_vector_binary();
  const Term* bit_vector_structure();
  const Term* array_access();
  const Term* application();

  // Formulas.
  void add(const Term* term);
  const Term* as_formula(const Term* term);
  const Term* join(std::vector<const Term*> parts);

  TermManager& mgr_;
  TermGeneratorOptions options_;
  Choice choice_;

  std::vector<const DataType*> sorts_;        // of all kinds
  std::vector<const DataType*> bit_vectors_;  // of the sorts
  std::vector<const DataType*> arrays_;       // of the sorts
  std::vector<Operation> operations_;
  std::vector<const Symbol*> functions_;
  hsh::HashMap<const DataType*, std::vector<const Term*>> constants_;
  TermManager names_;  // every name that was given
  std::size_t num_names_ = 0;

  // Of the formula being made.
  hsh::HashMap<const DataType*, std::vector<const Term*>> made_of_sort_;
  std::vector<const Term*> made_;
  hsh::HashSet<const Term*> used_;
};

}  // namespace brum::testing

#endif  // BRUM_TESTS_SUPPORT_TERM_GENERATOR_H
