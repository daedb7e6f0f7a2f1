# A package for Debian: cpack --config build/release/CPackConfig.cmake -B build/package

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME memwright)
set(CPACK_PACKAGE_VENDOR "The Memwright developers")
set(CPACK_PACKAGE_CONTACT "The Memwright developers <memwright@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for the channel memories of VR-120 receivers")
set(CPACK_PACKAGE_DESCRIPTION
    "Reads the memory of a VR-120, a handheld wide-band receiver, over a serial
clone cable, shows its 640 channels as a table, keeps them in files, exchanges
them as CSV, prints them, and writes them back to the radio. The settings and
search limits in the same memory can be changed, too. memwright-cli does the
same on the command line; vr120-sim plays the radio.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/debian_files.cmake")
set(CPACK_MEMWRIGHT_CHANGELOG "${PROJECT_SOURCE_DIR}/packaging/changelog")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SECTION hamradio)
# The plugins for X, for printers and for pages in files lie in the packages of the libraries.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# For Wayland; for a double click to find the program; for icons to be found.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "desktop-file-utils, hicolor-icon-theme, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
