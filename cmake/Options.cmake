# What whoever includes a header of the library needs: where it lies, and the language it is written in.
add_library(quorvane_headers INTERFACE)
target_include_directories(quorvane_headers INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}/generated)
target_compile_features(quorvane_headers INTERFACE cxx_std_20)

# What every target of this project compiles with. Another project that uses the library keeps its own warnings.
add_library(quorvane_options INTERFACE)
target_link_libraries(quorvane_options INTERFACE quorvane_headers)
target_compile_options(quorvane_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
  # Records are built with named initializers, which leave out what keeps its default.
  -Wno-missing-field-initializers
  # GCC 12 sees copies that overlap in plain additions of texts, once it optimizes.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
# A released program does not say where it was built.
target_compile_options(quorvane_options INTERFACE
  $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=. -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
if(QUORVANE_WERROR)
  target_compile_options(quorvane_options INTERFACE -Werror)
endif()
if(QUORVANE_SANITIZE)
  target_compile_options(quorvane_options INTERFACE
    -fsanitize=${QUORVANE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(quorvane_options INTERFACE -fsanitize=${QUORVANE_SANITIZE})
endif()
if(QUORVANE_FUZZ)
  target_compile_options(quorvane_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# quorvane_library(NAME SOURCES a.cpp b.cpp [SEES targets] [WRAPS libraries])
# SEES names the project's targets whose headers this one may include; WRAPS names outside libraries,
# which stay private: no type of theirs is seen in a header.
function(quorvane_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;SEES;WRAPS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC quorvane_headers ${ARG_SEES} PRIVATE quorvane_options ${ARG_WRAPS})
  # A module that a program loads has the libraries in it as well as the program: each its own.
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON
                        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  # What is installed as one library is put together from these.
  set_property(GLOBAL APPEND PROPERTY QUORVANE_LIBRARIES ${name})
  set_property(GLOBAL APPEND PROPERTY QUORVANE_WRAPPED ${ARG_WRAPS})
endfunction()
