# SPDX-License-Identifier: Apache-2.0
# The package for Windows, as an installer and as a ZIP (cpack in the build folder, or the target `package`): the
# programs, the libraries they link, Qt's plugins. Nothing but Windows itself is needed beside it.

# Kept out of a plain `cmake --install`: who builds against the libraries has a Qt.
set(runtime COMPONENT windows_runtime EXCLUDE_FROM_ALL)

execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=libstdc++-6.dll
    OUTPUT_VARIABLE compiler_library OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(compiler_libraries "${compiler_library}" DIRECTORY)
file(GLOB sodium "${RPA_WINDOWS_LIBRARIES}/bin/libsodium-*.dll")
install(PROGRAMS
    "${RPA_WINDOWS_QT}/bin/Qt5Core.dll" "${RPA_WINDOWS_QT}/bin/Qt5Gui.dll" "${RPA_WINDOWS_QT}/bin/Qt5Widgets.dll"
    "${RPA_WINDOWS_QT}/bin/Qt5Network.dll" "${RPA_WINDOWS_QT}/bin/Qt5Sql.dll"
    "${RPA_WINDOWS_QT}/sqlite/bin/sqlite3.dll"
    "${RPA_WINDOWS_LIBRARIES}/bin/libcurl.dll" ${sodium}
    "${compiler_libraries}/libstdc++-6.dll" "${compiler_libraries}/libgcc_s_seh-1.dll"
    "/usr/x86_64-w64-mingw32/lib/libwinpthread-1.dll" "/usr/x86_64-w64-mingw32/lib/zlib1.dll"
    DESTINATION "${CMAKE_INSTALL_BINDIR}" ${runtime})
foreach(plugin IN ITEMS platforms/qwindows sqldrivers/qsqlite styles/qwindowsvistastyle
        imageformats/qgif imageformats/qico imageformats/qjpeg)
    get_filename_component(kind "${plugin}" DIRECTORY)
    install(PROGRAMS "${RPA_WINDOWS_QT}/plugins/${plugin}.dll" DESTINATION "${CMAKE_INSTALL_BINDIR}/${kind}" ${runtime})
endforeach()
install(FILES /usr/share/common-licenses/GPL-3 /usr/share/common-licenses/LGPL-3
    "${PROJECT_SOURCE_DIR}/docs/dependencies.md" "${PROJECT_SOURCE_DIR}/resources/program/licences.txt"
    DESTINATION licences ${runtime})
foreach(package IN ITEMS gcc-mingw-w64-base libz-mingw-w64 mingw-w64-common)
    install(FILES "/usr/share/doc/${package}/copyright" DESTINATION licences RENAME "${package}.txt" ${runtime})
endforeach()
# The compiler's runtime is ten times its size with the symbols that it comes with.
install(CODE "
    file(GLOB_RECURSE libraries \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/*.dll\")
    execute_process(COMMAND \"${CMAKE_STRIP}\" --strip-unneeded \${libraries} COMMAND_ERROR_IS_FATAL ANY)"
    ${runtime})

set(CPACK_GENERATOR ZIP NSIS)
set(CPACK_PACKAGE_NAME rpa-workstation)
set(CPACK_PACKAGE_VENDOR "${PROJECT_NAME}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_INSTALL_DIRECTORY "RPA Workstation")
set(CPACK_PACKAGE_INSTALL_REGISTRY_KEY rpa-workstation)
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_BINARY_DIR};${PROJECT_NAME};program;/"
    "${PROJECT_BINARY_DIR};${PROJECT_NAME};windows_runtime;/")
set(CPACK_STRIP_FILES ON)
# The installer's script is NSIS.template.in beside this file.
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/resources/program/licences.txt")
set(CPACK_NSIS_DISPLAY_NAME "RPA 工作站")
set(CPACK_NSIS_INSTALLED_PROGRAM rpa-workstation)
set(CPACK_NSIS_MUI_ICON "${PROJECT_SOURCE_DIR}/resources/program/rpa-workstation.ico")
set(CPACK_NSIS_MUI_WELCOMEFINISHPAGE_BITMAP "${PROJECT_SOURCE_DIR}/resources/program/installer-side.bmp")
set(CPACK_NSIS_EXECUTABLE_PRE_ARGUMENTS -INPUTCHARSET UTF8)
include(CPack)
