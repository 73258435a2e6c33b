# What is installed, in three parts that are packages of their own: the command, the desktop program, and the library for
# other programs.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
set(QUORVANE_ZSH_COMPLETIONS ${CMAKE_INSTALL_DATADIR}/zsh/site-functions CACHE STRING "Where zsh looks for completions")

# The day of the version, as the log of changes has it.
file(STRINGS CHANGELOG.md release_heading REGEX "^## ${PROJECT_VERSION} ")
string(REGEX MATCH "[0-9]+-[0-9]+-[0-9]+" QUORVANE_RELEASE_DATE "${release_heading}")

if(QUORVANE_COMMAND)
  install(TARGETS quorvane COMPONENT quorvane)
  if(TARGET quorvane-pdf)
    install(TARGETS quorvane-pdf DESTINATION lib/quorvane/pdf COMPONENT quorvane)
  endif()
  set(pages ${PROJECT_BINARY_DIR}/QuorvaneCLI/pages)
  install(FILES ${pages}/quorvane.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT quorvane)
  install(FILES ${pages}/quorvane.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME quorvane COMPONENT quorvane)
  install(FILES ${pages}/_quorvane DESTINATION ${QUORVANE_ZSH_COMPLETIONS} COMPONENT quorvane)
  install(FILES ${pages}/quorvane.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
          COMPONENT quorvane)
endif()

if(QUORVANE_HAS_APP)
  install(TARGETS quorvane-app BUNDLE DESTINATION . COMPONENT quorvane-app
                               RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT quorvane-app)
  # Its own, since either part may be installed without the other.
  if(TARGET quorvane-pdf)
    install(TARGETS quorvane-pdf DESTINATION lib/quorvane-app/pdf COMPONENT quorvane-app)
  endif()
endif()
# What a desktop knows of the program: its entry, its icons, and what a software center shows.
if(QUORVANE_HAS_APP AND NOT APPLE)
  install(FILES packaging/quorvane.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT quorvane-app)
  set(themed ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES packaging/quorvane.svg DESTINATION ${themed}/scalable/apps COMPONENT quorvane-app)
  foreach(size IN LISTS QUORVANE_ICON_SIZES)
    install(FILES ${PROJECT_BINARY_DIR}/QuorvaneApp/icons/${size}.png DESTINATION ${themed}/${size}x${size}/apps
            RENAME quorvane.png COMPONENT quorvane-app)
  endforeach()
  configure_file(packaging/quorvane.metainfo.xml.in ${PROJECT_BINARY_DIR}/generated/app.quorvane.Quorvane.metainfo.xml)
  install(FILES ${PROJECT_BINARY_DIR}/generated/app.quorvane.Quorvane.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT quorvane-app)
  configure_file(packaging/quorvane-app.1.in ${PROJECT_BINARY_DIR}/generated/quorvane-app.1 @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/generated/quorvane-app.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
          COMPONENT quorvane-app)
endif()

# Of the headers, ScanKit.h and what it includes: what other programs cannot reach is not installed.
function(quorvane_public_headers header result)
  if(header IN_LIST ${result})
    return()
  endif()
  list(APPEND ${result} ${header})
  file(STRINGS ${PROJECT_SOURCE_DIR}/${header} includes REGEX "^#include \"")
  foreach(include IN LISTS includes)
    string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" included "${include}")
    quorvane_public_headers(${included} ${result})
  endforeach()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${header})
  set(${result} ${${result}} PARENT_SCOPE)
endfunction()
set(public_headers "")
quorvane_public_headers(ScanKit/ScanKit.h public_headers)
foreach(header IN LISTS public_headers)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT libscankit-dev)
endforeach()

# The folders' libraries as one.
include(cmake/ScanKitDependencies.cmake)
get_property(libraries GLOBAL PROPERTY QUORVANE_LIBRARIES)
get_property(wrapped GLOBAL PROPERTY QUORVANE_WRAPPED)
list(REMOVE_DUPLICATES wrapped)
list(REMOVE_ITEM wrapped ${libraries})
set(objects "")
foreach(library IN LISTS libraries)
  list(APPEND objects $<TARGET_OBJECTS:${library}>)
endforeach()
add_library(ScanKitInstalled STATIC ${objects})
set_target_properties(ScanKitInstalled PROPERTIES OUTPUT_NAME ScanKit EXPORT_NAME ScanKit LINKER_LANGUAGE CXX)
target_compile_features(ScanKitInstalled INTERFACE cxx_std_20)
target_include_directories(ScanKitInstalled INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(ScanKitInstalled PRIVATE ${wrapped})
set(cmake_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ScanKit)
install(TARGETS ScanKitInstalled EXPORT ScanKitTargets COMPONENT libscankit-dev)
install(EXPORT ScanKitTargets NAMESPACE ScanKit:: DESTINATION ${cmake_folder} COMPONENT libscankit-dev)
set(config ${PROJECT_BINARY_DIR}/generated/ScanKitConfig.cmake)
configure_package_config_file(cmake/ScanKitConfig.cmake.in ${config} INSTALL_DESTINATION ${cmake_folder}
                              NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/generated/ScanKitConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${config} cmake/ScanKitDependencies.cmake ${PROJECT_BINARY_DIR}/generated/ScanKitConfigVersion.cmake
        DESTINATION ${cmake_folder} COMPONENT libscankit-dev)
