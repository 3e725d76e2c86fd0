# Runs PROGRAM and compares what it prints with the file OUTPUT, lines in any order: the order of
# declarations may differ from build to build.
#
#     cmake -D PROGRAM=path -D OUTPUT=path -P CompareOutput.cmake

# Gives the lines of a text, sorted. Characters that mean something in a list are written otherwise.
function(sorted_lines text result)
  string(REPLACE "[" "<" text "${text}")
  string(REPLACE "]" ">" text "${text}")
  string(REPLACE ";" "," text "${text}")
  string(REPLACE "\n" ";" text "${text}")
  list(SORT text)
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

execute_process(
  COMMAND "${PROGRAM}"
  OUTPUT_VARIABLE printed
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "the program ended with ${status}")
endif()
file(READ "${OUTPUT}" expected)
sorted_lines("${printed}" printed_lines)
sorted_lines("${expected}" expected_lines)
if(NOT printed_lines STREQUAL expected_lines)
  message(FATAL_ERROR "expected:\n${expected}\nprinted:\n${printed}")
endif()
