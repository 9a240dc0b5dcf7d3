# run(<command>...): runs a command; one that fails ends the test with all that it has said.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE failed OUTPUT_VARIABLE said ERROR_VARIABLE said)
  if(failed)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed: ${command}\n${said}")
  endif()
endfunction()
