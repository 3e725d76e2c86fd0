# brum_warnings: the warnings of this project's own code. Linked privately, so users never see them.
add_library(brum_warnings INTERFACE)
target_compile_options(
  brum_warnings
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${BRUM_WERROR}>:-Werror>)
