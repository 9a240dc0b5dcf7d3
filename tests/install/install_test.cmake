# Installs the editor, moves it to another folder, and builds and runs a host's program against each component:
#   cmake -DBUILD=... -DKIND=shared|static -DWORK=... -DCOMPONENTS=... -DLIBDIR=... -P install_test.cmake
cmake_minimum_required(VERSION 3.25)
get_filename_component(here ${CMAKE_CURRENT_LIST_DIR} REALPATH)
set(prefix ${WORK}/moved)
set(ENV{QT_QPA_PLATFORM} offscreen)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE failed OUTPUT_VARIABLE said ERROR_VARIABLE said)
  if(failed)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "failed: ${command}\n${said}")
  endif()
endfunction()

# Nobody's environment helps a program to find what is installed.
unset(ENV{LD_LIBRARY_PATH})
file(REMOVE_RECURSE ${WORK})
set(targets tvxhtml-core-${KIND})
if(KIND STREQUAL "shared")
  list(APPEND targets tvxHTML)
endif()
if(Widget IN_LIST COMPONENTS)
  list(APPEND targets tvxhtml-widget-${KIND})
endif()
run(${CMAKE_COMMAND} --build ${BUILD} --target ${targets} htmled-cli)
foreach(part ${KIND} ${KIND}-development headers scripts)
  run(${CMAKE_COMMAND} --install ${BUILD} --component ${part} --prefix ${WORK}/installed)
endforeach()
file(RENAME ${WORK}/installed ${prefix})

foreach(component IN LISTS COMPONENTS)
  set(build ${WORK}/${component})
  run(${CMAKE_COMMAND} -S ${here}/consumer -B ${build} -G Ninja -DCMAKE_PREFIX_PATH=${prefix} -DCOMPONENT=${component})
  run(${CMAKE_COMMAND} --build ${build})
  run(${build}/consumer)
endforeach()

# What is missing is refused by name.
foreach(request "1;COMPONENTS;Nonsense" "2;COMPONENTS;Core")
  file(WRITE ${WORK}/refused/CMakeLists.txt "cmake_minimum_required(VERSION 3.25)\nproject(refused LANGUAGES CXX)\n"
    "find_package(tvxHTML ${request} REQUIRED)\n")
  execute_process(COMMAND ${CMAKE_COMMAND} -S ${WORK}/refused -B ${WORK}/refused/build -DCMAKE_PREFIX_PATH=${prefix}
    RESULT_VARIABLE failed ERROR_VARIABLE said OUTPUT_QUIET)
  if(NOT failed OR NOT said MATCHES "tvxHTML")
    message(FATAL_ERROR "not refused: ${request}")
  endif()
endforeach()

# The same program with pkg-config alone.
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs tvxhtml-core OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY
  OUTPUT_STRIP_TRAILING_WHITESPACE)
separate_arguments(flags)
run(c++ -std=c++20 ${here}/consumer/core.cpp -o ${WORK}/by-pkg-config ${flags} -Wl,-rpath,${prefix}/${LIBDIR})
run(${WORK}/by-pkg-config)

# No path of this machine goes along, and a shared library shows nothing of what it is made of.
file(GLOB_RECURSE texts ${prefix}/*.cmake ${prefix}/*.pc ${prefix}/*.h)
foreach(text IN LISTS texts)
  file(STRINGS ${text} found REGEX "${BUILD}|${here}|${WORK}" LIMIT_COUNT 1)
  if(found)
    message(FATAL_ERROR "${text}: ${found}")
  endif()
endforeach()
if(KIND STREQUAL "shared")
  foreach(library core widget)
    set(file ${prefix}/${LIBDIR}/libtvxhtml-${library}.so)
    if(EXISTS ${file})
      execute_process(COMMAND nm --dynamic --defined-only --demangle ${file} OUTPUT_VARIABLE symbols)
      string(REGEX MATCHALL "[^\n]+" symbols "${symbols}")
      list(FILTER symbols EXCLUDE REGEX " tvx::| for tvx::| to tvx::| [^ ]+ tvx::")
      if(symbols)
        list(JOIN symbols "\n" symbols)
        message(FATAL_ERROR "shown by ${file}:\n${symbols}")
      endif()
    endif()
  endforeach()
endif()
