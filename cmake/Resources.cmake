# The editor's texts, its dialog and its cursor, as the resources of a program.
#
# The texts are in resources/strings: a file per language, named by its index, and in it a line per row of the editor's
# text table: the row's number and its text in double quotes. Text number 377 + 45 * index + row is made from it.
#
# tessarine_strings(OUTPUT) makes a C++ source that defines Platform::embeddedStrings, or a .rc file, by the ending of
# OUTPUT. tessarine_windows_resources(TARGET) puts all resources into a program or library for Windows; elsewhere there
# is nothing to do. Run as a script (with FILES and OUTPUT) this file is the generator itself.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(TESSARINE_RESOURCES_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

    function(tessarine_strings output)
        file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/strings/*.txt)
        add_custom_command(
            OUTPUT ${output}
            COMMAND ${CMAKE_COMMAND} "-DFILES=${files}" -DOUTPUT=${output} -P ${TESSARINE_RESOURCES_SCRIPT}
            DEPENDS ${files} ${TESSARINE_RESOURCES_SCRIPT}
            COMMENT "Collecting the editor's texts"
            VERBATIM)
    endfunction()

    function(tessarine_windows_resources target)
        if(NOT WIN32)
            return()
        endif()
        set(resources ${PROJECT_SOURCE_DIR}/resources)
        set(strings ${CMAKE_CURRENT_BINARY_DIR}/${target}.strings/strings.rc)
        tessarine_strings(${strings})
        target_sources(${target} PRIVATE ${resources}/editor.rc ${strings})
        set_source_files_properties(${strings} PROPERTIES HEADER_FILE_ONLY ON) # editor.rc includes it
        set_source_files_properties(${resources}/editor.rc PROPERTIES
            INCLUDE_DIRECTORIES "${PROJECT_SOURCE_DIR};${CMAKE_CURRENT_BINARY_DIR}/${target}.strings"
            OBJECT_DEPENDS "${strings};${resources}/cursors/drag.cur")
    endfunction()
    return()
endif()

cmake_minimum_required(VERSION 3.25)
set(ROWS 45)
set(FIRST_ID 377)

# Every character becomes its number, so that no compiler's idea of a code page matters, nor what follows in the text.
function(escape_utf8 hex output)
    set(text "")
    while(NOT hex STREQUAL "")
        if(hex MATCHES "^([0-7].)(.*)$")
            set(rest "${CMAKE_MATCH_2}")
            set(code "0x${CMAKE_MATCH_1}")
        elseif(hex MATCHES "^([cd].)([89ab].)(.*)$")
            set(rest "${CMAKE_MATCH_3}")
            set(code "(0x${CMAKE_MATCH_1} & 0x1f) << 6 | 0x${CMAKE_MATCH_2} & 0x3f")
        elseif(hex MATCHES "^(e.)([89ab].)([89ab].)(.*)$")
            set(rest "${CMAKE_MATCH_4}")
            set(code "(0x${CMAKE_MATCH_1} & 0xf) << 12 | (0x${CMAKE_MATCH_2} & 0x3f) << 6 | 0x${CMAKE_MATCH_3} & 0x3f")
        else()
            message(FATAL_ERROR "not UTF-8, or beyond the basic plane: ${hex}")
        endif()
        math(EXPR code "(${code}) + 0x10000" OUTPUT_FORMAT HEXADECIMAL) # the 1 keeps the zeros in front
        string(REPLACE "0x1" "\\x" code ${code})
        string(APPEND text ${code})
        set(hex "${rest}")
    endwhile()
    set(${output} "${text}" PARENT_SCOPE)
endfunction()

set(entries "")
foreach(file IN LISTS FILES)
    cmake_path(GET file FILENAME name)
    if(NOT name MATCHES "^([0-9]+)-")
        message(FATAL_ERROR "${name} does not begin with the number of a language")
    endif()
    math(EXPR base "${FIRST_ID} + ${ROWS} * ${CMAKE_MATCH_1}")
    file(READ ${file} hex HEX) # as numbers: brackets and semicolons mean something to CMake
    string(REGEX REPLACE "(..)" "\\1 " hex "${hex}")
    string(REPLACE "0a " ";" lines "${hex}")
    set(row 0)
    foreach(line IN LISTS lines)
        string(REPLACE " " "" line "${line}")
        if(line STREQUAL "" OR line MATCHES "^23") # a comment
            continue()
        endif()
        # digits, a blank, and the text in quotes, which holds neither a quote nor a backslash
        if(NOT line MATCHES "^((3[0-9])+)2022(.*)22$")
            message(FATAL_ERROR "${name}: row ${row} has to be a number and a text in quotes")
        endif()
        set(digits ${CMAKE_MATCH_1})
        set(body "${CMAKE_MATCH_3}")
        if(body MATCHES "^(..)*(22|5c|0d)")
            message(FATAL_ERROR "${name}: the text of row ${row} holds a quote, a backslash or a Windows line end")
        endif()
        string(REGEX REPLACE "3(.)" "\\1" number ${digits})
        if(NOT number EQUAL row)
            message(FATAL_ERROR "${name}: row ${number} stands where row ${row} should")
        endif()
        escape_utf8("${body}" text)
        math(EXPR id "${base} + ${row}")
        if(OUTPUT MATCHES "\\.rc$")
            string(APPEND entries "    ${id} L\"${text}\"\n")
        else()
            string(APPEND entries "    {${id}, u\"${text}\"},\n")
        endif()
        math(EXPR row "${row} + 1")
    endforeach()
    if(NOT row EQUAL ROWS)
        message(FATAL_ERROR "${name} has ${row} rows instead of ${ROWS}")
    endif()
endforeach()

if(OUTPUT MATCHES "\\.rc$")
    file(WRITE ${OUTPUT} "STRINGTABLE\nBEGIN\n${entries}END\n")
else()
    file(WRITE ${OUTPUT} "#include \"platform/offscreen/EmbeddedStrings.h\"
namespace Platform {
const EmbeddedString embeddedStrings[] = {
${entries}    {0, nullptr}};
} // namespace Platform
")
endif()
