# The numbers of host/Version.h: TIMESHARE_RELEASE, such as 0.2.0; TIMESHARE_INTERFACE, such as 1; and both together,
# TIMESHARE_PACKAGE_VERSION, such as 1.0.2.0, by which a package is found: a host asks for the interface.
foreach(name INTERFACE VERSION_MAJOR VERSION_MINOR VERSION_PATCH)
  file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../host/Version.h line REGEX "^#define TIMESHARE_${name} [0-9]+$")
  if(NOT line MATCHES "([0-9]+)$")
    message(FATAL_ERROR "host/Version.h has no number TIMESHARE_${name}")
  endif()
  set(${name} ${CMAKE_MATCH_1})
endforeach()
set(TIMESHARE_INTERFACE ${INTERFACE})
set(TIMESHARE_RELEASE ${VERSION_MAJOR}.${VERSION_MINOR}.${VERSION_PATCH})
set(TIMESHARE_PACKAGE_VERSION ${TIMESHARE_INTERFACE}.${TIMESHARE_RELEASE})
# A changed number is seen by the next build.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../host/Version.h)
