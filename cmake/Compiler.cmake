# Warnings, sanitizers, compiler cache.

add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor)
# The two compilers mean different things by a shadow: gcc's also counts member functions.
add_compile_options($<IF:$<CXX_COMPILER_ID:GNU>,-Wshadow=local,-Wshadow>)
# Nobody replaces a function of ours by one of the same name in another library, so the compiler may inline it. (clang
# does so by itself.)
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
if(TIMESHARE_WERROR)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_FOREACH QT_DEPRECATED_WARNINGS)

if(TIMESHARE_SANITIZER STREQUAL "address")
  # Qt's classes have no type information for the vptr check.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
elseif(TIMESHARE_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
      CCACHE_NOHASHDIR=1 ${CCACHE})
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # Without it a precompiled header defeats the cache.
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()
