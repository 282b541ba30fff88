# `cpack` in the build folder makes the .deb.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME wendmark)
set(CPACK_PACKAGE_VENDOR "Brenholt Inc.")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "authoring tool for guided web tours")
set(CPACK_PACKAGE_DESCRIPTION
"Wendmark is a desktop tool for writing guided web tours. An author lists up
to 100 stops; each is a web page, shown in a large frame above the author's
own words and a small navigator. Wendmark turns the list into a folder of
plain pages that plays in any browser, from a web server or from disk.
.
The package holds the window program, wendmark, and wendmark-tour, which makes,
publishes and checks tours without a window.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Brenholt Inc. <wendmark@${WENDMARK_MAKER_HOST}>")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${WENDMARK_MAKER_SITE}")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(WENDMARK_BUILD_WINDOW_PROGRAM)
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hunspell-en-us | hunspell-dictionary, qt6-wayland")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS qt6-wayland)
endif()
include(CPack)
