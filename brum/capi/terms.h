#ifndef BRUM_CAPI_TERMS_H
#define BRUM_CAPI_TERMS_H

/*
 * Terms: constants, applications, Booleans, arithmetic and arrays. Bit-vectors are in
 * bit_vectors.h.
 *
 * Every builder gives a term of the manager, or null on failure (see brum_manager in base.h). Terms
 * are built exactly as asked for: nothing is simplified, reordered or flattened, and the same
 * operator and arguments always give the same pointer. An Int argument is accepted wherever a Real
 * is wanted. Operators mean what SMT-LIB 2.6 says of the operator of that name.
 */

#include "brum/capi/sorts.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A term; a formula is a term of sort Bool. Belongs to its manager. */
typedef struct brum_term brum_term;

/* Declares `name` as brum_declare() does, with a sort that is no function type, and gives the term.
 */
BRUM_EXPORT const brum_term* brum_constant(brum_manager* manager, const char* name,
                                           const brum_sort* sort) BRUM_NOEXCEPT;

/* Applies `symbol` to `count` arguments, which must be its arity; `arguments` may be null for none.
 */
BRUM_EXPORT const brum_term* brum_apply(brum_manager* manager, const brum_symbol* symbol,
                                        const brum_term* const* arguments,
                                        size_t count) BRUM_NOEXCEPT;

/* Booleans. */
BRUM_EXPORT const brum_term* brum_true(brum_manager* manager) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_false(brum_manager* manager) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_not(brum_manager* manager, const brum_term* a) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_and(brum_manager* manager, const brum_term* a,
                                      const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_or(brum_manager* manager, const brum_term* a,
                                     const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_iff(brum_manager* manager, const brum_term* a,
                                      const brum_term* b) BRUM_NOEXCEPT;

/* Equality of two terms of one sort, of an Int and a Real as reals; of two Bools brum_iff(). */
BRUM_EXPORT const brum_term* brum_equal(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;

/* If-then-else; for Bool branches (and (or (not c) a) (or c b)) is built, so that there is none of
   sort Bool. */
BRUM_EXPORT const brum_term* brum_ite(brum_manager* manager, const brum_term* condition,
                                      const brum_term* then_term,
                                      const brum_term* else_term) BRUM_NOEXCEPT;

/* A numeral of sort Int. */
BRUM_EXPORT const brum_term* brum_number(brum_manager* manager, int64_t value) BRUM_NOEXCEPT;

/* A numeral from its text, of any size: `-12`, `3/4`, `1.25`. Int when the value is integral, else
   Real. */
BRUM_EXPORT const brum_term* brum_number_text(brum_manager* manager,
                                              const char* text) BRUM_NOEXCEPT;

/* The same, of sort Int (integral values only) or Real. */
BRUM_EXPORT const brum_term* brum_number_of_sort(brum_manager* manager, const char* text,
                                                 const brum_sort* sort) BRUM_NOEXCEPT;

/* Arithmetic: over Int when both arguments are Int, else over Real. */
BRUM_EXPORT const brum_term* brum_plus(brum_manager* manager, const brum_term* a,
                                       const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_times(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_leq(brum_manager* manager, const brum_term* a,
                                      const brum_term* b) BRUM_NOEXCEPT;

/* The largest integer not above the real `a`. */
BRUM_EXPORT const brum_term* brum_floor(brum_manager* manager, const brum_term* a) BRUM_NOEXCEPT;

/* True when the integers `a` and `b` differ by a multiple of `modulus`, the text of a positive
   integer. */
BRUM_EXPORT const brum_term* brum_congruent(brum_manager* manager, const char* modulus,
                                            const brum_term* a, const brum_term* b) BRUM_NOEXCEPT;

/* Arrays. */
BRUM_EXPORT const brum_term* brum_select(brum_manager* manager, const brum_term* array,
                                         const brum_term* index) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_store(brum_manager* manager, const brum_term* array,
                                        const brum_term* index,
                                        const brum_term* element) BRUM_NOEXCEPT;

/* Look at a term. */

/* Gives the number of the term, unique within its manager and counted from 1 in the order of
   making; 0 for null. */
BRUM_EXPORT uint64_t brum_term_id(const brum_term* term) BRUM_NOEXCEPT;

/* Give the head and the sort; null for null. */
BRUM_EXPORT const brum_symbol* brum_term_symbol(const brum_term* term) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_sort* brum_term_sort(const brum_term* term) BRUM_NOEXCEPT;

/* Gives the number of arguments; 0 for null. */
BRUM_EXPORT size_t brum_term_num_arguments(const brum_term* term) BRUM_NOEXCEPT;

/* Gives argument `i`, counted from 0; null when there is none. */
BRUM_EXPORT const brum_term* brum_term_argument(const brum_term* term, size_t i) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_TERMS_H */
