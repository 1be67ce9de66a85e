# Cross-compiling for 64-bit Windows from Debian with MinGW-w64 (scripts/windows uses it for
# the project and for every dependency it builds).
#
#   -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
#   -DINFOFISCAL_WINDOWS_PREFIX=DIR   where the cross-built dependencies are installed
#
# Precondition: Debian's g++-mingw-w64-x86-64-posix is installed (and wine, to run programs).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The -posix compilers: the -win32 variant of GCC 12 has no std::thread or std::mutex.
set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)
set(CMAKE_AR ${triplet}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB ${triplet}-gcc-ranlib-posix CACHE FILEPATH "")

# Libraries, headers and packages come only from MinGW's own folder and the prefix of the
# cross-built dependencies: a header or library of the build machine would compile against
# glibc. Programs (wine, tclsh, ...) come from the build machine.
# The prefix is handed on to the small projects CMake compiles to probe the compiler.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES INFOFISCAL_WINDOWS_PREFIX)
set(CMAKE_FIND_ROOT_PATH /usr/${triplet} ${INFOFISCAL_WINDOWS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# One self-contained .exe: the C++ runtime and winpthreads linked in, no MinGW DLL to ship.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# ctest and gtest_discover_tests run the .exe files through Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
