# Packages of what cmake --install puts in place (cmake/ZelStrInstall.cmake):
#   Linux    cpack -G DEB   zelstr32_<version>_<arch>.deb (amd64, or arm64
#                           from the 64-bit ARM cross build)
#   Windows  cpack -G ZIP   zelstr32-<version>-win64.zip
# run in a build tree after the build.  The version is the project's.

set(CPACK_PACKAGE_NAME zelstr32)
set(CPACK_PACKAGE_VENDOR "ZelStr32 maintainers")
set(CPACK_PACKAGE_CONTACT "${ZELSTR_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
# The long description, one line of the Debian control file per line.
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
  "ZelStr32 copies, compares, searches and edits 8-bit zero-terminated strings,"
  "with helpers that know T-SQL and Oracle SQL: case tables, set definitions,"
  "replacement in place, quoting and trims, character maps, a regular-expression"
  "engine and SQL dialect support.  A bad argument never stops a call: it files"
  "a warning with the error-handler service (errsvc32) and returns a fallback."
  "The package holds both libraries, their headers, the CMake package ZelStr32,"
  "the pkg-config file zelstr32.pc and the command-line tool zelstr.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  # zelstr32-1.0.0-win64/{bin,include,lib}
  set(CPACK_SYSTEM_NAME win64)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION libs)
  set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
  # The 64-bit ARM cross build's package is for arm64, not for the machine's
  # architecture that dpkg would name.
  if(CMAKE_CROSSCOMPILING AND ZELSTR_AARCH64)
    set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
  endif()
  # A shlibs file for the two libraries, and the ldconfig trigger (the
  # triggers file: the linker cache is rebuilt once per dpkg run).
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/debian-triggers ${PROJECT_BINARY_DIR}/debian/triggers COPYONLY)
  set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/debian/triggers)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
  # Dependencies as dpkg-shlibdeps reads them from the binaries; without it
  # (no dpkg-dev), the ones of Debian 12.  Boost.System is header-only since
  # Boost 1.69: the stub library the build links is not needed at run time,
  # and no Boost package is.
  find_program(ZELSTR_DPKG_SHLIBDEPS dpkg-shlibdeps)
  mark_as_advanced(ZELSTR_DPKG_SHLIBDEPS)
  if(ZELSTR_DPKG_SHLIBDEPS)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  else()
    set(CPACK_DEBIAN_PACKAGE_DEPENDS
        "libc6 (>= 2.34), libgcc-s1 (>= 3.0), libicu72 (>= 72.1~rc-1~), libstdc++6 (>= 11)")
  endif()
endif()

include(CPack)
