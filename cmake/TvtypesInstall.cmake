include(CMakePackageConfigHelpers)

set(TVTYPES_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tvtypes)

install(EXPORT tvtypes-targets NAMESPACE tvtypes:: DESTINATION ${TVTYPES_CMAKE_DIR})

configure_package_config_file(cmake/tvtypes-config.cmake.in
  ${PROJECT_BINARY_DIR}/tvtypes-config.cmake INSTALL_DESTINATION ${TVTYPES_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tvtypes-config-version.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/tvtypes-config.cmake
  ${PROJECT_BINARY_DIR}/tvtypes-config-version.cmake
  DESTINATION ${TVTYPES_CMAKE_DIR})
