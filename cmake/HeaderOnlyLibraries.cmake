# SPDX-License-Identifier: MIT
# Header-only libraries of the system. A cross compiler must not see /usr/include itself, which holds the headers of the
# build machine's C library, so the folder of each library is linked into the build tree and that is included.
set(REKA_HEADER_ONLY_DIR ${PROJECT_BINARY_DIR}/header-only)
file(MAKE_DIRECTORY ${REKA_HEADER_ONLY_DIR})

function(reka_add_header_only_library target folder)
  find_path(${target}_parent NAMES ${folder} PATHS /usr/include /usr/include/eigen3 /usr/local/include REQUIRED
            NO_CMAKE_FIND_ROOT_PATH NO_DEFAULT_PATH)
  file(CREATE_LINK ${${target}_parent}/${folder} ${REKA_HEADER_ONLY_DIR}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${REKA_HEADER_ONLY_DIR})
endfunction()

if(CMAKE_CROSSCOMPILING)
  reka_add_header_only_library(reka_boost boost)
else()
  find_package(Boost 1.74 REQUIRED)
  add_library(reka_boost INTERFACE)
  target_link_libraries(reka_boost INTERFACE Boost::headers)
endif()
if(REKA_BUILD_EXAMPLES)
  reka_add_header_only_library(reka_cli11 CLI)
  reka_add_header_only_library(reka_json nlohmann)
  reka_add_header_only_library(reka_eigen Eigen)
endif()
