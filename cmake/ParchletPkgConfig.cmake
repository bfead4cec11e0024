# Configures and installs NAME.pc. It finds its prefix from where it lies, so that an installed tree
# can be moved.
#   parchlet_pkg_config(name)
function(parchlet_pkg_config name)
  file(RELATIVE_PATH PARCHLET_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" PARCHLET_PC_PREFIX "${PARCHLET_PC_PREFIX}")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
