# What a program prints against a file: cmake -DPROGRAM=... -DEXPECTED=... -P compare.cmake
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
file(READ ${EXPECTED} expected)
if(NOT printed STREQUAL expected)
  message(FATAL_ERROR "not as in ${EXPECTED}, which hosts were compiled against:\n${printed}")
endif()
