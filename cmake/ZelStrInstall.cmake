set(ZELSTR_MAINTAINER "ZelStr32 maintainers <maintainers@users.noreply.c-seed-44211b6e.example>"
    CACHE STRING "Maintainer named in the packages and the Debian changelog")

# Installation: libraries, headers, the tool, the CMake package ZelStr32 and
# the pkg-config file zelstr32.pc.
include(CMakePackageConfigHelpers)

install(TARGETS zelstr32 errsvc32 zelstr EXPORT ZelStr32Targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES ${PROJECT_BINARY_DIR}/include/zelstr/version.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zelstr)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZelStr32)
install(EXPORT ZelStr32Targets NAMESPACE ZelStr32:: DESTINATION ${config_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZelStr32Config.cmake.in
  ${PROJECT_BINARY_DIR}/ZelStr32Config.cmake INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZelStr32ConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZelStr32Config.cmake
              ${PROJECT_BINARY_DIR}/ZelStr32ConfigVersion.cmake
  DESTINATION ${config_dir})

# The -l names are the libraries' output names: on Windows the import
# libraries are libZelStr32.dll.a and libERRSVC32.dll.a, and a MinGW linker
# on a case-sensitive file system finds them only by those exact names.
foreach(library zelstr32 errsvc32)
  get_target_property(name ${library} OUTPUT_NAME)
  if(NOT name)
    set(name ${library})
  endif()
  set(ZELSTR_PC_${library} ${name})
endforeach()
# The prefix is found from the file's own place, so the package can move.
file(RELATIVE_PATH ZELSTR_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" ZELSTR_PC_TO_PREFIX ${ZELSTR_PC_TO_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/zelstr32.pc.in ${PROJECT_BINARY_DIR}/zelstr32.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zelstr32.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The tool's manual page and bash completion (Linux builds, where the tool
# printed them at build time).
if(ZELSTR_MAN_PAGE)
  install(FILES ${ZELSTR_MAN_PAGE} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${ZELSTR_BASH_COMPLETION} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME zelstr)
endif()

# The documentation users look for: the guide's pages, the README, the
# changelog and the copyright notice, and the API reference when it was
# built (the `docs` target) before installing.  Debian names the notice
# `copyright` and wants its changelog in its own format, compressed.
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/guide
  FILES_MATCHING PATTERN "*.md")
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/api/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/api
  OPTIONAL)
if(WIN32)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
else()
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
  # The date of the build, or of SOURCE_DATE_EPOCH when it is set.
  string(TIMESTAMP ZELSTR_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/debian-changelog.in
                 ${PROJECT_BINARY_DIR}/share/changelog @ONLY)
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/share/changelog.gz
    COMMAND gzip -9nkf ${PROJECT_BINARY_DIR}/share/changelog
    DEPENDS ${PROJECT_BINARY_DIR}/share/changelog)
  add_custom_target(zelstr_debian_changelog ALL DEPENDS ${PROJECT_BINARY_DIR}/share/changelog.gz)
  install(FILES ${PROJECT_BINARY_DIR}/share/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()
