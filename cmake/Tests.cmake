# SPDX-License-Identifier: MIT
# GoogleTest is found natively and built from its source for a cross build.
if(CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF)
  set(gtest_disable_pthreads OFF)
  add_subdirectory(/usr/src/googletest ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  foreach(library gtest gmock)
    target_compile_options(${library} PRIVATE -O0)
  endforeach()
  add_library(reka_gtest INTERFACE)
  target_link_libraries(reka_gtest INTERFACE gmock gtest)
else()
  find_package(GTest REQUIRED)
  add_library(reka_gtest INTERFACE)
  target_link_libraries(reka_gtest INTERFACE GTest::gmock GTest::gtest)
endif()

include(GoogleTest)

# A locale with a decimal comma for the tests, made for the build folder: the system needn't have it.
set(REKA_TEST_LOCALES ${PROJECT_BINARY_DIR}/locales)
if(NOT CMAKE_CROSSCOMPILING)
  find_program(LOCALEDEF localedef REQUIRED)
  file(MAKE_DIRECTORY ${REKA_TEST_LOCALES})
  add_custom_command(
    OUTPUT ${REKA_TEST_LOCALES}/de_DE.UTF-8/LC_NUMERIC
    COMMAND ${LOCALEDEF} -i de_DE -f UTF-8 ${REKA_TEST_LOCALES}/de_DE.UTF-8
    VERBATIM)
  add_custom_target(reka_test_locales ALL DEPENDS ${REKA_TEST_LOCALES}/de_DE.UTF-8/LC_NUMERIC)
endif()

# Makes the tests of `target` known to ctest: one by one natively, suite by suite under the emulator. What is tested may be
# optimised; the tests needn't be, and take long enough to compile. Further arguments are properties of each test.
function(reka_register_tests target)
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0>)
  reka_precompile_platform(${target})
  if(CMAKE_CROSSCOMPILING)
    reka_register_suites(${target} ${ARGN})
    return()
  endif()
  # A user's own templates stay untouched: the tests have a configuration folder in the build folder.
  gtest_discover_tests(
    ${target}
    NO_PRETTY_VALUES
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    PROPERTIES TIMEOUT 300 ENVIRONMENT LOCPATH=${REKA_TEST_LOCALES} ENVIRONMENT_MODIFICATION
               XDG_CONFIG_HOME=set:${PROJECT_BINARY_DIR}/user ${ARGN})
  add_dependencies(${target} reka_test_locales)
endfunction()

# The emulator's user has a folder of his own. It encodes file names as its locale says.
function(reka_register_suites target)
  set(REKA_EMULATOR ${CMAKE_CROSSCOMPILING_EMULATOR})
  list(JOIN ARGN " " properties)
  string(APPEND properties " ENVIRONMENT LC_ALL=C.UTF-8")
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/TestSuites.cmake.in ${suites}.in @ONLY)
  file(GENERATE OUTPUT ${suites} INPUT ${suites}.in)
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${suites})
endfunction()
