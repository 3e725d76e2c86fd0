#ifndef BRUM_CAPI_BRUM_H
#define BRUM_CAPI_BRUM_H

/*
 * The C interface of brum: builds terms and prints them as SMT-LIB text. Valid C11 and C++; no
 * exception leaves any function.
 *
 *     brum_manager* m = brum_manager_new();
 *     const brum_term* x = brum_constant(m, "x", brum_int_sort(m));
 *     const brum_term* formula = brum_leq(m, x, brum_number(m, 7));
 *     if (brum_print_formula(m, formula, NULL, brum_file_sink(stdout)) != BRUM_OK) {
 *       fprintf(stderr, "%s\n", brum_last_error_text(m));
 *     }
 *     brum_manager_free(m);
 */

#include "brum/capi/base.h"
#include "brum/capi/bit_vectors.h"
#include "brum/capi/printing.h"
#include "brum/capi/sorts.h"
#include "brum/capi/terms.h"
#include "brum/capi/traces.h"

#endif /* BRUM_CAPI_BRUM_H */
