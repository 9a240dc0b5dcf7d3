# What a host sees of the control is described once, in src/library/tvxhtml.interface. From there the build writes code,
# included as "tvx/interface/<piece>.inc", and those headers of hosts whose form is include/tvx/<header>.in.

set(TVX_WRITTEN_HEADERS enumerations.h events.h htmled.h htmled_widget.h tvxhtml.h)
# The layers that include pieces.
set(TVX_WRITTEN_LAYERS transfer core library windowless automation exported qt)

# Where a header of hosts is.
function(tvx_find_header header path)
  if(header IN_LIST TVX_WRITTEN_HEADERS)
    set(${path} ${PROJECT_BINARY_DIR}/include/tvx/${header} PARENT_SCOPE)
  else()
    set(${path} ${PROJECT_SOURCE_DIR}/include/tvx/${header} PARENT_SCOPE)
  endif()
endfunction()

set(TVX_PIECES ${PROJECT_BINARY_DIR}/interface)
set(description ${PROJECT_SOURCE_DIR}/src/library/tvxhtml.interface)
set(forms ${TVX_WRITTEN_HEADERS})
list(TRANSFORM forms REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/include/tvx/\\1.in")
set(headers ${TVX_WRITTEN_HEADERS})
list(TRANSFORM headers PREPEND ${PROJECT_BINARY_DIR}/include/tvx/)
set(pieces clsDirectoryItem_fields clsDirectoryItem_rows control_events date_members designer_properties
  enumeration_rows event_relay event_rows host_events
  host_members member_rows property_fields property_members reference_text relay_declarations service_classes store_keys type_enumerators
  type_names widget_events widget_members writing_order)
list(TRANSFORM pieces APPEND .inc)
# Units name what they include by the way that led there, the include roots' links: each is an output, or a change would
# be seen one build late.
foreach(layer IN LISTS TVX_WRITTEN_LAYERS)
  set(links ${pieces})
  list(TRANSFORM links PREPEND ${PROJECT_BINARY_DIR}/layers/${layer}/tvx/interface/)
  list(APPEND written ${links})
endforeach()
list(APPEND written ${PROJECT_BINARY_DIR}/layers/core/tvx/enumerations.h ${PROJECT_BINARY_DIR}/layers/windowless/tvx/events.h
  ${PROJECT_BINARY_DIR}/layers/windowless/tvx/htmled.h ${PROJECT_BINARY_DIR}/layers/exported/tvx/tvxhtml.h)
if(TVX_QT)
  list(APPEND written ${PROJECT_BINARY_DIR}/layers/qt/tvx/htmled_widget.h)
else()
  list(FILTER written EXCLUDE REGEX /layers/qt/)
endif()
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/include/tvx ${TVX_PIECES})

file(GLOB units CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/interface/*.cpp ${PROJECT_SOURCE_DIR}/cmake/interface/*.h)
add_executable(tvx_write_interface ${units})
target_compile_options(tvx_write_interface PRIVATE -O0 -Wall -Wextra)
add_custom_command(OUTPUT ${headers} ${written} DEPENDS tvx_write_interface ${description} ${forms} VERBATIM
  COMMAND tvx_write_interface ${description} ${PROJECT_SOURCE_DIR}/include/tvx
    ${TVX_PIECES} ${PROJECT_BINARY_DIR}/include/tvx
  COMMENT "Writing the control's interface")

# What includes a piece is compiled when all have been written.
add_custom_target(tvx_interface DEPENDS ${headers} ${written})
