# Installs the widget with its plugin for Qt Designer, builds programs with a form against it and runs them; then draws a
# form in Designer itself, unless the build is CHECKED by the sanitizers:
#   cmake -DBUILD=... -DWORK=... -DPLUGINS=... -DLIBDIR=... [-DCHECKED=1] -P designer_test.cmake
cmake_minimum_required(VERSION 3.25)
get_filename_component(here ${CMAKE_CURRENT_LIST_DIR} REALPATH)
include(${here}/../support/run.cmake)
unset(ENV{LD_LIBRARY_PATH})

file(REMOVE_RECURSE ${WORK})
set(prefix ${WORK}/installed)
run(${CMAKE_COMMAND} --build ${BUILD} --target tvxhtml-designer tvxHTML tvxHTML-window)
foreach(part shared shared-development headers designer)
  run(${CMAKE_COMMAND} --install ${BUILD} --component ${part} --prefix ${prefix})
endforeach()
run(${CMAKE_COMMAND} -S ${here} -B ${WORK}/form -G Ninja -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${WORK}/form)
set(offscreen ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen)
run(${offscreen} ${WORK}/form/compiled)
run(${offscreen} ${WORK}/form/loaded ${prefix}/${PLUGINS}/designer ${here}/form.ui)
if(CHECKED)
  # Designer knows nothing of the checks. Given them from outside, it stops for ever within the C library's own lock.
  message(STATUS "no form is drawn in Designer under the sanitizers")
  return()
endif()
run(${here}/../support/on_a_screen.sh ${here}/draw_a_form.sh ${prefix} ${prefix}/${PLUGINS} ${WORK}/drawn)
