# SPDX-License-Identifier: Apache-2.0
# One function per kind of target. Every target of the project is made by one of these, so that
# warnings, hidden visibility and Qt's strict string rules hold everywhere without being repeated.

include(GenerateExportHeader)
include(GNUInstallDirs)

add_library(rpa_options INTERFACE)
target_compile_features(rpa_options INTERFACE cxx_std_17)
target_compile_definitions(rpa_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_STRICT_ITERATORS
    QT_DEPRECATED_WARNINGS)
include(RpaCompilers)
if(RPA_SANITIZE)
    target_compile_options(rpa_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
        -Wno-error=maybe-uninitialized)
    target_link_options(rpa_options INTERFACE -fsanitize=address,undefined)
endif()

include(RpaWindows)

function(_rpa_common target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:rpa_options>)
    set_target_properties(${target} PROPERTIES
        CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
        AUTOMOC ON AUTOUIC ON AUTORCC ON
        CXX_EXTENSIONS OFF)
endfunction()

# A target's own headers are included by file name, in whatever folder beside the list of sources they are.
function(_rpa_include_own_folders target scope)
    foreach(source IN LISTS ARGN)
        if(NOT IS_ABSOLUTE "${source}")
            cmake_path(SET file NORMALIZE "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
            cmake_path(GET file PARENT_PATH folder)
            target_include_directories(${target} ${scope} "${folder}")
        endif()
    endforeach()
endfunction()

# A shared library of the reference platform.
#   rpa_add_platform_library(OxBase
#       HEADERS DpiTool.h ...            # public, relative to include/OxBase/
#       SOURCES src/DpiTool.cpp ...
#       PUBLIC Qt5::Widgets              # what the public headers need
#       PRIVATE ...)
# Gives the target OxBase, its alias RpaPlatform::OxBase and the header <OxBase/OxBaseExport.h>
# with the macro OXBASE_EXPORT.
function(rpa_add_platform_library name)
    cmake_parse_arguments(arg "" "" "HEADERS;SOURCES;PUBLIC;PRIVATE" ${ARGN})
    list(TRANSFORM arg_HEADERS PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/include/${name}/")
    set(generated "${CMAKE_CURRENT_BINARY_DIR}/include")

    add_library(${name} SHARED ${arg_SOURCES} ${arg_HEADERS})
    add_library(RpaPlatform::${name} ALIAS ${name})
    _rpa_common(${name})
    _rpa_finish_for_windows(${name})
    generate_export_header(${name} EXPORT_FILE_NAME "${generated}/${name}/${name}Export.h")
    target_sources(${name}
        PUBLIC FILE_SET HEADERS
        BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}/include" "${generated}"
        FILES ${arg_HEADERS} "${generated}/${name}/${name}Export.h")
    _rpa_include_own_folders(${name} PRIVATE ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    set_target_properties(${name} PROPERTIES
        VERIFY_INTERFACE_HEADER_SETS ${RPA_VERIFY_HEADERS}
        INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${name} EXPORT RpaPlatformTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT program
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/RpaPlatform" COMPONENT development)
endfunction()

# One layer (folder) of the module: compiled once, linked into the module and into the module's tests.
#   rpa_add_module_layer(client SOURCES ... LINK ...)
# Its forms are found in forms/; its headers, which include what is made of them, are included by file name.
function(rpa_add_module_layer name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} OBJECT ${arg_SOURCES})
    _rpa_common(${name})
    _rpa_include_own_folders(${name} PUBLIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC ${arg_LINK})
    target_include_directories(${name} INTERFACE "${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include")
    target_compile_definitions(${name} PRIVATE RPAEDITORMANAGER_BUILDING)
    set_target_properties(${name} PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        AUTOUIC_SEARCH_PATHS "${PROJECT_SOURCE_DIR}/forms")
endfunction()

# The exported module, made of its layers; HEADERS (in HEADER_DIR) are all that others see of it.
function(rpa_add_module name)
    cmake_parse_arguments(arg "" "HEADER_DIR" "LAYERS;HEADERS;PUBLIC;PRIVATE" ${ARGN})
    set(objects "")
    foreach(layer IN LISTS arg_LAYERS)
        list(APPEND objects $<TARGET_OBJECTS:${layer}>)
    endforeach()
    add_library(${name} SHARED ${objects})
    add_library(${name}::${name} ALIAS ${name})
    _rpa_common(${name})
    _rpa_finish_for_windows(${name})
    target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS "${arg_HEADER_DIR}" FILES ${arg_HEADERS})
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC} PRIVATE ${arg_PRIVATE})
    # The layers made the meta objects already.
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN" AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    install(TARGETS ${name} EXPORT ${name}Targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT program
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
        FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${name}" COMPONENT development)
