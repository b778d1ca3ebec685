# tessarine_split_debug(TARGET): moves debug information into a file next to the target, with .debug appended to its
# name, where debuggers and profilers find it. It is ten times as large as the library that hosts load. Does nothing in
# builds other than the release.
function(tessarine_split_debug target)
    if(TESSARINE_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL Release OR NOT CMAKE_OBJCOPY)
        return()
    endif()
    set(file $<TARGET_FILE:${target}>)
    # -p keeps the empty timestamp that the linker writes into a Windows library.
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} -p --only-keep-debug ${file} ${file}.debug
        COMMAND ${CMAKE_OBJCOPY} -p --strip-unneeded --add-gnu-debuglink=${file}.debug ${file}
        VERBATIM)
endfunction()
