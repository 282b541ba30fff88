# The interface target that every target of the project links: language, warnings, sanitizers.
find_program(WENDMARK_CCACHE ccache)
if(WENDMARK_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${WENDMARK_CCACHE}")
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
