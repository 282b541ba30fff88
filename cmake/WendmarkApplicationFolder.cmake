# A build leaves a folder that can be zipped and carried away: the programs with the folders they work on.
set(WENDMARK_APPLICATION_FOLDER "${CMAKE_BINARY_DIR}/Wendmark")

# Puts the target's program into the application folder, and among the programs that are installed.
function(wendmark_place_program target)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${WENDMARK_APPLICATION_FOLDER}")
    set_property(GLOBAL APPEND PROPERTY WENDMARK_PROGRAMS ${target})
endfunction()

# The same for a program that only the other programs start, so that it is not on the path.
function(wendmark_place_helper target)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${WENDMARK_APPLICATION_FOLDER}")
    set_property(GLOBAL APPEND PROPERTY WENDMARK_HELPERS ${target})
endfunction()

# Removed first: a file that is gone from the sources must not stay in every tour published from here.
add_custom_target(wendmark_folders ALL
    COMMAND "${CMAKE_COMMAND}" -E rm -rf
        "${WENDMARK_APPLICATION_FOLDER}/Template" "${WENDMARK_APPLICATION_FOLDER}/MyTours"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${WENDMARK_APPLICATION_FOLDER}"
    COMMAND "${CMAKE_COMMAND}" -E copy_directory
        "${CMAKE_SOURCE_DIR}/assets/Template" "${WENDMARK_APPLICATION_FOLDER}/Template"
    COMMAND "${CMAKE_COMMAND}" -E copy_directory
        "${CMAKE_SOURCE_DIR}/assets/MyTours" "${WENDMARK_APPLICATION_FOLDER}/MyTours"
    COMMAND "${CMAKE_COMMAND}" -E copy_directory
        "${CMAKE_SOURCE_DIR}/assets/Help" "${WENDMARK_APPLICATION_FOLDER}/Help"
    COMMENT "Filling the application folder")
