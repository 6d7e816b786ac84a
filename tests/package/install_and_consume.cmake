# Installs the build tree into a fresh prefix, checks the installed layout,
# builds the README's C example against it with find_package and with
# pkg-config, runs both, and uninstalls again from the manifest.
#
# -DBUILD_DIR -DWORK -DREADME -DCONSUMER -DUNINSTALL -DC_COMPILER -DGENERATOR
# -DVERSION -DLIBDIR -DBINDIR -DINCLUDEDIR -DMANDIR -DDATADIR
cmake_minimum_required(VERSION 3.25)
set(prefix ${WORK}/prefix)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run what)
  cmake_parse_arguments(R "" "OUTPUT;EXPECT_FAIL" "COMMAND" ${ARGN})
  execute_process(COMMAND ${R_COMMAND} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(R_EXPECT_FAIL)
    if(rc EQUAL 0)
      message(FATAL_ERROR "${what}: succeeded, expected to fail\n${out}")
    endif()
  elseif(NOT rc EQUAL 0)
    message(FATAL_ERROR "${what}: failed (${rc})\n${out}\n${err}")
  endif()
  if(R_OUTPUT)
    set(${R_OUTPUT} "${out}" PARENT_SCOPE)
  endif()
endfunction()

# cmake --install rewrites the build tree's install_manifest.txt: keep the
# user's own (from a real installation) and put it back afterwards.
set(manifest ${BUILD_DIR}/install_manifest.txt)
if(EXISTS ${manifest})
  file(RENAME ${manifest} ${WORK}/user_manifest.txt)
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
                RESULT_VARIABLE rc OUTPUT_QUIET ERROR_VARIABLE err)
if(EXISTS ${manifest})
  file(RENAME ${manifest} ${WORK}/install_manifest.txt)
endif()
if(EXISTS ${WORK}/user_manifest.txt)
  file(RENAME ${WORK}/user_manifest.txt ${manifest})
endif()
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${err}")
endif()

# The layout: the real file and its two links, header, program, manual page,
# CMake package, pkg-config file and the data tools.
string(REGEX MATCH "^[0-9]+" major "${VERSION}")
foreach(f ${LIBDIR}/libkvxlib.so.${VERSION} ${INCLUDEDIR}/kvxlib.h ${BINDIR}/kvx ${MANDIR}/man1/kvx.1
          ${LIBDIR}/cmake/kvxlib/kvxlibConfig.cmake ${LIBDIR}/cmake/kvxlib/kvxlibConfigVersion.cmake
          ${LIBDIR}/pkgconfig/kvxlib.pc ${DATADIR}/kvxlib/meteor.txt ${DATADIR}/kvxlib/tools/make_kvxjdt.py
          ${DATADIR}/kvxlib/tools/jplde.py)
  if(NOT EXISTS ${prefix}/${f} OR IS_SYMLINK ${prefix}/${f})
    message(FATAL_ERROR "not installed as a file: ${f}")
  endif()
endforeach()
foreach(link libkvxlib.so.${major}:libkvxlib.so.${VERSION} libkvxlib.so:libkvxlib.so.${major})
  string(REPLACE ":" ";" pair ${link})
  list(GET pair 0 name)
  list(GET pair 1 target)
  file(READ_SYMLINK ${prefix}/${LIBDIR}/${name} got)
  if(NOT got STREQUAL target)
    message(FATAL_ERROR "${name} -> '${got}', expected -> ${target}")
  endif()
endforeach()
file(READ ${prefix}/${MANDIR}/man1/kvx.1 man)
if(NOT man MATCHES "\\.SH SYNOPSIS\n" OR NOT man MATCHES "kvx ${VERSION}" OR NOT man MATCHES "\\\\fBkvx\\\\fR planet")
  message(FATAL_ERROR "kvx.1 lacks its synopsis or version:\n${man}")
endif()

