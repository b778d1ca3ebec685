# The editor's strings, dialog and cursor as resources of a program.
#
# The strings are in resources/strings, one file per language; its name starts with the index of the language. Each line
# is a row of the editor's text table: the row's number and the string in double quotes. The resource number of a string
# is 377 + 45 * index + row.
#
# tessarine_strings(OUTPUT) generates a .rc file, or a C++ source that defines Platform::embeddedStrings, depending on
# the extension of OUTPUT. tessarine_windows_resources(TARGET) adds all resources to a target on Windows and does
# nothing on other systems. In script mode (with FILES and OUTPUT) this file is the generator.
if(NOT CMAKE_SCRIPT_MODE_FILE)
    set(TESSARINE_RESOURCES_SCRIPT ${CMAKE_CURRENT_LIST_FILE})

    function(tessarine_strings output)
        file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/strings/*.txt)
        add_custom_command(
            OUTPUT ${output}
            COMMAND ${CMAKE_COMMAND} "-DFILES=${files}" -DOUTPUT=${output} -P ${TESSARINE_RESOURCES_SCRIPT}
            DEPENDS ${files} ${TESSARINE_RESOURCES_SCRIPT}
            COMMENT "Generating the editor's strings"
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

# Escapes every character as \xHHHH, so that neither the compiler's code page nor the next character matters.
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
            message(FATAL_ERROR "not UTF-8, or above U+FFFF: bytes ${hex}")
        endif()
        math(EXPR code "(${code}) + 0x10000" OUTPUT_FORMAT HEXADECIMAL) # keeps leading zeros
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
        message(FATAL_ERROR "${name}: the file name must start with the index of a language and a hyphen")
    endif()
    math(EXPR base "${FIRST_ID} + ${ROWS} * ${CMAKE_MATCH_1}")
    file(READ ${file} hex HEX) # hexadecimal: CMake interprets brackets and semicolons
    string(REGEX REPLACE "(..)" "\\1 " hex "${hex}")
    string(REPLACE "0a " ";" lines "${hex}")
    set(row 0)
    foreach(line IN LISTS lines)
        string(REPLACE " " "" line "${line}")
        if(line STREQUAL "" OR line MATCHES "^23") # a comment
            continue()
        endif()
        # digits, a space and the string in quotes
        if(NOT line MATCHES "^((3[0-9])+)2022(.*)22$")
            message(FATAL_ERROR "${name}: row ${row} must be a number, a space and a string in double quotes")
        endif()
        set(digits ${CMAKE_MATCH_1})
        set(body "${CMAKE_MATCH_3}")
        if(body MATCHES "^(..)*(22|5c|0d)")
            message(FATAL_ERROR "${name}: the string of row ${row} contains a quote, a backslash or a carriage return")
        endif()
        string(REGEX REPLACE "3(.)" "\\1" number ${digits})
        if(NOT number EQUAL row)
            message(FATAL_ERROR "${name}: found row ${number}, expected row ${row}")
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
        message(FATAL_ERROR "${name}: found ${row} rows, expected ${ROWS}")
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
