# examples/*.cpp and *.c are programs, examples/*.smt2 inputs of the command, and the complete C++ and C
# programs of the documentation are programs too. Every one of them is a test: it must end with status 0.
enable_testing()
enable_language(C)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
include(ExtractExamples)

# Adds the program `target` made of `source`, and the test that runs it.
function(brum_add_example target source)
  add_executable(${target} "${source}")
  target_link_libraries(${target} PRIVATE brum::brum brum_warnings)
  if(EXISTS "${source}.output")
    add_test(NAME ${target} COMMAND ${CMAKE_COMMAND} -D "PROGRAM=$<TARGET_FILE:${target}>" -D
                                    "OUTPUT=${source}.output" -P
                                    "${PROJECT_SOURCE_DIR}/cmake/CompareOutput.cmake")
  else()
    add_test(NAME ${target} COMMAND ${target})
  endif()
  set_tests_properties(${target} PROPERTIES TIMEOUT 60)
endfunction()

file(GLOB brum_example_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/examples/*.cpp"
     "${PROJECT_SOURCE_DIR}/examples/*.c")
foreach(source IN LISTS brum_example_sources)
  cmake_path(GET source STEM name)
  brum_add_example(example_${name} "${source}")
endforeach()

file(GLOB brum_documents CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/README.md"
     "${PROJECT_SOURCE_DIR}/docs/*.md" "${PROJECT_SOURCE_DIR}/docs/guide/*.md")
foreach(document IN LISTS brum_documents)
  brum_extract_programs("${document}" "${PROJECT_BINARY_DIR}/documentation" brum_programs)
  foreach(source IN LISTS brum_programs)
    cmake_path(GET source STEM name)
    brum_add_example(documentation_${name} "${source}")
  endforeach()
endforeach()

file(GLOB brum_example_inputs CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/examples/*.smt2")
if(TARGET brumlin)
  foreach(input IN LISTS brum_example_inputs)
    cmake_path(GET input STEM name)
    foreach(form IN ITEMS v1 v2)
      add_test(NAME example_${name}_${form} COMMAND brumlin --to ${form} "${input}")
      set_tests_properties(example_${name}_${form} PROPERTIES TIMEOUT 60)
    endforeach()
  endforeach()
endif()
