# What a host and its users need: the module, its headers and the files by which find_package and
# pkg-config find them; the program, its desktop entry, man page and manual; examples and documents.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/KorvantIDE)
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(shared_folder ${CMAKE_INSTALL_DATADIR}/korvantide)

# The engine is the host's own choice: the hardened one lies in a folder of its own, where the program
# and the module look first and a host does when it asks for it. Whether its names stand in a
# namespace is a matter of how it was built.
if(KORVANT_ANGELSCRIPT_SOURCE)
  set(KORVANT_ENGINE_DEFINITIONS "")
  set(KORVANT_ENGINE_FLAGS "")
else()
  set(KORVANT_ENGINE_DEFINITIONS AS_DEBIAN_LIB)
  set(KORVANT_ENGINE_FLAGS -DAS_DEBIAN_LIB)
endif()

set(KORVANT_ENGINE_FOLDER "")
if(KORVANT_ENGINE_IS_HARDENED AND NOT WIN32)
  set(KORVANT_ENGINE_FOLDER ${CMAKE_INSTALL_LIBDIR}/korvantide)
  install(PROGRAMS ${KORVANT_ENGINE_FILE} DESTINATION ${KORVANT_ENGINE_FOLDER})
  get_filename_component(engine_file ${KORVANT_ENGINE_FILE} NAME)
  install(CODE "file(CREATE_LINK ${engine_file} \
    \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${KORVANT_ENGINE_FOLDER}/libangelscript.so SYMBOLIC)")
  file(RELATIVE_PATH up /root/${CMAKE_INSTALL_BINDIR} /root/${KORVANT_ENGINE_FOLDER})
  set_target_properties(korvant PROPERTIES INSTALL_RPATH "$ORIGIN/${up}")
  set_target_properties(korvant_worker PROPERTIES INSTALL_RPATH "$ORIGIN")
  if(KORVANT_WINDOWS_UI)
    set_target_properties(korvantide PROPERTIES INSTALL_RPATH "$ORIGIN/korvantide")
  endif()
endif()

install(TARGETS korvant RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# Beside the engine, or on Windows beside the program.
if(WIN32)
  install(TARGETS korvant_worker RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
else()
  install(TARGETS korvant_worker RUNTIME DESTINATION ${CMAKE_INSTALL_LIBDIR}/korvantide)
endif()
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(DIRECTORY examples/ DESTINATION ${shared_folder}/examples
        FILES_MATCHING PATTERN "*.as" PATTERN "*.cpp" PATTERN "data/*" PATTERN "expected" EXCLUDE)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}
        FILES_MATCHING PATTERN "*.md" PATTERN "images/*" PATTERN "manual" EXCLUDE)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME changelog)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

if(NOT WIN32)
  install(FILES packaging/korvant.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/korvant.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES packaging/korvantide.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES packaging/korvant.svg DESTINATION ${icons}/scalable/apps)
  install(FILES packaging/korvant.png DESTINATION ${icons}/128x128/apps)
endif()

if(KORVANT_WINDOWS_UI)
  install(TARGETS korvantide EXPORT KorvantIDETargets
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(EXPORT KorvantIDETargets NAMESPACE KorvantIDE:: DESTINATION ${package_folder})
  configure_package_config_file(cmake/KorvantIDEConfig.cmake.in
    ${CMAKE_BINARY_DIR}/KorvantIDEConfig.cmake INSTALL_DESTINATION ${package_folder}
    PATH_VARS CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR)
  write_basic_package_version_file(${CMAKE_BINARY_DIR}/KorvantIDEConfigVersion.cmake
                                   COMPATIBILITY SameMajorVersion)
  install(FILES ${CMAKE_BINARY_DIR}/KorvantIDEConfig.cmake
                ${CMAKE_BINARY_DIR}/KorvantIDEConfigVersion.cmake DESTINATION ${package_folder})

  # Relative to its own place, so that an installed tree can be moved.
  file(RELATIVE_PATH KORVANT_PREFIX_FROM_PKGCONFIG /root/${pkgconfig_folder} /root)
  set(KORVANT_ENGINE_LIBS "")
  if(KORVANT_ENGINE_FOLDER)
    set(KORVANT_ENGINE_LIBS "-L\${libdir}/korvantide -Wl,-rpath,\${libdir}/korvantide")
  endif()
  configure_file(packaging/korvantide.pc.in ${CMAKE_BINARY_DIR}/korvantide.pc @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/korvantide.pc DESTINATION ${pkgconfig_folder})
endif()

include(cmake/debian_package.cmake)
