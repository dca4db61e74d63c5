# What `cmake --install` puts where: headers below include/zentrika, the module,
# a CMake package (find_package(ZkUtil), target zk::util) and a pkg-config file.
include(CMakePackageConfigHelpers)

execute_process(
    COMMAND ${PROJECT_SOURCE_DIR}/scripts/public-headers --target ${CMAKE_SYSTEM_NAME}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    OUTPUT_VARIABLE headers
    OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\n" ";" headers "${headers}")
foreach(header IN LISTS headers)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zentrika/${folder} COMPONENT development)
endforeach()

set_target_properties(zk_util PROPERTIES EXPORT_NAME util)
set_target_properties(zk_usage_requirements PROPERTIES EXPORT_NAME usage_requirements)
install(TARGETS zk_util zk_usage_requirements EXPORT ZkUtilTargets
    RUNTIME COMPONENT library
    LIBRARY COMPONENT library NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development)
if(TARGET zk_host_texts)
    set_target_properties(zk_host_texts PROPERTIES EXPORT_NAME host_texts)
    install(TARGETS zk_host_texts EXPORT ZkUtilTargets ARCHIVE COMPONENT development)
endif()

# ninja -C build/PRESET installed: all that `cmake --install` needs.
add_custom_target(installed DEPENDS zk_util)
get_property(tools GLOBAL PROPERTY ZK_TOOLS)
foreach(target zk_host_texts ${tools})
    if(TARGET ${target})
        add_dependencies(installed ${target})
    endif()
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZkUtil)
install(EXPORT ZkUtilTargets NAMESPACE zk:: DESTINATION ${package_folder} COMPONENT development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZkUtilConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZkUtilConfig.cmake INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZkUtilConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZkUtilConfig.cmake ${PROJECT_BINARY_DIR}/ZkUtilConfigVersion.cmake
    DESTINATION ${package_folder} COMPONENT development)

if(NOT WIN32)
    # The prefix is told from the place of the file, so that the package may be moved.
    file(RELATIVE_PATH ZK_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/zk_util.pc.in ${PROJECT_BINARY_DIR}/zk_util.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/zk_util.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT library)
