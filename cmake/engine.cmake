# Which build of the script engine is used. KORVANT_ENGINE:
#   hardened      (default) the one that cmake/engine/build.sh makes; ./dev setup calls that
#   distribution  the distribution's own library
# Where the first is wanted and is not there, the second is taken. The headers are the
# distribution's either way, and so are the library's name and names.
set(KORVANT_ENGINE "hardened" CACHE STRING "Script engine: hardened or distribution")
set_property(CACHE KORVANT_ENGINE PROPERTY STRINGS hardened distribution)

find_path(ANGELSCRIPT_INCLUDE angelscript.h REQUIRED)
find_library(ANGELSCRIPT_LIBRARY angelscript REQUIRED)
set(KORVANT_ENGINE_FILE ${ANGELSCRIPT_LIBRARY})
set(KORVANT_ENGINE_IS_HARDENED OFF)

if(KORVANT_ENGINE STREQUAL "hardened")
  # What is instrumented gets an engine that is.
  set(kind plain)
  if(KORVANT_SANITIZE STREQUAL "address,undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(kind asan)
  elseif(KORVANT_SANITIZE STREQUAL "thread" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(kind tsan)
  elseif(KORVANT_SANITIZE MATCHES "fuzzer")
    set(kind fuzz)
  endif()
  # Asked for again whenever the patches change, ...
  file(GLOB recipe CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/engine/*)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${recipe})
  execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/engine/build.sh --where ${kind}
                  OUTPUT_VARIABLE folder OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  # ... and whenever the library comes or goes.
  file(GLOB found CONFIGURE_DEPENDS ${folder}/libangelscript.so.*)
  if(folder AND found)
    set(KORVANT_ENGINE_FILE ${found})
    set(KORVANT_ENGINE_IS_HARDENED ON)
  else()
    message(WARNING "The hardened engine (${kind}) is not there; the distribution's is used, which "
                    "some faulty scripts bring down. ./dev setup builds it (cmake/engine/build.sh).")
  endif()
elseif(NOT KORVANT_ENGINE STREQUAL "distribution")
  message(FATAL_ERROR "KORVANT_ENGINE is hardened or distribution, not '${KORVANT_ENGINE}'")
endif()
message(STATUS "Script engine: ${KORVANT_ENGINE_FILE}")

add_library(korvant_engine SHARED IMPORTED)
set_target_properties(korvant_engine PROPERTIES IMPORTED_LOCATION ${KORVANT_ENGINE_FILE})
if(KORVANT_ENGINE_IS_HARDENED)
  set_target_properties(korvant_engine PROPERTIES IMPORTED_SONAME libangelscript.so.2.35.1)
endif()
target_compile_definitions(korvant_angelscript INTERFACE AS_DEBIAN_LIB)
target_include_directories(korvant_angelscript SYSTEM INTERFACE ${ANGELSCRIPT_INCLUDE})
