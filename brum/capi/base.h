#ifndef BRUM_CAPI_BASE_H
#define BRUM_CAPI_BASE_H

/*
 * Managers, errors and buffers of the C interface. Valid C11 and C++.
 */

#include <stddef.h>
#include <stdint.h>

#include "brum/utils/export.h"

#ifdef __cplusplus
#define BRUM_NOEXCEPT noexcept
extern "C" {
#else
#define BRUM_NOEXCEPT
#endif

/* What a call came to. */
typedef enum brum_status {
  BRUM_OK = 0,
  BRUM_ERROR_NULL = 1,     /* a handle or pointer is null that must not be */
  BRUM_ERROR_SORT = 2,     /* sorts or declarations do not fit together */
  BRUM_ERROR_ARGUMENT = 3, /* another argument is wrong: the text of a number, an index, a name */
  BRUM_ERROR_FORM = 4,     /* the form that was asked for cannot express the term */
  BRUM_ERROR_OUTPUT = 5,   /* the sink took no more text */
  BRUM_ERROR_MEMORY = 6,   /* no memory */
  BRUM_ERROR_INTERNAL = 7  /* anything else; not expected to happen */
} brum_status;

/*
 * A store of sorts, symbols and terms. Sorts, symbols and terms belong to their manager: they are
 * never freed one by one, hold until brum_manager_free(), and must not be handed to another
 * manager (not every such call is noticed). The same sort, symbol or application always has the
 * same address. One thread at a time.
 *
 * Errors: a call that fails returns null, 0 or its status, and leaves the manager as it was. The
 * manager keeps status and text of the FIRST call that failed since the last brum_clear_error(), so
 * that a whole formula can be built by nested calls and be checked once at its end. A null handle
 * given to a builder is such a failure too; later calls are not hindered by earlier failures.
 *
 * The library never ends the program, but GMP does when it gets no memory for the digits of a
 * number beyond 64 bits.
 */
typedef struct brum_manager brum_manager;

/* Gives a new manager, to be freed by brum_manager_free(); null when there is no memory. */
BRUM_EXPORT brum_manager* brum_manager_new(void) BRUM_NOEXCEPT;

/* Frees the manager with all its sorts, symbols and terms. Traces of the manager must have been
   freed before. Null is allowed and does nothing. */
BRUM_EXPORT void brum_manager_free(brum_manager* manager) BRUM_NOEXCEPT;

/* Gives the status of the first call that failed since the last brum_clear_error(), BRUM_OK if none
   did, and BRUM_ERROR_NULL for a null manager. */
BRUM_EXPORT brum_status brum_last_error(const brum_manager* manager) BRUM_NOEXCEPT;

/* Gives the text of that error, without a line end; the empty text if there is none. Never null. It
   holds until the next brum_clear_error() or brum_manager_free(). */
BRUM_EXPORT const char* brum_last_error_text(const brum_manager* manager) BRUM_NOEXCEPT;

/* Forgets the error. Null is allowed. */
BRUM_EXPORT void brum_clear_error(brum_manager* manager) BRUM_NOEXCEPT;

/* Gives the number of distinct terms made so far, which is also the highest id; 0 for null. */
BRUM_EXPORT size_t brum_num_terms(const brum_manager* manager) BRUM_NOEXCEPT;

/* Gives the version of the library, "1.2.3"; a constant. */
BRUM_EXPORT const char* brum_version(void) BRUM_NOEXCEPT;

/*
 * A text that grows: where to print when the result is wanted as a string.
 */
typedef struct brum_buffer brum_buffer;

/* Gives a new empty buffer, to be freed by brum_buffer_free(); null when there is no memory. */
BRUM_EXPORT brum_buffer* brum_buffer_new(void) BRUM_NOEXCEPT;

/* Frees the buffer and its text. Null is allowed. */
BRUM_EXPORT void brum_buffer_free(brum_buffer* buffer) BRUM_NOEXCEPT;

/* Gives the text, NUL-terminated; "" for a null buffer. It holds until more is written to the
   buffer, brum_buffer_clear() or brum_buffer_free(). */
BRUM_EXPORT const char* brum_buffer_text(const brum_buffer* buffer) BRUM_NOEXCEPT;

/* Gives the length of the text in bytes, without the NUL; 0 for a null buffer. */
BRUM_EXPORT size_t brum_buffer_size(const brum_buffer* buffer) BRUM_NOEXCEPT;

/* Drops the text and keeps the memory. Null is allowed. */
BRUM_EXPORT void brum_buffer_clear(brum_buffer* buffer) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_BASE_H */
