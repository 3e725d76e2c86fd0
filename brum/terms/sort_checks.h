#ifndef BRUM_TERMS_SORT_CHECKS_H
#define BRUM_TERMS_SORT_CHECKS_H

#include <cstddef>
#include <string_view>

#include "brum/terms/term.h"

namespace brum {

/// Checks that the builders of TermManager share. Each throws TermManager::error with a message
/// that begins with `builder`, the name of the operator being built.

/// Checks that `term` is not null.
void require_term(std::string_view builder, const Term* term);

/// Checks that `term` has sort `sort`, or sort Int where Real is wanted.
void require_sort(std::string_view builder, const Term* term, const DataType* sort);

/// Checks that `term` is an Int or a Real.
void require_number(std::string_view builder, const Term* term);

/// Checks that `term` is a bit-vector; gives its width in bits.
std::size_t require_bv(std::string_view builder, const Term* term);

/// True when a term of sort `given` may stand where `wanted` is asked for.
inline bool fits(const DataType* given, const DataType* wanted) {
  return given == wanted ||
         (wanted->kind() == DataType::Kind::real && given->kind() == DataType::Kind::integer);
}

/// True for Int and Real.
inline bool is_number(const DataType* sort) {
  return sort->kind() == DataType::Kind::integer || sort->kind() == DataType::Kind::real;
}

}  // namespace brum

#endif  // BRUM_TERMS_SORT_CHECKS_H