# The installed program finds the installed library by itself (RUNPATH).
run("installed kvx --version" COMMAND ${prefix}/${BINDIR}/kvx --version OUTPUT out)
if(NOT out STREQUAL "kvx ${VERSION}\n")
  message(FATAL_ERROR "installed kvx --version printed '${out}'")
endif()

# The README's example and the output its comment promises.
file(READ ${README} readme)
if(NOT readme MATCHES "## Using the library from C[^`]*```c\n(.*)```")
  message(FATAL_ERROR "no C example in ${README}")
endif()
string(REGEX REPLACE "\n```.*" "\n" example "${CMAKE_MATCH_1}")
if(NOT example MATCHES "/\\* (JD [0-9.]+) \\*/")
  message(FATAL_ERROR "the README's example does not state its output")
endif()
set(expected "${CMAKE_MATCH_1}\n")
file(WRITE ${WORK}/example.c "${example}")

# 1. CMake: find_package(kvxlib 6) and kvxlib::kvxlib.
run("consumer configure" COMMAND ${CMAKE_COMMAND} -S ${CONSUMER} -B ${WORK}/cmake-build -G ${GENERATOR}
    -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_PREFIX_PATH=${prefix} -DKVX_WANT=${major}
    -DEXAMPLE_SOURCE=${WORK}/example.c)
run("consumer build" COMMAND ${CMAKE_COMMAND} --build ${WORK}/cmake-build)
run("consumer run" COMMAND ${WORK}/cmake-build/example OUTPUT out)
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "example built with CMake printed '${out}', expected '${expected}'")
endif()
# SameMajorVersion: a request for the previous major version is refused
# (AnyNewerVersion would accept it, and a 5.x program would then load 6).
math(EXPR older "${major} - 1")
run("consumer asking for ${older}" EXPECT_FAIL 1 COMMAND ${CMAKE_COMMAND} -S ${CONSUMER} -B ${WORK}/cmake-build-old
    -G ${GENERATOR} -DCMAKE_C_COMPILER=${C_COMPILER} -DCMAKE_PREFIX_PATH=${prefix} -DKVX_WANT=${older}
    -DEXAMPLE_SOURCE=${WORK}/example.c)

# 2. pkg-config, with the .pc file found only through PKG_CONFIG_PATH.
set(pc_env ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${prefix}/${LIBDIR}/pkgconfig)
run("pkg-config --modversion" COMMAND ${pc_env} pkg-config --modversion kvxlib OUTPUT out)
if(NOT out STREQUAL "${VERSION}\n")
  message(FATAL_ERROR "pkg-config --modversion kvxlib: '${out}'")
endif()
run("pkg-config --cflags --libs" COMMAND ${pc_env} pkg-config --cflags --libs kvxlib OUTPUT flags)
string(STRIP "${flags}" flags)
string(REGEX MATCH "-I([^ ]+)" include "${flags}")
if(NOT EXISTS "${CMAKE_MATCH_1}/kvxlib.h")
  message(FATAL_ERROR "kvxlib.pc does not point into the prefix it was installed in: ${flags}")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run("cc with pkg-config flags" COMMAND ${C_COMPILER} ${WORK}/example.c ${flags} -o ${WORK}/example-pc)
run("pkg-config example run" COMMAND ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${prefix}/${LIBDIR} ${WORK}/example-pc
    OUTPUT out)
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "example built with pkg-config printed '${out}', expected '${expected}'")
endif()

# Uninstall from the manifest leaves no file behind.
run("uninstall" COMMAND ${CMAKE_COMMAND} -DMANIFEST=${WORK}/install_manifest.txt -P ${UNINSTALL})
file(GLOB_RECURSE left LIST_DIRECTORIES false ${prefix}/*)
if(left)
  message(FATAL_ERROR "left after uninstall: ${left}")
endif()
message(STATUS "installed, consumed with CMake and pkg-config, uninstalled: ${prefix}")
