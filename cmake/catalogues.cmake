# po/LANGUAGE.po become share/locale/LANGUAGE/LC_MESSAGES/quillet.mo, in the build tree and where it is installed.
find_program(MSGFMT msgfmt REQUIRED)

file(GLOB catalogues CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/po/*.po)
set(compiled_catalogues)
foreach(catalogue IN LISTS catalogues)
  cmake_path(GET catalogue STEM language)
  set(folder share/locale/${language}/LC_MESSAGES)
  set(compiled ${CMAKE_BINARY_DIR}/${folder}/quillet.mo)
  add_custom_command(OUTPUT ${compiled}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/${folder}
    COMMAND ${MSGFMT} --check-header --endianness=little --output-file=${compiled} ${catalogue}
    DEPENDS ${catalogue} VERBATIM)
  install(FILES ${compiled} DESTINATION ${folder})
  list(APPEND compiled_catalogues ${compiled})
endforeach()
add_custom_target(quillet_catalogues ALL DEPENDS ${compiled_catalogues})
