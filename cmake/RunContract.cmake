# Runs one command-line contract check:
#   cmake -DEXIT=2 [-DSTDOUT=regex] [-DSTDERR=regex] [-DNO_STDOUT=1] -P RunContract.cmake -- PROGRAM ARGS...
# The program's exit code must equal EXIT; standard output and standard error
# must match their regular expressions when given (NO_STDOUT: output must be
# empty). A word "<empty>" is passed as an empty argument, which a CMake list
# cannot carry. Any difference prints all three and fails the test.
# Each word is bracket-quoted into the call, so that an empty one survives.
set(command "")
set(take OFF)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE 0 ${last})
  if(take AND CMAKE_ARGV${i} STREQUAL "<empty>")
    string(APPEND command " [==[]==]")
  elseif(take)
    string(APPEND command " [==[${CMAKE_ARGV${i}}]==]")
  elseif(CMAKE_ARGV${i} STREQUAL "--")
    set(take ON)
  endif()
endforeach()
cmake_language(EVAL CODE
  "execute_process(COMMAND ${command} RESULT_VARIABLE code OUTPUT_VARIABLE out ERROR_VARIABLE err)")
set(problems)
if(NOT code STREQUAL EXIT)
  list(APPEND problems "exit code ${code}, expected ${EXIT}")
endif()
if(DEFINED STDOUT AND NOT out MATCHES "${STDOUT}")
  list(APPEND problems "standard output does not match: ${STDOUT}")
endif()
if(NO_STDOUT AND NOT out STREQUAL "")
  list(APPEND problems "standard output should be empty")
endif()
if(DEFINED STDERR AND NOT err MATCHES "${STDERR}")
  list(APPEND problems "standard error does not match: ${STDERR}")
endif()
if(problems)
  string(REPLACE ";" "\n  " problems "${problems}")
  message(FATAL_ERROR "  ${problems}\n--- stdout ---\n${out}\n--- stderr ---\n${err}")
endif()
