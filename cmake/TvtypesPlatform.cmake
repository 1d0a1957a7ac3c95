# The libraries of the host, as the target tvtypes::tv_platform: an integrator's own or the embedded
# default.
#
# An integrator either defines the target before this project is added, in the tree or imported, or
# names a package that defines it. With an installation, the package is recorded, so that clients
# of the installed library find it again.
set(TVTYPES_PLATFORM_PACKAGE "" CACHE STRING
  "CMake package of the host's libraries; empty for the embedded ones or an existing target")
set(TVTYPES_PLATFORM_TARGET "" CACHE STRING
  "Target of that package; PACKAGE::tv_platform if empty")

set(TVTYPES_PLATFORM_IS_EMBEDDED FALSE)
if(NOT TARGET tvtypes::tv_platform AND TVTYPES_PLATFORM_PACKAGE)
  find_package(${TVTYPES_PLATFORM_PACKAGE} CONFIG REQUIRED)
  if(NOT TARGET tvtypes::tv_platform)
    set(PLATFORM ${TVTYPES_PLATFORM_TARGET})
    if(NOT PLATFORM)
      set(PLATFORM ${TVTYPES_PLATFORM_PACKAGE}::tv_platform)
    endif()
    add_library(tvtypes::tv_platform ALIAS ${PLATFORM})
  endif()
elseif(NOT TARGET tvtypes::tv_platform)
  set(TVTYPES_PLATFORM_IS_EMBEDDED TRUE)
  add_subdirectory(platform)
endif()

# What the installed package looks for. The defaults follow the target's name: the alias of
# acme::services is found again in the package acme.
set(TVTYPES_INSTALLED_PLATFORM_PACKAGE ${TVTYPES_PLATFORM_PACKAGE})
set(TVTYPES_INSTALLED_PLATFORM_TARGET ${TVTYPES_PLATFORM_TARGET})
if(NOT TVTYPES_PLATFORM_IS_EMBEDDED)
  if(NOT TVTYPES_INSTALLED_PLATFORM_TARGET)
    get_target_property(TVTYPES_INSTALLED_PLATFORM_TARGET tvtypes::tv_platform ALIASED_TARGET)
    if(NOT TVTYPES_INSTALLED_PLATFORM_TARGET)
      set(TVTYPES_INSTALLED_PLATFORM_TARGET tvtypes::tv_platform)
    endif()
  endif()
  if(NOT TVTYPES_INSTALLED_PLATFORM_PACKAGE)
    string(REGEX REPLACE "::.*" "" TVTYPES_INSTALLED_PLATFORM_PACKAGE
      ${TVTYPES_INSTALLED_PLATFORM_TARGET})
    if(TVTYPES_INSTALLED_PLATFORM_PACKAGE STREQUAL "tvtypes")
      set(TVTYPES_INSTALLED_PLATFORM_PACKAGE tvtypes_platform)
    endif()
  endif()
endif()
