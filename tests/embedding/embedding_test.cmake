# Installs the libraries and does what docs/embedding.md says, on a screen:
#   cmake -DBUILD=... -DSOURCE=... -DWORK=... -DLIBDIR=... -P embedding_test.cmake
cmake_minimum_required(VERSION 3.25)
get_filename_component(here ${CMAKE_CURRENT_LIST_DIR} REALPATH)
include(${here}/../support/run.cmake)
set(prefix ${WORK}/installed)

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --build ${BUILD} --target tvxhtml-core-shared tvxhtml-widget-shared tvxHTML
  tvxHTML-window tvxhtml-python)
foreach(part shared shared-development headers python)
  run(${CMAKE_COMMAND} --install ${BUILD} --component ${part} --prefix ${prefix})
endforeach()
# What is in /usr when it comes from a package needs none of this.
set(ENV{CMAKE_PREFIX_PATH} ${prefix})
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{LD_LIBRARY_PATH} ${prefix}/${LIBDIR})
set(ENV{CPATH} ${prefix}/include)
set(ENV{PYTHONPATH} ${prefix}/${PYTHON_FOLDER})
set(ENV{XDG_DATA_DIRS} ${prefix}/share:/usr/share)
set(pictures)
if(PICTURES)
  set(pictures --pictures ${PICTURES})
endif()
run(${here}/../support/on_a_screen.sh python3 ${here}/follow.py ${SOURCE}/docs/embedding.md ${WORK}/guide ${pictures})
