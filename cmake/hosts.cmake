# What a host links: the libraries, with the headers of include/ and no other.

# tvx_host_library(<Name> LINKS <layer>... [LIBRARIES <target>...]): the target tvxHTML::<Name>.
function(tvx_host_library name)
  cmake_parse_arguments(HOST "" "" "LINKS;LIBRARIES" ${ARGN})
  add_library(tvxHTML_${name} INTERFACE)
  add_library(tvxHTML::${name} ALIAS tvxHTML_${name})
  target_compile_features(tvxHTML_${name} INTERFACE cxx_std_20)
  target_include_directories(tvxHTML_${name} INTERFACE ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
  # To be linked, but their own headers aren't the host's.
  list(TRANSFORM HOST_LINKS REPLACE "(.+)" "$<LINK_ONLY:tvx_\\1>")
  target_link_libraries(tvxHTML_${name} INTERFACE ${HOST_LINKS} ${HOST_LIBRARIES})
endfunction()
