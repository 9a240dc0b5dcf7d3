# Each header stands on its own: the target check_headers compiles every one with nothing before it, not even the
# precompiled headers, which would hide what is missing. Unchanged ones aren't compiled again.
add_custom_target(check_headers)

# tvx_check_headers(<name> LINKS <target>... HEADERS <header>...): headers as they are included.
function(tvx_check_headers name)
  cmake_parse_arguments(CHECK "" "" "LINKS;HEADERS" ${ARGN})
  foreach(header IN LISTS CHECK_HEADERS)
    set(unit ${PROJECT_BINARY_DIR}/header_checks/${name}/${header}.cpp)
    file(CONFIGURE OUTPUT ${unit} CONTENT "#include \"${header}\"\n")
    list(APPEND units ${unit})
  endforeach()
  if(NOT units)
    return()
  endif()
  add_library(tvx_headers_of_${name} OBJECT EXCLUDE_FROM_ALL ${units})
  target_link_libraries(tvx_headers_of_${name} PRIVATE ${CHECK_LINKS})
  target_compile_options(tvx_headers_of_${name} PRIVATE -O0 ${TVX_QUIET})
  set_target_properties(tvx_headers_of_${name} PROPERTIES OPTIMIZE_DEPENDENCIES ON)  # the libraries needn't be there
  add_dependencies(check_headers tvx_headers_of_${name})
endfunction()

# The headers of a layer's folder.
function(tvx_check_layer layer)
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/src/${layer}/*.h)
  list(TRANSFORM headers PREPEND tvx/)
  tvx_check_headers(${layer} LINKS tvx_${layer} HEADERS ${headers})
endfunction()

get_property(layers GLOBAL PROPERTY TVX_LAYERS)
foreach(layer IN LISTS layers)
  tvx_check_layer(${layer})
endforeach()

# Those of hosts, with include/ alone and, for the widget's, Qt.
tvx_check_headers(hosts LINKS tvxHTML::Core tvxHTML::Files HEADERS tvx/document_file.h tvx/enumerations.h tvx/error.h
  tvx/events.h tvx/htmled.h tvx/message_loop.h tvx/object.h tvx/property_bag.h tvx/tvxhtml.h)
if(TVX_QT)
  tvx_check_headers(hosts_with_qt LINKS tvxHTML::Widget HEADERS tvx/htmled_widget.h tvx/page_setup.h tvx/settings_store.h tvx/web_engine.h)
endif()
