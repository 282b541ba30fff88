# The rooms of the core, from the ground up: each is a folder of src and the library wendmark_<room>.
set(WENDMARK_CORE_ROOMS base model publish commands check recovery)

# Adds the library of the room in the current folder: the sources that follow its name, then USES and the room
# that it stands on. What that one stands on comes with it.
function(wendmark_add_room room)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "USES" "")
    set(library wendmark_${room})
    add_library(${library} STATIC ${arg_UNPARSED_ARGUMENTS})
    # Tests give the core hundreds of megabytes, which takes minutes when nothing at all is optimised.
    target_compile_options(${library} PRIVATE $<$<CONFIG:Debug>:-O1>)
    target_include_directories(${library} PUBLIC "${CMAKE_SOURCE_DIR}/src" "${CMAKE_CURRENT_BINARY_DIR}")
    if(arg_USES)
        target_link_libraries(${library} PUBLIC wendmark_${arg_USES})
    else()
        target_link_libraries(${library} PUBLIC wendmark_options)
    endif()

    # A program of the whole room and the rooms below. It does not link when the room calls one above it: in
    # other programs that goes unnoticed, since those bring the upper rooms, too.
    if(BUILD_TESTING)
        file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/alone.cpp" CONTENT "int main() {}\n")
        add_executable(${library}_alone "${CMAKE_CURRENT_BINARY_DIR}/alone.cpp")
        target_link_libraries(${library}_alone PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,${library}>")
    endif()
endfunction()
