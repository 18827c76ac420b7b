# Builds for 64-bit Windows on Linux, by the MinGW-w64 compiler with POSIX threads. Programs run under Wine, with a
# Wine prefix in the build folder.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix) # GoogleTest needs one
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

find_program(ODBOMODULE_WINE NAMES wine wine64 wine-stable wine64-stable)
if(ODBOMODULE_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR
        "${CMAKE_CURRENT_LIST_DIR}/wine.sh" "${ODBOMODULE_WINE}" "${CMAKE_BINARY_DIR}/wine")
endif()
