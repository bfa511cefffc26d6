# Cross-builds for 64-bit Windows with Debian's MinGW-w64. The "posix" flavour is the one that has
# <thread>, <mutex> and <filesystem>.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Nothing of the machine that builds may be taken for Windows, but its programs run here.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH project_folder)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${project_folder}/build/windows-qt/install)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# Libraries that Debian has no such build of are found by files of our own.
list(PREPEND CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/windows)
set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/wine)

# One file that needs only what every Windows has.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# GNU's archiver and linker take two minutes each for what LLVM's do in a second. The compiler asks for
# its own linker by path whatever it is told, and the other would reserve half of the usual stack.
if(FATHOMLINE_QUICK_LINK)
  set(CMAKE_AR /usr/bin/llvm-ar CACHE FILEPATH "")
  set(CMAKE_RANLIB /usr/bin/llvm-ranlib CACHE FILEPATH "")
  string(APPEND CMAKE_EXE_LINKER_FLAGS_INIT " -fno-use-linker-plugin -Wl,--stack,2097152"
    " -wrapper ${project_folder}/scripts/windows/link-quickly")
endif()
