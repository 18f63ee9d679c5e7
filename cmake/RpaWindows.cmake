# SPDX-License-Identifier: Apache-2.0
# What only a build for Windows has. Everything here does nothing elsewhere.

if(WIN32)
    # Windows 10 is the oldest that is served.
    target_compile_definitions(rpa_options INTERFACE _WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX UNICODE _UNICODE)
endif()

# Gives a library or program the name that Windows programs expect and the facts that its properties page shows; a
# program also an icon, when one is named. Qt gives that to the program's windows.
function(_rpa_finish_for_windows target)
    if(NOT WIN32)
        return()
    endif()
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        set(file_name "${target}.exe")
        set(file_type VFT_APP)
    else()
        set(file_name "${target}.dll")
        set(file_type VFT_DLL)
        set_target_properties(${target} PROPERTIES PREFIX "")
    endif()
    string(REPLACE "." "," version_numbers "${PROJECT_VERSION},0")
    set(icon "")
    if(ARGC GREATER 1)
        set(icon "IDI_ICON1 ICON \"${ARGV1}\"")
        set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${target}.rc" PROPERTIES OBJECT_DEPENDS "${ARGV1}")
    endif()
    set(resource "${CMAKE_CURRENT_BINARY_DIR}/${target}.rc")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/VersionResource.rc.in" "${resource}" @ONLY)
    target_sources(${target} PRIVATE "${resource}")
endfunction()
