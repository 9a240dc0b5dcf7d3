# Debian packages, made by scripts/package: the programs, the shared libraries, what building against these needs, the
# plugin for Qt Designer, and the Python module.
include(GNUInstallDirs)
add_custom_target(tvx_packaged)
add_dependencies(tvx_packaged htmled htmled-cli tvxhtml-core-shared tvxhtml-widget-shared tvxHTML tvxHTML-window tvxhtml-designer
  tvxhtml-python)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tvxhtml)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "tvxHTML contributors <contributors@tvxhtml.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Visual HTML editor")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs scripts shared headers shared-development designer python)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_COMPONENT_PROGRAMS_GROUP editor)
set(CPACK_COMPONENT_SCRIPTS_GROUP editor)
set(CPACK_COMPONENT_SHARED_GROUP library)
set(CPACK_COMPONENT_HEADERS_GROUP development)
set(CPACK_COMPONENT_SHARED-DEVELOPMENT_GROUP development)
set(CPACK_COMPONENT_DESIGNER_GROUP designer)
set(CPACK_COMPONENT_PYTHON_GROUP python)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib/shared)

# What no program links, and none of them runs without: the engine's own process, and the pictures on the buttons.
set(unlinked "libqt6webenginecore6-bin, libqt6svg6")

set(CPACK_DEBIAN_EDITOR_PACKAGE_NAME htmled)
set(CPACK_DEBIAN_EDITOR_PACKAGE_SECTION web)
set(CPACK_DEBIAN_EDITOR_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_EDITOR_PACKAGE_DEPENDS ${unlinked})
set(CPACK_DEBIAN_EDITOR_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland, qt6-translations-l10n, cups-client, hunspell-en-us | hunspell-dictionary")
set(CPACK_DEBIAN_EDITOR_DESCRIPTION "Pages are edited as a browser shows them and saved with every line
that wasn't edited as it was: tables, forms, pictures, spelling, publishing to
a server. With it comes htmled-cli, which edits pages by scripts and without a
screen.")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libtvxhtml1)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS ${unlinked})
set(CPACK_DEBIAN_LIBRARY_DESCRIPTION "The editor for programs that have their users or scripts edit HTML: as a Qt
widget, without a window, and for programs in any language by libtvxHTML.so.")

file(WRITE ${PROJECT_BINARY_DIR}/package/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/package/triggers)

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtvxhtml-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libtvxhtml1 (= ${PROJECT_VERSION}), qt6-base-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "What building a program with the editor needs: headers for C++ and C, and what
CMake and pkg-config find the libraries by.")

set(CPACK_DEBIAN_DESIGNER_PACKAGE_NAME tvxhtml-designer)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DESIGNER_PACKAGE_DEPENDS "libtvxhtml1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DESIGNER_PACKAGE_RECOMMENDS designer-qt6)
set(CPACK_DEBIAN_DESIGNER_DESCRIPTION "The editor in the widget box of Qt Designer, with its properties, signals and
slots, and for programs that load their forms when they run.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-tvxhtml)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3 (>= 3.9), libtvxhtml1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "The editor as a module of Python: properties are attributes, events take
handlers that can veto, and it shows in a window or works without one.")
# Compiled when it is installed: what Python compiles later by itself, no package takes away.
foreach(step "postinst;configure;py3compile" "prerm;*;py3clean")
  list(GET step 0 script)
  list(GET step 1 when)
  list(GET step 2 command)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/package/python/${script} @ONLY CONTENT "#!/bin/sh
set -e
case \"$1\" in
  @when@) @command@ -p python3-tvxhtml ;;
esac
")
  file(CHMOD ${PROJECT_BINARY_DIR}/package/python/${script}
    PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  list(APPEND CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/package/python/${script})
endforeach()
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# Each package brings its licence and its changes along.
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
foreach(package "htmled;programs" "libtvxhtml1;shared" "libtvxhtml-dev;headers" "tvxhtml-designer;designer" "python3-tvxhtml;python")
  list(GET package 0 name)
  list(GET package 1 component)
  set(folder ${PROJECT_BINARY_DIR}/package/${name})
  file(WRITE ${folder}/changelog "${name} (${PROJECT_VERSION}) unstable; urgency=medium\n\n  * See CHANGELOG.md in the source.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${now}\n")
  execute_process(COMMAND gzip -9nf ${folder}/changelog)
  configure_file(${PROJECT_SOURCE_DIR}/LICENSE ${folder}/copyright COPYONLY)
  install(FILES ${folder}/changelog.gz ${folder}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
    COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()
include(CPack)
