# SPDX-License-Identifier: MIT
# The floors of the source: each folder below src/ is one, and stands on those named behind it, whose headers it
# includes. A folder win/ or posix/ belongs to the floor it lies in, but for editor/win. The linker goes by this table,
# tests/floors compares every include with it, and docs/architecture.md draws it.
set(REKA_FLOORS
    "text:"
    "platform: text"
    "capeopen: platform"
    "formula: text"
    "expression/math: platform"
    "expression/tree: platform expression/math"
    "records: platform expression/tree"
    "expression/run: platform expression/math expression/tree"
    "expression/parse: text platform expression/math expression/tree"
    "persistence: platform capeopen formula expression/tree records expression/parse"
    "compounds: platform capeopen formula records"
    "checking: text platform formula records expression/parse"
    "package: platform capeopen records expression/run persistence"
    "manager: platform capeopen records persistence checking package"
    "editor: text platform capeopen expression/tree records expression/parse compounds package manager"
    "editor/win: platform package manager editor"
    "server: platform capeopen package manager editor/win")

# What stands on the house, with the floors whose headers it includes. Only the test goes by this.
set(REKA_COMPANIONS
    "include: platform capeopen manager"
    "tools/packagetext: text platform capeopen formula persistence"
    "examples/simulator: text platform capeopen manager tools/packagetext"
    "tools/rekadoctor: text platform capeopen persistence tools/packagetext"
    "tools/rekatool: text platform expression/tree records expression/run expression/parse persistence checking tools/packagetext"
    "tools/shipped: text persistence manager tools/packagetext"
    "python: text platform expression/run records persistence package tools/rekatool"
    "bench: text platform capeopen records expression/run expression/parse persistence compounds package manager"
    "fuzz: text platform capeopen formula expression/math expression/tree records expression/run expression/parse persistence compounds package manager editor tools/packagetext tools/rekatool examples/simulator")

# The target of the floor `floor`, in `result`.
function(reka_floor_target floor result)
  string(REPLACE "/" "_" name ${floor})
  set(${result} reka_${name} PARENT_SCOPE)
endfunction()

# Adds the floor of the current folder, with its sources, linked to the floors that it stands on.
function(reka_add_floor)
  file(RELATIVE_PATH floor ${REKA_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  reka_floor_target(${floor} target)
  add_library(${target} STATIC ${ARGN})
  target_link_libraries(${target} PUBLIC reka_settings PRIVATE reka_warnings)
  set(row ${REKA_FLOORS})
  list(FILTER row INCLUDE REGEX "^${floor}:")
  string(REGEX MATCHALL "[^ :]+" names "${row}")
  list(REMOVE_AT names 0)
  if(WIN32 AND floor STREQUAL "platform")
    reka_precompile_platform(${target})
  elseif(WIN32 AND "platform" IN_LIST names)
    target_precompile_headers(${target} REUSE_FROM reka_platform)
  endif()
  foreach(name IN LISTS names)
    reka_floor_target(${name} below)
    target_link_libraries(${target} PUBLIC ${below})
  endforeach()
endfunction()

# For a target that includes RuntimeMath.h: what the runtime of the platform is good for.
function(reka_use_runtime_math target)
  if(WIN32)
    target_include_directories(${target} PRIVATE ${REKA_SOURCE_DIR}/src/platform/win)
  else()
    target_include_directories(${target} PRIVATE ${REKA_SOURCE_DIR}/src/platform/posix)
    target_compile_options(${target} PRIVATE -fno-plt)  # the way to the C library's functions is a jump shorter
  endif()
endfunction()
