# One interface target carries the flags of every target of the project.
add_library(quillet_flags INTERFACE)
target_compile_options(quillet_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
  -Wnull-dereference -Wimplicit-fallthrough -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # False alarms of the optimiser in g++ 12's own string and vector headers.
  target_compile_options(quillet_flags INTERFACE -Wno-restrict -Wno-null-dereference -Wno-array-bounds
    -Wno-stringop-overflow -Wno-stringop-overread)
  if(QUILLET_SANITIZE)
    target_compile_options(quillet_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

if(QUILLET_SANITIZE)
  # Set on the directory, so that they also reach what the fuzz targets link.
  add_compile_options(-fsanitize=${QUILLET_SANITIZE} -fno-omit-frame-pointer -g -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUILLET_SANITIZE})
endif()
if(QUILLET_BUILD_FUZZERS)
  # The whole tree tells the fuzzer which ways it has taken; and the standard library checks what it is given.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  # What a distribution asks of its packages: checked calls of the C library, and no table of functions that
  # could be written to while the program runs.
  target_compile_options(quillet_flags INTERFACE -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
  target_link_options(quillet_flags INTERFACE LINKER:-z,relro,-z,now)
endif()
if(QUILLET_LTO)
  set(CMAKE_INTERPROCEDURAL_OPTIMIZATION ON)
endif()
