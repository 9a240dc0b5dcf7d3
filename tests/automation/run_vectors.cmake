# Scores the program on public cases through its door: the run must come to its end, whatever the score.
# cmake -DNODE=... -DSCRIPT=... -DCLI=... -DVECTORS=... -P run_vectors.cmake
if(NOT NODE OR NOT EXISTS "${SCRIPT}" OR NOT EXISTS "${VECTORS}")
  message("SKIPPED: node, the scoring script or the public cases are not at hand")
  return()
endif()
execute_process(COMMAND ${NODE} ${SCRIPT} --cli ${CLI} --editing ${VECTORS}/editing --parsing ${VECTORS}/html-parsing
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
message("${output}")
if(NOT result EQUAL 0 OR NOT output MATCHES "\nALL " OR NOT output MATCHES "parsing [0-9]+ of [0-9]+")
  message(FATAL_ERROR "the run did not come to its end: ${result}")
endif()
