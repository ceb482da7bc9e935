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
  FILES_MATCHING PATTERN "*.h")
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

configure_file(${PROJECT_SOURCE_DIR}/cmake/zelstr32.pc.in ${PROJECT_BINARY_DIR}/zelstr32.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zelstr32.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
