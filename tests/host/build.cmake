# Builds the host's project: cmake -DTREE=... -DBUILD=... -DQT=ON|OFF [-DWHOLE=ON] -P build.cmake
# Without WHOLE it stops at the program's own unit and the lowest library: compiling all of them again would take
# minutes. The widget's headers are compiled by the target check_headers, with what a host sees and no more.
get_filename_component(here ${CMAKE_CURRENT_LIST_DIR} REALPATH)
include(${here}/../support/run.cmake)

run(${CMAKE_COMMAND} -S ${here} -B ${BUILD} -G Ninja -DTVXHTML=${TREE} -DHOST_QT=${QT})
set(targets host-editor-unit host-editor-unit-includes tvx_base)
if(WHOLE)
  set(targets all)
endif()
run(${CMAKE_COMMAND} --build ${BUILD} --target ${targets})
if(WHOLE)
  run(${BUILD}/host-editor)
endif()
