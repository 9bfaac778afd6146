# timeshare_sources(OUT FOLDER...): all sources and headers below the folders.
function(timeshare_sources out)
  set(all)
  foreach(folder ${ARGN})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    list(APPEND all ${found})
  endforeach()
  set(${out} ${all} PARENT_SCOPE)
endfunction()

# timeshare_library(NAME KIND SOURCE...): a library with the precompiled header.
function(timeshare_library name kind)
  add_library(${name} ${kind} ${ARGN})
  target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled.h)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()
