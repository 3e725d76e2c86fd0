/* Builds a formula over bytes, an array and an uninterpreted function from C, and prints it in all
   forms: to a file, to a string and to a function of the caller's. */

#include <stdio.h>

#include "brum/capi/brum.h"

/* Counts the lines of a text that is handed over piece by piece. */
static int count_lines(void* data, const char* bytes, size_t count) {
  size_t* lines = data;
  for (size_t i = 0; i < count; ++i) {
    *lines += bytes[i] == '\n';
  }
  return 0;
}

/* (and (bvult s a) (bvule (hash s) a)) with s = (bvadd (select memory a) #x07). */
static const brum_term* make_formula(brum_manager* m) {
  const brum_sort* byte = brum_bv_sort(m, 8);
  const brum_symbol* hash = brum_declare(m, "hash", brum_function_sort(m, &byte, 1, byte));
  const brum_term* memory = brum_constant(m, "memory", brum_array_sort(m, byte, byte));
  const brum_term* a = brum_constant(m, "a", byte);
  const brum_term* sum = brum_bvadd(m, brum_select(m, memory, a), brum_bv_number(m, 7, 8));
  const brum_term* hashed = brum_apply(m, hash, &sum, 1);
  return brum_and(m, brum_bvult(m, sum, a), brum_bvule(m, hashed, a));
}

static void print_documents(brum_manager* m, const brum_term* formula) {
  brum_options* options = brum_options_new();
  brum_options_set_logic(options, "QF_AUFBV");
  const brum_form forms[] = {BRUM_FORM_V1, BRUM_FORM_V2, BRUM_FORM_DEFINE_FUN};
  for (size_t i = 0; i < 3; ++i) {
    brum_options_set_form(options, forms[i]);
    brum_print_formula(m, formula, options, brum_file_sink(stdout));
  }
  brum_print_terms(m, &formula, 1, options, brum_file_sink(stdout));

  size_t lines = 0;
  const brum_sink counter = {count_lines, &lines};
  brum_print_formula(m, formula, options, counter);
  printf("; the script above has %zu lines\n", lines);
  brum_options_free(options);
}

static void print_texts(brum_manager* m, const brum_term* formula) {
  brum_buffer* buffer = brum_buffer_new();
  brum_print_term(m, formula, NULL, brum_buffer_sink(buffer));
  printf("%s\n", brum_buffer_text(buffer));
  brum_buffer_clear(buffer);
  brum_print_atom(m, brum_term_argument(formula, 0), NULL, brum_buffer_sink(buffer));
  printf("%s\n", brum_buffer_text(buffer));
  brum_buffer_free(buffer);
}

/* A trace is written piece by piece; commands without terms are the program's own business. */
static void print_trace(brum_manager* m, const brum_term* formula) {
  brum_options* options = brum_options_new();
  brum_options_set_form(options, BRUM_FORM_DEFINE_FUN);
  brum_trace* trace = brum_trace_new(m, options);
  const brum_sink out = brum_file_sink(stdout);
  printf("(set-option :global-declarations true)\n");
  brum_trace_start(trace, out);
  brum_trace_declare(trace, brum_term_symbol(brum_constant(m, "a", brum_bv_sort(m, 8))), out);
  brum_trace_declare(trace,
                     brum_term_symbol(brum_constant(
                         m, "memory", brum_array_sort(m, brum_bv_sort(m, 8), brum_bv_sort(m, 8)))),
                     out);
  printf("(push 1)\n");
  brum_trace_assert(trace, brum_term_argument(formula, 0), "below", out);
  printf("(check-sat)\n(pop 1)\n");
  brum_trace_assert(trace, brum_not(m, brum_term_argument(formula, 0)), NULL, out);
  printf("(check-sat)\n");
  brum_trace_free(trace);
  brum_options_free(options);
}

int main(void) {
  brum_manager* m = brum_manager_new();
  const brum_term* formula = make_formula(m);
  print_documents(m, formula);
  print_texts(m, formula);
  print_trace(m, formula);

  /* The first thing that went wrong in any of the calls, if anything did. */
  const brum_status status = brum_last_error(m);
  if (status != BRUM_OK) {
    fprintf(stderr, "c_interface: %s\n", brum_last_error_text(m));
  }
  brum_manager_free(m);
  return status == BRUM_OK ? 0 : 1;
}
