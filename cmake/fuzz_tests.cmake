# Read by CTest itself, not at configure time: makes a test of every fuzz target that the fuzz preset has
# built, when the environment says how many seconds each may take. So they stand in the same summary as the
# other tests, although another compiler has built them. Without QUILLET_FUZZ_SECONDS, or with 0, there are
# none: a target takes 0 seconds for no end.
if("$ENV{QUILLET_FUZZ_SECONDS}" GREATER 0)
  get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/.." ABSOLUTE)
  set(build "${root}/build/fuzz")
  math(EXPR patience "$ENV{QUILLET_FUZZ_SECONDS} + 120")
  file(GLOB candidates "${build}/fuzz_*")
  foreach(target_path ${candidates})
    get_filename_component(target "${target_path}" NAME)
    string(REGEX REPLACE "^fuzz_" "" subject "${target}")
    if(NOT IS_DIRECTORY "${target_path}" AND NOT target MATCHES "\\.")
      # What is found goes to the build folder; the seeds of the repository are only read.
      set(seeds)
      foreach(folder "${root}/fuzz/corpus/${target}" "${root}/fuzz/corpus/${subject}")
        if(IS_DIRECTORY "${folder}")
          list(APPEND seeds "${folder}")
        endif()
      endforeach()
      file(MAKE_DIRECTORY "${build}/found/${target}" "${build}/failures")
      add_test("Fuzz.${subject}" "${target_path}" "-max_total_time=$ENV{QUILLET_FUZZ_SECONDS}" -timeout=20
        -rss_limit_mb=2048 -print_final_stats=1 "-artifact_prefix=${build}/failures/${target}-"
        "${build}/found/${target}"
        ${seeds})
      set_tests_properties("Fuzz.${subject}" PROPERTIES TIMEOUT ${patience} LABELS fuzz)
    endif()
  endforeach()
endif()
