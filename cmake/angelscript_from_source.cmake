# The script engine and the add-ons that are used, from a source folder with the parts
# angelscript/ and add_on/ that has the patches of cmake/engine. Without the distribution's
# namespace, and with NDEBUG: a build with assertions stops at a million live objects of one type.
enable_language(C)
set(engine ${KORVANT_ANGELSCRIPT_SOURCE}/angelscript)
set(addons ${KORVANT_ANGELSCRIPT_SOURCE}/add_on)
file(GLOB engine_sources ${engine}/source/*.cpp)
add_library(korvant_engine STATIC ${engine_sources} ${addons}/scriptarray/scriptarray.cpp
                                  ${addons}/scriptstdstring/scriptstdstring.cpp
                                  ${addons}/scriptstdstring/scriptstdstring_utils.cpp)
target_compile_definitions(korvant_engine PRIVATE NDEBUG)
# The add-ons ask this project which context runs: the host's engine is another copy of the library,
# and this copy is not told.
set_source_files_properties(${addons}/scriptarray/scriptarray.cpp PROPERTIES
  COMPILE_DEFINITIONS asGetActiveContext=korvantActiveContext)
target_compile_options(korvant_engine PRIVATE -w -fno-strict-aliasing -fwrapv)
set(KORVANT_ENGINE_IS_HARDENED ON)

# The distribution installs the headers of all add-ons in one folder, under angelscript/.
set(headers ${CMAKE_BINARY_DIR}/engine_headers)
foreach(header scriptarray/scriptarray.h scriptstdstring/scriptstdstring.h)
  get_filename_component(name ${header} NAME)
  file(COPY ${addons}/${header} DESTINATION ${headers}/angelscript)
endforeach()
target_include_directories(korvant_engine SYSTEM PUBLIC ${engine}/include ${headers}
                           PRIVATE ${addons}/scriptarray)
target_link_libraries(korvant_angelscript INTERFACE korvant_engine Threads::Threads)
