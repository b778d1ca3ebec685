# Compile options of all targets. The floating-point flags are part of the product: the output must be bit-exact on
# every system and in every instruction-set variant.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1 -DNDEBUG") # -g1: for crash reports and profilers

# Keeps paths of the build machine out of the binaries.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=)
add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
add_compile_options($<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)
# tessarine_joined(): joins several source files of this folder's targets per compiler run, which halves the build time.
# Joined files share anonymous namespaces. The release build compiles the effect's files separately, to check that each
# file includes what it uses.
macro(tessarine_joined)
    set(CMAKE_UNITY_BUILD ON)
    set(CMAKE_UNITY_BUILD_BATCH_SIZE 20)
    add_compile_options(-Wno-shadow $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endmacro()
if(TESSARINE_JOINED)
    tessarine_joined()
endif()
# No fused multiply-add, and no option that reorders sums.
add_compile_options(-ffp-contract=off -fno-math-errno -fno-trapping-math)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "i[3-6]86")
    add_compile_options(-msse2 -mfpmath=sse)
endif()

set(TESSARINE_SANITIZE "" CACHE STRING "Sanitizers to build with, e.g. address,undefined or thread")
if(TESSARINE_SANITIZE)
    set(CMAKE_CXX_FLAGS_RELEASE "-O1 -g1 -DNDEBUG") # halves the build time; reports keep line numbers
    add_compile_options(-fsanitize=${TESSARINE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TESSARINE_SANITIZE})
endif()

find_package(Threads REQUIRED)

# tessarine_layer(NAME SOURCES files... LINKS libraries...): adds a static library. Includes are relative to the root of
# the source, or of the build for plugin/Version.h.
function(tessarine_layer name)
    cmake_parse_arguments(PARSE_ARGV 1 layer "" "" "SOURCES;LINKS")
    add_library(${name} STATIC ${layer_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
    target_link_libraries(${name} PUBLIC ${layer_LINKS})
endfunction()

include(${CMAKE_CURRENT_LIST_DIR}/SplitDebug.cmake)
