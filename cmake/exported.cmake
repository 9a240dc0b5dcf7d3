# libtvxHTML.so, which programs in any language load by its four entry points, and the part of it that needs a desktop. Both
# are shared by nature and stand on the shared libraries of this folder.
set(TVX_C_FOLDER ${PROJECT_BINARY_DIR}/lib/shared)

# tvx_exported_library(<target> <kind> <layer> LINKS <target>... MAP <version script>)
function(tvx_exported_library target kind layer)
  cmake_parse_arguments(ARG "" "MAP" "LINKS" ${ARGN})
  add_library(${target} ${kind} $<TARGET_OBJECTS:tvx_${layer}>)
  set(map ${PROJECT_SOURCE_DIR}/cmake/${ARG_MAP})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX BUILD_WITH_INSTALL_RPATH ON LINK_DEPENDS ${map})
  target_link_libraries(${target} PRIVATE ${ARG_LINKS} ${CMAKE_DL_LIBS})
  target_link_options(${target} PRIVATE -Wl,--version-script=${map})
  if(NOT BUILD_SHARED_LIBS)
    set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endfunction()

set(skip)
if(NOT BUILD_SHARED_LIBS)
  set(skip EXCLUDE_FROM_ALL)
endif()

tvx_exported_library(tvxHTML SHARED exported LINKS tvxhtml-core-shared MAP libtvxHTML.map)
set_target_properties(tvxHTML PROPERTIES OUTPUT_NAME tvxHTML EXPORT_NAME C VERSION ${PROJECT_VERSION} SOVERSION 1
  INSTALL_RPATH "$ORIGIN" LIBRARY_OUTPUT_DIRECTORY ${TVX_C_FOLDER})
target_include_directories(tvxHTML INTERFACE $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
add_dependencies(tvxHTML tvx_interface)
install(TARGETS tvxHTML EXPORT tvxHTML-C-shared
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT shared NAMELINK_COMPONENT shared-development ${skip})
install(EXPORT tvxHTML-C-shared NAMESPACE tvxHTML:: FILE tvxHTML-C-shared.cmake DESTINATION ${TVX_PACKAGE_FOLDER}
  COMPONENT shared-development ${skip})
tvx_install_pkg_config(tvxHTML shared "" "" "" ${skip})

if(TVX_QT)
  tvx_exported_library(tvxHTML-window MODULE embedded LINKS tvxhtml-widget-shared Qt6::Widgets PkgConfig::XCB MAP window.map)
  set_target_properties(tvxHTML-window PROPERTIES OUTPUT_NAME window PREFIX "" INSTALL_RPATH "$ORIGIN/.."
    LIBRARY_OUTPUT_DIRECTORY ${TVX_C_FOLDER}/tvxhtml)
  install(TARGETS tvxHTML-window LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tvxhtml COMPONENT shared ${skip})
endif()

# So that the class is found by its name wherever the library has been installed: the path counts from the file's folder.
file(RELATIVE_PATH library /${CMAKE_INSTALL_DATADIR}/tvxHTML /${CMAKE_INSTALL_LIBDIR}/libtvxHTML.so.1)
# The classes beside the control have their identifiers in the description.
set(classes "tvxHTML.HTMLed\t{04C657AA-8E4F-4912-B967-DCEC43DE5A5C}\t${library}\n")
set(description ${PROJECT_SOURCE_DIR}/src/library/tvxhtml.interface)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${description})
file(STRINGS ${description} lines REGEX "^service |^  class: ")
foreach(line IN LISTS lines)
  if(line MATCHES "^service (.+)")
    set(name ${CMAKE_MATCH_1})
  elseif(line MATCHES "{[0-9A-F-]+}")
    string(APPEND classes "tvxHTML.${name}\t${CMAKE_MATCH_0}\t${library}\n")
  endif()
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/package/classes "${classes}")
install(FILES ${PROJECT_BINARY_DIR}/package/classes DESTINATION ${CMAKE_INSTALL_DATADIR}/tvxHTML COMPONENT shared ${skip})
