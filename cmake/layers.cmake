# Layers of the house. A layer is one folder under src/, one static library tvx_<name>, and one
# include root that holds nothing but that folder. A source sees the headers of the layers it
# depends on and of no other: an include against the direction of the arrows doesn't compile.

# tvx_layer(<name> [DEPENDS <layer>...] [LIBRARIES <target>...])
function(tvx_layer name)
  cmake_parse_arguments(LAYER "" "" "DEPENDS;LIBRARIES" ${ARGN})
  set(folder ${CMAKE_SOURCE_DIR}/src/${name})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)

  # The include root of the layer: a folder with a single link to the sources.
  set(root ${CMAKE_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${folder} ${root}/${name} SYMBOLIC)

  set(units ${sources})
  list(FILTER units INCLUDE REGEX "\\.cpp$")
  if(units)
    add_library(tvx_${name} STATIC ${sources})
    set(scope PUBLIC)
    target_compile_options(tvx_${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
  else()
    add_library(tvx_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(tvx_${name} ${scope} ${root})
  foreach(layer IN LISTS LAYER_DEPENDS)
    target_link_libraries(tvx_${name} ${scope} tvx_${layer})
  endforeach()
  target_link_libraries(tvx_${name} ${scope} ${LAYER_LIBRARIES})
endfunction()
