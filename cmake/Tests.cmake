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

# Makes the tests of `target` known to ctest: one by one natively, and as a whole where each start costs an emulator.
function(reka_register_tests target)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${target} COMMAND ${target})
  else()
    gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
  endif()
endfunction()
