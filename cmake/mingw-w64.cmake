# Debian's cross compiler for 64-bit Windows (g++-mingw-w64-x86-64-posix), and its Wine to run what
# comes out. The run-time libraries of the compiler are shared; scripts/check-windows tells Wine where
# they lie.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Debian keeps the 64-bit loader off the PATH.
find_program(QZ_WINE NAMES wine64 PATHS /usr/lib/wine)
set(CMAKE_CROSSCOMPILING_EMULATOR ${QZ_WINE})
# Nothing of this machine's own libraries may be taken for those of Windows.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
