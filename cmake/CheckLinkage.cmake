# A test in script mode: the program and the stand-in need no shared library beyond the C library,
# and the program looks for its companion in its own folder and in ../lib, after LD_LIBRARY_PATH.

function(read_dynamic_section file result)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C ${READELF} -d ${file}
        OUTPUT_VARIABLE section COMMAND_ERROR_IS_FATAL ANY)
    set(${result} "${section}" PARENT_SCOPE)
endfunction()

foreach(file IN ITEMS ${EXECUTABLE} ${LIBRARY})
    read_dynamic_section(${file} section)
    string(REGEX MATCHALL "Shared library: [^\n]*" needed "${section}")
    foreach(line IN LISTS needed)
        if(NOT line MATCHES "\\[(libc|libm|libdl|libpthread|ld-[a-z0-9_-]+)\\.")
            message(SEND_ERROR "${file} needs more than the C library: ${line}")
        endif()
    endforeach()
endforeach()

read_dynamic_section(${EXECUTABLE} section)
string(FIND "${section}" "Library runpath: [$ORIGIN:$ORIGIN/../lib]" at)
if(at EQUAL -1)
    message(SEND_ERROR "${EXECUTABLE} has not the run path expected:\n${section}")
endif()
