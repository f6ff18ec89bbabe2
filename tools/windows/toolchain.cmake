# Builds for Windows on Debian: GCC of mingw-w64 with POSIX threads, and the libraries that libraries.sh makes.
# They are built with this file as well, so it is part of their recipe.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 10)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Windows aligns the stack to 16 bytes, GCC counts on 32 when it keeps AVX registers there, and the program ends.
# The assembler writes the moves that take any address instead.
set(CMAKE_C_FLAGS_INIT -Wa,-muse-unaligned-vector-move)
set(CMAKE_CXX_FLAGS_INIT -Wa,-muse-unaligned-vector-move)

# No symbols, and no time of day: equal sources give equal files. (Qt6Core still has one, in its table of file types.)
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-s -Wl,--no-insert-timestamp")
endforeach()

cmake_path(SET FENTO_WINDOWS_LIBRARIES NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build/windows/libraries)
set(CMAKE_FIND_ROOT_PATH ${FENTO_WINDOWS_LIBRARIES}/qt6-base ${FENTO_WINDOWS_LIBRARIES}/libsdl2 /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Tools that Qt runs while building: this machine's own, of the same version.
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/*-linux-gnu/cmake)
