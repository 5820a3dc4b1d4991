# Whole jobs through quillet-drive, judged from outside: by what the sample was made from, and by a plain
# reference in another language.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

add_test(NAME WholeJobs.SampleGivesBackTheCustomersItWasMadeFrom
  COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/tools/sample_job.py --check $<TARGET_FILE:quillet-drive>
          ${CMAKE_BINARY_DIR}/sample-job)
add_test(NAME WholeJobs.WorkloadsAgreeWithThePlainReference
  COMMAND Python3::Interpreter ${CMAKE_SOURCE_DIR}/bench/compare.py --check --size 0.3
          --drive $<TARGET_FILE:quillet-drive> --data ${CMAKE_BINARY_DIR}/whole-jobs)
set_tests_properties(WholeJobs.SampleGivesBackTheCustomersItWasMadeFrom
  WholeJobs.WorkloadsAgreeWithThePlainReference PROPERTIES TIMEOUT 300 ENVIRONMENT PYTHONDONTWRITEBYTECODE=1)
