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

# Locales for the tests, made for the build folder: the system needn't have them. One has a decimal comma; an emulated
# Windows takes its code page from the others, 932 and 65001.
set(REKA_TEST_LOCALES ${PROJECT_BINARY_DIR}/locales)
# A user's own templates stay untouched: the tests have a configuration folder in the build folder.
set(REKA_TEST_USER ${PROJECT_BINARY_DIR}/user)
if(CMAKE_CROSSCOMPILING)
  set(test_locales ja_JP hi_IN)
else()
  set(test_locales de_DE)
endif()
find_program(LOCALEDEF localedef REQUIRED)
file(MAKE_DIRECTORY ${REKA_TEST_LOCALES})
set(made_locales)
foreach(locale IN LISTS test_locales)
  set(made_locale ${REKA_TEST_LOCALES}/${locale}.UTF-8)
  add_custom_command(
    OUTPUT ${made_locale}/LC_NUMERIC
    COMMAND ${LOCALEDEF} -i ${locale} -f UTF-8 ${made_locale}
    VERBATIM)
  list(APPEND made_locales ${made_locale}/LC_NUMERIC)
endforeach()
add_custom_target(reka_test_locales ALL DEPENDS ${made_locales})

# Makes the tests of `target` known to ctest: one by one natively, suite by suite under the emulator and with
# REKA_TEST_BY_SUITES. What is tested may be optimised; the tests needn't be, and take long enough to compile. Further
# arguments are properties of each test.
function(reka_register_tests target)
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0>)
  reka_precompile_platform(${target})
  if(CMAKE_CROSSCOMPILING)
    reka_register_suites("" $<TARGET_FILE:${target}> ${ARGN})
    return()
  endif()
  add_dependencies(${target} reka_test_locales)
  if(REKA_TEST_BY_SUITES)
    reka_register_suites("" $<TARGET_FILE:${target}> ${ARGN})
    return()
  endif()
  gtest_discover_tests(
    ${target}
    NO_PRETTY_VALUES
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    PROPERTIES TIMEOUT 300 ENVIRONMENT LOCPATH=${REKA_TEST_LOCALES} ENVIRONMENT_MODIFICATION
               XDG_CONFIG_HOME=set:${REKA_TEST_USER} ${ARGN})
endfunction()

# Makes the suites of a program known to ctest, each with `prefix` before its name. Further arguments are properties of each
# test.
function(reka_register_suites prefix program)
  set(REKA_EMULATOR ${CMAKE_CROSSCOMPILING_EMULATOR})
  string(MAKE_C_IDENTIFIER "${prefix}${program}" name)
  if(CMAKE_CROSSCOMPILING)
    # The emulator encodes file names as its locale says, and its user has a folder of his own. Programs that run at the
    # same time keep their pictures apart.
    set(environment LC_ALL=C.UTF-8)
    if(prefix)
      string(MAKE_C_IDENTIFIER "pictures_${prefix}" pictures)
      list(APPEND environment REKA_TEST_PICTURES=${pictures})
    endif()
  else()
    set(environment "LOCPATH=${REKA_TEST_LOCALES};XDG_CONFIG_HOME=${REKA_TEST_USER}")
  endif()
  list(JOIN ARGN " " properties)
  string(APPEND properties " ENVIRONMENT \"${environment}\"")
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${name}_suites.cmake)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/TestSuites.cmake.in ${suites}.in @ONLY)
  file(GENERATE OUTPUT ${suites} INPUT ${suites}.in)
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${suites})
endfunction()
