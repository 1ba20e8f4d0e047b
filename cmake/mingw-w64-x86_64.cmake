# Cross-builds for 64-bit Windows with Debian's MinGW-w64 compilers, the posix thread model
# (std::thread and std::mutex need it). The programs run on this machine under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw_triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw_triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw_triple}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw_triple}-windres)

# Libraries and headers come from the MinGW tree and what the caller adds to the prefix path,
# never from the build machine's own /usr.
set(CMAKE_FIND_ROOT_PATH /usr/${mingw_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# libstdc++, libgcc and winpthread linked in, so that Wine (or a bare Windows) needs no DLL
# beside the program.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# Programs built here (the tests, their discovery) run under Wine.
find_program(SONALYX_WINE NAMES wine wine64)
if(SONALYX_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${SONALYX_WINE})
endif()
