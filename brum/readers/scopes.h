#ifndef BRUM_READERS_SCOPES_H
#define BRUM_READERS_SCOPES_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "brum/readers/definitions.h"
#include "brum/readers/names.h"
#include "brum/readers/term_builder.h"
#include "brum/utils/hash_containers.h"
#include "brum/utils/large_array.h"

namespace brum {

/// What a name stands for among sorts.
struct SortBinding {
  enum class Kind : std::uint8_t {
    none,
    sort,
    family,      // declared with parameters: a sort for each list of these
    definition,  // with parameters; its body holds sorts that stand for them
    array,
    bit_vector,
    refused,
  };

  Kind kind = Kind::none;
  const DataType* sort = nullptr;  // of a definition its body
  std::size_t num_parameters = 0;
  const char* reason = nullptr;  // of a sort that cannot be held: what it belongs to
};

/// What the names of a script mean at one place of it: declarations and definitions, which push and
/// pop bring and take, and within a term let variables and parameters.
///
/// Binding, covering and uncovering a name each cost one step.
class Scopes {
 public:
  Scopes(NameTable& names, TermBuilder& builder);
  Scopes(const Scopes&) = delete;
  Scopes& operator=(const Scopes&) = delete;

  // Names of terms.

  /// Declares a constant (no arguments) or a function. Throws TermManager::error when the name is
  /// taken. The manager may know the name under another sort, from a scope that has ended; the
  /// symbol then gets the name with a suffix.
  const Symbol* declare(Name& name, const std::vector<const DataType*>& arguments,
                        const DataType* result);

  /// Gives a symbol of the name with a suffix, which no other name has; always the same one.
  const Symbol* renamed_symbol(const Name& name, const DataType* type);

  /// Lets a name stand for a definition. Throws TermManager::error when the name is taken.
  void define(Name& name, Definition definition);

  /// Does the same in the middle of a term, where covered names lie above. The definition stays
  /// when they are uncovered; end_term() must be called when the term is over.
  void define_within_term(Name& name, Definition definition);
  void end_term();

  /// Throws TermManager::error when a declaration or definition of this name is not allowed now.
  void require_free(const Name& name) const;

  /// Covers a name within a term; uncover() takes back the last `count` of these.
  void cover(Name& name, Value value);
  void uncover(std::size_t count);

  // Names of sorts.

  SortBinding find_sort(const Name& name) const;
  void declare_sort(Name& name, const DataType* sort);
  void declare_sort_family(Name& name, std::size_t num_parameters);
  void define_sort(Name& name, std::size_t num_parameters, const DataType* body);

  /// Lets names stand for sorts within a definition; uncover_sorts() takes back the last `count`.
  void cover_sort(Name& name, const DataType* sort);
  void uncover_sorts(std::size_t count);

  // Levels.

  void push(std::size_t count);

  /// Throws TermManager::error when there are fewer levels.
  void pop(std::size_t count);

  /// Makes declarations and definitions outlive the level in which they stand.
  void set_global_declarations(bool global) { global_declarations_ = global; }

  /// Ends all levels and, unless declarations are global, forgets everything that was declared.
  void reset_assertions();

  /// Forgets everything.
  void reset();

 private:
  struct Level {
    std::size_t covered;
    std::size_t covered_sorts;
  };

  /// A name and what it stood for before.
  struct Covered {
    Name* name;
    Binding binding;
  };

  Binding binding_of(Definition definition);
  void bind(Name& name, const Binding& binding);
  void bind_sort(Name& name, const SortBinding& binding);
  void undo_to(Level level);
  const Symbol* symbol_for(Name& name, const DataType* type);

  struct NameAndType {
    const Name* name;
    const DataType* type;
    bool operator==(const NameAndType&) const = default;
  };
  struct HashNameAndType {
    std::uint64_t operator()(const NameAndType& key) const;
  };

  TermBuilder& builder_;
  LargeList<Covered> covered_;
  std::vector<std::pair<const Name*, SortBinding>> covered_sorts_;
  hsh::HashMap<const Name*, SortBinding> sorts_;
  std::vector<Level> levels_;
  std::vector<std::unique_ptr<Definition>> definitions_;
  std::vector<Name*> names_of_term_;       // bound by define_within_term()
  std::vector<Name*> global_names_;        // to be forgotten at reset()
  std::vector<const Name*> global_sorts_;  // likewise
  hsh::HashMap<NameAndType, const Symbol*, HashNameAndType> renamed_;
  hsh::HashSet<const Symbol*> renamed_symbols_;
  bool global_declarations_ = false;
};

}  // namespace brum

#endif  // BRUM_READERS_SCOPES_H
