# GoogleTest is found natively and built from its source for a cross build.
if(CMAKE_CROSSCOMPILING)
  set(INSTALL_GTEST OFF)
  set(gtest_disable_pthreads OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  add_library(reka_gtest INTERFACE)
  target_link_libraries(reka_gtest INTERFACE gmock gtest)
else()
  find_package(GTest REQUIRED)
  add_library(reka_gtest INTERFACE)
  target_link_libraries(reka_gtest INTERFACE GTest::gmock GTest::gtest)
endif()

include(GoogleTest)

# A locale with a decimal comma for the tests, made for the build folder: the system needn't have it.
set(REKA_TEST_LOCALES ${CMAKE_BINARY_DIR}/locales)
if(NOT CMAKE_CROSSCOMPILING)
  find_program(LOCALEDEF localedef REQUIRED)
  file(MAKE_DIRECTORY ${REKA_TEST_LOCALES})
  add_custom_command(
    OUTPUT ${REKA_TEST_LOCALES}/de_DE.UTF-8/LC_NUMERIC
    COMMAND ${LOCALEDEF} -i de_DE -f UTF-8 ${REKA_TEST_LOCALES}/de_DE.UTF-8
    VERBATIM)
  add_custom_target(reka_test_locales ALL DEPENDS ${REKA_TEST_LOCALES}/de_DE.UTF-8/LC_NUMERIC)
endif()

# Makes the tests of `target` known to ctest, one by one. What is tested is optimised in a release; the tests needn't be,
# and take long enough to compile.
function(reka_register_tests target)
  target_compile_options(${target} PRIVATE $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<CONFIG:Release>>:-O0>)
  # A user's own templates stay untouched: natively the tests have a configuration folder in the build folder, and under
  # the emulator its user has one of his own. The emulator encodes file names as its locale says.
  if(CMAKE_CROSSCOMPILING)
    set(test_environment LC_ALL=C.UTF-8)
  else()
    set(test_environment LOCPATH=${REKA_TEST_LOCALES})
  endif()
  gtest_discover_tests(
    ${target}
    NO_PRETTY_VALUES
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
    PROPERTIES TIMEOUT 300 ENVIRONMENT ${test_environment} ENVIRONMENT_MODIFICATION
               XDG_CONFIG_HOME=set:${CMAKE_BINARY_DIR}/user)
  if(TARGET reka_test_locales)
    add_dependencies(${target} reka_test_locales)
  endif()
endfunction()
