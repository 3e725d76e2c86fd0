#ifndef BRUM_TERMS_TERM_H
#define BRUM_TERMS_TERM_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "brum/terms/data_type.h"
#include "brum/terms/symbol_tag.h"
#include "brum/utils/export.h"
#include "brum/utils/hash_containers.h"

namespace brum {

class Term;

/// The head of a term: a constant, function, predicate, operator or numeral.
///
/// Made and owned by a TermManager; compared by address. Immutable.
class BRUM_EXPORT Symbol {
 public:
  Symbol& operator=(const Symbol&) = delete;

  /// The name under which the symbol was made, NUL-terminated. User symbols have the name they
  /// were declared under; interpreted symbols have names of their own, used in messages only.
  const char* name;

  /// The number of arguments; 0 for a constant.
  std::uint64_t arity;

  /// The sort of a constant; else a function type, whose component 0 is the result sort and
  /// component i + 1 the sort of argument i.
  const DataType* type;

  /// Gives the result sort; for a constant, its sort.
  const DataType* get_output_type() const { return arity == 0 ? type : type->get_component(0); }

  /// Gives the name with its length, without a scan for its end.
  std::string_view name_view() const { return {name, name_length_}; }

 private:
  friend class NumberSymbol;
  friend class SymbolFactory;
  friend class TermManager;
  friend class TermStore;
  Symbol(std::string_view name_text, std::uint64_t number_of_arguments, const DataType* sort,
         bool interpreted, bool numeral, SymbolTag::tag tag, bool at_home)
      : name(name_text.data()),
        arity(number_of_arguments),
        type(sort),
        name_length_(name_text.size() & most_length),
        tag_(tag),
        interpreted_(interpreted),
        numeral_(numeral),
        at_home_(at_home) {}
  Symbol(const Symbol&) = default;

  // A formula may have as many symbols as terms, so they are kept small. No name is longer than
  // addresses, which have 48 bits, can tell.
  static constexpr std::uint64_t most_length = (std::uint64_t{1} << 48U) - 1;

  std::uint64_t name_length_ : 48;
  SymbolTag::tag tag_ : 8;
  bool interpreted_ : 1;
  bool numeral_ : 1;
  bool at_home_ : 1;  // the sort is of the same manager

  // The term of a constant that is at home, as noted by the store of that manager.
  mutable const Term* constant_ = nullptr;
};

/// A node of the formula DAG: a symbol applied to terms.
///
/// Made and owned by a TermManager, which keeps each application once: two terms of one manager
/// are the same exactly when their addresses are. Immutable. A term's arguments have lower ids
/// than the term.
class BRUM_EXPORT Term {
 public:
  Term(const Term&) = delete;
  Term& operator=(const Term&) = delete;

  /// Unique within the manager; terms are numbered from 1 in the order in which they were made.
  std::uint64_t id;

  /// The head symbol.
  const Symbol* symbol;

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
  /// The arguments in order, as many as the symbol's arity.
  const Term* children[];
#pragma GCC diagnostic pop

  /// Gives the arguments as a range.
  std::span<const Term* const> arguments() const {
    return {static_cast<const Term* const*>(children), symbol->arity};
  }

  /// Gives the sort of the term.
  const DataType* sort() const {
    return symbol->get_output_type();
  }

 private:
  friend class TermStore;
  // cppcheck-suppress uninitMemberVarPrivate  ; the store writes the arguments behind the object
  Term(std::uint64_t number, const Symbol* head) : id(number), symbol(head) {}
};

namespace hsh {

/// Terms hash by their id, so that the order of a table does not depend on where terms lie.
template <>
struct hash<const Term*> {
  std::uint64_t operator()(const Term* term) const { return term->id; }
};

}  // namespace hsh

}  // namespace brum

#endif  // BRUM_TERMS_TERM_H
