# What desktops are told of the window program: menu entry, icon, kind of file, description.
set(icon "${CMAKE_SOURCE_DIR}/assets/icons/wendmark.svg")
set(icon_theme "${CMAKE_INSTALL_DATADIR}/icons/hicolor")

install(FILES "${WENDMARK_ID}.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES "${WENDMARK_ID}.mime.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages"
    RENAME "${WENDMARK_ID}.xml")
configure_file("${WENDMARK_ID}.metainfo.xml.in" "${WENDMARK_ID}.metainfo.xml" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${WENDMARK_ID}.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES "${icon}" DESTINATION "${icon_theme}/scalable/apps" RENAME "${WENDMARK_ID}.svg")

find_program(WENDMARK_RSVG_CONVERT rsvg-convert)
if(NOT WENDMARK_RSVG_CONVERT)
    message(STATUS "No rsvg-convert here: only the scalable icon will be installed")
    return()
endif()
set(pictures "")
foreach(size 16 22 24 32 48 64 128 256 512)
    set(picture "${CMAKE_CURRENT_BINARY_DIR}/icons/${size}.png")
    add_custom_command(OUTPUT "${picture}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/icons"
        COMMAND "${WENDMARK_RSVG_CONVERT}" --width ${size} --height ${size} --output "${picture}" "${icon}"
        DEPENDS "${icon}"
        COMMENT "Drawing the icon at ${size} pixels" VERBATIM)
    list(APPEND pictures "${picture}")
    install(FILES "${picture}" DESTINATION "${icon_theme}/${size}x${size}/apps" RENAME "${WENDMARK_ID}.png")
endforeach()
add_custom_target(wendmark_icon_pictures ALL DEPENDS ${pictures})
