# The guide in docs/ becomes pages for a browser, share/doc/quillet/guide in the build tree and where it is
# installed. Without python3-markdown it is opened as it is written.
include(GNUInstallDirs)

find_package(Python3 REQUIRED COMPONENTS Interpreter)
# Debian's package is for Debian's Python, which need not be the first one.
foreach(python IN ITEMS ${Python3_EXECUTABLE} /usr/bin/python3)
  execute_process(COMMAND ${python} -c "import markdown" RESULT_VARIABLE no_markdown ERROR_QUIET)
  if(no_markdown EQUAL 0)
    set(guide_python ${python})
    break()
  endif()
endforeach()
file(GLOB_RECURSE guide_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/*)
set(guide_folder ${CMAKE_BINARY_DIR}/share/doc/quillet)
if(NOT guide_python)
  message(STATUS "No pages of the guide are made: python3-markdown is missing.")
  set(guide_output ${guide_folder}/docs)
  set(guide_command ${CMAKE_COMMAND} -E copy_directory ${CMAKE_SOURCE_DIR}/docs ${guide_output})
else()
  set(guide_output ${guide_folder}/guide)
  set(guide_command ${guide_python} ${CMAKE_SOURCE_DIR}/tools/guide_pages.py ${CMAKE_SOURCE_DIR}/docs
    ${guide_output})
  install(DIRECTORY ${guide_output} DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()
add_custom_command(OUTPUT ${guide_folder}/guide.stamp
  COMMAND ${guide_command}
  COMMAND ${CMAKE_COMMAND} -E touch ${guide_folder}/guide.stamp
  DEPENDS ${guide_sources} ${CMAKE_SOURCE_DIR}/tools/guide_pages.py VERBATIM)
add_custom_target(quillet_guide ALL DEPENDS ${guide_folder}/guide.stamp)
# Help opens it, and an install takes it, where nothing but the program is built.
if(TARGET quillet)
  add_dependencies(quillet quillet_guide)
endif()

# Its examples are tests.

if(TARGET quillet-drive)
  add_test(NAME Guide.TheProgramDoesWhatItsExamplesSay
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tests/docs/guide_test.py $<TARGET_FILE:quillet-drive>
            ${CMAKE_SOURCE_DIR})
  add_test(NAME Guide.ItsTestTellsWrongFromRight
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tests/docs/guide_self_test.py $<TARGET_FILE:quillet-drive>
            ${CMAKE_SOURCE_DIR})
  set_tests_properties(Guide.TheProgramDoesWhatItsExamplesSay Guide.ItsTestTellsWrongFromRight PROPERTIES
    TIMEOUT 300 ENVIRONMENT PYTHONDONTWRITEBYTECODE=1)
endif()
