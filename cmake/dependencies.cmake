# Everything that is installed and called, found once.
find_package(Threads REQUIRED)

# The script engine: the distribution's library keeps its names in a namespace
# (AS_DEBIAN_LIB opens it); an engine built from source has none.
add_library(korvant_angelscript INTERFACE)
if(KORVANT_ANGELSCRIPT_SOURCE)
  include(cmake/angelscript_from_source.cmake)
else()
  include(cmake/engine.cmake)
  target_link_libraries(korvant_angelscript INTERFACE korvant_engine Threads::Threads)
endif()

# A cross build takes the libraries that are headers only from a folder that holds nothing else,
# so that no header of this machine's own system gets in.
if(KORVANT_HEADER_FOLDER)
  set(CLI11_INCLUDE ${KORVANT_HEADER_FOLDER})
  add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
  target_include_directories(nlohmann_json::nlohmann_json SYSTEM
                             INTERFACE ${KORVANT_HEADER_FOLDER})
else()
  find_path(CLI11_INCLUDE CLI/CLI.hpp REQUIRED)
  find_package(nlohmann_json REQUIRED)
endif()
# Sockets, from headers alone.
add_library(korvant_asio INTERFACE)
if(NOT KORVANT_HEADER_FOLDER)
  find_path(ASIO_INCLUDE asio.hpp REQUIRED)
  target_include_directories(korvant_asio SYSTEM INTERFACE ${ASIO_INCLUDE})
else()
  target_include_directories(korvant_asio SYSTEM INTERFACE ${KORVANT_HEADER_FOLDER})
endif()
target_link_libraries(korvant_asio INTERFACE Threads::Threads)
if(WIN32)
  target_link_libraries(korvant_asio INTERFACE ws2_32 mswsock)
endif()
add_library(korvant_cli11 INTERFACE)
target_include_directories(korvant_cli11 SYSTEM INTERFACE ${CLI11_INCLUDE})

if(KORVANT_WINDOWS_UI)
  find_package(wxWidgets 3.2 REQUIRED COMPONENTS stc propgrid html core base)
  # The property grid of 3.2.7 crashes on a change of resolution with nothing selected.
  if(wxWidgets_VERSION_STRING VERSION_EQUAL "3.2.7")
    message(FATAL_ERROR "wxWidgets 3.2.7 has a crash in its property grid; use another 3.2 release")
  endif()
  add_library(korvant_wx INTERFACE)
  target_include_directories(korvant_wx SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
  target_compile_definitions(korvant_wx INTERFACE ${wxWidgets_DEFINITIONS})
  target_compile_options(korvant_wx INTERFACE ${wxWidgets_CXX_FLAGS})
  target_link_libraries(korvant_wx INTERFACE ${wxWidgets_LIBRARIES})
  if(NOT WIN32)
    # A host's own event loop is asked for at GTK itself, and the progress window is drawn over a
    # display connection of its own.
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(KORVANT_NATIVE REQUIRED IMPORTED_TARGET gtk+-3.0 x11 xft xrender)
    target_link_libraries(korvant_wx INTERFACE PkgConfig::KORVANT_NATIVE)
  endif()
endif()
