# SPDX-License-Identifier: MIT
# What a program of one's own links: the component as a static library and, with REKA_BUILD_SHARED, as a shared one that
# gives out the factory and the automation functions and nothing else. `cmake --install` puts both, the public headers, the
# shipped data and the programs where find_package(REKA) and pkg-config find them.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(objects $<TARGET_OBJECTS:reka_grammar>)
foreach(floor IN LISTS REKA_PORTABLE_FLOORS)
  reka_floor_target(${floor} target)
  list(APPEND objects $<TARGET_OBJECTS:${target}>)
endforeach()

# Adds the library `target` of all floors under the name REKA::`name`.
function(reka_add_product target kind name)
  add_library(${target} ${kind} ${objects})
  add_library(REKA::${name} ALIAS ${target})
  set_target_properties(
    ${target} PROPERTIES OUTPUT_NAME reka EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION
                                                                                        ${PROJECT_VERSION_MAJOR})
  target_compile_features(${target} INTERFACE cxx_std_20)
  # The headers include each other from the top of the source, which lies in the folder of the public ones once installed.
  target_include_directories(
    ${target}
    INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
              $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/reka>)
  install(TARGETS ${target} EXPORT REKATargets)
endfunction()

reka_add_product(reka_static STATIC reka)
if(REKA_BUILD_SHARED)
  reka_add_product(reka_shared SHARED reka_shared)
  set(exports ${PROJECT_SOURCE_DIR}/cmake/Exports.map)
  target_link_options(reka_shared PRIVATE -Wl,--version-script=${exports} -Wl,--no-undefined)
  set_target_properties(reka_shared PROPERTIES LINK_DEPENDS ${exports})
endif()

install(FILES include/reka/reka.h include/reka/host.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/reka)
foreach(header capeopen/CapeOpenInterfaces.h capeopen/ClassIds.h manager/CreateReactionPackManager.h
               platform/Automation.h platform/posix/AutomationStandIn.h)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES src/${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/reka/${folder})
endforeach()
install(EXPORT REKATargets NAMESPACE REKA:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/REKA)
set(config ${PROJECT_BINARY_DIR}/package)
file(WRITE ${config}/REKAConfig.cmake "include(\${CMAKE_CURRENT_LIST_DIR}/REKATargets.cmake)\n")
write_basic_package_version_file(${config}/REKAConfigVersion.cmake COMPATIBILITY SameMajorVersion)
file(RELATIVE_PATH to_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/reka.pc.in ${config}/reka.pc @ONLY)
install(FILES ${config}/REKAConfig.cmake ${config}/REKAConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/REKA)
install(FILES ${config}/reka.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(REKA_BUILD_EXAMPLES)
  install(TARGETS rekasim rekatool)
  install(DIRECTORY ${REKA_DATA_DIR}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/reka)
endif()
