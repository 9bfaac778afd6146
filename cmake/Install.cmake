# What is installed, in three components, each a Debian package: runtime (libtimeshare1), development (libtimeshare-dev)
# and terminal (timeshare-terminal).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set_target_properties(timeshare_host PROPERTIES EXPORT_NAME host)
set_target_properties(timeshare_toolkit_shared PROPERTIES EXPORT_NAME toolkit INSTALL_RPATH "$ORIGIN")
set_target_properties(timeshare_shared PROPERTIES EXPORT_NAME chart INSTALL_RPATH "$ORIGIN")
install(TARGETS timeshare_host timeshare_toolkit_shared timeshare_shared EXPORT timeshareTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/timeshare COMPONENT development)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/timeshare)
install(EXPORT timeshareTargets NAMESPACE timeshare:: DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(cmake/package/timeshareConfig.cmake.in ${PROJECT_BINARY_DIR}/package/timeshareConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/timeshareConfigVersion.cmake
  VERSION ${TIMESHARE_PACKAGE_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/timeshareConfig.cmake ${PROJECT_BINARY_DIR}/package/timeshareConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# Wherever the tree is put: folders from the place of the file.
set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH TIMESHARE_PREFIX_FROM_PC /prefix/${pc_folder} /prefix)
string(REGEX REPLACE "/$" "" TIMESHARE_PREFIX_FROM_PC ${TIMESHARE_PREFIX_FROM_PC})
configure_file(cmake/package/timeshare.pc.in ${PROJECT_BINARY_DIR}/package/timeshare.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/package/timeshare.pc DESTINATION ${pc_folder} COMPONENT development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libtimeshare-dev COMPONENT development
  PATTERN pictures.py EXCLUDE)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libtimeshare-dev COMPONENT development)

if(TIMESHARE_TERMINAL)
  # The terminal looks for its two helpers beside itself, and follows links to where it really lies.
  set(program_folder ${CMAKE_INSTALL_LIBEXECDIR}/timeshare)
  file(RELATIVE_PATH to_libraries /prefix/${program_folder} /prefix/${CMAKE_INSTALL_LIBDIR})
  set(programs timeshare-terminal)
  foreach(server timeshare-feed timeshare-load)
    if(TARGET ${server})
      list(APPEND programs ${server})
    endif()
  endforeach()
  set_target_properties(${programs} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
  install(TARGETS ${programs} timeshare-supervisor timeshare-reader DESTINATION ${program_folder} COMPONENT terminal)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/package)
  foreach(program ${programs})
    file(RELATIVE_PATH to_program /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${program_folder}/${program})
    file(CREATE_LINK ${to_program} ${PROJECT_BINARY_DIR}/package/${program} SYMBOLIC)
    install(FILES ${PROJECT_BINARY_DIR}/package/${program} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT terminal)
  endforeach()
  install(FILES docs/guide.md docs/formulas.md docs/catalogue.md docs/scripts.md docs/operating.md docs/wire.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/timeshare-terminal COMPONENT terminal)

  # What runs the servers: one script for one machine, and units of systemd, which are started by nobody but their operator.
  if(TARGET timeshare-feed AND TARGET timeshare-load)
    install(PROGRAMS setup/servers DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME timeshare-servers COMPONENT terminal)
    install(PROGRAMS setup/load-inbox DESTINATION ${program_folder} COMPONENT terminal)
    install(FILES setup/systemd/timeshare-nats.service setup/systemd/timeshare-feed.service
      setup/systemd/timeshare-load.service setup/systemd/timeshare-load.timer
      DESTINATION lib/systemd/system COMPONENT terminal)
    install(FILES setup/systemd/nats.conf.example DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/timeshare-terminal
      COMPONENT terminal)
  endif()
endif()

include(cmake/Packages.cmake)
