#ifndef BRUM_CAPI_SORTS_H
#define BRUM_CAPI_SORTS_H

/*
 * Sorts and symbols. How errors are told and who owns what: see brum_manager in base.h.
 */

#include "brum/capi/base.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A sort, and a symbol: what stands at the head of a term. Both belong to their manager. */
typedef struct brum_sort brum_sort;
typedef struct brum_symbol brum_symbol;

typedef enum brum_sort_kind {
  BRUM_SORT_NONE = 0, /* of a null sort */
  BRUM_SORT_BOOL = 1,
  BRUM_SORT_INT = 2,
  BRUM_SORT_REAL = 3,
  BRUM_SORT_BIT_VECTOR = 4,
  BRUM_SORT_ARRAY = 5,
  BRUM_SORT_UNINTERPRETED = 6,
  BRUM_SORT_FUNCTION = 7
} brum_sort_kind;

/* Give the built-in sorts. Null on failure, as all functions here that return a handle. */
BRUM_EXPORT const brum_sort* brum_bool_sort(brum_manager* manager) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_sort* brum_int_sort(brum_manager* manager) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_sort* brum_real_sort(brum_manager* manager) BRUM_NOEXCEPT;

/* Gives the sort of bit-vectors of `width` bits, at least 1. */
BRUM_EXPORT const brum_sort* brum_bv_sort(brum_manager* manager, size_t width) BRUM_NOEXCEPT;

/* Gives the sort of arrays from `index` to `element`. */
BRUM_EXPORT const brum_sort* brum_array_sort(brum_manager* manager, const brum_sort* index,
                                             const brum_sort* element) BRUM_NOEXCEPT;

/* Gives the uninterpreted sort of this name; the name is copied. */
BRUM_EXPORT const brum_sort* brum_uninterpreted_sort(brum_manager* manager,
                                                     const char* name) BRUM_NOEXCEPT;

/* Gives the type of functions from `count` argument sorts, at least one, to `result`. */
BRUM_EXPORT const brum_sort* brum_function_sort(brum_manager* manager,
                                                const brum_sort* const* arguments, size_t count,
                                                const brum_sort* result) BRUM_NOEXCEPT;

/* Gives the kind of a sort. */
BRUM_EXPORT brum_sort_kind brum_sort_get_kind(const brum_sort* sort) BRUM_NOEXCEPT;

/* Gives the width in bits of a bit-vector sort, 0 for any other and for null. */
BRUM_EXPORT size_t brum_sort_width(const brum_sort* sort) BRUM_NOEXCEPT;

/* Gives the number of component sorts: 2 for an array (index, element), 1 + number of arguments for
   a function type (result, arguments), else 0. */
BRUM_EXPORT size_t brum_sort_num_components(const brum_sort* sort) BRUM_NOEXCEPT;

/* Gives component `i`, null when there is none. */
BRUM_EXPORT const brum_sort* brum_sort_component(const brum_sort* sort, size_t i) BRUM_NOEXCEPT;

/* Appends the sort to `buffer` as SMT-LIB 2.6 writes it, an uninterpreted sort by its own name, not
   quoted. The buffer is as it was when that fails. */
BRUM_EXPORT brum_status brum_sort_text(const brum_sort* sort, brum_buffer* buffer) BRUM_NOEXCEPT;

/* Gives the user's constant, function or predicate `name` (any bytes), declared at the first call.
   A second declaration under another sort is an error. The name is copied. */
BRUM_EXPORT const brum_symbol* brum_declare(brum_manager* manager, const char* name,
                                            const brum_sort* sort) BRUM_NOEXCEPT;

/* Gives the name that the symbol was declared under, or an operator's own; "" for null. It holds as
   long as the manager. */
BRUM_EXPORT const char* brum_symbol_name(const brum_symbol* symbol) BRUM_NOEXCEPT;

/* Gives the number of arguments; 0 for a constant and for null. */
BRUM_EXPORT size_t brum_symbol_arity(const brum_symbol* symbol) BRUM_NOEXCEPT;

/* Gives the sort of a constant, the function type of anything else; null for null. */
BRUM_EXPORT const brum_sort* brum_symbol_sort(const brum_symbol* symbol) BRUM_NOEXCEPT;

/* Gives 1 for a symbol with a meaning of its own (an operator, a number), 0 for the user's and for
   null. */
BRUM_EXPORT int brum_symbol_is_interpreted(const brum_symbol* symbol) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_SORTS_H */
