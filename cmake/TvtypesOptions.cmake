include_guard(GLOBAL)

# How every target of this project is compiled. Link tvtypes_options privately.
add_library(tvtypes_options INTERFACE)

target_compile_options(tvtypes_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion
  # The same source must give the same digits on every machine.
  -ffp-contract=off
  # And the same bytes in every folder.
  -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)

# The warning is about headers, and takes a source that is compiled with others for one.
if(CMAKE_UNITY_BUILD)
  target_compile_options(tvtypes_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

if(TVTYPES_WARNINGS_AS_ERRORS)
  target_compile_options(tvtypes_options INTERFACE -Werror)
endif()

if(TVTYPES_SANITIZE)
  target_compile_options(tvtypes_options INTERFACE
    -fsanitize=${TVTYPES_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tvtypes_options INTERFACE -fsanitize=${TVTYPES_SANITIZE})
endif()

# tvtypes_shared_library(TARGET): version and SONAME of an installed library. Until 1.0 a minor
# version may change the interface, so the SONAME carries it.
function(tvtypes_shared_library TARGET)
  set(SOVERSION ${PROJECT_VERSION_MAJOR})
  if(SOVERSION EQUAL 0)
    set(SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  endif()
  set_target_properties(${TARGET} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${SOVERSION})
endfunction()

# With TVTYPES_DEBUG_INTERFACES, what abidw describes. The places of variables, which it does not need,
# differ from build to build.
set(TVTYPES_INTERFACE_OPTIONS)
if(TVTYPES_DEBUG_INTERFACES)
  set(TVTYPES_INTERFACE_OPTIONS -g -fno-var-tracking)
endif()

# quick_to_compile(TARGET HEADERS...): less optimisation outside of releases, for targets that take
# far longer to compile than to run, and HEADERS precompiled. The preset asan-ubsan compiles without
# precompiled headers, which finds missing includes.
function(quick_to_compile TARGET)
  target_compile_options(${TARGET} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O1>)
  target_precompile_headers(${TARGET} PRIVATE ${ARGN})
endfunction()
