# What `cmake --install` lays out under the prefix (the program, its desktop entry,
# AppStream metadata, icons, manual page and documents) and the Debian package CPack
# makes of it (scripts/package.sh).
include(GNUInstallDirs)

set(DESKMARK_APP_ID io.github.deskmark.Deskmark)
set(DESKMARK_DEB_RELEASE 1)
set(DESKMARK_DEB_VERSION ${PROJECT_VERSION}-${DESKMARK_DEB_RELEASE})
set(packaging_sources ${PROJECT_SOURCE_DIR}/resources/packaging)
set(packaging_build ${PROJECT_BINARY_DIR}/packaging)
set(icon_sources ${PROJECT_SOURCE_DIR}/resources/icons/hicolor)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

install(FILES ${packaging_sources}/${DESKMARK_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
configure_file(${packaging_sources}/${DESKMARK_APP_ID}.metainfo.xml
               ${packaging_build}/${DESKMARK_APP_ID}.metainfo.xml @ONLY)
install(FILES ${packaging_build}/${DESKMARK_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# Icons: every size and the symbolic one, as kept in the repository.
install(DIRECTORY ${icon_sources}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)

# The manual page and the Debian changelog, compressed without a time stamp.
configure_file(${PROJECT_SOURCE_DIR}/docs/deskmark.1 ${packaging_build}/deskmark.1 @ONLY)
configure_file(${packaging_sources}/changelog.Debian.in ${packaging_build}/changelog.Debian @ONLY)
foreach(file deskmark.1 changelog.Debian)
  add_custom_command(OUTPUT ${packaging_build}/${file}.gz
    COMMAND gzip -9nkf ${packaging_build}/${file}
    DEPENDS ${packaging_build}/${file})
endforeach()
add_custom_target(deskmark_install_data ALL
  DEPENDS ${packaging_build}/deskmark.1.gz ${packaging_build}/changelog.Debian.gz)
install(FILES ${packaging_build}/deskmark.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/README.md ${packaging_sources}/copyright
              ${packaging_build}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/deskmark)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME deskmark)
set(CPACK_PACKAGE_VENDOR "The Deskmark developers")
set(CPACK_PACKAGE_CONTACT "The Deskmark developers <deskmark@users.noreply.github.com>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://github.com/deskmark/deskmark)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "name virtual desktops and switch between them by name")
# The lines of the long description, as the package shows it (at most 79 columns).
string(JOIN "\n" CPACK_PACKAGE_DESCRIPTION
  "Deskmark gives each virtual desktop a name by assigning it a project: a name,"
  "a colour preset and a list of bookmarks. It shows the current desktop's name"
  "in the panel and a coloured label in a corner of every monitor, switches"
  "desktops by name from a filterable switcher, and opens each project's web"
  "pages, files and folders."
  ""
  "Every text exists in English and Japanese. Deskmark works with any EWMH window"
  "manager on X11, and its command line lets window manager key bindings drive it.")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${DESKMARK_DEB_RELEASE})
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded as plugins, so the computed dependencies cannot see them: the SVG icons, and
# the Wayland platform and Qt's own Japanese texts where the session needs them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
include(CPack)
