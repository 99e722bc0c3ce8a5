# What a host needs: the module, its headers, and the files by which find_package finds them; and
# the program.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/KorvantIDE)

install(TARGETS korvant RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/korvantide/examples
        FILES_MATCHING PATTERN "*.as" PATTERN "data/*")

if(KORVANT_WINDOWS_UI)
  # The engine is the host's own; whether its names stand in a namespace is a matter of how it
  # was built.
  if(KORVANT_ANGELSCRIPT_SOURCE)
    set(KORVANT_ENGINE_DEFINITIONS "")
  else()
    set(KORVANT_ENGINE_DEFINITIONS AS_DEBIAN_LIB)
  endif()
  install(TARGETS korvantide EXPORT KorvantIDETargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT KorvantIDETargets NAMESPACE KorvantIDE:: DESTINATION ${package_folder})
  configure_package_config_file(cmake/KorvantIDEConfig.cmake.in
    ${CMAKE_BINARY_DIR}/KorvantIDEConfig.cmake INSTALL_DESTINATION ${package_folder}
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR)
  write_basic_package_version_file(${CMAKE_BINARY_DIR}/KorvantIDEConfigVersion.cmake
                                   COMPATIBILITY SameMajorVersion)
  install(FILES ${CMAKE_BINARY_DIR}/KorvantIDEConfig.cmake
                ${CMAKE_BINARY_DIR}/KorvantIDEConfigVersion.cmake DESTINATION ${package_folder})
endif()
