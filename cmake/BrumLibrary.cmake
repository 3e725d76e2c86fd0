# brum: the library. Sources are found by directory, so a new file needs no edit here.
set(brum_directories utils numbers terms printers readers capi)
set(brum_source_patterns ${brum_directories})
list(TRANSFORM brum_source_patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/brum/\\1/*.cpp")
set(brum_header_patterns ${brum_directories})
list(TRANSFORM brum_header_patterns REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/brum/\\1/*.h")
file(GLOB brum_sources CONFIGURE_DEPENDS ${brum_source_patterns})
file(GLOB brum_headers CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/brum/*.h" ${brum_header_patterns})

find_package(GMP REQUIRED)

add_library(brum ${brum_sources})
add_library(brum::brum ALIAS brum)
target_sources(brum PUBLIC FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}" FILES ${brum_headers})
target_compile_features(brum PUBLIC cxx_std_20)
# Calls within the library go to its own functions, also where another library has the same names: so the
# compiler may inline them. Clang takes that for granted.
target_compile_options(brum PRIVATE -fno-semantic-interposition)
target_link_libraries(brum PUBLIC GMP::gmpxx PRIVATE $<BUILD_INTERFACE:brum_warnings>)
# The C interface tells the version.
set_source_files_properties(
  "${PROJECT_SOURCE_DIR}/brum/capi/base.cpp" PROPERTIES COMPILE_DEFINITIONS
                                                        BRUM_VERSION="${PROJECT_VERSION}")

# Only what BRUM_EXPORT marks can be linked to from outside a shared library. While the version begins
# with 0, each minor version may have another binary interface, so both numbers name the library.
set_target_properties(
  brum
  PROPERTIES LINKER_LANGUAGE CXX
             POSITION_INDEPENDENT_CODE ON
             CXX_VISIBILITY_PRESET hidden
             VISIBILITY_INLINES_HIDDEN ON
             VERSION "${PROJECT_VERSION}"
             SOVERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}"
             DEFINE_SYMBOL "" # the same objects serve a static and a shared library
             VERIFY_INTERFACE_HEADER_SETS ON)

# brum_static: the same objects as a static library, for the tests, which also look at what a shared
# library hides.
get_target_property(brum_library_type brum TYPE)
if(brum_library_type STREQUAL "STATIC_LIBRARY")
  add_library(brum_static ALIAS brum)
else()
  add_library(brum_static STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:brum>)
  target_include_directories(brum_static INTERFACE "${PROJECT_SOURCE_DIR}")
  target_compile_features(brum_static INTERFACE cxx_std_20)
  target_link_libraries(brum_static INTERFACE GMP::gmpxx)
  set_target_properties(brum_static PROPERTIES LINKER_LANGUAGE CXX)
endif()
