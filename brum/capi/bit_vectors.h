#ifndef BRUM_CAPI_BIT_VECTORS_H
#define BRUM_CAPI_BIT_VECTORS_H

/*
 * Terms over bit-vectors; what holds for all builders is in terms.h. The operators are those of
 * SMT-LIB's theory of bit-vectors under their names there. Where two arguments are taken they must
 * have one width.
 */

#include "brum/capi/terms.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The bit-vector of `width` bits that stands for `value`, which must be below 2^width. */
BRUM_EXPORT const brum_term* brum_bv_number(brum_manager* manager, uint64_t value,
                                            size_t width) BRUM_NOEXCEPT;

/* The same from the decimal text of a natural number of any size. */
BRUM_EXPORT const brum_term* brum_bv_number_text(brum_manager* manager, const char* text,
                                                 size_t width) BRUM_NOEXCEPT;

BRUM_EXPORT const brum_term* brum_bvnot(brum_manager* manager, const brum_term* a) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvneg(brum_manager* manager, const brum_term* a) BRUM_NOEXCEPT;

BRUM_EXPORT const brum_term* brum_bvand(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvor(brum_manager* manager, const brum_term* a,
                                       const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvxor(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvadd(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvsub(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvmul(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvudiv(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvsdiv(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvurem(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvsrem(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvshl(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvlshr(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvashr(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;

/* Comparisons: formulas, but for brum_bvcomp(), which is a bit-vector of one bit. */
BRUM_EXPORT const brum_term* brum_bvult(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvslt(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvule(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvsle(brum_manager* manager, const brum_term* a,
                                        const brum_term* b) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_bvcomp(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;

/* The bits of `a` above those of `b`; the widths add up. */
BRUM_EXPORT const brum_term* brum_concat(brum_manager* manager, const brum_term* a,
                                         const brum_term* b) BRUM_NOEXCEPT;

/* Bits `msb` down to `lsb` of `a`, counted from 0; width > msb >= lsb. */
BRUM_EXPORT const brum_term* brum_extract(brum_manager* manager, size_t msb, size_t lsb,
                                          const brum_term* a) BRUM_NOEXCEPT;

/* Rotations by `n` bits, which may exceed the width. */
BRUM_EXPORT const brum_term* brum_rotate_left(brum_manager* manager, size_t n,
                                              const brum_term* a) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_rotate_right(brum_manager* manager, size_t n,
                                               const brum_term* a) BRUM_NOEXCEPT;

/* Extensions by `n` bits, which may be 0. */
BRUM_EXPORT const brum_term* brum_zero_extend(brum_manager* manager, size_t n,
                                              const brum_term* a) BRUM_NOEXCEPT;
BRUM_EXPORT const brum_term* brum_sign_extend(brum_manager* manager, size_t n,
                                              const brum_term* a) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_BIT_VECTORS_H */
