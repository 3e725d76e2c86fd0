#ifndef BRUM_CAPI_PRINTING_H
#define BRUM_CAPI_PRINTING_H

/*
 * Documents and texts of terms. Errors are told by the status that is returned, and are kept by the
 * manager as base.h says. Sinks get pieces of some kilobytes; what a sink got before an error stays
 * with it.
 */

#include <stdio.h>

#include "brum/capi/terms.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Where text goes. `write` is called with the next `count` bytes (not NUL-terminated, at most some
 * thousands at a time, cut anywhere) and returns 0, or anything else to end the printing with
 * BRUM_ERROR_OUTPUT. `data` is handed to it as it is. `write` must return normally: no longjmp.
 */
typedef struct brum_sink {
  int (*write)(void* data, const char* bytes, size_t count);
  void* data;
} brum_sink;

/* Gives a sink that writes to an open file, which stays the caller's and is not flushed. */
BRUM_EXPORT brum_sink brum_file_sink(FILE* file) BRUM_NOEXCEPT;

/* Gives a sink that appends to a buffer, which must live while the sink is used. */
BRUM_EXPORT brum_sink brum_buffer_sink(brum_buffer* buffer) BRUM_NOEXCEPT;

/* The form of a document. */
typedef enum brum_form {
  BRUM_FORM_V1 = 1,        /* a benchmark of SMT-LIB 1.2 */
  BRUM_FORM_V2 = 2,        /* a script of SMT-LIB 2.6 that names shared subterms by `let` */
  BRUM_FORM_DEFINE_FUN = 3 /* the same with a `define-fun` command for each of them */
} brum_form;

/*
 * How to print. New options stand for BRUM_FORM_V2 without logic and status, the usual labels, line
 * breaks and checked names. The functions below that take options take null for new options.
 */
typedef struct brum_options brum_options;

/* Gives new options, to be freed by brum_options_free(); null when there is no memory. */
BRUM_EXPORT brum_options* brum_options_new(void) BRUM_NOEXCEPT;

/* Frees the options. A trace that was made with them keeps what it needs. Null is allowed. */
BRUM_EXPORT void brum_options_free(brum_options* options) BRUM_NOEXCEPT;

/* The setters return BRUM_OK or what was wrong and then change nothing. Texts are copied. */

BRUM_EXPORT brum_status brum_options_set_form(brum_options* options, brum_form form) BRUM_NOEXCEPT;

/* Set the logic and the status of the header; the empty text leaves the line out. */
BRUM_EXPORT brum_status brum_options_set_logic(brum_options* options,
                                               const char* logic) BRUM_NOEXCEPT;
BRUM_EXPORT brum_status brum_options_set_status(brum_options* options,
                                                const char* status) BRUM_NOEXCEPT;

/* Makes labels of version 2 `prefix` and the id of the term instead of `.def_` and the id; the
   empty text brings the usual ones back. The prefix must be a simple symbol of SMT-LIB 2.6. Forms
   of version 1.2 refuse to be printed with a prefix. */
BRUM_EXPORT brum_status brum_options_set_label_prefix(brum_options* options,
                                                      const char* prefix) BRUM_NOEXCEPT;

/* Says whether brum_print_term() breaks lines: 0 for one line without a line end. */
BRUM_EXPORT brum_status brum_options_set_newlines(brum_options* options,
                                                  int newlines) BRUM_NOEXCEPT;

/* Says whether printing is refused with BRUM_ERROR_FORM when the name of a symbol, as the form
   writes it, would not stand for that symbol alone (a bar in it, a reserved word, the name of an
   operator, two names with one text). 0 for not; traces never check. */
BRUM_EXPORT brum_status brum_options_set_check_names(brum_options* options,
                                                     int check) BRUM_NOEXCEPT;

/* Adds the attribute `:keyword value` to those that are printed around `term`, in the order of the
   calls; `keyword` without its colon, both as SMT-LIB 2.6 writes them. Forms of version 1.2 refuse
   to be printed with attributes. A trace that was made with the options before sees the attribute
   too. When there is no memory, all attributes may be lost. */
BRUM_EXPORT brum_status brum_options_add_attribute(brum_options* options, const brum_term* term,
                                                   const char* keyword,
                                                   const char* value) BRUM_NOEXCEPT;

/* Prints the document of one formula: header, declarations, definitions and the formula, asserted.
   No `(check-sat)` follows. */
BRUM_EXPORT brum_status brum_print_formula(brum_manager* manager, const brum_term* formula,
                                           const brum_options* options,
                                           brum_sink sink) BRUM_NOEXCEPT;

/* Prints a script that defines each of `count` terms under its label and asserts `true`, whatever
   form the options ask for but BRUM_FORM_V1, which is refused. */
BRUM_EXPORT brum_status brum_print_terms(brum_manager* manager, const brum_term* const* terms,
                                         size_t count, const brum_options* options,
                                         brum_sink sink) BRUM_NOEXCEPT;

/* Prints one term as an expression, with `let` around it for shared subterms. Nothing is declared.
   The invented name of an uninterpreted sort is not needed for that, and so not known. */
BRUM_EXPORT brum_status brum_print_term(brum_manager* manager, const brum_term* term,
                                        const brum_options* options, brum_sink sink) BRUM_NOEXCEPT;

/* Prints an atom or a negated one written out in full, without any definition: the text of a term
   that is shared again and again is exponential in the number of its subterms. */
BRUM_EXPORT brum_status brum_print_atom(brum_manager* manager, const brum_term* atom,
                                        const brum_options* options, brum_sink sink) BRUM_NOEXCEPT;

/* Prints the label of a term: the name under which brum_print_terms() defines it. */
BRUM_EXPORT brum_status brum_print_label(brum_manager* manager, const brum_term* term,
                                         const brum_options* options, brum_sink sink) BRUM_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* BRUM_CAPI_PRINTING_H */
