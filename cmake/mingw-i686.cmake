# 32-bit Windows with Debian's MinGW and POSIX threads; tests run under Wine.
set(TESSARINE_MINGW i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
