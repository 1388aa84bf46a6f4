# SPDX-License-Identifier: MIT
# What keeps builds short where headers take longer to read, or templates to optimise, than everything else takes.

# The platform's own, for any target that uses them in most of its files.
function(reka_precompile_platform target)
  if(WIN32)
    target_precompile_headers(${target} PRIVATE <windows.h> <oleauto.h>)
  endif()
endfunction()

# Those of libraries, for a target that isn't of the product itself. Not for a release: there GCC 12 forgets that they
# belong to the system, and warns of copies inside its own library (GCC bug 105651).
function(reka_precompile_headers target)
  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# Files that are run through once and use a library which takes half a minute to optimise.
function(reka_compile_quickly)
  set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O0 SKIP_PRECOMPILE_HEADERS ON)
endfunction()
