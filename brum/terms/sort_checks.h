#ifndef BRUM_TERMS_SORT_CHECKS_H
#define BRUM_TERMS_SORT_CHECKS_H

#include <cstddef>
#include <string_view>

#include "brum/terms/term.h"

namespace brum {

/// True when a term of sort `given` may stand where `wanted` is asked for.
inline bool fits(const DataType* given, const DataType* wanted) {
  return given == wanted ||
         (wanted->kind() == DataType::Kind::real && given->kind() == DataType::Kind::integer);
}

/// True for Int and Real.
inline bool is_number(const DataType* sort) {
  return sort->kind() == DataType::Kind::integer || sort->kind() == DataType::Kind::real;
}

// Checks that the builders of TermManager share. Each throws TermManager::error with a message that
// begins with `builder`, the name of the operator being built.

/// Throw for a term that is null, or for one of another sort than `wanted`, which is a sort or says
/// which sorts would do.
[[noreturn]] void refuse_null(std::string_view builder);
[[noreturn]] void refuse_sort(std::string_view builder, const Term* term, const DataType* wanted);
[[noreturn]] void refuse_sort(std::string_view builder, const Term* term, std::string_view wanted);

/// Checks that `term` is not null.
inline void require_term(std::string_view builder, const Term* term) {
  if (term == nullptr) {
    refuse_null(builder);
  }
}

/// Checks that `term` has sort `sort`, or sort Int where Real is wanted.
inline void require_sort(std::string_view builder, const Term* term, const DataType* sort) {
  require_term(builder, term);
  if (!fits(term->sort(), sort)) {
    refuse_sort(builder, term, sort);
  }
}

/// Checks that `term` is an Int or a Real.
inline void require_number(std::string_view builder, const Term* term) {
  require_term(builder, term);
  if (!is_number(term->sort())) {
    refuse_sort(builder, term, "Int or Real");
  }
}

/// Checks that `term` is a bit-vector; gives its width in bits.
inline std::size_t require_bv(std::string_view builder, const Term* term) {
  require_term(builder, term);
  if (term->sort()->kind() != DataType::Kind::bit_vector) {
    refuse_sort(builder, term, "a bit-vector");
  }
  return term->sort()->width();
}

}  // namespace brum

#endif  // BRUM_TERMS_SORT_CHECKS_H
