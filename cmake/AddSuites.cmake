# Read by ctest, not at configuration: each suite of a GoogleTest program becomes one test.
#
# A process a suite, not a case: making the application object, its connection to the display and a GL context
# takes longer than most cases do. A case that fails is named by GoogleTest.

# pixelgrove_add_suites(PREFIX PROGRAM PROPERTIES...): tests PREFIX.SUITE. Of a program that isn't there, one
# test that can't run.
function(pixelgrove_add_suites PREFIX PROGRAM)
  if(NOT EXISTS ${PROGRAM})
    add_test(${PREFIX}_NOT_BUILT ${PROGRAM})
    return()
  endif()
  execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listed RESULT_VARIABLE status)
  # Suites stand at the start of their lines, cases are indented.
  string(REGEX MATCHALL "(^|\n)[A-Za-z0-9_/]+\\." suites "${listed}")
  if(NOT status EQUAL 0 OR NOT suites)
    message(FATAL_ERROR "${PROGRAM} lists no tests (${status})")
  endif()
  foreach(suite ${suites})
    string(STRIP "${suite}" suite)
    string(REGEX REPLACE "\\.$" "" suite "${suite}")
    add_test(${PREFIX}.${suite} ${PROGRAM} --gtest_filter=${suite}.*)
    set_tests_properties(${PREFIX}.${suite} PROPERTIES ${ARGN})
  endforeach()
endfunction()
