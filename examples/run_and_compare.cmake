# cmake [-DSTATUS=NUMBER] -DEXPECTED=FILE -P run_and_compare.cmake -- COMMAND ARGUMENT...
#
# Runs the command and fails unless it exits with the status, 0 if none is given, and its output equals the content of
# FILE.
if(NOT DEFINED STATUS)
  set(STATUS 0)
endif()
set(command "")
set(is_command NO)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(index RANGE ${last})
  if(is_command)
    list(APPEND command "${CMAKE_ARGV${index}}")
  elseif(CMAKE_ARGV${index} STREQUAL "--")
    set(is_command YES)
  endif()
endforeach()

execute_process(COMMAND ${command} OUTPUT_VARIABLE output RESULT_VARIABLE result)
# On Windows, streams of text end lines so.
string(REPLACE "\r\n" "\n" output "${output}")
file(READ "${EXPECTED}" expected)
if(NOT result EQUAL STATUS)
  message(FATAL_ERROR "The command exited with ${result} and printed:\n${output}")
endif()
if(NOT output STREQUAL expected)
  message(FATAL_ERROR "Expected:\n${expected}\nbut the output is:\n${output}")
endif()
