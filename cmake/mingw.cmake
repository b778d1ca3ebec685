# Common part of the two Windows toolchain files.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${TESSARINE_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TESSARINE_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${TESSARINE_MINGW}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${TESSARINE_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Static, so that the DLL needs no other file. No timestamp, so that builds of a commit are byte-identical.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
