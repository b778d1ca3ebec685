# What every target is compiled with. The floating-point flags are part of the product: the same source must
# give the same samples on every system and for every instruction set.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1 -DNDEBUG") # what the report of a crash and a profiler need

# No path of the building machine in what we ship.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)
# tessarine_joined(): the targets of this folder compile several files as one, which takes half the time. Such files
# share their anonymous namespaces. The release build has what goes into the effect apart: each file must stand alone.
macro(tessarine_joined)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 20)
    add_compile_options(-Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endmacro()
if(TESSARINE_JOINED)
    tessarine_joined()
endif()
# No fused multiply-add, and no flag that lets the compiler reorder sums.
add_compile_options(-ffp-contract=off -fno-math-errno -fno-trapping-math)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "i[3-6]86")
    add_compile_options(-msse2 -mfpmath=sse)
endif()

set(TESSARINE_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined or thread")
if(TESSARINE_SANITIZE)
    set(CMAKE_CXX_FLAGS_RELEASE "-O1 -g1 -DNDEBUG") # half the time to build; reports name lines all the same
    add_compile_options(-fsanitize=${TESSARINE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TESSARINE_SANITIZE})
endif()

find_package(Threads REQUIRED)

# tessarine_layer(NAME SOURCES... LINKS LIBRARIES...): a static library whose headers are included from the root, and
# plugin/Version.h from the build.
function(tessarine_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${room_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
    target_link_libraries(${name} PUBLIC ${room_LINKS})
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/SplitDebug.cmake)
