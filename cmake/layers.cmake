# Layers of the house. A layer is one folder under src/, one static library tvx_<name>, and one
# include root that holds nothing but that folder. A source sees the headers of the layers it
# depends on and of no other: an include against the direction of the arrows doesn't compile.

# Aggregates are often given by their first members, the rest by default. And g++ 12 warns of overlaps and of values
# not set within its own strings and variants (its bugs 105329 and 105562) where there are none.
set(TVX_QUIET -Wno-missing-field-initializers)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  list(APPEND TVX_QUIET -Wno-restrict -Wno-maybe-uninitialized)
endif()

# Most of a unit's time goes into the standard library's headers: they are read once for all layers, and once for
# those that use Qt. A unit still includes what it uses; scripts/check compiles each header by itself.
set(TVX_STANDARD_HEADERS <algorithm> <array> <bitset> <cstdint> <deque> <functional> <map> <memory> <mutex> <optional>
  <set> <sstream> <string> <string_view> <unordered_map> <unordered_set> <utility> <variant> <vector>)
option(TVX_PRECOMPILE "Precompile the headers that most units share" ON)

# tvx_precompile(<target> [FROM <target>] [<header>...]): the standard library's headers and the given ones, or what
# another target with the same options has made.
function(tvx_precompile target)
  cmake_parse_arguments(PRECOMPILE "" "FROM" "" ${ARGN})
  if(NOT TVX_PRECOMPILE)
    return()
  endif()
  if(PRECOMPILE_FROM)
    target_precompile_headers(${target} REUSE_FROM ${PRECOMPILE_FROM})
  else()
    target_precompile_headers(${target} PRIVATE ${TVX_STANDARD_HEADERS} ${PRECOMPILE_UNPARSED_ARGUMENTS})
    # No two precompiled headers have the same bytes. The compiler cache goes by what they are made of: beside the
    # options, which it knows, these names and the versions of the libraries. The compiler brings its own headers.
    string(SHA256 sum "${TVX_STANDARD_HEADERS} ${PRECOMPILE_UNPARSED_ARGUMENTS} ${Qt6_VERSION} ${nlohmann_json_VERSION} \
${GTest_VERSION}")
    file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/cmake_pch.hxx.gch.sum ${sum})
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(${target} PRIVATE -fpch-preprocess)  # for the compiler cache
  endif()
endfunction()

# tvx_layer(<name> [DEPENDS <layer>...] [LIBRARIES <target>...] [PRECOMPILE <header>...] [HEADERS <header>...])
# HEADERS are those of include/tvx that the layer realises: within the house they are seen where the layer is.
function(tvx_layer name)
  cmake_parse_arguments(LAYER "" "" "DEPENDS;LIBRARIES;PRECOMPILE;HEADERS" ${ARGN})
  set(folder ${PROJECT_SOURCE_DIR}/src/${name})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)

  set_property(GLOBAL APPEND PROPERTY TVX_LAYERS ${name})

  # The include root of the layer: a folder with a single link to the sources. Everything is included as
  # "tvx/<layer>/...", which can't collide with a header of the host's program.
  set(root ${PROJECT_BINARY_DIR}/layers/${name})
  file(MAKE_DIRECTORY ${root}/tvx)
  file(CREATE_LINK ${folder} ${root}/tvx/${name} SYMBOLIC)
  foreach(header IN LISTS LAYER_HEADERS)
    tvx_find_header(${header} path)
    list(APPEND sources ${path})
    file(CREATE_LINK ${path} ${root}/tvx/${header} SYMBOLIC)
  endforeach()

  set(units ${sources})
  list(FILTER units INCLUDE REGEX "\\.cpp$")
  if(units)
    add_library(tvx_${name} STATIC ${sources})
    set(scope PUBLIC)
    if(LAYER_PRECOMPILE OR name STREQUAL "base")
      tvx_precompile(tvx_${name} ${LAYER_PRECOMPILE})
    else()
      tvx_precompile(tvx_${name} FROM tvx_base)
    endif()
    target_compile_options(tvx_${name} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor ${TVX_QUIET})
  else()
    add_library(tvx_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(tvx_${name} ${scope} ${root})
  if(name IN_LIST TVX_WRITTEN_LAYERS)
    file(CREATE_LINK ${TVX_PIECES} ${root}/tvx/interface SYMBOLIC)
    add_dependencies(tvx_${name} tvx_interface)
  endif()
  foreach(layer IN LISTS LAYER_DEPENDS)
    target_link_libraries(tvx_${name} ${scope} tvx_${layer})
  endforeach()
  target_link_libraries(tvx_${name} ${scope} ${LAYER_LIBRARIES})
endfunction()
