# What hosts find where the editor is installed: headers, two libraries, and what CMake and pkg-config know of them.
#
# tvxhtml-core holds the layers without Qt, tvxhtml-widget the widget on top of it. Each is made of the layers' objects,
# shared or static as BUILD_SHARED_LIBS says; the other kind is built where it is asked for, as the tests do.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# What hosts program against. A change of the first number breaks them; the programs have versions of their own.
set(TVX_INTERFACE_VERSION 1.0)
set(TVX_PACKAGE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/tvxHTML)
if(BUILD_SHARED_LIBS)
  set(TVX_KIND shared)
else()
  set(TVX_KIND static)
endif()

# tvx_installed_library(<name> <component> LAYERS <layer>... [LINKS <target>...] [PUBLIC <target>...] [ON <name>]
#                       [PACKAGES <pkg-config package>...] [PUBLIC_PACKAGES <package>...])
# LINKS are what the layers need, PUBLIC what the hosts need as well, ON another of these libraries. PACKAGES and
# PUBLIC_PACKAGES say the same to pkg-config.
function(tvx_installed_library name component)
  cmake_parse_arguments(ARG "" "ON" "LAYERS;LINKS;PUBLIC;PACKAGES;PUBLIC_PACKAGES" ${ARGN})
  list(TRANSFORM ARG_LAYERS REPLACE "(.+)" "$<TARGET_OBJECTS:tvx_\\1>")
  foreach(kind shared static)
    set(target ${name}-${kind})
    string(TOUPPER ${kind} form)
    add_library(${target} ${form} ${ARG_LAYERS})
    set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} EXPORT_NAME ${component} LINKER_LANGUAGE CXX
      VERSION ${PROJECT_VERSION} SOVERSION 1 BUILD_WITH_INSTALL_RPATH ON INSTALL_RPATH "$ORIGIN"
      LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib/${kind} ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib/${kind})
    target_compile_features(${target} INTERFACE cxx_std_20)
    target_include_directories(${target} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    target_link_libraries(${target} PRIVATE ${ARG_LINKS} PUBLIC ${ARG_PUBLIC})
    if(ARG_ON)
      target_link_libraries(${target} PUBLIC ${ARG_ON}-${kind})
    endif()
    set(skip)
    if(NOT kind STREQUAL TVX_KIND)
      set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
      set(skip EXCLUDE_FROM_ALL)
    endif()
    install(TARGETS ${target} EXPORT tvxHTML-${component}-${kind}
      LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${kind} NAMELINK_COMPONENT ${kind}-development ${skip}
      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${kind} ${skip})
    install(EXPORT tvxHTML-${component}-${kind} NAMESPACE tvxHTML:: FILE tvxHTML-${component}-${kind}.cmake
      DESTINATION ${TVX_PACKAGE_FOLDER} COMPONENT ${kind}-development ${skip})
    tvx_install_pkg_config(${name} ${kind} "${ARG_ON}" "${ARG_PACKAGES}" "${ARG_PUBLIC_PACKAGES}" ${skip})
  endforeach()

  # Hidden from hosts is whatever the library is made of; the widget on top of the core needs the namespace tvx.
  set(map ${PROJECT_SOURCE_DIR}/cmake/${name}.map)
  target_link_options(${name}-shared PRIVATE -Wl,--version-script=${map} -Wl,-Bsymbolic-functions)
  set_target_properties(${name}-shared PROPERTIES LINK_DEPENDS ${map})
endfunction()

# A static library brings what it needs into each program. Of what a shared one needs nothing is said: pkg-config wants
# to find private packages as well, and who only links the library has no headers of theirs.
function(tvx_install_pkg_config name kind on packages public_packages)
  file(RELATIVE_PATH TVX_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" TVX_TO_PREFIX ${TVX_TO_PREFIX})
  set(TVX_LIBRARY ${name})
  set(TVX_REQUIRES ${on} ${public_packages})
  if(kind STREQUAL static)
    list(APPEND TVX_REQUIRES ${packages})
  endif()
  list(JOIN TVX_REQUIRES " " TVX_REQUIRES)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${kind}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${kind}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT ${kind}-development ${ARGN})
endfunction()

tvx_installed_library(tvxhtml-core Core
  LAYERS base dom editing platform browser services source network transfer clipboard localise dialogs tables spelling core
    library files headless windowless
  LINKS PkgConfig::ICU CURL::libcurl EXPAT::EXPAT PkgConfig::HUNSPELL
  PACKAGES icu-uc icu-i18n libcurl expat hunspell)
set(headers document_file.h error.h message_loop.h object.h property_bag.h)
set(written enumerations.h events.h htmled.h tvxhtml.h)
if(TVX_QT)
  tvx_installed_library(tvxhtml-widget Widget ON tvxhtml-core LAYERS qt
    LINKS Qt6::QuickWidgets Qt6::WebEngineWidgets Qt6::WebChannel Qt6::Svg Qt6::PrintSupport PkgConfig::XCB PkgConfig::QPDF PUBLIC Qt6::Widgets
    PACKAGES Qt6QuickWidgets Qt6WebEngineWidgets Qt6WebChannel Qt6Svg Qt6PrintSupport xcb libqpdf PUBLIC_PACKAGES Qt6Widgets)
  list(APPEND headers page_setup.h settings_store.h web_engine.h)
  list(APPEND written htmled_widget.h)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/exported.cmake)

list(TRANSFORM headers PREPEND ${PROJECT_SOURCE_DIR}/include/tvx/)
list(TRANSFORM written PREPEND ${PROJECT_BINARY_DIR}/include/tvx/)
install(FILES ${headers} ${written} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tvx COMPONENT headers)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/tvxHTMLConfig.cmake.in
  ${PROJECT_BINARY_DIR}/package/tvxHTMLConfig.cmake INSTALL_DESTINATION ${TVX_PACKAGE_FOLDER}
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/tvxHTMLConfigVersion.cmake VERSION ${TVX_INTERFACE_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/tvxHTMLConfig.cmake ${PROJECT_BINARY_DIR}/package/tvxHTMLConfigVersion.cmake
  DESTINATION ${TVX_PACKAGE_FOLDER} COMPONENT headers)