endfunction()

# The parts of a program, compiled once and linked into the program and into its tests.
#   rpa_add_program_parts(workstation_parts SOURCES ... LINK ...)
# Forms are found in forms/; the headers of the dialogs and pages include what is made of them.
function(rpa_add_program_parts name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    add_library(${name} OBJECT ${arg_SOURCES})
    _rpa_common(${name})
    _rpa_include_own_folders(${name} PUBLIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC ${arg_LINK})
    set_target_properties(${name} PROPERTIES AUTOUIC_SEARCH_PATHS "${CMAKE_CURRENT_SOURCE_DIR}/forms")
    target_include_directories(${name} INTERFACE "${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/include")
endfunction()

# A program; WINDOWED when it opens windows and needs no console beside them. ICON is what Windows shows for it.
function(rpa_add_program name)
    cmake_parse_arguments(arg "WINDOWED" "ICON" "SOURCES;LINK" ${ARGN})
    add_executable(${name} ${arg_SOURCES})
    _rpa_common(${name})
    _rpa_finish_for_windows(${name} ${arg_ICON})
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ${arg_WINDOWED})
    target_link_libraries(${name} PRIVATE ${arg_LINK})
    set_target_properties(${name} PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
    install(TARGETS ${name} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT program)
endfunction()

# A QtTest program, run by ctest offscreen with a private home, so that it neither reads nor leaves
# anything in the developer's own folders, and no bus, so that it does not ask the developer's own services.
#   rpa_add_test(tst_dpitool SOURCES tst_dpitool.cpp LINK RpaPlatform::OxBase [TIMEOUT 60] [LABELS ...])
# NOT_ON_WINDOWS builds it there, but leaves it out of ctest; docs/windows.md says why for each.
function(rpa_add_test name)
    cmake_parse_arguments(arg "NOT_ON_WINDOWS" "TIMEOUT" "SOURCES;LINK;LABELS;ENVIRONMENT;ARGUMENTS" ${ARGN})
    if(NOT BUILD_TESTING)
        return()
    endif()
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    _rpa_common(${name})
    target_link_libraries(${name} PRIVATE Qt5::Test ${arg_LINK})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests/support") # for what is a header alone
    set(home "${CMAKE_CURRENT_BINARY_DIR}/${name}.home")
    file(MAKE_DIRECTORY "${home}/run")
    file(CHMOD "${home}/run" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    if(WIN32 AND NOT arg_ARGUMENTS)
        list(APPEND arg_ENVIRONMENT "RPA_TEST_REPORT=${home}/report.txt") # for tools/windows/run.sh
    endif()
    if(WIN32 AND arg_NOT_ON_WINDOWS)
        return()
    endif()
    add_test(NAME ${name} COMMAND ${name} ${arg_ARGUMENTS})
    set_tests_properties(${name} PROPERTIES
        TIMEOUT ${arg_TIMEOUT}
        LABELS "${arg_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_RUNTIME_DIR=${home}/run;XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;DBUS_SESSION_BUS_ADDRESS=disabled:;LC_ALL=C.UTF-8;${RPA_SANITIZER_ENVIRONMENT};${arg_ENVIRONMENT}")
endfunction()

# The set-up that several tests of a folder share, compiled once and linked into each of them.
#   rpa_add_test_fixture(version_service_fixture SOURCES VersionServiceFixture.cpp LINK rpa_test_support)
function(rpa_add_test_fixture name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    if(NOT BUILD_TESTING)
        return()
    endif()
    add_library(${name} OBJECT ${arg_SOURCES})
    _rpa_common(${name})
    target_include_directories(${name} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/tests/support")
    target_link_libraries(${name} PUBLIC Qt5::Test ${arg_LINK})
    set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()

# A library that a test loads into another program.
function(rpa_add_test_helper name)
    cmake_parse_arguments(arg "" "" "SOURCES" ${ARGN})
    if(NOT BUILD_TESTING)
        return()
    endif()
    add_library(${name} MODULE ${arg_SOURCES})
    _rpa_common(${name})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
endfunction()

# A benchmark program; `cmake --build ... --target bench` runs all of them one after another.
function(rpa_add_benchmark name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
    if(NOT RPA_BUILD_BENCHMARKS)
        return()
    endif()
    add_executable(${name} EXCLUDE_FROM_ALL ${arg_SOURCES})
    _rpa_common(${name})
    target_link_libraries(${name} PRIVATE ${arg_LINK})
    if(NOT TARGET bench)
        add_custom_target(bench)
    endif()
    add_custom_target(run_${name}
        COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:${name}>
        DEPENDS ${name} USES_TERMINAL)
    add_dependencies(bench run_${name})
endfunction()
