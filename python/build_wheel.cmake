# Builds the module's wheel, and unpacks it: cmake -DPYTHON=... -DSOURCE=... -DWORK=... -DWRITER=... -P build_wheel.cmake
file(REMOVE_RECURSE ${WORK}/source ${WORK}/wheel ${WORK}/module)
file(COPY ${SOURCE}/python/ DESTINATION ${WORK}/source)
execute_process(COMMAND ${CMAKE_COMMAND} -E env TVX_SOURCE=${SOURCE} TVX_WRITE_INTERFACE=${WRITER}
  ${PYTHON} -m pip --disable-pip-version-check wheel --quiet --no-index --no-cache-dir --no-build-isolation --no-deps
  --wheel-dir ${WORK}/wheel ${WORK}/source
  RESULT_VARIABLE failed OUTPUT_VARIABLE said ERROR_VARIABLE said)
file(GLOB wheel ${WORK}/wheel/*.whl)
if(failed OR NOT wheel)
  message(FATAL_ERROR "pip builds no wheel:\n${said}")
endif()
file(ARCHIVE_EXTRACT INPUT ${wheel} DESTINATION ${WORK}/module)
