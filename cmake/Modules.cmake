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

# timeshare_formula_resource(OUT FOLDER): a resource file with all formula files below the folder, under
# :/timeshare/formulas, so that a built program needs no source folder.
function(timeshare_formula_resource out folder)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}/${folder} ${CMAKE_SOURCE_DIR}/${folder}/*.lua)
  set(entries "")
  foreach(file ${found})
    string(APPEND entries "    <file alias=\"${file}\">${CMAKE_SOURCE_DIR}/${folder}/${file}</file>\n")
  endforeach()
  set(resource ${CMAKE_BINARY_DIR}/${folder}.qrc)
  file(CONFIGURE OUTPUT ${resource} @ONLY CONTENT
    "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/timeshare/formulas\">\n@entries@  </qresource>\n</RCC>\n")
  set(${out} ${resource} PARENT_SCOPE)
endfunction()
