# What a system gets: the program, its icons, what the desktop reads about it, and the documents. Nothing else:
# the test tool and the tests stay where they are built.
include(GNUInstallDirs)

# An install does what it says of what is built, and does not begin to build tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

install(TARGETS quillet RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES data/org.quillet.Quillet.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES data/org.quillet.Quillet.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES src/ui/icons/org.quillet.Quillet.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES data/org.quillet.Quillet-symbolic.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps)
install(DIRECTORY ${CMAKE_BINARY_DIR}/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES README.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
# The name under which Debian looks for it.
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The manual page and Debian's list of changes are read compressed, with nothing of the time of the build in them.
find_program(GZIP gzip REQUIRED)
set(compressed_documents)
foreach(document IN ITEMS quillet.1 changelog.Debian)
  set(compressed ${CMAKE_BINARY_DIR}/${document}.gz)
  add_custom_command(OUTPUT ${compressed}
    COMMAND ${GZIP} --best --no-name --stdout ${CMAKE_SOURCE_DIR}/data/${document} > ${compressed}
    DEPENDS ${CMAKE_SOURCE_DIR}/data/${document} VERBATIM)
  list(APPEND compressed_documents ${compressed})
endforeach()
add_custom_target(quillet_documents DEPENDS ${compressed_documents})
add_dependencies(quillet quillet_documents)
install(FILES ${CMAKE_BINARY_DIR}/quillet.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${CMAKE_BINARY_DIR}/changelog.Debian.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
