# Installs the CMake package and the pkg-config file.
include(CMakePackageConfigHelpers)

set(TVTYPES_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tvtypes)
set(TVTYPES_PKGCONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(EXPORT tvtypes-targets NAMESPACE tvtypes:: DESTINATION ${TVTYPES_CMAKE_DIR}
  COMPONENT development)

configure_package_config_file(cmake/tvtypes-config.cmake.in
  ${PROJECT_BINARY_DIR}/tvtypes-config.cmake INSTALL_DESTINATION ${TVTYPES_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tvtypes-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/tvtypes-config.cmake
  ${PROJECT_BINARY_DIR}/tvtypes-config-version.cmake
  DESTINATION ${TVTYPES_CMAKE_DIR} COMPONENT development)

# Paths are relative to the file, so that the prefix can be moved.
file(RELATIVE_PATH TVTYPES_PKGCONFIG_PREFIX
  ${CMAKE_INSTALL_PREFIX}/${TVTYPES_PKGCONFIG_DIR} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" TVTYPES_PKGCONFIG_PREFIX ${TVTYPES_PKGCONFIG_PREFIX})
if(TVTYPES_PLATFORM_IS_EMBEDDED)
  set(TVTYPES_PKGCONFIG_PLATFORM_LIBS " -ltv_platform")
  set(TVTYPES_PKGCONFIG_PLATFORM_CFLAGS " -I\${includedir}/tvtypes_platform")
else()
  set(TVTYPES_PKGCONFIG_REQUIRES ${TVTYPES_INSTALLED_PLATFORM_PACKAGE})
endif()
configure_file(cmake/tvtypes.pc.in ${PROJECT_BINARY_DIR}/tvtypes.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tvtypes.pc DESTINATION ${TVTYPES_PKGCONFIG_DIR}
  COMPONENT development)
