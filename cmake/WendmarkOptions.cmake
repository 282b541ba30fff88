# The interface target that every target of the project links: language, warnings, sanitizers.
find_program(WENDMARK_CCACHE ccache)
if(WENDMARK_CCACHE)
    # What ccache wants to be told before it remembers what was compiled with precompiled headers.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND}" -E env CCACHE_SLOPPINESS=pch_defines,time_macros "${WENDMARK_CCACHE}")
endif()

add_library(wendmark_options INTERFACE)
target_compile_features(wendmark_options INTERFACE cxx_std_20)
target_compile_options(wendmark_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
    # GCC 12 sees an overlap in "literal" + std::string that is not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<BOOL:${WENDMARK_WARNINGS_AS_ERRORS}>:-Werror>)

if(WENDMARK_SANITIZE)
    target_compile_options(wendmark_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(wendmark_options INTERFACE -fsanitize=address,undefined)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# No header is generated that the meta-object compiler would have to wait for.
set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)

# What nearly every source with windows includes in the end, and every test of the core.
set(WENDMARK_QT_HEADERS filesystem functional map memory optional string vector QtCore QtWidgets QWebEngineView)
set(WENDMARK_TEST_HEADERS filesystem functional map memory optional string vector gmock/gmock.h gtest/gtest.h)

# Precompiles these headers of libraries for a target, to save the time of reading them again for each source. The
# sources still say what they include: the static analysis reads them without. Only where nothing is optimised: with
# precompiled headers, GCC 12 otherwise warns of the standard library's own code.
function(wendmark_precompile target)
    if(CMAKE_BUILD_TYPE STREQUAL "Debug")
        list(TRANSFORM ARGN REPLACE "^(.+)$" "<\\1>" OUTPUT_VARIABLE headers)
        target_precompile_headers(${target} PRIVATE ${headers})
    endif()
endfunction()

# The same headers for a target that is compiled like another one.
function(wendmark_precompiled_like target other)
    if(CMAKE_BUILD_TYPE STREQUAL "Debug")
        target_precompile_headers(${target} REUSE_FROM ${other})
    endif()
endfunction()
