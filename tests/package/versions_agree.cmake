# The one version number, as every part of the package states it: the
# header's macros, kvx --version, the shared library's file name, the
# pkg-config and CMake version files, the Python package and the newest
# CHANGELOG entry.
cmake_minimum_required(VERSION 3.25)
set(found)

file(STRINGS ${HEADER} lines REGEX "^#define KVX_VERSION_(MAJOR|MINOR|PATCH) ")
set(parts)
foreach(part MAJOR MINOR PATCH)
  string(REGEX MATCH "KVX_VERSION_${part} +([0-9]+)" m "${lines}")
  list(APPEND parts "${CMAKE_MATCH_1}")
endforeach()
list(JOIN parts "." v)
list(APPEND found "header=${v}")

execute_process(COMMAND ${KVX} --version OUTPUT_VARIABLE out ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
string(REGEX REPLACE "^kvx " "" v "${out}")
list(APPEND found "kvx=${v}")

get_filename_component(name ${LIBRARY} NAME)
string(REGEX REPLACE "^libkvxlib\\.so\\." "" v "${name}")
list(APPEND found "library=${v}")

file(STRINGS ${PC} v REGEX "^Version: ")
string(REGEX REPLACE "^Version: " "" v "${v}")
list(APPEND found "pkg-config=${v}")

include(${CONFIG_VERSION})
list(APPEND found "cmake-package=${PACKAGE_VERSION}")

file(STRINGS ${PYTHON_VERSION_FILE} v REGEX "^__version__ = ")
string(REGEX REPLACE "^__version__ = \"([^\"]*)\".*" "\\1" v "${v}")
list(APPEND found "python=${v}")

file(STRINGS ${CHANGELOG} v REGEX "^## [0-9]")
list(GET v 0 v)
string(REGEX REPLACE "^## ([0-9.]+).*" "\\1" v "${v}")
list(APPEND found "changelog=${v}")

set(bad)
foreach(f IN LISTS found)
  if(NOT f MATCHES "=${VERSION}$")
    list(APPEND bad "${f}")
  endif()
endforeach()
if(bad)
  message(FATAL_ERROR "project version ${VERSION}, but: ${bad}")
endif()
message(STATUS "version ${VERSION}: ${found}")
