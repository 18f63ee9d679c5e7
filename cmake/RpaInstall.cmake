# SPDX-License-Identifier: Apache-2.0
# What others find after `cmake --install`: find_package(RpaPlatform) and find_package(RpaEditorManager).

include(CMakePackageConfigHelpers)

function(_rpa_install_package name)
    set(destination "${CMAKE_INSTALL_LIBDIR}/cmake/${name}")
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/${name}Config.cmake.in"
        "${PROJECT_BINARY_DIR}/${name}Config.cmake" INSTALL_DESTINATION "${destination}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake"
        VERSION "${PROJECT_VERSION}" COMPATIBILITY SameMinorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/${name}Config.cmake" "${PROJECT_BINARY_DIR}/${name}ConfigVersion.cmake"
        DESTINATION "${destination}" COMPONENT development)
    install(EXPORT ${name}Targets NAMESPACE "${name}::" DESTINATION "${destination}" COMPONENT development)
endfunction()

if(RPA_PLATFORM_IN_TREE)
    _rpa_install_package(RpaPlatform)
endif()
_rpa_install_package(RpaEditorManager)
