# timeshare_sources(OUT FOLDER...): all sources and headers below the folders.
function(timeshare_sources out)
  set(all)
  foreach(folder ${ARGN})
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${folder}/*.cpp ${PROJECT_SOURCE_DIR}/${folder}/*.h)
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
  list(FILTER sources EXCLUDE REGEX "/qrc_[a-z_]*\\.cpp$") # what Qt's tools make
  list(SORT sources)
  foreach(source ${sources})
    get_filename_component(folder ${source} DIRECTORY)
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${folder})
    string(MAKE_C_IDENTIFIER ${folder} folder)
    math(EXPR unit "0${count_${folder}} / 24")
    math(EXPR count_${folder} "0${count_${folder}} + 1")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${folder}_${unit})
  endforeach()
endfunction()

# timeshare_library(NAME KIND SOURCE...): a library with the precompiled header, which is compiled once for all of them.
function(timeshare_library name kind)
  add_library(${name} ${kind} ${ARGN})
  timeshare_units(${name})
  target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)
  get_property(first GLOBAL PROPERTY timeshare_first_library)
  if(first)
    target_precompile_headers(${name} REUSE_FROM ${first})
  else()
    target_precompile_headers(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/precompiled.h)
    set_property(GLOBAL PROPERTY timeshare_first_library ${name})
  endif()
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# timeshare_product(NAME SOURCE...): a library that programs link. Three targets of the same objects: NAME, an archive in
# which the programs of this tree, tests above all, see everything; NAME_shared, which is installed as NAME and shows what
# is marked TIMESHARE_EXPORT; and NAME_objects, which compiles them. A program takes either the archives or the shared
# ones: with both it would have all twice, the installed services as well.
function(timeshare_product name)
  timeshare_library(${name}_objects OBJECT ${ARGN})
  add_library(${name} STATIC EXCLUDE_FROM_ALL $<TARGET_OBJECTS:${name}_objects>)
  add_library(${name}_shared SHARED $<TARGET_OBJECTS:${name}_objects>)
  set_target_properties(${name} ${name}_shared PROPERTIES AUTOMOC OFF LINKER_LANGUAGE CXX)
  timeshare_product_uses(${name} PUBLIC timeshare_host)

  # Templates of others that our code makes for itself are no part of the interface.
  set(exports ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${name}_shared PRIVATE "LINKER:--version-script=${exports}")
  if(NOT TIMESHARE_SANITIZER)
    target_link_options(${name}_shared PRIVATE LINKER:--no-undefined) # a sanitizer's functions are in the program
  endif()
  set_target_properties(${name}_shared PROPERTIES OUTPUT_NAME ${name}${TIMESHARE_QT_SUFFIX}
    VERSION ${TIMESHARE_PACKAGE_VERSION} SOVERSION ${TIMESHARE_INTERFACE} LINK_DEPENDS ${exports})
endfunction()

# timeshare_product_uses(NAME PUBLIC|PRIVATE LIBRARY...): what a library of timeshare_product links.
function(timeshare_product_uses name)
  foreach(target ${name} ${name}_shared ${name}_objects)
    target_link_libraries(${target} ${ARGN})
  endforeach()
endfunction()

# timeshare_translation_resource(OUT NAME): a resource file with a translation of Qt's own texts, under
# :/timeshare/translations, so that dialogs speak the program's language wherever it runs.
function(timeshare_translation_resource out name)
  get_target_property(qmake ${qt}::qmake IMPORTED_LOCATION)
  execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS OUTPUT_VARIABLE folder
    OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT EXISTS ${folder}/${name})
    message(FATAL_ERROR "${folder}/${name} is missing: install qttranslations5-l10n (setup/packages.sh does), "
      "for Qt 6 qt6-translations-l10n")
  endif()
  set(resource ${PROJECT_BINARY_DIR}/translations.qrc)
  file(CONFIGURE OUTPUT ${resource} @ONLY CONTENT
    "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/timeshare/translations\">\n    <file alias=\"@name@\">@folder@/@name@</file>\n  </qresource>\n</RCC>\n")
  set(${out} ${resource} PARENT_SCOPE)
endfunction()

# timeshare_resource(OUT PREFIX FOLDER PATTERN): a resource file with all files of a pattern below the folder, under the
# prefix, so that a built program needs no source folder.
function(timeshare_resource out prefix folder pattern)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR}/${folder}
    ${PROJECT_SOURCE_DIR}/${folder}/${pattern})
  set(entries "")
  foreach(file ${found})
    string(APPEND entries "    <file alias=\"${file}\">${PROJECT_SOURCE_DIR}/${folder}/${file}</file>\n")
  endforeach()
  set(resource ${PROJECT_BINARY_DIR}/${folder}.qrc)
  file(CONFIGURE OUTPUT ${resource} @ONLY CONTENT
    "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"@prefix@\">\n@entries@  </qresource>\n</RCC>\n")
  set(${out} ${resource} PARENT_SCOPE)
endfunction()

# timeshare_catalogue(OUT NAME LANGUAGE...): the source with the translations of NAME's texts, compiled from
# translations/NAME_LANGUAGE.ts into the resource :/timeshare/translations/NAME_LANGUAGE.qm. Qt's tools are those that stand
# beside the qmake of the Qt that is built with.
function(timeshare_catalogue out name)
  get_target_property(qmake ${qt}::qmake LOCATION)
  execute_process(COMMAND ${qmake} -query QT_HOST_BINS OUTPUT_VARIABLE tools OUTPUT_STRIP_TRAILING_WHITESPACE)
  find_program(TIMESHARE_LRELEASE lrelease HINTS ${tools} NO_DEFAULT_PATH)
  if(NOT TIMESHARE_LRELEASE)
    message(FATAL_ERROR "no lrelease in ${tools}: install qttools5-dev-tools, for Qt 6 qt6-l10n-tools (setup/packages.sh)")
  endif()
  set(folder ${PROJECT_BINARY_DIR}/translations)
  file(MAKE_DIRECTORY ${folder})
  set(commands)
  set(read)
  set(made)
  set(entries "")
  foreach(language ${ARGN})
    set(texts ${PROJECT_SOURCE_DIR}/translations/${name}_${language}.ts)
    set(catalogue ${name}_${language}.qm)
    list(APPEND commands COMMAND ${TIMESHARE_LRELEASE} -silent ${texts} -qm ${folder}/${catalogue})
    list(APPEND read ${texts})
    list(APPEND made ${folder}/${catalogue})
    string(APPEND entries "    <file>${catalogue}</file>\n")
  endforeach()
  set(resource ${folder}/${name}_texts.qrc)
  file(CONFIGURE OUTPUT ${resource} @ONLY CONTENT
    "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n  <qresource prefix=\"/timeshare/translations\">\n@entries@  </qresource>\n</RCC>\n")
  set(source ${folder}/qrc_${name}_texts.cpp)
  add_custom_command(OUTPUT ${source} ${commands}
    COMMAND ${qt}::rcc --name ${name}_texts --output ${source} ${resource}
    DEPENDS ${read} ${resource} BYPRODUCTS ${made} COMMENT "Translations of ${name}" VERBATIM)
  set_source_files_properties(${source} PROPERTIES SKIP_AUTOGEN ON SKIP_UNITY_BUILD_INCLUSION ON SKIP_PRECOMPILE_HEADERS ON)
  set(${out} ${source} PARENT_SCOPE)
endfunction()
