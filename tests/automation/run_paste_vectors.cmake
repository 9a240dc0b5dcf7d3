# Pastes the public clipboards through the program's door: all of them give the structure, the marks and the clean
# markup that their cases want.
# cmake -DNODE=... -DSCRIPT=... -DCLI=... -DVECTORS=... -P run_paste_vectors.cmake
if(NOT NODE OR NOT EXISTS "${SCRIPT}" OR NOT EXISTS "${VECTORS}")
  message("SKIPPED: node, the scoring script or the public paste cases are not at hand")
  return()
endif()
file(REAL_PATH "${SCRIPT}" script)
execute_process(COMMAND ${NODE} ${script} --cli ${CLI} --dir ${VECTORS} --verbose
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
message("${output}${errors}")
if(NOT result EQUAL 0 OR NOT output MATCHES "paste: structure ([0-9]+) of ([0-9]+), marks ([0-9]+) of [0-9]+, hygiene ([0-9]+) of")
  message(FATAL_ERROR "the run did not come to its end: ${result}")
endif()
foreach(reached ${CMAKE_MATCH_1} ${CMAKE_MATCH_3} ${CMAKE_MATCH_4})
  if(reached LESS CMAKE_MATCH_2)
    message(FATAL_ERROR "not all ${CMAKE_MATCH_2} cases are right")
  endif()
endforeach()
