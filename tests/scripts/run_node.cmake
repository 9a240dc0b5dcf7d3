# Runs a script of tests in node, where node is there.
if(NOT NODE)
  message("SKIPPED: node isn't installed (Debian: nodejs); the view's modules were not tested by themselves")
  return()
endif()
execute_process(COMMAND ${NODE} ${SCRIPT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "tests in ${SCRIPT} failed")
endif()
