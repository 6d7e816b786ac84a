# Cross-compiling for 64-bit Windows with Debian's mingw-w64 (package
# g++-mingw-w64-x86-64-win32):
#   cmake -S . -B build-windows -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KVX_MINGW_PREFIX x86_64-w64-mingw32)

# The win32-thread variant when both are installed: the library starts no
# threads, and this one needs no winpthread DLL beside the programs.
find_program(CMAKE_C_COMPILER NAMES ${KVX_MINGW_PREFIX}-gcc-win32 ${KVX_MINGW_PREFIX}-gcc REQUIRED)
find_program(CMAKE_CXX_COMPILER NAMES ${KVX_MINGW_PREFIX}-g++-win32 ${KVX_MINGW_PREFIX}-g++ REQUIRED)
find_program(CMAKE_RC_COMPILER NAMES ${KVX_MINGW_PREFIX}-windres)
find_program(KVX_OBJDUMP NAMES ${KVX_MINGW_PREFIX}-objdump)

set(CMAKE_FIND_ROOT_PATH /usr/${KVX_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Tests of the Windows build run under wine when it is installed (Debian's
# wine64 puts its loader in /usr/lib/wine).
find_program(KVX_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(KVX_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${KVX_WINE})
endif()
