# Fails if a kernel object defines a weak or unique symbol. The linker keeps only one copy of such a symbol for all
# instruction-set variants, perhaps one that the processor cannot run.
# cmake -DNM=... -DOBJECTS=a.o,b.o -P KernelObjects.cmake
string(REPLACE "," ";" OBJECTS "${OBJECTS}")
if(NOT OBJECTS)
    message(FATAL_ERROR "OBJECTS is empty")
endif()
foreach(object IN LISTS OBJECTS)
    execute_process(COMMAND ${NM} -C --defined-only ${object} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[0-9a-f]+ [WVwvu] [^\n]*" weak "${symbols}")
    list(FILTER weak EXCLUDE REGEX "DW\\.ref\\.") # unwinder data, identical in all variants
    if(weak)
        list(JOIN weak "\n  " lines)
        message(SEND_ERROR "${object} defines symbols that the linker merges:\n  ${lines}")
    endif()
endforeach()
