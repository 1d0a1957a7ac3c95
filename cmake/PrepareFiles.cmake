# Completes the files of each package before it is built: the documents that Debian requires, search
# paths of libraries, and times.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(EPOCH $ENV{SOURCE_DATE_EPOCH})
else()
  string(TIMESTAMP EPOCH "%s" UTC)
endif()
set(SOURCE_DIR ${CMAKE_CURRENT_LIST_DIR}/..)

# compress(SOURCE TARGET): as gzip writes it without a name and a time.
function(compress SOURCE TARGET)
  execute_process(COMMAND gzip --best --no-name --stdout ${SOURCE} OUTPUT_FILE ${TARGET}
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# add_documents(ROOT PACKAGE): the copyright and the changes, of the project and of the package.
function(add_documents ROOT PACKAGE)
  set(DIRECTORY ${ROOT}/usr/share/doc/${PACKAGE})
  file(MAKE_DIRECTORY ${DIRECTORY})
  configure_file(${SOURCE_DIR}/COPYRIGHT ${DIRECTORY}/copyright COPYONLY)
  compress(${SOURCE_DIR}/CHANGELOG.md ${DIRECTORY}/changelog.gz)
  execute_process(COMMAND date --utc --rfc-email --date=@${EPOCH} OUTPUT_VARIABLE DATE
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(CHANGES ${CPACK_TEMPORARY_DIRECTORY}/changelog)
  file(WRITE ${CHANGES}
    "${CPACK_PACKAGE_NAME} (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
    "  * Version ${CPACK_PACKAGE_VERSION}; see changelog.gz.\n\n"
    " -- ${CPACK_DEBIAN_PACKAGE_MAINTAINER}  ${DATE}\n")
  compress(${CHANGES} ${DIRECTORY}/changelog.Debian.gz)
  file(REMOVE ${CHANGES})
endfunction()

# Debian has manual pages compressed.
function(compress_manual_pages ROOT)
  file(GLOB_RECURSE PAGES ${ROOT}/usr/share/man/*.1)
  foreach(PAGE ${PAGES})
    compress(${PAGE} ${PAGE}.gz)
    file(REMOVE ${PAGE})
  endforeach()
endfunction()

# keep_plugin_path(FILE ROOT PACKAGE): a search path of the plugins alone.
function(keep_plugin_path FILE ROOT PACKAGE)
  file(READ_ELF ${FILE} RUNPATH PATHS)
  list(FILTER PATHS EXCLUDE REGEX "ORIGIN")
  file(RPATH_SET FILE ${FILE} NEW_RPATH "${PATHS}")
  file(WRITE ${ROOT}/usr/share/lintian/overrides/${PACKAGE}
    "# The plugins of Graphviz that are linked are in a folder of their own.\n"
    "${PACKAGE}: custom-library-search-path\n")
endfunction()

# In folders that the loader searches by default, programs and libraries need no search path but that
# of the plugins, which Debian has in a folder of their own.
function(shorten_search_paths ROOT)
  file(GLOB LIBRARIES ${ROOT}/usr/lib/*/lib*.so.*)
  foreach(LIBRARY ${LIBRARIES})
    if(NOT IS_SYMLINK ${LIBRARY})
      file(RPATH_REMOVE FILE ${LIBRARY})
    endif()
  endforeach()
  set(TOOL ${ROOT}/usr/bin/tvtypes)
  if(EXISTS ${TOOL})
    keep_plugin_path(${TOOL} ${ROOT} tvtypes)
  endif()
  file(GLOB MODULE ${ROOT}/usr/lib/python3/dist-packages/tvtypes/_native.*.so)
  if(MODULE)
    keep_plugin_path(${MODULE} ${ROOT} python3-tvtypes)
  endif()
endfunction()

if(CPACK_GENERATOR STREQUAL "DEB")
  foreach(COMPONENT ${CPACK_COMPONENTS_ALL})
    string(TOUPPER ${COMPONENT} UPPER)
    set(ROOT ${CPACK_TEMPORARY_DIRECTORY}/${COMPONENT})
    add_documents(${ROOT} ${CPACK_DEBIAN_${UPPER}_PACKAGE_NAME})
    compress_manual_pages(${ROOT})
    shorten_search_paths(${ROOT})
  endforeach()
endif()
execute_process(
  COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch --no-dereference --date=@${EPOCH} {} +
  COMMAND_ERROR_IS_FATAL ANY)
