# Cross build for 64-bit Windows with Debian's mingw-w64 (g++-mingw-w64-x86-64-posix), used by
# scripts/test-windows.sh. The programs are linked statically, so no mingw DLL needs to stand
# beside them. The host's libraries stay out: only the target's root is searched, and the two
# header-only libraries are reached through folders that hold nothing else.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# Eigen's own package names /usr/include/eigen3 alone; nlohmann-json's would name all of
# /usr/include, so it comes through a package of ours (cmake/mingw-w64/).
set(Eigen3_DIR /usr/share/eigen3/cmake CACHE PATH "")
set(nlohmann_json_DIR ${CMAKE_CURRENT_LIST_DIR}/mingw-w64 CACHE PATH "")
# GoogleTest from Debian's source package, built for the target.
set(TESSEL_GTEST_SOURCE /usr/src/googletest CACHE PATH "")

# Tests run through Wine (WINEPREFIX and WINEDEBUG come from the caller).
find_program(TESSEL_WINE NAMES wine64 wine)
if(TESSEL_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${TESSEL_WINE})
endif()
