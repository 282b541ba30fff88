# Manual pages, and what a Debian package says of itself. Compressed, without a time stamp, as Debian wants them.
set(documents "${CMAKE_INSTALL_DATAROOTDIR}/doc/wendmark") # The name of the package: that is where Debian looks.
set(WENDMARK_COMPRESSED "")

function(wendmark_install_compressed source name folder)
    set(compressed "${CMAKE_CURRENT_BINARY_DIR}/documents/${name}.gz")
    add_custom_command(OUTPUT "${compressed}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/documents"
        COMMAND gzip -9 -n -c "${source}" > "${compressed}"
        DEPENDS "${source}"
        COMMENT "Compressing ${name}" VERBATIM)
    install(FILES "${compressed}" DESTINATION "${folder}")
    set(WENDMARK_COMPRESSED ${WENDMARK_COMPRESSED} "${compressed}" PARENT_SCOPE)
endfunction()

foreach(page IN LISTS WENDMARK_MAN_PAGES)
    wendmark_install_compressed("${CMAKE_CURRENT_SOURCE_DIR}/man/${page}" "${page}" "${CMAKE_INSTALL_MANDIR}/man1")
endforeach()
configure_file(debian/changelog.in changelog.Debian @ONLY)
wendmark_install_compressed("${CMAKE_CURRENT_BINARY_DIR}/changelog.Debian" changelog.Debian "${documents}")
wendmark_install_compressed("${CMAKE_SOURCE_DIR}/CHANGELOG.md" changelog "${documents}")
install(FILES debian/copyright DESTINATION "${documents}")
add_custom_target(wendmark_documents ALL DEPENDS ${WENDMARK_COMPRESSED})
