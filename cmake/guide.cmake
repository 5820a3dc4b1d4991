# The examples of the guide in docs/ are tests.
include(GNUInstallDirs)

if(TARGET quillet-drive)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  add_test(NAME Guide.TheProgramDoesWhatItsExamplesSay
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tests/docs/guide_test.py $<TARGET_FILE:quillet-drive>
            ${CMAKE_SOURCE_DIR})
  add_test(NAME Guide.ItsTestTellsWrongFromRight
    COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tests/docs/guide_self_test.py $<TARGET_FILE:quillet-drive>
            ${CMAKE_SOURCE_DIR})
  set_tests_properties(Guide.TheProgramDoesWhatItsExamplesSay Guide.ItsTestTellsWrongFromRight PROPERTIES
    TIMEOUT 300 ENVIRONMENT PYTHONDONTWRITEBYTECODE=1)
endif()
