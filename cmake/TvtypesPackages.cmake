# Packages, as scripts/package builds them: four of Debian, one for each component, and one archive of
# all that can be unpacked anywhere.
set(CPACK_PACKAGE_NAME tvtypes)
# Each package has a description of its own; CPack puts a summary of another text before it.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_VENDOR "libtv_types developers")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PrepareFiles.cmake)

set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_ALL library development tool python)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)

# The name of the library's package changes with its SONAME, so that both versions can be installed.
get_target_property(TVTYPES_SOVERSION tv_types SOVERSION)
set(LIBRARY_PACKAGE libtvtypes${TVTYPES_SOVERSION})
set(RELEASE 1)
set(EXACT_VERSION "(= ${PROJECT_VERSION}-${RELEASE})")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${RELEASE})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "libtv_types developers <developers@tvtypes.example.org>" CACHE STRING
  "Maintainer that the Debian packages name")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY =)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries of the other components, and the plugins that the tool links.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${LIBRARY_PACKAGE})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "type system of a block-diagram modelling tool
Data types, aliases and struct types by id, conversion of vectors between
built-in types, fixed-point types, physical units with exact factors, and
symbolic dimensions, for modelling and simulation tools in C++.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libtvtypes-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${LIBRARY_PACKAGE} ${EXACT_VERSION}, libboost1.81-dev | libboost-dev (>= 1.81)")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "type system of a modelling tool - development files
Headers, and packages of CMake and pkg-config, for programs that use the
library of data types, units and dimensions.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME tvtypes)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${LIBRARY_PACKAGE} ${EXACT_VERSION}")
set(CPACK_COMPONENT_TOOL_DESCRIPTION "inspect interfaces of models, their units, types and dimensions
Reads interface descriptions of models in the FMI format and systems of
models in the SSP format, and reports what is wrong. It also converts units
and values between data types, and shows fixed-point types and the layout
of structs.")

# The module is compiled for one version of Python. Packages of Python are compiled to bytecode when
# they are installed.
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-tvtypes)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
math(EXPR TVTYPES_NEXT_PYTHON "${TVTYPES_PYTHON_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${LIBRARY_PACKAGE} ${EXACT_VERSION}, \
python3 (>= 3.${TVTYPES_PYTHON_MINOR}), python3 (<< 3.${TVTYPES_NEXT_PYTHON}), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-dask, python3-distributed")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/debian/python/postinst
  ${PROJECT_SOURCE_DIR}/cmake/debian/python/prerm)
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "types, units and conversions of models - package for Python
Conversion of NumPy arrays between built-in types, on one machine or by Dask
on many; fixed-point types, physical units, struct types and symbolic sizes;
the reports of the tool tvtypes as objects.")

set(CPACK_COMPONENT_LIBRARY_REQUIRED ON)
include(CPack)
