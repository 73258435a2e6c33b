# The header BuildVersion.h for those who link this. It is looked after at every build, since a commit configures nothing.
set(build_version ${PROJECT_BINARY_DIR}/generated/BuildVersion.h)
add_custom_target(quorvane_write_version
  COMMAND ${CMAKE_COMMAND} -DROOT=${PROJECT_SOURCE_DIR} -DVERSION=${PROJECT_VERSION} -DOUTPUT=${build_version}
          -P ${PROJECT_SOURCE_DIR}/cmake/WriteVersion.cmake
  BYPRODUCTS ${build_version} VERBATIM)
add_library(quorvane_version INTERFACE)
target_link_libraries(quorvane_version INTERFACE quorvane_headers)
add_dependencies(quorvane_version quorvane_write_version)
