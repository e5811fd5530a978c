# Installs the shared library, its headers, and what find_package and pkg-config need.

include(CMakePackageConfigHelpers)

install(TARGETS redfishconfig EXPORT RedfishConfigTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/include/RedfishConfig
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/RedfishConfig)
install(EXPORT RedfishConfigTargets NAMESPACE RedfishConfig:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/RedfishConfigConfig.cmake.in
    ${PROJECT_BINARY_DIR}/RedfishConfigConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/RedfishConfigConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/RedfishConfigConfig.cmake ${PROJECT_BINARY_DIR}/RedfishConfigConfigVersion.cmake
    DESTINATION ${package_dir})

redfishconfig_install_pkg_config(redfishconfig)
