# cmake --install: the library, its headers, the programs, and what finds them again.
include(CMakePackageConfigHelpers)

install(TARGETS corma EXPORT cormaTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}")
install(TARGETS cfgctl RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")

install(EXPORT cormaTargets
  NAMESPACE corma::
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/corma")
configure_package_config_file(cmake/cormaConfig.cmake.in "${PROJECT_BINARY_DIR}/cormaConfig.cmake"
  INSTALL_DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/corma")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cormaConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/cormaConfig.cmake"
    "${PROJECT_BINARY_DIR}/cormaConfigVersion.cmake"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/cmake/corma")

# The prefix is worked out from where the file lies, so that an installed tree can be moved.
file(RELATIVE_PATH corma_pc_up
  "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig" "${CMAKE_INSTALL_PREFIX}")
configure_file(cmake/corma.pc.in "${PROJECT_BINARY_DIR}/corma.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/corma.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# The editor as a program of the desktop.
if(CORMA_EDITOR)
  install(TARGETS cfgdesk RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  install(FILES resources/desktop/cfgdesk.desktop
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES resources/icons/cfgdesk.svg
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps")
  install(FILES docs/man/cfgdesk.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
endif()
