# SPDX-License-Identifier: MIT
# What Windows asks of a program besides its code: an icon, a version, and a manifest that tells which systems it knows,
# that it wants no more rights than its user has, and that it can take long paths.

# Gives the program `target` these resources on Windows. `description` is the line that the Explorer shows.
function(reka_describe_program target description)
  if(NOT WIN32)
    return()
  endif()
  set(program ${target})
  set(manifest ${PROJECT_SOURCE_DIR}/cmake/Program.manifest)
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/Program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS ${manifest})
  target_sources(${target} PRIVATE ${resources})
endfunction()
