# One executable DIR_test for each directory of tests/ that holds *_test.cpp. The other sources of such
# a directory go into the same executable, those of tests/support into a library for all of them.
#
# Tests repeat names of helpers, so they are never compiled as one source (CMAKE_UNITY_BUILD).
#
# The tests are compiled with BRUM_SOURCE_DIR (root of the source tree) and BRUM_COMMAND (path of the
# built command, when there is one).
enable_testing()
include(GoogleTest)

if(BRUM_GTEST_FROM_SOURCE)
  set(INSTALL_GTEST OFF)
  add_subdirectory("${BRUM_GTEST_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
else()
  find_package(GTest 1.12 REQUIRED)
endif()
# Debian has RapidCheck only as a library for the default string, so a build of GoogleTest from source,
# which is there for another string, goes without the tests that use it.
if(NOT BRUM_GTEST_FROM_SOURCE)
  find_package(rapidcheck REQUIRED)
endif()

add_library(brum_test_base INTERFACE)
target_compile_definitions(brum_test_base INTERFACE BRUM_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
if(TARGET brumlin)
  target_compile_definitions(brum_test_base INTERFACE BRUM_COMMAND="$<TARGET_FILE:brumlin>")
endif()
target_include_directories(brum_test_base INTERFACE "${PROJECT_SOURCE_DIR}")
# The library is tested as optimised as it is shipped; for the tests themselves that only costs time.
target_compile_options(brum_test_base INTERFACE $<$<CONFIG:Release>:-O1>)
target_link_libraries(brum_test_base INTERFACE brum_static brum_warnings GTest::gtest GTest::gmock)
if(TARGET rapidcheck)
  target_link_libraries(brum_test_base INTERFACE rapidcheck)
endif()

# Leaves in `result` those of the given sources that can be built here, and says which cannot.
function(brum_usable_test_sources result)
  set(usable)
  foreach(source IN LISTS ARGN)
    file(STRINGS "${source}" uses_rapidcheck REGEX "#include <rapidcheck" LIMIT_COUNT 1)
    if(uses_rapidcheck AND NOT TARGET rapidcheck)
      message(STATUS "not built, as there is no RapidCheck for this build: ${source}")
    else()
      list(APPEND usable "${source}")
    endif()
  endforeach()
  set(${result} ${usable} PARENT_SCOPE)
endfunction()

file(GLOB brum_test_support_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/*.cpp")
brum_usable_test_sources(brum_test_support_sources ${brum_test_support_sources})
if(brum_test_support_sources)
  add_library(brum_test_support STATIC ${brum_test_support_sources})
  target_link_libraries(brum_test_support PUBLIC brum_test_base)
  set_target_properties(brum_test_support PROPERTIES UNITY_BUILD OFF)
  # The frameworks are the larger part of what a test compiles: they are compiled once for all.
  set(brum_test_headers <gmock/gmock.h> <gtest/gtest.h>)
  if(TARGET rapidcheck)
    list(APPEND brum_test_headers <rapidcheck.h>)
  endif()
  target_precompile_headers(brum_test_support PRIVATE ${brum_test_headers})
endif()

file(
  GLOB brum_test_directories
  CONFIGURE_DEPENDS
  LIST_DIRECTORIES true
  RELATIVE "${PROJECT_SOURCE_DIR}/tests"
  "${PROJECT_SOURCE_DIR}/tests/*")
if(BRUM_TEST_DIRECTORIES)
  set(brum_test_directories ${BRUM_TEST_DIRECTORIES})
endif()
foreach(directory IN LISTS brum_test_directories)
  file(GLOB tests CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${directory}/*_test.cpp")
  file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/${directory}/*.cpp")
  brum_usable_test_sources(sources ${sources})
  if(NOT tests OR NOT sources)
    continue()
  endif()
  add_executable(${directory}_test ${sources})
  target_link_libraries(${directory}_test PRIVATE brum_test_base GTest::gtest_main)
  set_target_properties(${directory}_test PROPERTIES UNITY_BUILD OFF)
  if(TARGET brum_test_support)
    target_link_libraries(${directory}_test PRIVATE brum_test_support)
    target_precompile_headers(${directory}_test REUSE_FROM brum_test_support)
  endif()
  if(TARGET brumlin)
    # A test that runs the command wants the one of this source tree.
    foreach(source IN LISTS sources)
      file(STRINGS "${source}" uses_command REGEX "BRUM_COMMAND" LIMIT_COUNT 1)
      if(uses_command)
        add_dependencies(${directory}_test brumlin)
      endif()
    endforeach()
  endif()
  gtest_discover_tests(
    ${directory}_test
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    TEST_PREFIX "${directory}."
    PROPERTIES TIMEOUT 300)
endforeach()
