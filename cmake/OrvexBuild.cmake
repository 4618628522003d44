# What every target of this project is compiled and linked with, as two interface targets:
#   orvex_build    the language, the warnings, sanitizers, coverage and hardening
#   orvex_runtime  how an executable or a library goes without shared C++ libraries

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(orvex_build INTERFACE)

target_compile_options(orvex_build INTERFACE
    -Wall -Wextra -Wpedantic
    -Wconversion -Wsign-conversion -Wdouble-promotion
    -Wshadow -Wundef -Wformat=2 -Wimplicit-fallthrough -Wmissing-declarations
    -Wold-style-cast -Wcast-qual -Wcast-align
    -Wnon-virtual-dtor -Woverloaded-virtual)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(orvex_build INTERFACE
        -Wduplicated-cond -Wduplicated-branches -Wlogical-op)
    # On 32 bits a size is an unsigned int already.
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        target_compile_options(orvex_build INTERFACE -Wuseless-cast)
    endif()
else()
    target_compile_options(orvex_build INTERFACE
        -Wcomma -Wextra-semi -Wloop-analysis -Wunreachable-code
        -Wmissing-prototypes -Wmissing-variable-declarations)
endif()
if(ORVEX_WERROR)
    target_compile_options(orvex_build INTERFACE -Werror)
endif()

# Files of more than 2 GiB, and the numbers and times of new file systems, also on 32 bits.
target_compile_definitions(orvex_build INTERFACE
    _FILE_OFFSET_BITS=64
    $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

# The same bytes in whatever folder and at whatever time it is built. A debugger and the counters of
# coverage look for the sources where they are.
target_compile_options(orvex_build INTERFACE -Wdate-time
    $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)

if(ORVEX_SANITIZE)
    set(sanitize
        -fsanitize=${ORVEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(orvex_build INTERFACE ${sanitize})
    target_link_options(orvex_build INTERFACE ${sanitize})
endif()

if(ORVEX_COVERAGE)
    # The front end counts on several threads.
    target_compile_options(orvex_build INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(orvex_build INTERFACE --coverage)
endif()

if(ORVEX_HARDENING)
    target_compile_options(orvex_build INTERFACE
        -fstack-protector-strong -fstack-clash-protection
        $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE$<SEMICOLON>-D_FORTIFY_SOURCE=2>)
    target_link_options(orvex_build INTERFACE LINKER:-z,relro,-z,now)
endif()

add_library(orvex_runtime INTERFACE)

# Sanitizers bring their own runtime, which has its own idea of how C++ is linked.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT ORVEX_SANITIZE)
    set(ORVEX_STATIC_RUNTIME ON)
    # Two mapped pieces instead of four: a start makes fewer system calls and touches fewer pages.
    target_link_options(orvex_runtime INTERFACE
        -static-libstdc++ -static-libgcc LINKER:--as-needed,-z,noseparate-code)
else()
    set(ORVEX_STATIC_RUNTIME OFF)
endif()

# The interceptor of dlopen() must be part of the executable: from a shared runtime the loader
# would search that runtime's run path and not the executable's. A library then finds the runtime
# among the executable's own symbols. Clang does both unasked.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND ORVEX_SANITIZE MATCHES "address")
    target_link_options(orvex_runtime INTERFACE -static-libasan -rdynamic)
endif()
