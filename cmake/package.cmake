# A Debian package of what is installed; ./package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillet)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Quillet developers")
set(CPACK_PACKAGE_CONTACT "Quillet developers <quillet@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://quillet.org")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "clean and reshape delimited text files")
set(CPACK_PACKAGE_DESCRIPTION
"Quillet prepares delimited text data. It reads text files of any size, cleans
and reshapes them line by line and column by column, and writes new files.
Each file carries its own list of operations, and a preview shows what comes
of them; the files themselves stay as they are. The text of the clipboard can
be worked on as a small spreadsheet.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/package_folders.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The icon theme's own folders; a desktop without X needs Qt's plugin for Wayland, and Qt's own texts, as in its
# panel for files, have their translations apart.
set(CPACK_DEBIAN_PACKAGE_DEPENDS hicolor-icon-theme)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n, fonts-dejavu-core")
include(CPack)
