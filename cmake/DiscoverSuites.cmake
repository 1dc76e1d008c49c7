# add_suites(TARGET PREFIX [SINGLE]) registers the tests of a GoogleTest program with CTest: each by
# itself, or, in ./test (VELDRIN_TEST_SUITES), a suite at a time: a process takes longer to start than
# most tests to run, above all under the sanitizers. The built program is asked for its suites, so
# that none is forgotten. SINGLE: each by itself anyway, since they spend their time waiting, and can
# wait together.
if(CMAKE_SCRIPT_MODE_FILE)
  execute_process(COMMAND ${PROGRAM} --gtest_list_tests
    OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" lines "${listing}")
  set(tests "")
  foreach(line IN LISTS lines)
    if(line MATCHES "^([A-Za-z0-9_/]+)\\.")
      set(suite ${CMAKE_MATCH_1})
      string(APPEND tests "add_test(\"${PREFIX}${suite}\" \"${PROGRAM}\" \"--gtest_filter=${suite}.*\")\n"
        "set_tests_properties(\"${PREFIX}${suite}\" PROPERTIES TIMEOUT 600)\n")
    endif()
  endforeach()
  if(NOT tests)
    message(FATAL_ERROR "${PROGRAM} has no tests")
  endif()
  file(WRITE ${OUTPUT} "${tests}")
  return()
endif()

include(GoogleTest)
set(discover_suites_script ${CMAKE_CURRENT_LIST_FILE})

function(add_suites target prefix)
  if(NOT VELDRIN_TEST_SUITES OR "SINGLE" IN_LIST ARGN)
    gtest_discover_tests(${target}
      TEST_PREFIX ${prefix} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
    return()
  endif()
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  add_custom_command(TARGET ${target} POST_BUILD BYPRODUCTS ${list}
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${target}> -DPREFIX=${prefix} -DOUTPUT=${list}
      -P ${discover_suites_script}
    VERBATIM)
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${list})
endfunction()
