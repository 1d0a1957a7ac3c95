# How every target of this project is compiled. Link tvtypes_options privately.
add_library(tvtypes_options INTERFACE)

target_compile_options(tvtypes_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion
  # The same source must give the same digits on every machine.
  -ffp-contract=off)

if(TVTYPES_WARNINGS_AS_ERRORS)
  target_compile_options(tvtypes_options INTERFACE -Werror)
endif()

if(TVTYPES_SANITIZE)
  target_compile_options(tvtypes_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(tvtypes_options INTERFACE -fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(tvtypes_options INTERFACE -fsanitize=float-cast-overflow)
  endif()
endif()

# quick_to_compile(TARGET HEADERS...): what runs for moments and takes far longer to compile, except where it
# is a release. The headers of other libraries are compiled once; the preset asan-ubsan does
# without that, so that a file which does not include what it uses is found.
function(quick_to_compile TARGET)
  target_compile_options(${TARGET} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O1>)
  target_precompile_headers(${TARGET} PRIVATE ${ARGN})
endfunction()
