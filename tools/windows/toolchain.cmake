# Cross-compiles for 64-bit Windows with Debian's MinGW-w64 (POSIX threads). Qt, GoogleTest and libpng come
# from the folder that tools/windows/dependencies fills; its place is told by TALLYSCOPE_WINDOWS_PREFIX.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TALLYSCOPE_WINDOWS_PREFIX)
if(DEFINED ENV{TALLYSCOPE_WINDOWS_PREFIX})
  set(TALLYSCOPE_WINDOWS_PREFIX $ENV{TALLYSCOPE_WINDOWS_PREFIX} CACHE PATH "What was built for Windows")
endif()
set(CMAKE_FIND_ROOT_PATH ${TALLYSCOPE_WINDOWS_PREFIX} /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
