# fuzz/NAME_fuzz.cpp, each with an LLVMFuzzerTestOneInput: a target NAME_fuzz. Without libFuzzer it is
# linked with a main that feeds it the files it is given, fuzz/replay_main.cpp.
file(GLOB brum_fuzz_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/fuzz/*_fuzz.cpp")
foreach(source IN LISTS brum_fuzz_sources)
  cmake_path(GET source STEM name)
  add_executable(${name} "${source}")
  target_link_libraries(${name} PRIVATE brum::brum brum_warnings)
  if(BRUM_LIBFUZZER)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(${name} PRIVATE "${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp")
  endif()
endforeach()
