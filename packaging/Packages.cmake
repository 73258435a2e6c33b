# The Debian packages, one for each part that is installed. script/package makes them.
set(QUORVANE_MAINTAINER "Quorvane maintainers <maintainers@quorvane.invalid>" CACHE STRING "Named in the packages")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${QUORVANE_MAINTAINER}")
set(CPACK_COMPONENTS_ALL quorvane libscankit-dev)
if(QUORVANE_HAS_APP)
  list(APPEND CPACK_COMPONENTS_ALL quorvane-app)
endif()
set(CPACK_STRIP_FILES ON)
# Sorts out what a file system of the maker says of the files: times, and a mask that hides them.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/SettleFiles.cmake)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries that each part's programs are linked with, and in the versions that they need.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_QUORVANE_PACKAGE_NAME quorvane)
set(CPACK_DEBIAN_QUORVANE_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_QUORVANE_DESCRIPTION "lists the open-source licenses of a project's dependencies
Reads the Swift, npm and Python packages that a project names, decides each
one's license from the metadata and the license files on disk, flags what
needs attention, and writes the NOTICE file that ships with an app and the
license report that goes to a client. It only reads the project.

This package has the command.")

set(CPACK_DEBIAN_QUORVANE-APP_PACKAGE_NAME quorvane-app)
set(CPACK_DEBIAN_QUORVANE-APP_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_QUORVANE-APP_DESCRIPTION "lists the open-source licenses of a project's dependencies (window)
Reads the Swift, npm and Python packages that a project names, decides each
one's license from the metadata and the license files on disk, flags what
needs attention, and writes the NOTICE file that ships with an app and the
license report that goes to a client. It only reads the project.

This package has the desktop program.")

set(CPACK_DEBIAN_LIBSCANKIT-DEV_PACKAGE_NAME libscankit-dev)
set(CPACK_DEBIAN_LIBSCANKIT-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBSCANKIT-DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_LIBSCANKIT-DEV_PACKAGE_DEPENDS
    "libicu-dev, libsimdjson-dev, libtbb-dev, libfmt-dev, libfyaml-dev, libminizip-dev, libpango1.0-dev, libcairo2-dev, libfontconfig-dev, libqpdf-dev, pkg-config")
set(CPACK_DEBIAN_LIBSCANKIT-DEV_DESCRIPTION "library that reads the licenses of a project's dependencies
Reads the Swift, npm and Python packages that a project names, decides each
one's license from the metadata and the license files on disk, flags what
needs attention, and writes license reports.

This package has the headers, the library and its CMake package.")

# Debian's own kind of log, which leads to the one for people.
execute_process(COMMAND date --utc --rfc-email --date=${QUORVANE_RELEASE_DATE} OUTPUT_VARIABLE release_time
                OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(log ${PROJECT_BINARY_DIR}/generated/${component}/changelog)
  file(CONFIGURE OUTPUT ${log} CONTENT "${component} (${PROJECT_VERSION}) stable; urgency=medium

  * CHANGELOG.md beside this file says what changed.

 -- ${QUORVANE_MAINTAINER}  ${release_time}
" @ONLY)
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component}
          COMPONENT ${component})
  install(FILES ${log} ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component}
          COMPONENT ${component})
  # Made by script/package, which knows what was linked once everything is.
  install(FILES ${PROJECT_BINARY_DIR}/notices/${component}/THIRD-PARTY-NOTICES.txt
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${component} COMPONENT ${component} OPTIONAL)
endforeach()
include(CPack)
