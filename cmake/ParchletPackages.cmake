# Debian packages, by `cpack -G DEB` in a build folder: see scripts/package.sh. Their names follow the
# SONAMEs, so that a library of another interface installs beside this one.
set(interface ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(runtime libparchlet${interface})
set(x11 libparchlet-x11-${interface})
set(same "(= ${PROJECT_VERSION})")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME parchlet)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Parchlet developers <parchlet@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where the libraries lie that other packages of this build need; what they belong to is said below.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/src ${PROJECT_BINARY_DIR}/src/x11)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY "=")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The default family of authors' names is a Chinese one.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "fonts-wqy-microhei | fonts-noto-cjk")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "The shared library that applications built with Parchlet need.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libparchlet-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(development_needs "${runtime} ${same}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "Headers for C and C++, the CMake package and the pkg-config files.")

if(PARCHLET_BUILD_X11)
  list(APPEND CPACK_COMPONENTS_ALL x11)
  string(APPEND development_needs ", ${x11} ${same}")
  set(CPACK_DEBIAN_X11_PACKAGE_NAME ${x11})
  set(CPACK_DEBIAN_X11_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_X11_PACKAGE_DEPENDS "${runtime} ${same}")
  set(CPACK_COMPONENT_X11_DESCRIPTION "The adapter for X11 desktops.")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${development_needs}")

if(PARCHLET_BUILD_APPS)
  list(APPEND CPACK_COMPONENTS_ALL examples)
  set(CPACK_DEBIAN_EXAMPLES_PACKAGE_NAME parchlet-examples)
  set(CPACK_DEBIAN_EXAMPLES_PACKAGE_SECTION graphics)
  set(CPACK_DEBIAN_EXAMPLES_PACKAGE_DEPENDS "${runtime} ${same}")
  set(CPACK_COMPONENT_EXAMPLES_DESCRIPTION "parchlet-replay and boards for it.")
  if(PARCHLET_BUILD_X11)
    string(APPEND CPACK_DEBIAN_EXAMPLES_PACKAGE_DEPENDS ", ${x11} ${same}")
    string(PREPEND CPACK_COMPONENT_EXAMPLES_DESCRIPTION "parchlet-whiteboard; ")
  endif()
endif()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${component} name)
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}
    COMPONENT ${component})
endforeach()

include(CPack)
