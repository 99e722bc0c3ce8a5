# The script engine, from a source folder with the part angelscript/ that has the patches of
# cmake/engine. Without the distribution's namespace, and with NDEBUG: a build with assertions stops
# at a million live objects of one type.
enable_language(C)
set(engine ${KORVANT_ANGELSCRIPT_SOURCE}/angelscript)
file(GLOB engine_sources ${engine}/source/*.cpp)
add_library(korvant_engine STATIC ${engine_sources})
target_compile_definitions(korvant_engine PRIVATE NDEBUG)
target_compile_options(korvant_engine PRIVATE -w -fno-strict-aliasing -fwrapv)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # As in cmake/engine/build.sh.
  set_source_files_properties(${engine}/source/as_context.cpp PROPERTIES
                              COMPILE_OPTIONS "-falign-labels=16;-fno-tree-slp-vectorize")
endif()
set(KORVANT_ENGINE_IS_HARDENED ON)
target_include_directories(korvant_engine SYSTEM PUBLIC ${engine}/include)
target_link_libraries(korvant_angelscript INTERFACE korvant_engine Threads::Threads)
