# Installation: the library with its SONAME links, the header, kvx and its
# manual page, the data-file tools, a CMake package (kvxlib::kvxlib) and a
# pkg-config file. `cmake --install build [--prefix P]` writes
# install_manifest.txt in the build tree; the `uninstall` target removes
# what it lists.
include(CMakePackageConfigHelpers)

set(KVX_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/kvxlib)

install(TARGETS kvxlib EXPORT kvxlibTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/kvxlib.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# kvx and its manual page: apps/kvx/CMakeLists.txt.

# The data-file generators are run by hand (they need numpy, and casacore
# for the DE405 source); they import jplde.py from their own directory.
install(PROGRAMS
  ${PROJECT_SOURCE_DIR}/tools/de405_from_casacore.py
  ${PROJECT_SOURCE_DIR}/tools/make_moon_xyz.py
  ${PROJECT_SOURCE_DIR}/tools/make_planet_xyz.py
  ${PROJECT_SOURCE_DIR}/tools/make_kvxjdt.py
  DESTINATION ${CMAKE_INSTALL_DATADIR}/kvxlib/tools)
install(FILES ${PROJECT_SOURCE_DIR}/tools/jplde.py DESTINATION ${CMAKE_INSTALL_DATADIR}/kvxlib/tools)
install(FILES ${PROJECT_SOURCE_DIR}/tests/data/meteor.txt DESTINATION ${CMAKE_INSTALL_DATADIR}/kvxlib)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
              ${PROJECT_SOURCE_DIR}/docs/data-files.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR})

# CMake package: find_package(kvxlib 6) accepts any 6.x.y.
install(EXPORT kvxlibTargets NAMESPACE kvxlib:: DESTINATION ${KVX_CMAKE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/kvxlibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/kvxlibConfig.cmake INSTALL_DESTINATION ${KVX_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kvxlibConfigVersion.cmake
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kvxlibConfig.cmake ${PROJECT_BINARY_DIR}/kvxlibConfigVersion.cmake
  DESTINATION ${KVX_CMAKE_DIR})

# pkg-config, relocatable: the prefix is found from the .pc file's own place,
# so that `cmake --install --prefix` anywhere gives a working file.
set(KVX_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(KVX_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH KVX_PC_UP /prefix/${KVX_PC_DIR} /prefix)
  string(REGEX REPLACE "/$" "" KVX_PC_UP "${KVX_PC_UP}")
  set(KVX_PC_PREFIX "\${pcfiledir}/${KVX_PC_UP}")
endif()
foreach(dir LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE "${CMAKE_INSTALL_${dir}}")
    set(KVX_PC_${dir} "${CMAKE_INSTALL_${dir}}")
  else()
    set(KVX_PC_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
  endif()
endforeach()
configure_file(${PROJECT_SOURCE_DIR}/cmake/kvxlib.pc.in ${PROJECT_BINARY_DIR}/kvxlib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kvxlib.pc DESTINATION ${KVX_PC_DIR})

if(NOT TARGET uninstall)
  add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
            -P ${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake
    COMMENT "Removing the files listed in install_manifest.txt")
endif()
