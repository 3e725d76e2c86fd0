/* A program of a user of the C interface, built by each project of this directory. */

#include <stdio.h>
#include <string.h>

#include "brum/capi/brum.h"

int main(void) {
  brum_manager* m = brum_manager_new();
  brum_buffer* buffer = brum_buffer_new();
  const brum_term* x = brum_constant(m, "x", brum_int_sort(m));
  const brum_term* formula = brum_leq(m, x, brum_number(m, 7));
  const brum_status status = brum_print_formula(m, formula, NULL, brum_buffer_sink(buffer));
  const char* expected =
      "(set-info :source |printed by Brumlin|)\n"
      "(declare-fun x () Int)\n"
      "(assert\n"
      "(<= x 7)\n"
      ")\n";
  const int right = status == BRUM_OK && strcmp(brum_buffer_text(buffer), expected) == 0 &&
                    brum_not(m, x) == NULL && brum_last_error(m) == BRUM_ERROR_SORT;
  if (!right) {
    fprintf(stderr, "status %d, error `%s`, text:\n%s", (int)status, brum_last_error_text(m),
            brum_buffer_text(buffer));
  }
  brum_buffer_free(buffer);
  brum_manager_free(m);
  return right ? 0 : 1;
}
