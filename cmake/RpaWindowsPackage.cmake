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
    "${PROJECT_SOURCE_DIR}/docs/dependencies.md" DESTINATION licences ${runtime})
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
set(CPACK_PACKAGE_EXECUTABLES rpa-workstation "RPA 工作站")
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_BINARY_DIR};${PROJECT_NAME};program;/"
    "${PROJECT_BINARY_DIR};${PROJECT_NAME};windows_runtime;/")
set(CPACK_STRIP_FILES ON)
set(CPACK_NSIS_DISPLAY_NAME "RPA 工作站")
set(CPACK_NSIS_PACKAGE_NAME "RPA 工作站")
set(CPACK_NSIS_MUI_ICON "${PROJECT_SOURCE_DIR}/resources/program/rpa-workstation.ico")
set(CPACK_NSIS_MUI_UNIICON "${CPACK_NSIS_MUI_ICON}")
set(CPACK_NSIS_INSTALLED_ICON_NAME "bin\\\\rpa-workstation.exe")
set(CPACK_NSIS_MANIFEST_DPI_AWARE ON)
set(CPACK_NSIS_EXECUTABLE_PRE_ARGUMENTS -INPUTCHARSET UTF8)
# A 64-bit installer: it starts where 32-bit programs do not.
set(CPACK_NSIS_DEFINES "Unicode true\n  Target amd64-unicode")
include(CPack)
