# Embeds files into the program.
#
# embed_files(OUTPUT FILES...) generates a C++ source OUTPUT that defines UI::Native::embeddedFiles, sorted by the bytes
# of the names. It is regenerated when a file is changed, added or removed. In script mode (with LIST and OUTPUT) this
# file is the generator.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    function(embed_files output)
        set(list ${output}.txt)
        file(CONFIGURE OUTPUT ${list} CONTENT "${ARGN}")
        add_custom_command(
            OUTPUT ${output}
            COMMAND ${CMAKE_COMMAND} -D LIST=${list} -D OUTPUT=${output} -P ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
            DEPENDS ${ARGN} ${list} ${CMAKE_CURRENT_FUNCTION_LIST_FILE}
            COMMENT "Embedding the images"
            VERBATIM)
    endfunction()
    return()
endif()

cmake_minimum_required(VERSION 3.25)
file(READ ${LIST} paths)
set(names "")
foreach(path IN LISTS paths)
    cmake_path(GET path FILENAME name)
    list(APPEND names ${name})
    set(path_of_${name} ${path})
endforeach()
list(SORT names COMPARE STRING CASE SENSITIVE)

set(arrays "")
set(rows "")
set(index 0)
foreach(name IN LISTS names)
    file(READ ${path_of_${name}} bytes HEX)
    string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
    string(APPEND arrays "const uint8_t file${index}[] = {${bytes}};\n")
    string(APPEND rows "    {sizeof file${index}, file${index}, \"${name}\"},\n")
    math(EXPR index "${index} + 1")
endforeach()
file(WRITE ${OUTPUT} "#include \"ui/draw/EmbeddedFiles.h\"
namespace UI::Native {
namespace {
${arrays}} // namespace
const EmbeddedFile embeddedFiles[] = {
${rows}    {0, nullptr, nullptr}};
} // namespace UI::Native
")
