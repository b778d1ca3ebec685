# tessarine_split_debug(TARGET): moves what only debuggers and profilers read into a file beside the target, named as
# it is and with .debug behind; they find it there by themselves. It is ten times as large as what hosts load. Other
# builds than the release keep all in one.
function(tessarine_split_debug target)
    if(TESSARINE_SANITIZE OR NOT CMAKE_BUILD_TYPE STREQUAL Release OR NOT CMAKE_OBJCOPY)
        return()
    endif()
    set(file $<TARGET_FILE:${target}>)
    # With -p the time in the head of a Windows library stays as the linker left it, which is none.
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} -p --only-keep-debug ${file} ${file}.debug
        COMMAND ${CMAKE_OBJCOPY} -p --strip-unneeded --add-gnu-debuglink=${file}.debug ${file}
        VERBATIM)
endfunction()
