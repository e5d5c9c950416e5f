# Shared part of the MinGW-w64 toolchain files; QM_TRIPLE names the target.
set(CMAKE_C_COMPILER   ${QM_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QM_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER  ${QM_TRIPLE}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QM_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Tests and tools run under Wine; CTest prepends this to every command.
find_program(QM_WINE wine)
if(QM_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QM_WINE})
endif()

# No MinGW runtime DLL may be needed where the library is deployed.
set(CMAKE_EXE_LINKER_FLAGS_INIT    "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
