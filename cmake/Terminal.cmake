# The reference terminal.
find_package(${qt} ${qt_release} REQUIRED COMPONENTS Sql)
find_package(SQLite3 REQUIRED)
find_package(PkgConfig REQUIRED)
# The C++ build of Lua: its errors unwind the stack.
pkg_check_modules(lua REQUIRED IMPORTED_TARGET lua5.4-c++)
pkg_check_modules(freexl REQUIRED IMPORTED_TARGET freexl)
# A live market comes over NATS where its library is; without it the terminal has the market of its own alone.
pkg_check_modules(nats QUIET IMPORTED_TARGET libnats)
# History comes from PostgreSQL where its library is; without it a terminal has what is in its store.
pkg_check_modules(pq QUIET IMPORTED_TARGET libpq)

# Its services and windows: timeshare_terminal with the archives of the libraries, which is what tests link. The terminal
# itself takes timeshare_terminal_parts with the shared libraries, as any host does.
timeshare_sources(terminal_sources terminal)
list(FILTER terminal_sources EXCLUDE REGEX "terminal/(app|feeder|loader|supervisor)/main\\.cpp$|terminal/files/reader/")
if(NOT nats_FOUND)
  list(FILTER terminal_sources EXCLUDE REGEX "/Nats[A-Za-z]*\\.(cpp|h)$|terminal/feeder/FeedProgram\\.cpp$")
endif()
if(NOT pq_FOUND)
  list(FILTER terminal_sources EXCLUDE REGEX "/Pg[A-Za-z]*\\.(cpp|h)$")
endif()
timeshare_resource(formula_resource /timeshare/formulas formulas *.lua)
timeshare_resource(script_resource /timeshare/scripts scripts *.py)
timeshare_translation_resource(translation_resource qtbase_zh_CN.qm)
timeshare_catalogue(terminal_texts terminal en)
timeshare_library(timeshare_terminal_parts STATIC ${terminal_sources} ${formula_resource} ${script_resource}
                  ${translation_resource} ${terminal_texts})
set_target_properties(timeshare_terminal_parts PROPERTIES AUTORCC ON)
target_link_libraries(timeshare_terminal_parts PUBLIC timeshare_host ${qt}::Sql
                                               PRIVATE log4cxx mongo::bson_shared PkgConfig::lua SQLite::SQLite3)
if(nats_FOUND)
  target_compile_definitions(timeshare_terminal_parts PRIVATE TIMESHARE_WITH_NATS)
  target_link_libraries(timeshare_terminal_parts PRIVATE PkgConfig::nats)
endif()
if(pq_FOUND)
  target_compile_definitions(timeshare_terminal_parts PRIVATE TIMESHARE_WITH_POSTGRES)
  target_link_libraries(timeshare_terminal_parts PRIVATE PkgConfig::pq)
endif()
add_library(timeshare_terminal INTERFACE)
target_link_libraries(timeshare_terminal INTERFACE timeshare_terminal_parts timeshare)

# What the terminal runs script models with; it stands beside the terminal.
add_executable(timeshare-supervisor terminal/supervisor/main.cpp terminal/supervisor/ProcessTree.cpp)
target_include_directories(timeshare-supervisor PRIVATE ${PROJECT_SOURCE_DIR})
add_dependencies(timeshare_terminal_parts timeshare-supervisor)

# The program beside it that parses binary files of other makers. Its limits leave a sanitizer no room.
timeshare_sources(reader_sources terminal/files/reader)
list(FILTER reader_sources EXCLUDE REGEX "/main\\.cpp$")
add_library(timeshare_reader STATIC ${reader_sources})
target_include_directories(timeshare_reader PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(timeshare_reader PRIVATE PkgConfig::freexl)
if(TIMESHARE_SANITIZER)
  target_compile_options(timeshare_reader PUBLIC -fno-sanitize=all)
  target_link_options(timeshare_reader PUBLIC -fno-sanitize=all)
endif()
add_executable(timeshare-reader terminal/files/reader/main.cpp)
target_link_libraries(timeshare-reader PRIVATE timeshare_reader)
set_target_properties(timeshare_reader timeshare-reader PROPERTIES AUTOMOC OFF)
add_dependencies(timeshare_terminal_parts timeshare-reader)

add_executable(timeshare-terminal terminal/app/main.cpp)
target_link_libraries(timeshare-terminal PRIVATE timeshare_terminal_parts timeshare_shared)

# Publishes a market for terminals that are started with --feed.
if(nats_FOUND)
  add_executable(timeshare-feed terminal/feeder/main.cpp)
  target_link_libraries(timeshare-feed PRIVATE timeshare_terminal_parts timeshare_shared)
endif()

# Loads files of market data into a server of history.
if(pq_FOUND)
  add_executable(timeshare-load terminal/loader/main.cpp)
  target_link_libraries(timeshare-load PRIVATE timeshare_terminal_parts timeshare_shared)
endif()

# A terminal without windows, which the tests and measurements of whole sets of servers run many of.
if(nats_FOUND AND pq_FOUND AND (TIMESHARE_TESTS OR TIMESHARE_BENCH))
  add_executable(timeshare_desk bench/desk.cpp)
  target_link_libraries(timeshare_desk PRIVATE timeshare_terminal)
endif()
