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
target_link_libraries(brum PUBLIC GMP::gmpxx PRIVATE $<BUILD_INTERFACE:brum_warnings>)
set_target_properties(
  brum
  PROPERTIES LINKER_LANGUAGE CXX
             POSITION_INDEPENDENT_CODE ON
             VERIFY_INTERFACE_HEADER_SETS ON)
