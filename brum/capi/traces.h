#ifndef BRUM_CAPI_TRACES_H
#define BRUM_CAPI_TRACES_H

/*
 * Traces of incremental runs: a script of version 2 that is written piece by piece while the run
 * goes on. Errors as in printing.h; but when a piece failed while it was being written, the trace
 * is at its end, as later pieces would refer to what was lost: each gives BRUM_ERROR_OUTPUT. A
 * piece that is refused for its arguments does not end the trace.
 */

#include "brum/capi/printing.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Writes the pieces of one script. With BRUM_FORM_DEFINE_FUN it remembers what earlier pieces
 * defined, so that a subterm which a thousand assertions share is defined once; definitions must
 * then outlive a `pop`, so a script with `push` has to begin with
 *
 *     (set-option :global-declarations true)
 *
 * Commands without terms (push, pop, check-sat, options) are written by the caller, straight to
 * where the sink writes.
 */
typedef struct brum_trace brum_trace;

/* Gives a new trace of terms of `manager`, to be freed by brum_trace_free() before the manager.
   Null on failure; BRUM_FORM_V1 is refused. Options that are changed later do not change the trace,
   but for attributes. */
BRUM_EXPORT brum_trace* brum_trace_new(brum_manager* manager,
                                       const brum_options* options) BRUM_NOEXCEPT;

/* Frees the trace. Null is allowed. */
BRUM_EXPORT void brum_trace_free(brum_trace* trace) BRUM_NOEXCEPT;

/* Prints the header. */
BRUM_EXPORT brum_status brum_trace_start(brum_trace* trace, brum_sink sink) BRUM_NOEXCEPT;

/* Declares an uninterpreted sort under an invented name, U0, U1, and so on, that holds for the rest
   of the trace. Must precede what mentions the sort, and be done once for each sort. */
BRUM_EXPORT brum_status brum_trace_declare_sort(brum_trace* trace, const brum_sort* sort,
                                                brum_sink sink) BRUM_NOEXCEPT;

/* Declares a symbol of the user's. */
BRUM_EXPORT brum_status brum_trace_declare(brum_trace* trace, const brum_symbol* symbol,
                                           brum_sink sink) BRUM_NOEXCEPT;

/* Prints the assertion of a formula. `name`, when not null, is a name that the script has not given
   before (any bytes but bars and backslashes, not empty), written as `:named`. */
BRUM_EXPORT brum_status brum_trace_assert(brum_trace* trace, const brum_term* formula,
                                          const char* name, brum_sink sink) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_TRACES_H */
