# timeshare_sources(OUT FOLDER...): all sources and headers below the folders.
function(timeshare_sources out)
  set(all)
  foreach(folder ${ARGN})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.cpp ${CMAKE_SOURCE_DIR}/${folder}/*.h)
    list(APPEND all ${found})
  endforeach()
  set(${out} ${all} PARENT_SCOPE)
endfunction()

# timeshare_units(TARGET): where TIMESHARE_UNITS is on, up to 24 sources of a folder are compiled as one unit, which
# takes less than half of the time. What a source keeps to itself therefore has a name that is its own in its folder.
function(timeshare_units target)
  if(NOT TIMESHARE_UNITS)
    return()
  endif()
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_MODE GROUP)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  list(SORT sources)
  foreach(source ${sources})
    get_filename_component(folder ${source} DIRECTORY)
    file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${folder})
    string(MAKE_C_IDENTIFIER ${folder} folder)
    math(EXPR unit "0${count_${folder}} / 24")
    math(EXPR count_${folder} "0${count_${folder}} + 1")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${unit})
  endforeach()
endfunction()

# timeshare_library(NAME KIND SOURCE...): a library with the precompiled header.
function(timeshare_library name kind)
  add_library(${name} ${kind} ${ARGN})
  timeshare_units(${name})
  target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled.h)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# timeshare_translation_resource(OUT NAME): a resource file with a translation of Qt's own texts, under
# :/timeshare/translations, so that dialogs speak the program's language wherever it runs.
function(timeshare_translation_resource out name)
  get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
  execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS OUTPUT_VARIABLE folder
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS ${folder}/${name})
    message(FATAL_ERROR "${folder}/${name} is missing: install qttranslations5-l10n (setup/packages.sh)")
  endif()
  set(resource ${CMAKE_BINARY_DIR}/translations.qrc)
  file(CONFIGURE OUTPUT ${resource} @ONLY CONTENT
    "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/timeshare/translations\">\n    <file alias=\"@name@\">@folder@/@name@</file>\n  </qresource>\n</RCC>\n")
  set(${out} ${resource} PARENT_SCOPE)
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
