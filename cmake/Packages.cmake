# The Debian packages, from the preset "package": cmake --build --preset package, then cpack --preset package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME timeshare)
set(CPACK_PACKAGE_VENDOR timeshare)
set(CPACK_PACKAGE_CONTACT "timeshare maintainers <maintainers@timeshare.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Intraday time-share chart of a trading terminal")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(TIMESHARE_TERMINAL)
  list(APPEND CPACK_COMPONENTS_ALL terminal)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
# Libraries that a package needs are found in what it holds.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(same_release "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

# libtimeshare1; over Qt 6 libtimeshare-qt6-1
set(library_package libtimeshare${TIMESHARE_INTERFACE})
set(qt_development qtbase5-dev)
set(qt_sqlite libqt5sql5-sqlite)
if(TIMESHARE_QT_SUFFIX)
  set(library_package libtimeshare${TIMESHARE_QT_SUFFIX}-${TIMESHARE_INTERFACE})
  set(qt_development qt${TIMESHARE_QT}-base-dev)
  set(qt_sqlite libqt${TIMESHARE_QT}sql${TIMESHARE_QT}-sqlite)
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS fonts-noto-cjk)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/package/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "Intraday time-share chart, libraries
 Qt widgets that draw the minute-by-minute chart of an instrument.")

# One set of headers and of files for CMake: that of one Qt.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtimeshare${TIMESHARE_QT_SUFFIX}-dev)
if(TIMESHARE_QT_SUFFIX)
  set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONFLICTS libtimeshare-dev)
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} ${same_release}, ${qt_development} (>= ${qt_release}), libboost-dev (>= 1.74)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Intraday time-share chart, headers
 What it takes to build a program that shows the chart.")

set(CPACK_DEBIAN_TERMINAL_PACKAGE_NAME timeshare-terminal)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_TERMINAL_PACKAGE_DEPENDS
  "${library_package} ${same_release}, ${qt_sqlite}, fonts-noto-cjk, fonts-dejavu-core, tzdata, python3")
set(CPACK_DEBIAN_TERMINAL_PACKAGE_SUGGESTS "nats-server, postgresql")
set(CPACK_COMPONENT_TERMINAL_DESCRIPTION "Small trading terminal around the time-share chart
 Runs on a simulated market that it makes by itself, or on imported bars.")

include(CPack)
