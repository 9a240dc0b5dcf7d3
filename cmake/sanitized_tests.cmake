# Tests that build programs of their own, or have Python load the libraries, under the sanitizers.
#
# What loads a checked library has to bring the checks along. Compilers of such a test are found in a folder that its PATH
# begins with: they are the real ones, given the checks. So is Python, with the checks loaded before it.
#
# TVX_TEST_PYTHON                the Python of tests
# tvx_sanitized_hosts(<test>...) those tests
# tvx_sanitized_patience()       gives all tests of a folder the time that they take then
# Without sanitizers the last two do nothing.
find_program(TVX_PYTHON NAMES python3 PATHS /usr/bin NO_DEFAULT_PATH)
set(TVX_TEST_PYTHON ${TVX_PYTHON})
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  function(tvx_sanitized_hosts)
  endfunction()
  function(tvx_sanitized_patience)
  endfunction()
  return()
endif()

set(tvx_checked ${PROJECT_BINARY_DIR}/checked)
set(tvx_checks "")
foreach(library asan ubsan)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${library}.so OUTPUT_VARIABLE file
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  list(APPEND tvx_checks ${file})
endforeach()
list(JOIN tvx_checks ":" tvx_checks)

function(tvx_checked_program name content)
  file(WRITE ${tvx_checked}/${name} "#!/bin/sh\nexec ${content} \"$@\"\n")
  file(CHMOD ${tvx_checked}/${name} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endfunction()
foreach(name cc gcc)
  tvx_checked_program(${name} "${CMAKE_C_COMPILER} -fsanitize=address,undefined")
endforeach()
foreach(name c++ g++)
  tvx_checked_program(${name} "${CMAKE_CXX_COMPILER} -fsanitize=address,undefined -fno-sanitize=vptr")
endforeach()
if(TVX_PYTHON)
  tvx_checked_program(python3 "env LD_PRELOAD=${tvx_checks} ${TVX_PYTHON}")
  set(TVX_TEST_PYTHON ${tvx_checked}/python3)
endif()

function(tvx_sanitized_hosts)
  set_property(TEST ${ARGN} APPEND PROPERTY ENVIRONMENT_MODIFICATION "PATH=path_list_prepend:${tvx_checked}")
endfunction()

function(tvx_sanitized_patience)
  get_property(tests DIRECTORY PROPERTY TESTS)
  set_property(TEST ${tests} PROPERTY TIMEOUT 1800)
endfunction()
