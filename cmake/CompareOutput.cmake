# Runs a command and compares what it writes to standard output with a file, byte by byte:
#
#   cmake -DEXPECTED=FILE -DACTUAL=FILE [-DEXPECTED_EXIT=0] -P CompareOutput.cmake -- COMMAND [ARGUMENT...]
#
# The output is kept in the file ACTUAL. Fails with a diff when it differs, and when the exit code is another one.

cmake_minimum_required(VERSION 3.21)

foreach(variable IN ITEMS EXPECTED ACTUAL)
    if(NOT DEFINED ${variable})
        message(FATAL_ERROR "CompareOutput: ${variable} is not given")
    endif()
endforeach()
if(NOT DEFINED EXPECTED_EXIT)
    set(EXPECTED_EXIT 0)
endif()

set(command)
set(inCommand FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
    set(argument "${CMAKE_ARGV${i}}")
    if(inCommand)
        string(REPLACE ";" "\\;" argument "${argument}") # one argument, not two
        list(APPEND command "${argument}")
    elseif(argument STREQUAL "--")
        set(inCommand TRUE)
    endif()
endforeach()
if(NOT command)
    message(FATAL_ERROR "CompareOutput: no command after --")
endif()

execute_process(COMMAND ${command} OUTPUT_FILE "${ACTUAL}" RESULT_VARIABLE exit)
set(problems)
if(NOT exit STREQUAL EXPECTED_EXIT)
    string(APPEND problems "exit code ${exit}, expected ${EXPECTED_EXIT}\n")
endif()

execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files "${EXPECTED}" "${ACTUAL}"
                RESULT_VARIABLE different OUTPUT_QUIET ERROR_QUIET)
if(NOT different EQUAL 0)
    find_program(DIFF diff)
    if(DIFF)
        execute_process(COMMAND "${DIFF}" -u "${EXPECTED}" "${ACTUAL}" OUTPUT_VARIABLE shown ERROR_VARIABLE shown)
    else()
        file(READ "${ACTUAL}" shown)
        string(PREPEND shown "the output, which should be that of ${EXPECTED}:\n")
    endif()
    string(APPEND problems "${shown}")
endif()

if(problems)
    message("${problems}") # as it is: a fatal error would fold the lines
    message(FATAL_ERROR "The output is not the expected one.")
endif()
