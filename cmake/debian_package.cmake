# The Debian package that packaging/try_package.sh builds with cpack and tries.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korvantide)
set(CPACK_PACKAGE_VENDOR KorvantIDE)
set(CPACK_PACKAGE_CONTACT "The KorvantIDE developers <korvantide@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "AngelScript library, forms and script editor for applications")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A module that gives the users of a host application scripts in AngelScript: a run-time
 library, forms that scripts declare and users fill, and an editor with a debugger; and the
 program korvant, which runs, checks and edits the same scripts from the command line.
 .
 The headers and the CMake and pkg-config files for host developers are part of it.")
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Marks of the toolkit's menus are drawings that it reads with this.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "librsvg2-common")
# The headers need the engine's; the manual is opened with the desktop's own program.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "angelscript-dev, xdg-utils")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
