# fuzz/NAME_fuzz.cpp, each with an LLVMFuzzerTestOneInput: a target NAME_fuzz. Without libFuzzer it is
# linked with a main that feeds it the files it is given, fuzz/replay_main.cpp, and each target is a
# test that replays its findings, fuzz/findings/NAME.
file(GLOB brum_fuzz_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp")

# What the targets share with the tests; none of it needs a test framework.
set(brum_fuzz_support "${PROJECT_SOURCE_DIR}/tests/support")
add_library(brum_fuzz_support STATIC EXCLUDE_FROM_ALL "${brum_fuzz_support}/term_generator.cpp"
                                                      "${brum_fuzz_support}/written_forms.cpp")
target_link_libraries(brum_fuzz_support PUBLIC brum::brum PRIVATE brum_warnings)
if(BRUM_LIBFUZZER)
  # libFuzzer watches what an input reaches in the library, and in the targets themselves: the
  # containers are templates, which exist nowhere else.
  target_compile_options(brum PRIVATE -fsanitize=fuzzer-no-link)
endif()

foreach(source IN LISTS brum_fuzz_sources)
  cmake_path(GET source STEM name)
  string(REGEX REPLACE "_fuzz$" "" subject "${name}")
  add_executable(${name} "${source}")
  target_link_libraries(${name} PRIVATE brum_fuzz_support brum_warnings)
  if(BRUM_LIBFUZZER)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer-no-link)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp")
    file(GLOB findings CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/findings/${subject}/*")
    file(GLOB seeds CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/seeds/${subject}/*")
    add_test(NAME fuzz.${subject} COMMAND ${name} ${findings} ${seeds})
  endif()
endforeach()
