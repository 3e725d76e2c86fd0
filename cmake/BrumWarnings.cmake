# brum_warnings: the warnings of this project's own code. Linked privately, so users never see them.
add_library(brum_warnings INTERFACE)
target_compile_options(
  brum_warnings
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${BRUM_WERROR}>:-Werror>)
# When it optimises, GCC 12 warns of copies inside its own std::string that cannot happen.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(brum_warnings INTERFACE -Wno-restrict)
endif()
