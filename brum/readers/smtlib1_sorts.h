#ifndef BRUM_READERS_SMTLIB1_SORTS_H
#define BRUM_READERS_SMTLIB1_SORTS_H

#include <string>
#include <string_view>

#include "brum/readers/smtlib1_lexer.h"
#include "brum/readers/term_builder.h"
#include "brum/utils/hash_containers.h"

namespace brum {

/// Knows the sorts of a benchmark: those that it declares, and those of the theories.
///
/// `Array` is an array from Int to Int, but in a logic of arrays without arithmetic and bit-vectors
/// (QF_AX) one from `Index` to `Element`. `Array[i:e]` is one of bit-vectors of i and e bits;
/// `Array1` is one from Int to Real, `Array2` one from Int to `Array1`. `U`, `Index` and `Element`
/// are uninterpreted sorts, which the theories of some logics have.
class SmtLib1Sorts {
 public:
  explicit SmtLib1Sorts(TermBuilder& builder) : builder_(builder) {}

  /// Declares a sort under a name, as written with its indices if it has any. Throws
  /// TermManager::error when the name is taken.
  void declare(std::string_view name, const DataType* sort);

  /// Gives the sort that the token read last, a symbol, denotes. Throws ReadError when it is none.
  const DataType* parse(SmtLib1Lexer& lexer) const;

 private:
  const DataType* find(const Token& token) const;
  const DataType* indexed(const Token& token) const;
  const DataType* array() const;
  const DataType* of_theory(const std::string& name) const;

  TermBuilder& builder_;
  hsh::HashMap<std::string, const DataType*> declared_;
};

}  // namespace brum

#endif  // BRUM_READERS_SMTLIB1_SORTS_H
