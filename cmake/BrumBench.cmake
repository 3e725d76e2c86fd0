# bench/NAME_bench.cpp: one benchmark program each, when Google Benchmark is installed; the other
# sources of bench/ are linked to all of them. z3 and cvc5 are timed too where their libraries are.
find_package(benchmark QUIET)
file(GLOB brum_bench_programs CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*_bench.cpp")
file(GLOB brum_bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*.cpp")
list(REMOVE_ITEM brum_bench_sources ${brum_bench_programs})

if(NOT benchmark_FOUND)
  message(STATUS "Google Benchmark is not installed: no benchmarks")
  return()
endif()

add_library(brum_bench_base STATIC ${brum_bench_sources})
target_link_libraries(brum_bench_base PUBLIC brum::brum benchmark::benchmark brum_warnings)

find_path(BRUM_Z3_INCLUDE_DIR NAMES z3.h)
find_library(BRUM_Z3_LIBRARY NAMES z3)
mark_as_advanced(BRUM_Z3_INCLUDE_DIR BRUM_Z3_LIBRARY)
if(BRUM_Z3_INCLUDE_DIR AND BRUM_Z3_LIBRARY)
  target_compile_definitions(brum_bench_base PUBLIC BRUM_BENCH_Z3)
  target_include_directories(brum_bench_base SYSTEM PUBLIC "${BRUM_Z3_INCLUDE_DIR}")
  target_link_libraries(brum_bench_base PUBLIC "${BRUM_Z3_LIBRARY}")
endif()

find_path(BRUM_CVC5_INCLUDE_DIR NAMES cvc5/cvc5.h)
find_library(BRUM_CVC5_LIBRARY NAMES cvc5)
mark_as_advanced(BRUM_CVC5_INCLUDE_DIR BRUM_CVC5_LIBRARY)
if(BRUM_CVC5_INCLUDE_DIR AND BRUM_CVC5_LIBRARY)
  target_compile_definitions(brum_bench_base PUBLIC BRUM_BENCH_CVC5)
  target_include_directories(brum_bench_base SYSTEM PUBLIC "${BRUM_CVC5_INCLUDE_DIR}")
  target_link_libraries(brum_bench_base PUBLIC "${BRUM_CVC5_LIBRARY}")
endif()

foreach(source IN LISTS brum_bench_programs)
  cmake_path(GET source STEM name)
  add_executable(${name} "${source}")
  target_link_libraries(${name} PRIVATE brum_bench_base)
endforeach()
